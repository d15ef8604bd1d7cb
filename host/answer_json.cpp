#include "answer.h"

#include <nlohmann/json.hpp>

namespace {

void write(std::string_view text, std::FILE* stream) {
    std::fwrite(text.data(), 1, text.size(), stream);
}

/// Writes a value by itself, so that a list of a million lines needs no second copy as a tree.
class JsonWriter {
  public:
    explicit JsonWriter(std::FILE* stream) : m_stream(stream) {}

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
            write(first ? "\n" : ",\n", m_stream);
            first = false;
            indent();
            write_item(item);
        }
        --m_depth;
        if (!first) {
            std::fputc('\n', m_stream);
            indent();
        }
        std::fputc(close, m_stream);
    }

  private:
    void scalar(auto const& value) {
        using nlohmann::json;
        write(json(value).dump(-1, ' ', false, json::error_handler_t::replace), m_stream);
    }
    void indent() {
        for (int level = 0; level < m_depth; ++level)
            write("  ", m_stream);
    }

    std::FILE* m_stream;
    int m_depth = 0;
};

std::string joined(std::vector<std::string> const& lines) {
    std::string all;
    for (std::string const& line : lines)
        all += (all.empty() ? "" : "\n") + line;
    return all;
}

} // namespace

void print_json(Answer const& answer, bool is_error, std::FILE* stream) {
    std::vector<Answer::Entry const*> told;
    for (Answer::Entry const& entry : answer.entries())
        if (entry.shown != Answer::Shown::view)
            told.push_back(&entry);
    Answer::Entry const error{"error", joined(answer.remarks()), Answer::Shown::hidden};
    if (is_error && !answer.remarks().empty())
        told.push_back(&error);
    JsonWriter writer(stream);
    writer.sequence('{', '}', told, [&writer](Answer::Entry const* entry) {
        writer.member(entry->key, entry->value);
    });
    std::fputc('\n', stream);
}
