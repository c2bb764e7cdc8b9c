#pragma once
// Character-level helpers for the UTF-8 text that the tables hold in memory.
// Limits such as "8 characters" count characters, not bytes.

#include <cstddef>
#include <string>
#include <string_view>

namespace tarvika {

// Decodes the character at s[i] and moves i past it. A byte that starts no valid sequence
// decodes as the character of its own number.
char32_t DecodeUtf8(std::string_view s, std::size_t& i);

// Appends the UTF-8 form of the character.
void AppendUtf8(char32_t cp, std::string& out);

// Number of characters (code points) in s. A stray byte counts as one character.
std::size_t Utf8Length(std::string_view s);

// The first n characters of s.
std::string_view Utf8Prefix(std::string_view s, std::size_t n);

// s padded with blanks at the end to n characters; longer text is returned whole.
std::string PadRight(std::string_view s, std::size_t n);

// Lower-case form for comparisons that ignore case: ASCII and the Latin letters of
// Central European text (Á É Í Ó Ö Ő Ú Ü Ű and their kin).
std::string FoldCase(std::string_view s);

bool EqualIgnoringCase(std::string_view a, std::string_view b);

}  // namespace tarvika
