#pragma once
// Windows-1250 (Central European) on disk, UTF-8 in memory.
//
// Every byte of Windows-1250 has a character: the five bytes the code page leaves unused
// (0x81, 0x83, 0x88, 0x90, 0x98) read as the control characters of the same number, so
// that reading and writing a file gives back its bytes.

#include <cstddef>
#include <string>
#include <string_view>

namespace tarvika {

// True when every byte is below 0x80: such text is the same in both encodings.
bool IsAscii(std::string_view bytes);

// Appends the Windows-1250 bytes to out as UTF-8.
void AppendCp1250AsUtf8(std::string_view bytes, std::string& out);
std::string Cp1250ToUtf8(std::string_view bytes);

// Appends the UTF-8 text to out as Windows-1250. A character the code page cannot hold (and
// a byte that is not valid UTF-8) is written as "?". Returns how many were so replaced.
std::size_t AppendUtf8AsCp1250(std::string_view text, std::string& out);

// The Windows-1250 form of text; unencodable, when given, receives the number of
// characters written as "?".
std::string Utf8ToCp1250(std::string_view text, std::size_t* unencodable = nullptr);

}  // namespace tarvika
