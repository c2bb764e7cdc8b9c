#include "lang/cp1250.h"

#include <array>
#include <cstdint>
#include <cstring>

#include "lang/utf8.h"

namespace tarvika {

namespace {

// The characters of the bytes 0x80 to 0xFF.
constexpr std::array<std::uint16_t, 128> kHighHalf = {
    0x20AC, 0x0081, 0x201A, 0x0083, 0x201E, 0x2026, 0x2020, 0x2021,
    0x0088, 0x2030, 0x0160, 0x2039, 0x015A, 0x0164, 0x017D, 0x0179,
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x0098, 0x2122, 0x0161, 0x203A, 0x015B, 0x0165, 0x017E, 0x017A,
    0x00A0, 0x02C7, 0x02D8, 0x0141, 0x00A4, 0x0104, 0x00A6, 0x00A7,
    0x00A8, 0x00A9, 0x015E, 0x00AB, 0x00AC, 0x00AD, 0x00AE, 0x017B,
    0x00B0, 0x00B1, 0x02DB, 0x0142, 0x00B4, 0x00B5, 0x00B6, 0x00B7,
    0x00B8, 0x0105, 0x015F, 0x00BB, 0x013D, 0x02DD, 0x013E, 0x017C,
    0x0154, 0x00C1, 0x00C2, 0x0102, 0x00C4, 0x0139, 0x0106, 0x00C7,
    0x010C, 0x00C9, 0x0118, 0x00CB, 0x011A, 0x00CD, 0x00CE, 0x010E,
    0x0110, 0x0143, 0x0147, 0x00D3, 0x00D4, 0x0150, 0x00D6, 0x00D7,
    0x0158, 0x016E, 0x00DA, 0x0170, 0x00DC, 0x00DD, 0x0162, 0x00DF,
    0x0155, 0x00E1, 0x00E2, 0x0103, 0x00E4, 0x013A, 0x0107, 0x00E7,
    0x010D, 0x00E9, 0x0119, 0x00EB, 0x011B, 0x00ED, 0x00EE, 0x010F,
    0x0111, 0x0144, 0x0148, 0x00F3, 0x00F4, 0x0151, 0x00F6, 0x00F7,
    0x0159, 0x016F, 0x00FA, 0x0171, 0x00FC, 0x00FD, 0x0163, 0x02D9,
};

// The byte of a character at or above 0x80; 0 when the code page has none.
unsigned char ByteOf(char32_t cp) {
  if (cp < 0x80 || cp > 0xFFFF) return 0;
  for (std::size_t i = 0; i < kHighHalf.size(); ++i) {
    if (kHighHalf[i] == cp) return static_cast<unsigned char>(0x80 + i);
  }
  return 0;
}

}  // namespace

bool IsAscii(std::string_view bytes) {
  std::uint64_t acc = 0;
  std::size_t i = 0;
  for (; i + 8 <= bytes.size(); i += 8) {
    std::uint64_t w;
    std::memcpy(&w, bytes.data() + i, 8);
    acc |= w;
  }
  for (; i < bytes.size(); ++i) acc |= static_cast<unsigned char>(bytes[i]);
  return (acc & 0x8080808080808080ULL) == 0;
}

void AppendCp1250AsUtf8(std::string_view bytes, std::string& out) {
  for (char ch : bytes) {
    auto b = static_cast<unsigned char>(ch);
    if (b < 0x80) {
      out.push_back(ch);
    } else {
      AppendUtf8(kHighHalf[b - 0x80], out);
    }
  }
}

std::string Cp1250ToUtf8(std::string_view bytes) {
  std::string out;
  out.reserve(bytes.size());
  AppendCp1250AsUtf8(bytes, out);
  return out;
}

std::size_t AppendUtf8AsCp1250(std::string_view text, std::string& out) {
  std::size_t replaced = 0;
  for (std::size_t i = 0; i < text.size();) {
    auto b = static_cast<unsigned char>(text[i]);
    if (b < 0x80) {
      out.push_back(text[i]);
      ++i;
      continue;
    }
    unsigned char byte = ByteOf(DecodeUtf8(text, i));
    if (byte == 0) {
      out.push_back('?');
      ++replaced;
    } else {
      out.push_back(static_cast<char>(byte));
    }
  }
  return replaced;
}

std::string Utf8ToCp1250(std::string_view text, std::size_t* unencodable) {
  std::string out;
  out.reserve(text.size());
  std::size_t n = AppendUtf8AsCp1250(text, out);
  if (unencodable != nullptr) *unencodable = n;
  return out;
}

}  // namespace tarvika
