#pragma once

/// Puts prefix functions together from the parts of a condition, given in order: what all
/// contestants of the condition benchmarks but gen write their result with.

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

/// Well-formed conditions only. Operators wait on a stack; when one has both its sides, its opening
/// is chained to the first word of its left side, so that one walk over the words writes
/// everything.
class ConditionEmitter {
  public:
    enum Operator : unsigned { logical_or, logical_and, equal, greater, less, negation, group };

    /// @param length of the condition, to reserve for
    explicit ConditionEmitter(std::size_t length) : m_length(length) {
        m_words.reserve(length / 4 + 8);
        m_openings.reserve(length / 4 + 8);
    }

    void word(std::string_view text) {
        if (is_time(text)) {
            m_after_time = true;
            return;
        }
        m_operand = next_word();
        m_words.push_back({text, no_opening, 0, false});
        end_negations();
    }
    void negate() { m_operators.push_back({negation, next_word(), false}); }
    void open() { m_operators.push_back({group, next_word(), false}); }
    void close() {
        while (m_operators.back().kind != group)
            reduce();
        m_operand = m_operators.back().first_word;
        m_operators.pop_back();
        end_negations();
    }
    void infix(Operator kind) {
        if (m_after_time) {
            m_after_time = false;
            m_operators.push_back({kind, next_word(), true});
            return;
        }
        while (!m_operators.empty() && m_operators.back().kind > kind &&
               m_operators.back().kind != group)
            reduce();
        m_words.back().comma = true;
        m_operators.push_back({kind, m_operand, false});
    }

    std::string text() {
        while (!m_operators.empty())
            reduce();
        std::string result(m_length + m_words.size() * 7 + m_openings.size() * 15 + 16, '\0');
        char* at = result.data();
        for (Word const& word : m_words)
            at = write(at, word);
        result.resize(static_cast<std::size_t>(at - result.data()));
        return result;
    }

  private:
    struct Word {
        std::string_view text;
        std::uint32_t opening;
        std::uint32_t closings;
        bool comma;
    };
    struct Opening {
        std::uint32_t name;
        std::uint32_t next;
    };
    struct Waiting {
        Operator kind;
        std::uint32_t first_word;
        bool of_time;
    };
    static constexpr std::uint32_t no_opening = UINT32_MAX;

    static bool is_letter(char c) { return static_cast<unsigned char>((c | 32) - 'a') < 26; }
    static bool is_time(std::string_view text) {
        return text.size() == 4 && (text[0] | 32) == 't' && (text[1] | 32) == 'i' &&
               (text[2] | 32) == 'm' && (text[3] | 32) == 'e';
    }

    std::uint32_t next_word() const { return static_cast<std::uint32_t>(m_words.size()); }

    void end_negations() {
        while (!m_operators.empty() && m_operators.back().kind == negation)
            reduce();
    }

    void reduce() {
        Waiting const done = m_operators.back();
        m_operators.pop_back();
        std::uint32_t& opening = m_words[done.first_word].opening;
        m_openings.push_back({done.kind + (done.of_time ? 4U : 0U), opening});
        opening = static_cast<std::uint32_t>(m_openings.size() - 1);
        ++m_words.back().closings;
        m_operand = done.first_word;
    }

    static char* append(char* at, char const (&name)[17], std::size_t length) {
        std::memcpy(at, name, 16);
        return at + length;
    }

    char* write(char* at, Word const& word) const {
        static constexpr char names[][17] = {
            "LOGICAL_OR(\0\0\0\0\0",    "LOGICAL_AND(\0\0\0\0",     "EQUAL_TO(\0\0\0\0\0\0\0",
            "GREATER_THAN(\0\0\0",      "LESS_THAN(\0\0\0\0\0\0",   "NOT(\0\0\0\0\0\0\0\0\0\0\0\0",
            "TIME_EQ(\0\0\0\0\0\0\0\0", "TIME_GT(\0\0\0\0\0\0\0\0", "TIME_LT(\0\0\0\0\0\0\0\0"};
        static constexpr std::uint8_t lengths[] = {11, 12, 9, 13, 10, 4, 8, 8, 8};
        for (std::uint32_t i = word.opening; i != no_opening; i = m_openings[i].next)
            at = append(at, names[m_openings[i].name], lengths[m_openings[i].name]);
        bool const path = is_letter(word.text.front()) || word.text.front() == '|';
        bool const bus = !path && !is_letter(word.text.back());
        if (path)
            at = append(at, "HPATH(\0\0\0\0\0\0\0\0\0\0", 6);
        else if (bus)
            at = append(at, "BUS(\0\0\0\0\0\0\0\0\0\0\0\0", 4);
        for (char const character : word.text)
            *at++ = character;
        for (std::uint32_t left = word.closings + (path || bus ? 1 : 0); left != 0; --left)
            *at++ = ')';
        if (word.comma)
            *at++ = ',';
        return at;
    }

    std::vector<Word> m_words;
    std::vector<Opening> m_openings;
    std::vector<Waiting> m_operators;
    std::size_t m_length;
    std::uint32_t m_operand = 0;
    bool m_after_time = false;
};
