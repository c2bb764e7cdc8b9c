#include "exchange/text_import.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>

#include "lang/cp1250.h"
#include "lang/utf8.h"
#include "workspace/workspace.h"

namespace tarvika {

namespace {

std::string Utf16ToUtf8(std::string_view bytes, bool bigEndian) {
  std::string out;
  out.reserve(bytes.size() / 2);
  auto unit = [&](std::size_t i) -> char32_t {
    const auto a = static_cast<unsigned char>(bytes[i]), b = static_cast<unsigned char>(bytes[i + 1]);
    return bigEndian ? (a << 8 | b) : (b << 8 | a);
  };
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    char32_t cp = unit(i);
    if (cp >= 0xD800 && cp < 0xDC00 && i + 3 < bytes.size()) {
      const char32_t low = unit(i + 2);
      if (low >= 0xDC00 && low < 0xE000) {
        cp = 0x10000 + ((cp - 0xD800) << 10) + (low - 0xDC00);
        i += 2;
      }
    }
    AppendUtf8(cp, out);
  }
  return out;
}

bool StartsWith(std::string_view s, std::string_view prefix) { return s.substr(0, prefix.size()) == prefix; }

}  // namespace

bool IsValidUtf8(std::string_view s) {
  std::size_t i = 0;
  const std::size_t n = s.size();
  while (i < n) {
    // Eight bytes of ASCII at a time: most files are all ASCII.
    std::uint64_t w;
    if (i + 8 <= n && (std::memcpy(&w, s.data() + i, 8), (w & 0x8080808080808080ULL) == 0)) {
      i += 8;
      continue;
    }
    const auto b = static_cast<unsigned char>(s[i]);
    if (b < 0x80) {
      ++i;
      continue;
    }
    std::size_t len = b >= 0xF0 && b < 0xF5 ? 4 : b >= 0xE0 ? 3 : b >= 0xC2 && b < 0xE0 ? 2 : 0;
    if (len == 0 || i + len > n) return false;
    for (std::size_t k = 1; k < len; ++k) {
      if ((static_cast<unsigned char>(s[i + k]) & 0xC0) != 0x80) return false;
    }
    i += len;
  }
  return true;
}

Utf8Text::Utf8Text(Workspace& ws, const std::string& path) {
  const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  struct stat st {};
  if (fd < 0 || ::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode)) {
    const std::string reason = fd < 0 ? std::strerror(errno) : ws.Text("not a file", "nem fájl").data();
    if (fd >= 0) ::close(fd);
    throw ImportError{fmt::format("{}: {}", path, reason)};
  }
  mapSize_ = static_cast<std::size_t>(st.st_size);
  if (mapSize_ > 0) {
    map_ = ::mmap(nullptr, mapSize_, PROT_READ, MAP_PRIVATE | MAP_POPULATE, fd, 0);
    if (map_ == MAP_FAILED) {
      map_ = nullptr;
      const std::string reason = std::strerror(errno);
      ::close(fd);
      throw ImportError{fmt::format("{}: {}", path, reason)};
    }
    ::madvise(map_, mapSize_, MADV_SEQUENTIAL);
  }
  ::close(fd);
  std::string_view bytes(static_cast<const char*>(map_), mapSize_);
  const bool littleBom = StartsWith(bytes, "\xFF\xFE"), bigBom = StartsWith(bytes, "\xFE\xFF");
  if (littleBom || bigBom || (bytes.size() >= 4 && bytes[3] == '\0')) {
    ws.user.Tell(ws.Text("This is a unicode text file.\r\nNow we try to decode all lines.\r\nDo not use this file type in the future.",
                         "Ez egy unicode formátumú szövegfájl.\r\nMost megpróbáljuk átkódolni a sorokat.\r\nA jövőben kerülje ezt a fájl formátumot!"));
    const bool big = bigBom || (!littleBom && bytes[0] == '\0');
    converted_ = Utf16ToUtf8(bytes.substr(littleBom || bigBom ? 2 : 0), big);
    view_ = converted_;
    return;
  }
  if (StartsWith(bytes, "\xEF\xBB\xBF")) bytes.remove_prefix(3);
  if (IsValidUtf8(bytes)) {
    view_ = bytes;
  } else {
    converted_ = Cp1250ToUtf8(bytes);
    view_ = converted_;
  }
}

Utf8Text::~Utf8Text() {
  if (map_ != nullptr) ::munmap(map_, mapSize_);
}

