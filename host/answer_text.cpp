// An answer as people see it; json.cpp writes the same for scripts.

#include "answer.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <unistd.h>

namespace {

void write_line(std::string_view text, std::FILE* stream) {
    std::fwrite(text.data(), 1, text.size(), stream);
    std::fputc('\n', stream);
}

std::string label_of(std::string_view key) {
    std::string label(key);
    std::replace(label.begin(), label.end(), '_', ' ');
    return label;
}

/// The same in every locale: some subcommands choose one.
std::string number_text(auto number) {
    char digits[64];
    return {digits, std::to_chars(digits, digits + sizeof digits, number).ptr};
}

/// A value on one line.
struct InlineText {
    std::string operator()(std::monostate) const { return "-"; }
    std::string operator()(bool truth) const { return truth ? "yes" : "no"; }
    std::string operator()(std::int64_t number) const { return number_text(number); }
    std::string operator()(std::uint64_t number) const { return number_text(number); }
    std::string operator()(double number) const { return number_text(number); }
    std::string operator()(std::string const& text) const { return text; }
    std::string operator()(Value::List const& list) const {
        return joined(list,
                      [this](Value const& item) { return std::visit(*this, item.content()); });
    }
    std::string operator()(Value::Lines const& lines) const {
        return joined(lines, [](std::string_view line) { return std::string(line); });
    }
    std::string operator()(Value::Record const& record) const {
        return joined(record, [this](auto const& member) {
            return label_of(member.first) + " " + std::visit(*this, member.second.content());
        });
    }

    static std::string joined(auto const& items, auto const& text_of) {
        std::string all;
        for (auto const& item : items)
            all += (all.empty() ? "" : ", ") + text_of(item);
        return all;
    }
};

std::string inline_text(Value const& value) {
    return std::visit(InlineText{}, value.content());
}

/// The same beside a label or in a column, where an empty text would look like a mistake.
std::string visible_text(Value const& value) {
    std::string text = inline_text(value);
    return text.empty() ? "-" : text;
}

/// "label   value" lines. A record goes below its label, two columns further in; the items of a
/// list go below each other.
class LabelledText {
  public:
    LabelledText(std::FILE* stream, std::size_t indent, std::size_t width)
        : m_stream(stream), m_indent(indent), m_width(width) {}

    void show(std::string_view key, Value const& value) const {
        if (auto const* const record = std::get_if<Value::Record>(&value.content())) {
            write_line(std::string(m_indent, ' ') + label_of(key), m_stream);
            show_record(*record);
            return;
        }
        std::string start = std::string(m_indent, ' ') + label_of(key);
        start.resize(std::max(start.size(), m_indent + m_width), ' ');
        auto const* const list = std::get_if<Value::List>(&value.content());
        if (list == nullptr || list->empty()) {
            write_line(start + "  " + visible_text(value), m_stream);
            return;
        }
        for (Value const& item : *list) {
            write_line(start + "  " + visible_text(item), m_stream);
            start.assign(start.size(), ' ');
        }
    }

    static std::size_t width_of(auto const& keyed, auto const& key_of) {
        std::size_t width = 0;
        for (auto const& one : keyed)
            width = std::max(width, key_of(one));
        return width;
    }

  private:
    void show_record(Value::Record const& record) const {
        std::size_t const width =
            width_of(record, [](auto const& member) { return member.first.size(); });
        // Its lines begin two columns further in: so its values stay below those outside.
        std::size_t const inner = std::max(width, m_width > 2 ? m_width - 2 : 0);
        for (auto const& [key, value] : record)
            LabelledText(m_stream, m_indent + 2, inner).show(key, value);
    }

    std::FILE* m_stream;
    std::size_t m_indent;
    std::size_t m_width;
};

void show_plain(Value const& value, std::FILE* stream) {
    if (auto const* const lines = std::get_if<Value::Lines>(&value.content())) {
        for (std::string_view const line : *lines)
            write_line(line, stream);
    } else if (auto const* const list = std::get_if<Value::List>(&value.content())) {
        for (Value const& item : *list)
            write_line(inline_text(item), stream);
    } else {
        write_line(inline_text(value), stream);
    }
}

/// Characters of a text in UTF-8.
std::size_t width_of(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(
        text.begin(), text.end(), [](char byte) { return (byte & '\xc0') != '\x80'; }));
}

using Row = std::vector<std::string>;

