#include "lang/utf8.h"

namespace tarvika {
namespace {

bool IsContinuation(unsigned char c) { return (c & 0xC0) == 0x80; }

}  // namespace

char32_t DecodeUtf8(std::string_view s, std::size_t& i) {
  unsigned char c = static_cast<unsigned char>(s[i]);
  int extra = c >= 0xF0 ? 3 : c >= 0xE0 ? 2 : c >= 0xC0 ? 1 : 0;
  if (extra == 0 || i + extra >= s.size()) {
    ++i;
    return c;
  }
  char32_t cp = c & (0x3F >> extra);
  for (int k = 1; k <= extra; ++k) {
    unsigned char cc = static_cast<unsigned char>(s[i + k]);
    if (!IsContinuation(cc)) {
      ++i;
      return c;
    }
    cp = (cp << 6) | (cc & 0x3F);
  }
  i += extra + 1;
  return cp;
}

void AppendUtf8(char32_t cp, std::string& out) {
  if (cp < 0x80) {
    out.push_back(static_cast<char>(cp));
  } else if (cp < 0x800) {
    out.push_back(static_cast<char>(0xC0 | (cp >> 6)));
    out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
  } else if (cp < 0x10000) {
    out.push_back(static_cast<char>(0xE0 | (cp >> 12)));
    out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
  } else {
    out.push_back(static_cast<char>(0xF0 | (cp >> 18)));
    out.push_back(static_cast<char>(0x80 | ((cp >> 12) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
  }
}

namespace {

char32_t FoldCodePoint(char32_t cp) {
  if (cp >= 'A' && cp <= 'Z') return cp + 32;
  if (cp >= 0xC0 && cp <= 0xDE && cp != 0xD7) return cp + 32;  // Latin-1 capitals
  if (cp >= 0x100 && cp <= 0x137 && cp % 2 == 0) return cp + 1;  // Latin Extended-A, even capitals
  if (cp >= 0x139 && cp <= 0x148 && cp % 2 == 1) return cp + 1;
  if (cp >= 0x14A && cp <= 0x177 && cp % 2 == 0) return cp + 1;
  if (cp == 0x179 || cp == 0x17B || cp == 0x17D) return cp + 1;
  return cp;
}

}  // namespace

std::size_t Utf8Length(std::string_view s) {
  std::size_t n = 0;
  for (std::size_t i = 0; i < s.size();) {
    DecodeUtf8(s, i);
    ++n;
  }
  return n;
}

std::string_view Utf8Prefix(std::string_view s, std::size_t n) {
  std::size_t i = 0;
  for (std::size_t k = 0; k < n && i < s.size(); ++k) DecodeUtf8(s, i);
  return s.substr(0, i);
}

std::string PadRight(std::string_view s, std::size_t n) {
  std::string out(s);
  std::size_t len = Utf8Length(s);
  if (len < n) out.append(n - len, ' ');
  return out;
}

std::string FoldCase(std::string_view s) {
  std::string out;
  out.reserve(s.size());
  for (std::size_t i = 0; i < s.size();) {
    std::size_t start = i;
    char32_t cp = DecodeUtf8(s, i);
    char32_t folded = FoldCodePoint(cp);
    if (folded == cp) {
      out.append(s.substr(start, i - start));
    } else {
      AppendUtf8(folded, out);
    }
  }
  return out;
}

bool EqualIgnoringCase(std::string_view a, std::string_view b) { return FoldCase(a) == FoldCase(b); }

}  // namespace tarvika
