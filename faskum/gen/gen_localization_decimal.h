#pragma once

/// Reads the short decimal numbers that make up nearly all number texts of the suite, rounded
/// exactly as strtod rounds them, at a fraction of its cost.
///
/// Reads blanks, a sign, at most 19 digits with or without @p point among them, and an exponent
/// that leaves a power of ten of at most 27 either way. Stores the number and returns the end of
/// its text. Everything else gives null with nothing stored, and is strtod's to judge: longer
/// numbers, hexadecimal ones, words, no number at all, and the few that lie too close to the middle
/// between two doubles to be told apart here.
char const* read_short_decimal(char const* text, char point, double* number);