/// The heads are the keys of the first row: all rows of a table have the same ones.
std::vector<Row> cells_of(Value::List const& rows) {
    std::vector<Row> cells;
    for (Value const& value : rows) {
        auto const& record = std::get<Value::Record>(value.content());
        if (cells.empty()) {
            Row& heads = cells.emplace_back();
            for (auto const& member : record)
                heads.push_back(label_of(member.first));
        }
        Row& row = cells.emplace_back();
        for (auto const& member : record)
            row.push_back(visible_text(member.second));
    }
    return cells;
}

Colour chosen_colour = Colour::automatic;

/// A terminal that shows colour, and whose user has nothing against it (https://no-color.org).
bool is_coloured(std::FILE* stream) {
    if (chosen_colour != Colour::automatic)
        return chosen_colour == Colour::always;
    char const* const refusal = std::getenv("NO_COLOR");
    char const* const terminal = std::getenv("TERM");
    return (refusal == nullptr || *refusal == '\0') && terminal != nullptr &&
           std::string_view(terminal) != "dumb" && isatty(fileno(stream)) == 1;
}

std::string emphasised(std::string line, Emphasis emphasis) {
    switch (emphasis) {
    case Emphasis::good:
        return "\033[1;32m" + line + "\033[0m";
    case Emphasis::faint:
        return "\033[2m" + line + "\033[0m";
    case Emphasis::none:
        break;
    }
    return line;
}

void show_table(Value::List const& rows, std::vector<Emphasis> const& emphasis, std::FILE* stream) {
    std::vector<Row> const cells = cells_of(rows);
    std::vector<std::size_t> widths;
    for (Row const& row : cells) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t column = 0; column < row.size(); ++column)
            widths[column] = std::max(widths[column], width_of(row[column]));
    }
    bool const coloured = !emphasis.empty() && is_coloured(stream);
    for (std::size_t i = 0; i < cells.size(); ++i) {
        Row const& row = cells[i];
        std::string line;
        for (std::size_t column = 0; column < row.size(); ++column) {
            line += row[column];
            if (column + 1 < row.size())
                line.append(widths[column] - width_of(row[column]) + 2, ' ');
        }
        // The row before the first one has the heads.
        if (coloured && i > 0 && i <= emphasis.size())
            line = emphasised(std::move(line), emphasis[i - 1]);
        write_line(line, stream);
    }
}

void show_view(Answer::Entry const& entry, std::FILE* stream) {
    if (auto const* const rows = std::get_if<Value::List>(&entry.value.content()))
        show_table(*rows, entry.emphasis, stream);
    else
        write_line(inline_text(entry.value), stream);
}

} // namespace

void choose_colour(Colour colour) {
    chosen_colour = colour;
}

namespace {

void append_code(std::string& line, char byte) {
    char code[8];
    std::snprintf(code, sizeof code, "\\x%02x",
                  static_cast<unsigned>(static_cast<unsigned char>(byte)));
    line += code;
}

} // namespace

std::string printable(std::string_view text) {
    std::string line;
    for (std::size_t i = 0; i < text.size(); ++i) {
        char const byte = text[i];
        // U+0080 to U+009F command a terminal, too.
        bool const is_pair = byte == '\xc2' && i + 1 < text.size() &&
                             static_cast<unsigned char>(text[i + 1]) - 0x80U < 0x20;
        if (byte == '\n') {
            line += "\\n";
        } else if (static_cast<unsigned char>(byte) < 0x20 || byte == 0x7f || is_pair) {
            append_code(line, byte);
            if (is_pair)
                append_code(line, text[++i]);
        } else {
            line += byte;
        }
    }
    return line;
}

void print_text(Answer const& answer, std::FILE* stream) {
    auto const labelled_width = [](Answer::Entry const& entry) {
        return entry.shown == Answer::Shown::labelled ? entry.key.size() : 0;
    };
    LabelledText const labelled(stream, 0,
                                LabelledText::width_of(answer.entries(), labelled_width));
    for (Answer::Entry const& entry : answer.entries()) {
        switch (entry.shown) {
        case Answer::Shown::labelled:
            labelled.show(entry.key, entry.value);
            break;
        case Answer::Shown::plain:
            show_plain(entry.value, stream);
            break;
        case Answer::Shown::table:
            show_table(std::get<Value::List>(entry.value.content()), entry.emphasis, stream);
            break;
        case Answer::Shown::view:
            show_view(entry, stream);
            break;
        case Answer::Shown::hidden:
            break;
        }
    }
}
