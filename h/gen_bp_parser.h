#pragma once

/// Conditions: an infix string such as "(|top|a = 1) && (time > 10ns)" is rewritten into prefix
/// functions, "LOGICAL_AND(EQUAL_TO(HPATH(|top|a),BUS(1)),TIME_GT(10ns))". Nothing is evaluated.
/// docs/condition-language.md is the language itself, with every diagnostic.

#include "korvane_export.h"
#include "mem_alloc_sys.h"

#include <cstddef>
#include <cstdint>

/// What a token is. The values are fixed: 3 to 7 are the operators that part a range of tokens.
enum BP_TOKEN_TYPE : std::int32_t {
    BP_TOKEN_LITERAL = 0, ///< a word such as "10ns": begins with no letter, ends with one
    BP_TOKEN_HPATH = 1,   ///< a word that begins with a letter or "|"
    BP_TOKEN_BUS = 2,     ///< any other word, such as "0101"
    BP_TOKEN_AND = 3,
    BP_TOKEN_OR = 4,
    BP_TOKEN_EQUAL = 5,
    BP_TOKEN_GREATER = 6,
    BP_TOKEN_LESS = 7,
    BP_TOKEN_NOT = 8,
    BP_TOKEN_TIME = 9,
    BP_TOKEN_LEFT_PAREN = 10,
    BP_TOKEN_RIGHT_PAREN = 11
};

/// One token. The text is that of a literal, a path or a bus, and empty for all others.
struct BP_TOKEN {
    BP_TOKEN_TYPE type; ///< what it is
    STR text;           ///< as it stood in the condition
};

/// Rewrites one condition: an object serves for one parse_string. Its parts are public and may be
/// called singly, on any range of any token list. Wherever a range of tokens is walked, a null
/// entry is passed over as if it were not there.
///
/// User errors are collected as text, each ending in "\n", and never stop the rewriting. A closing
/// parenthesis without an opening one, met while a range is walked, also reports the internal error
/// "paren_count >= 0", each one and each time that it is met.
///
/// A handler of internal errors finds in the working string all that has been written before the
/// report, and in the error text all that has been collected. While parse_string or
/// parse_token_list is at work it may assign to the caller's expression, to the working string
/// (what comes next is appended) and to the token list, even parse with the same object: tokens
/// and words are copies by then. During parse_string the list has what was entered beforehand
/// and no token of the expression; a record that the handler enters is freed with the others and
/// not rewritten. While expression_has_multiple_terms or get_first_subexpression walks a range,
/// the entries of the range have to stay. The parser and the caller's expression have to outlive
/// the call.
class KORVANE_API GEN_BP_PARSER {
  public:
    /// A place in a token list.
    using iterator = MEM_LIST<BP_TOKEN*>::iterator;

    /// No tokens, two empty strings.
    GEN_BP_PARSER();
    /// Frees the list, but not the records in it: those are freed by parse_string.
    ~GEN_BP_PARSER();
    GEN_BP_PARSER(GEN_BP_PARSER const&) = delete;
    GEN_BP_PARSER& operator=(GEN_BP_PARSER const&) = delete;

    /// Replaces @p expression by its prefix form, as far as its tokens allow when there are errors.
    /// Tokens that the list has already stand before those of the expression and are rewritten
    /// with them. Afterwards all records are freed; of every token one null entry remains in the
    /// list, and the working string has the prefix form too.
    /// The expression may be the working string, the error text, or the text of a token of the
    /// list; the error text is then the prefix form in the end, and the answer true unless that is
    /// empty. Takes time and memory in proportion to the expression and to what there is to report.
    /// @return true when the error text is not empty: a second call with the same object also
    ///         answers for the first one's errors
    /// A null expression reports the internal error "expression != NULL" and changes nothing.
    bool parse_string(STR* expression);

    /// Appends a new record; with no text where @p text is null. When the record cannot be had,
    /// reports the internal error "new_token != 0" and appends nothing.
    void add_token_to_list(BP_TOKEN_TYPE type, STR const* text);
    /// Appends the token that the word is, "&&", "||" and "time" (in any case) included, and
    /// empties the word. An empty word is no token, and neither is a null one.
    void process_token_contents(STR* word);
    /// Appends the tokens of the working string, which stays as it is. A token that there is no
    /// memory for is reported and left out, as by add_token_to_list; nothing else is reported.
    void tokenize_string();

    /// True when an operator (types 3 to 7) stands in the range outside all its parentheses. The
    /// walk ends at the first such operator.
    bool expression_has_multiple_terms(iterator first, iterator last);
    /// Chooses the operator where the range is parted: the first of the loosest kind among those
    /// outside all parentheses, from "||", "&&", "=", ">" to "<". The walk ends at the first "||".
    /// @param subexpression_start receives @p first
    /// @param op receives the operator, or @p last when there is none or when it is the first token
    ///           of the range
    /// @return true when the parentheses balance. If not, the error text says so, and the operator
    ///         chosen is given all the same, @p first for none.
    /// A parenthesis closed too early has a line in the error text, too, whatever is returned.
    /// Either result may be null: it is then not given.
    bool get_first_subexpression(iterator first, iterator last, iterator* subexpression_start,
                                 iterator* op);
    /// Appends the prefix form of the range to the working string, its errors to the error text.
    /// Does not depend on the tokens' own list and changes none of them. Always true.
    bool parse_token_list(iterator first, iterator last);

    /// The tokens in the order of the input, valid as long as this object. The records belong to
    /// the list until parse_string frees them; one that the caller enters has to be made with
    /// `new`.
    MEM_LIST<BP_TOKEN*>& token_list();
    /// The string that tokenize_string reads and that parse_token_list appends to.
    STR& working_string() { return m_working_string; }
    /// Every diagnostic so far, one a line. Never emptied.
    STR const& error_text() const { return m_error_text; }

  private:
    /// The token list. Of tokens that were never in it the null entries are made when somebody can
    /// see them: a node for each costs more than rewriting it.
    class TokenList {
      public:
        /// The whole list; from now on it is complete at the end of every call.
        MEM_LIST<BP_TOKEN*>& show();
        // Of the records. Null entries that are still to come stand behind them.
        iterator begin() { return m_entries.begin(); }
        iterator end() { return m_entries.end(); }
        void append(BP_TOKEN* token);
        /// Frees the records, with so many null entries to come for tokens without one.
        void free_records(std::size_t pending);

      private:
        void append_pending();

        MEM_LIST<BP_TOKEN*> m_entries;
        std::size_t m_pending = 0;
        bool m_is_shown = false;
    };

    std::size_t rewrite_working_string();

    TokenList m_tokens;
    STR m_working_string;
    STR m_error_text;
};
