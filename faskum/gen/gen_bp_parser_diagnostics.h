#pragma once

/// Every diagnostic that the error text can have.

inline constexpr char const* bp_unmatched = "Parse Error: Unmatched parenthesis in equation\n";
inline constexpr char const* bp_no_subexpression =
    "Parse Error: No subexpression within parentheses\n";
inline constexpr char const* bp_bad_symbols =
    "Parse Error: Bad symbol(s) after terminal in equation\n";
inline constexpr char const* bp_bad_term = "Parse Error: Bad term in equation\n";
inline constexpr char const* bp_unbalanced = "Unbalanced parenthesis\n";
inline constexpr char const* bp_too_many_closed = "Unbalanced number of right parenthesis\n";
inline constexpr char const* bp_no_left_side = "Missing left hand side of equation\n";
inline constexpr char const* bp_no_right_side = "Missing right hand side of equation\n";
inline constexpr char const* bp_misused_time = "Illegal use of time\n";