std::optional<char> PresetDelimiter(std::string_view text) {
  int tabs = 0, semicolons = 0, commas = 0;
  bool quoted = false;
  for (char c : text) {
    if (c == '"') quoted = !quoted;
    if (quoted) continue;
    if (c == '\r' || c == '\n') break;
    tabs += c == '\t';
    semicolons += c == ';';
    commas += c == ',';
  }
  if (tabs > semicolons && tabs > commas) return '\t';
  if (semicolons > tabs && semicolons > commas) return ';';
  if (commas > tabs && commas > semicolons) return ',';
  return std::nullopt;
}

int ReadDelimited(const Workspace& ws, std::string_view text, char delimiter, bool headerRow, ImportTable& table) {
  const char* p = text.data();
  const char* const end = p + text.size();
  int record = 0;      // records begun, counting the header
  int line = 1;        // for messages
  int lastFilled = -1; // the last record that was not an empty line
  std::string quoted;
  // Bytes that end an unquoted field (1), and a tab that doesn't (2): a cell can't hold it.
  unsigned char stops[256] = {};
  stops[static_cast<unsigned char>('\t')] = 2;
  stops[static_cast<unsigned char>(delimiter)] = stops[static_cast<unsigned char>('\r')] =
      stops[static_cast<unsigned char>('\n')] = 1;
  // Most files hold no tab but as delimiter: then no unquoted field needs the check.
  const bool tabsInFields = delimiter != '\t' && text.find('\t') != std::string_view::npos;

  // Each line end begins at most one record: room for them all at once.
  std::size_t lineEnds = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
  if (lineEnds == 0) lineEnds = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\r'));
  table.ReserveRows(static_cast<int>(std::min<std::size_t>(lineEnds + 1, kMaxCases + 1)));

  auto put = [&](int c, std::string_view field, bool mayHoldBreaks) {
    if (headerRow && record == 0) {
      table.Variable(c).name.assign(field);
    } else {
      table.SetText(c, record - (headerRow ? 1 : 0), field, mayHoldBreaks);
    }
  };

  while (p < end) {
    int c = 0;
    bool emptyLine = true;
    for (;;) {
      std::string_view field;
      if (*p == '"') {
        const int startLine = line;
        quoted.clear();
        ++p;
        for (;;) {
          if (p == end) {
            throw ImportError{fmt::format(fmt::runtime(ws.Text("A quoted field that begins on line {} never ends.",
                                                               "A(z) {}. sorban kezdődő idézőjeles mező nem ér véget.")),
                                          startLine)};
          }
          if (*p == '"') {
            if (p + 1 < end && p[1] == '"') {
              quoted.push_back('"');
              p += 2;
              continue;
            }
            ++p;
            break;
          }
          if (*p == '\n' || (*p == '\r' && (p + 1 == end || p[1] != '\n'))) ++line;
          quoted.push_back(*p++);
        }
        // Whatever stands between the closing quote and the delimiter belongs to the field.
        while (p < end && stops[static_cast<unsigned char>(*p)] != 1) quoted.push_back(*p++);
        field = quoted;
        emptyLine = false;
        put(c, field, true);
      } else {
        const char* b = p;
        unsigned char seen = 0;
        if (tabsInFields) {
          while (p < end && stops[static_cast<unsigned char>(*p)] != 1) seen |= stops[static_cast<unsigned char>(*p++)];
        } else {
          while (p < end && stops[static_cast<unsigned char>(*p)] != 1) ++p;
        }
        field = std::string_view(b, static_cast<std::size_t>(p - b));
        if (!field.empty()) emptyLine = false;
        put(c, field, seen != 0);
      }
      ++c;
      if (p < end && *p == delimiter) {
        emptyLine = false;
        ++p;
        if (p == end) {
          put(c, {}, false);
          break;
        }
        continue;
      }
      break;
    }
    table.EnsureColumns(c);
    if (p < end) {
      if (*p == '\r' && p + 1 < end && p[1] == '\n') ++p;
      ++p;
      ++line;
    }
    if (!emptyLine) lastFilled = record;
    if (lastFilled - (headerRow ? 1 : 0) >= kMaxCases) {
      throw ImportError{fmt::format(fmt::runtime(ws.Text("The file has more than {0} cases; a project can hold at most {0}.",
                                                         "A fájlban több mint {0} eset van; egy projekt legfeljebb {0} esetet tartalmazhat.")),
                                    kMaxCases)};
    }
    ++record;
    if (record % 1000 == 0) ws.ShowProgress(fmt::format("{}{}", ws.Text("Case: ", "Eset: "), record));
  }
  const int records = lastFilled + 1;
  return std::max(0, records - (headerRow ? 1 : 0));
}

}  // namespace tarvika
