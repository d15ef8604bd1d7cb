#include "file_list_reader.h"

#include "input.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string_view>

namespace fs = std::filesystem;

namespace {

constexpr char const* standard_input = "-";
constexpr std::string_view blanks_and_quote = " \t\r\n\v\f\"";

struct Word {
    std::string text;    // without its quotes
    std::string written; // with them
    std::size_t line;
};

/// Parts a list into words, without its comments: "//" and "#" to the end of the line, "/*" to
/// "*/", each at the beginning of a word, since paths have "//" inside.
class Words {
  public:
    Words(std::string const& name, std::string_view text) : m_name(name), m_rest(text) {}

    std::vector<Word> all() {
        std::vector<Word> words;
        while (skip_blanks(), !m_rest.empty()) {
            if (m_rest.starts_with("//") || m_rest.front() == '#')
                skip(std::min(m_rest.find('\n'), m_rest.size()));
            else if (m_rest.starts_with("/*"))
                skip_comment();
            else
                words.push_back(next_word());
        }
        return words;
    }

  private:
    void skip(std::size_t size) {
        m_line += static_cast<std::size_t>(
            std::count(m_rest.begin(), m_rest.begin() + static_cast<std::ptrdiff_t>(size), '\n'));
        m_rest.remove_prefix(size);
    }
    void skip_blanks() { skip(std::min(m_rest.find_first_not_of(blanks), m_rest.size())); }

    void skip_comment() {
        std::size_t const end = m_rest.find("*/", 2);
        if (end == std::string_view::npos)
            fail("a comment does not end");
        skip(end + 2);
    }

    /// A word may have several pieces. Those in quotes may have blanks.
    Word next_word() {
        Word word{"", "", m_line};
        while (!m_rest.empty() && blanks.find(m_rest.front()) == blanks.npos) {
            bool const is_quoted = m_rest.front() == '"';
            std::size_t const end = is_quoted ? m_rest.find('"', 1) + 1 : end_of_plain_piece();
            if (end == 0)
                fail("a name in quotes does not end");
            std::string_view const piece = m_rest.substr(0, end);
            skip(end); // lines may end within quotes
            word.text += with_variables(is_quoted ? piece.substr(1, end - 2) : piece);
            word.written += with_variables(piece);
        }
        return word;
    }

    std::size_t end_of_plain_piece() const {
        return std::min(m_rest.find_first_of(blanks_and_quote), m_rest.size());
    }

    /// Puts values in the place of $NAME, ${NAME} and $(NAME).
    std::string with_variables(std::string_view word) const {
        std::string text;
        while (!word.empty()) {
            std::size_t const dollar = std::min(word.find('$'), word.size());
            text += word.substr(0, dollar);
            word.remove_prefix(dollar);
            if (!word.empty())
                text += value_of(take_variable(word));
        }
        return text;
    }

    /// Takes the variable that the word begins with. Gives its name, "" for a "$" by itself.
    std::string take_variable(std::string_view& word) const {
        word.remove_prefix(1);
        char const open = word.empty() ? '\0' : word.front();
        std::string_view name;
        if (open == '{' || open == '(') {
            std::size_t const end = word.find(open == '{' ? '}' : ')');
            if (end == std::string_view::npos)
                fail("a variable does not end");
            name = word.substr(1, end - 1);
            word.remove_prefix(end + 1);
        } else {
            auto const end = std::find_if(word.begin(), word.end(), [](char c) {
                return c != '_' && !(c >= '0' && c <= '9') &&
                       !((c | 0x20) >= 'a' && (c | 0x20) <= 'z');
            });
            name = word.substr(0, static_cast<std::size_t>(end - word.begin()));
            word.remove_prefix(name.size());
        }
        return std::string(name);
    }

    std::string value_of(std::string const& name) const {
        char const* const value = std::getenv(name.c_str());
        if (value == nullptr)
            fail("the variable '" + name + "' is not set");
        return value;
    }

