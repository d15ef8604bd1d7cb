#pragma once

/// What a subcommand has to say, described once and shown as text for people or as JSON for
/// scripts.

#include <concepts>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

/// One value of an answer: nothing, a truth, a number, a text, a list or a record of values.
class Value {
  public:
    using List = std::vector<Value>;
    /// Keys in the order in which they are shown.
    using Record = std::vector<std::pair<std::string, Value>>;
    /// Texts that somebody else keeps until the answer has been shown.
    using Lines = std::vector<std::string_view>;
    using Content = std::variant<std::monostate, bool, std::int64_t, std::uint64_t, double,
                                 std::string, List, Record, Lines>;

    /// Not known: "-" as text, null in JSON.
    Value() = default;
    Value(std::same_as<bool> auto truth) : m_content(truth) {}
    Value(std::signed_integral auto number) : m_content(std::int64_t{number}) {}
    template <std::unsigned_integral Number>
    requires(!std::same_as<Number, bool>) Value(Number number) : m_content(std::uint64_t{number}) {}
    Value(double number) : m_content(number) {}
    Value(std::string_view text) : m_content(std::string(text)) {}
    Value(char const* text) : m_content(std::string(text)) {}
    /// STR and std::string alike.
    template <typename Allocator>
    Value(std::basic_string<char, std::char_traits<char>, Allocator> const& text)
        : m_content(std::string(text.data(), text.size())) {}
    Value(List list) : m_content(std::move(list)) {}
    Value(Record record) : m_content(std::move(record)) {}
    Value(Lines lines) : m_content(std::move(lines)) {}

    Content const& content() const { return m_content; }

  private:
    Content m_content;
};

/// How a row of a table stands out on a terminal. Elsewhere all rows look alike.
enum class Emphasis { none, good, faint };

/// The answer of one subcommand: named values in order, each with the way in which people see it.
/// JSON is one object of all of them, whatever their way.
class Answer {
  public:
    enum class Shown {
        labelled, ///< "key   value", values aligned; lists and records below each other
        plain,    ///< the value alone, a list as one line an item
        table,    ///< a list of records as columns under their keys
        hidden,   ///< in JSON only
        view,     ///< in text only: a line, or a list of records as columns
    };
    struct Entry {
        std::string key;
        Value value;
        Shown shown;
        std::vector<Emphasis> emphasis = {}; ///< one a row; none where it is shorter
    };

    Answer() = default;
    explicit Answer(bool for_scripts, std::FILE* stream = nullptr)
        : m_for_scripts(for_scripts), m_stream(stream) {}

    /// Where parts of it may be written before the whole is known; null where they have to be kept.
    std::FILE* stream() const { return m_stream; }
    /// All has been written there, but for why it could not be more.
    void set_written() {
        m_written = true;
        m_remarks_before = m_remarks.size();
    }
    bool is_written() const { return m_written; }
    /// Whether there was a remark since.
    bool is_cut_short() const { return m_written && m_remarks.size() > m_remarks_before; }

    /// Whether it will be shown as JSON.
    bool for_scripts() const { return m_for_scripts; }

    void field(std::string key, Value value) {
        add(std::move(key), std::move(value), Shown::labelled);
    }
    void plain(std::string key, Value value) {
        add(std::move(key), std::move(value), Shown::plain);
    }
    void table(std::string key, Value::List rows) {
        add(std::move(key), std::move(rows), Shown::table);
    }
    void detail(std::string key, Value value) {
        add(std::move(key), std::move(value), Shown::hidden);
    }
    /// What people alone see: a line, or a table. Scripts get the same by a detail.
    void view(std::string_view line) { add("", line, Shown::view); }
    void view(Value::List rows, std::vector<Emphasis> emphasis) {
        m_entries.push_back({"", std::move(rows), Shown::view, std::move(emphasis)});
    }
    /// A line for standard error: why nothing was found, for example.
    void remark(std::string text) { m_remarks.push_back(std::move(text)); }

    std::vector<Entry> const& entries() const { return m_entries; }
    std::vector<std::string> const& remarks() const { return m_remarks; }

  private:
    void add(std::string key, Value value, Shown shown) {
        m_entries.push_back({std::move(key), std::move(value), shown});
    }

    bool m_for_scripts = false;
    std::FILE* m_stream = nullptr;
    bool m_written = false;
    std::size_t m_remarks_before = 0;
    std::vector<Entry> m_entries;
    std::vector<std::string> m_remarks;
};

/// When rows stand out: always, never, or as suits a terminal and its user.
enum class Colour { automatic, always, never };
void choose_colour(Colour colour);

/// The text with control characters as "\\n" or "\\x1b", for a line that people read.
std::string printable(std::string_view text);
/// Writes the answer for people; a key's "_" are shown as blanks.
void print_text(Answer const& answer, std::FILE* stream);
