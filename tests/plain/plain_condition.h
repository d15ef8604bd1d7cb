#pragma once

/// The rewriting of conditions written down as it is defined: a record for every token, every range
/// walked anew at every level, and a call for every range. What the linear form is compared with.

#include "gen_bp_parser.h"

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

struct PlainToken {
    int type;
    std::string text;
};

/// How long the two strings were when an internal error was reported.
struct PlainReport {
    std::size_t working;
    std::size_t errors;

    bool operator==(PlainReport const&) const = default;
};

class PlainCondition {
  public:
    std::vector<PlainToken> tokens;
    std::string working;
    std::string errors;
    std::vector<PlainReport> reports;

    bool parse(std::string& expression) {
        working = expression;
        tokenize();
        working.clear();
        parse_tokens(0, tokens.size());
        tokens.clear();
        expression = working;
        return !errors.empty();
    }

    void tokenize() {
        std::string word;
        for (char const character : working) {
            int const code = static_cast<signed char>(character);
            if (code <= 32 || code == 127)
                continue;
            int const symbol = symbol_type(character);
            if (symbol >= 0) {
                take_word(word);
                tokens.push_back({symbol, ""});
                continue;
            }
            word += character;
            if ((character == '&' && word == "&&") || (character == '|' && word == "||"))
                take_word(word);
        }
        take_word(word);
    }

    bool has_multiple_terms(std::size_t first, std::size_t last) {
        int depth = 0;
        for (; first != last; ++first) {
            int const type = tokens[first].type;
            if (type == BP_TOKEN_LEFT_PAREN)
                ++depth;
            if (type == BP_TOKEN_RIGHT_PAREN && --depth < 0)
                reports.push_back({working.size(), errors.size()});
            if (depth == 0 && is_operator(type))
                return true;
        }
        return false;
    }

    bool first_subexpression(std::size_t first, std::size_t last, std::size_t& op) {
        op = first;
        int depth = 0;
        bool and_seen = false;
        bool equal_seen = false;
        bool greater_seen = false;
        bool less_seen = false;
        for (std::size_t at = first; at != last; ++at) {
            int const type = tokens[at].type;
            if (type == BP_TOKEN_LEFT_PAREN)
                ++depth;
            if (type == BP_TOKEN_RIGHT_PAREN && --depth < 0) {
                reports.push_back({working.size(), errors.size()});
                errors += "Unbalanced number of right parenthesis\n";
            }
            if (depth != 0)
                continue;
            if (type == BP_TOKEN_OR) {
                op = at;
                break;
            }
            if (type == BP_TOKEN_AND) {
                if (!and_seen)
                    op = at;
                and_seen = true;
            }
            if (type == BP_TOKEN_EQUAL) {
                if (!and_seen && !equal_seen)
                    op = at;
                equal_seen = true;
            }
            if (type == BP_TOKEN_GREATER) {
                if (!and_seen && !equal_seen && !greater_seen)
                    op = at;
                greater_seen = true;
            }
            if (type == BP_TOKEN_LESS) {
                if (!and_seen && !equal_seen && !greater_seen && !less_seen)
                    op = at;
                less_seen = true;
            }
        }
        if (depth != 0) {
            errors += "Unbalanced parenthesis\n";
            return false;
        }
        if (op == first)
            op = last;
        return true;
    }

    void parse_tokens(std::size_t first, std::size_t last) {
        if (first == last)
            return;
        if (!has_multiple_terms(first, last))
            parse_single_term(first, last);
        else
            parse_several_terms(first, last);
    }

  private:
    static bool is_letter(char character) {
        return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
    }
    static bool is_operator(int type) { return type >= BP_TOKEN_AND && type <= BP_TOKEN_LESS; }

    static int symbol_type(char character) {
        switch (character) {
        case '(':
            return BP_TOKEN_LEFT_PAREN;
        case ')':
            return BP_TOKEN_RIGHT_PAREN;
        case '=':
            return BP_TOKEN_EQUAL;
        case '>':
            return BP_TOKEN_GREATER;
        case '<':
            return BP_TOKEN_LESS;
        case '~':
            return BP_TOKEN_NOT;
        default:
            return -1;
        }
    }

    static bool is_time(std::string word) {
        for (char& character : word)
            if (character >= 'A' && character <= 'Z')
                character = static_cast<char>(character - 'A' + 'a');
        return word == "time";
    }

    void take_word(std::string& word) {
        if (word.empty())
            return;
        if (word == "&&")
            tokens.push_back({BP_TOKEN_AND, ""});
        else if (word == "||")
            tokens.push_back({BP_TOKEN_OR, ""});
        else if (is_time(word))
            tokens.push_back({BP_TOKEN_TIME, ""});
        else if (word.front() == '|' || is_letter(word.front()))
            tokens.push_back({BP_TOKEN_HPATH, word});
        else if (is_letter(word.back()))
            tokens.push_back({BP_TOKEN_LITERAL, word});
        else
            tokens.push_back({BP_TOKEN_BUS, word});
        word.clear();
    }

    void parse_single_term(std::size_t first, std::size_t last) {
        PlainToken const& token = tokens[first];
        if (token.type == BP_TOKEN_NOT) {
            working += "NOT(";
            parse_tokens(first + 1, last);
            working += ")";
        } else if (token.type == BP_TOKEN_LEFT_PAREN) {
            std::size_t const final = last - 1;
            if (tokens[final].type != BP_TOKEN_RIGHT_PAREN)
                errors += "Parse Error: Unmatched parenthesis in equation\n";
            if (final == first || final == first + 1)
                errors += "Parse Error: No subexpression within parentheses\n";
            if (final != first)
                parse_tokens(first + 1, final);
        } else {
            if (last - first > 1)
                errors += "Parse Error: Bad symbol(s) after terminal in equation\n";
            if (token.type == BP_TOKEN_HPATH)
                working += "HPATH(" + token.text + ")";
            else if (token.type == BP_TOKEN_LITERAL)
                working += token.text;
            else if (token.type == BP_TOKEN_BUS)
                working += "BUS(" + token.text + ")";
        }
    }

    void parse_several_terms(std::size_t first, std::size_t last) {
        std::size_t op = first;
        if (!first_subexpression(first, last, op)) {
            errors += "Parse Error: Bad term in equation\n";
            return;
        }
        if (tokens[first].type == BP_TOKEN_TIME && op == first + 1) {
            if (tokens[op].type == BP_TOKEN_EQUAL)
                working += "TIME_EQ(";
            else if (tokens[op].type == BP_TOKEN_GREATER)
                working += "TIME_GT(";
            else if (tokens[op].type == BP_TOKEN_LESS)
                working += "TIME_LT(";
            else
                errors += "Illegal use of time\n";
            parse_tokens(op + 1, last);
            working += ")";
            return;
        }
        if (op == last) {
            errors += "Missing left hand side of equation\n";
            return;
        }
        static char const* const functions[] = {"LOGICAL_AND(", "LOGICAL_OR(", "EQUAL_TO(",
                                                "GREATER_THAN(", "LESS_THAN("};
        working += functions[tokens[op].type - BP_TOKEN_AND];
        parse_tokens(first, op);
        working += ",";
        if (op + 1 == last)
            errors += "Missing right hand side of equation\n";
        parse_tokens(op + 1, last);
        working += ")";
    }
};