    [[noreturn]] void fail(std::string const& fault) const {
        throw std::runtime_error(m_name + ":" + std::to_string(m_line) + ": " + fault);
    }

    std::string m_name;
    std::string_view m_rest;
    std::size_t m_line = 1;
};

/// Whether a simulator takes the next word for the option's value. It is no name of a file then.
bool takes_value(std::string_view option) {
    static constexpr std::string_view options[] = {
        "--Mdir",     "--prefix", "--timescale", "--top", "--top-module", "-L",
        "-Mdir",      "-j",       "-l",          "-o",    "-prefix",      "-s",
        "-timescale", "-top",     "-top-module", "-work"};
    return std::find(std::begin(options), std::end(options), option) != std::end(options);
}

/// A list that is being read.
struct OpenList {
    std::string path;
    std::string base;
    std::vector<Word> words;
    std::size_t next = 0;

    /// Of the word that was taken last.
    std::string place() const { return path + ":" + std::to_string(words[next - 1].line); }
};

class ListReader {
  public:
    std::vector<ListEntry> read(std::string const& path) {
        open(path, "");
        while (!m_open.empty()) {
            if (m_open.back().next == m_open.back().words.size())
                m_open.pop_back();
            else
                take(next_word());
        }
        return std::move(m_entries);
    }

  private:
    using Kind = ListEntry::Kind;

    void open(std::string const& path, std::string base) {
        // A list may have another name the second time, that of a link.
        for (OpenList const& list : m_open)
            if (std::error_code fault; fs::equivalent(list.path, path, fault))
                fail("'" + path + "' names itself");
        std::string text;
        if (std::string const fault = read_input(path, text); !fault.empty())
            throw std::runtime_error((m_open.empty() ? "" : m_open.back().place() + ": ") + fault);
        m_open.push_back({path, std::move(base), Words(path, text).all()});
    }

    Word const& next_word() {
        OpenList& list = m_open.back();
        return list.words[list.next++];
    }

    Word const& value_of(std::string const& option) {
        if (m_open.back().next == m_open.back().words.size())
            fail(option + " without a value");
        return next_word();
    }

    void take(Word const& word) {
        std::string const& text = word.text;
        if (text == "-f" || text == "-F") {
            // Both lie where this list has its base. Of their own names only those of -F have one.
            fs::path const path = fs::path(m_open.back().base) / value_of(text).text;
            if (path == standard_input)
                fail("standard input cannot be named in a list");
            // An empty base would be none.
            fs::path const beside = path.has_parent_path() ? path.parent_path() : ".";
            open(path, text == "-F" ? beside / "" : fs::path());
        } else if (text == "-y") {
            add(Kind::library_directory, value_of(text).text);
        } else if (text == "-v") {
            add(Kind::library_file, value_of(text).text);
        } else if (text.starts_with("-I")) {
            add(Kind::include_directory, text == "-I" ? value_of(text).text : text.substr(2));
        } else if (text.starts_with("-D")) { // the one form that all simulators read
            add(Kind::option,
                "+define+" + (text == "-D" ? value_of(text).written : word.written.substr(2)));
        } else if (text.starts_with("+incdir+")) {
            for (std::string_view const directory :
                 pieces_of(std::string_view(text).substr(8), '+'))
                add(Kind::include_directory, std::string(directory));
        } else if (takes_value(text)) {
            add(Kind::option, text + " " + value_of(text).written);
        } else if (text.starts_with("-") || text.starts_with("+")) {
            add(Kind::option, word.written);
        } else {
            add(Kind::file, text);
        }
    }

    [[noreturn]] void fail(std::string const& fault) const {
        throw std::runtime_error(m_open.back().place() + ": " + fault);
    }

    void add(Kind kind, std::string text) {
        m_entries.push_back({kind, std::move(text), m_open.back().base, m_open.back().place()});
    }

    std::vector<OpenList> m_open; ///< each is named by the one before it; the last is being read
    std::vector<ListEntry> m_entries;
};

} // namespace

std::vector<ListEntry> read_file_list(std::string const& path) {
    return ListReader().read(path);
}
