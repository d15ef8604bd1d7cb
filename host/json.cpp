// The one source that includes the JSON library, whose header takes long to compile.

#include "json.h"

#include "json_text.h"

#include <nlohmann/json.hpp>

namespace {

void write(std::string_view text, std::FILE* stream) {
    std::fwrite(text.data(), 1, text.size(), stream);
}

/// Writes a value by itself, so that a list of a million lines needs no second copy as a tree.
class JsonWriter {
  public:
    JsonWriter(std::FILE* stream, bool is_inline) : m_stream(stream), m_inline(is_inline) {}

    void operator()(std::monostate) { write("null", m_stream); }
    void operator()(Value::List const& list) {
        sequence('[', ']', list, [this](Value const& item) { std::visit(*this, item.content()); });
    }
    void operator()(Value::Lines const& lines) {
        sequence('[', ']', lines, [this](std::string_view line) { scalar(line); });
    }
    void operator()(Value::Record const& record) {
        sequence('{', '}', record, [this](auto const& pair) { member(pair.first, pair.second); });
    }
    void operator()(std::string const& text) { scalar(std::string_view(text)); }
    void operator()(auto const& value) { scalar(value); }

    void member(std::string_view key, Value const& value) {
        scalar(key);
        write(": ", m_stream);
        std::visit(*this, value.content());
    }

    void sequence(char open, char close, auto const& items, auto const& write_item) {
        std::fputc(open, m_stream);
        ++m_depth;
        bool first = true;
        for (auto const& item : items) {
            if (!first)
                write(m_inline ? ", " : ",", m_stream);
            first = false;
            end_line();
            write_item(item);
        }
        --m_depth;
        if (!first)
            end_line();
        std::fputc(close, m_stream);
    }

  private:
    void scalar(std::string_view text) { scalar(to_json_text(text)); }
    /// Infinities and not-a-number, which JSON does not have, come out as null.
    void scalar(auto const& value) { write(nlohmann::json(value).dump(), m_stream); }
    void end_line() {
        if (!m_inline)
            write("\n" + std::string(2 * m_depth, ' '), m_stream);
    }

    std::FILE* m_stream;
    bool m_inline;
    std::size_t m_depth = 0;
};

std::string joined(std::vector<std::string> const& lines) {
    std::string all;
    for (std::string const& line : lines)
        all += (all.empty() ? "" : "\n") + line;
    return all;
}

void write_object(Answer const& answer, bool is_error, JsonWriter writer) {
    std::vector<Answer::Entry const*> entries;
    for (Answer::Entry const& entry : answer.entries())
        if (entry.shown != Answer::Shown::view)
            entries.push_back(&entry);
    Answer::Entry const error{"error", joined(answer.remarks()), Answer::Shown::hidden};
    if (is_error && !answer.remarks().empty())
        entries.push_back(&error);
    writer.sequence('{', '}', entries, [&writer](Answer::Entry const* entry) {
        writer.member(entry->key, entry->value);
    });
}

/// The texts of a list, as they were before they became JSON. False for anything else.
bool read_texts(nlohmann::json const& list, std::vector<std::string>& texts) {
    if (!list.is_array())
        return false;
    for (nlohmann::json const& item : list) {
        if (!item.is_string())
            return false;
        texts.push_back(from_json_text(item.get_ref<std::string const&>()));
    }
    return true;
}

} // namespace

void print_json(Answer const& answer, bool is_error, std::FILE* stream) {
    write_object(answer, is_error, JsonWriter(stream, false));
    std::fputc('\n', stream);
}

Value::Record record_of(Answer const& answer, bool is_error) {
    Value::Record record;
    for (Answer::Entry const& entry : answer.entries())
        if (entry.shown != Answer::Shown::view)
            record.emplace_back(entry.key, entry.value);
    if (is_error && !answer.remarks().empty())
        record.emplace_back("error", joined(answer.remarks()));
    return record;
}

void print_json_inline(Answer const& answer, bool is_error, std::FILE* stream) {
    write_object(answer, is_error, JsonWriter(stream, true));
}

void print_json_inline(Value const& value, std::FILE* stream) {
    std::visit(JsonWriter(stream, true), value.content());
}

std::string read_request(std::string_view line, Request& request) {
    nlohmann::json const object = nlohmann::json::parse(line, nullptr, /*allow_exceptions=*/false);
    if (!object.is_object())
        return "not a JSON object";
    if (auto const id = object.find("id"); id != object.end()) {
        if (!id->is_number() && !id->is_string() && !id->is_null())
            return "\"id\" is neither a number nor a text";
        request.id = id->dump();
    }
    auto const args = object.find("args");
    if (args == object.end() || !read_texts(*args, request.args))
        return "\"args\" is not a list of texts";
    for (std::string const& argument : request.args)
        if (argument.find('\0') != std::string::npos) // as no command line has it
            return "an argument contains a NUL byte";
    auto const input = object.find("input");
    if (input == object.end())
        return "";
    if (!input->is_string())
        return "\"input\" is not a text";
    request.input = from_json_text(input->get_ref<std::string const&>());
    return "";
}
