#pragma once
// Delimited text (tab, semicolon or comma) into an ImportTable. Fields may be quoted in the
// common CSV manner: a field that begins with '"' runs to the next lone '"' and may hold the
// delimiter and line ends; '""' inside it is one '"'. Lines may end in LF, CR LF or CR.

#include <optional>
#include <string>
#include <string_view>

#include "exchange/import_table.h"

namespace tarvika {

class Workspace;

// The delimiter the first line suggests: of tab, ";" and "," the one with the strictly
// largest count outside quotes; nullopt on a tie.
std::optional<char> PresetDelimiter(std::string_view text);

// True when the bytes are well-formed UTF-8 (ASCII included): text that is not is read as
// Windows-1250.
bool IsValidUtf8(std::string_view bytes);

// A text file as UTF-8: 16-bit text (known by its byte-order mark or by a 0 as the fourth
// byte) is decoded after telling the person; UTF-8 loses its byte-order mark; any other
// text is read as Windows-1250. UTF-8 and ASCII files are mapped, not copied.
class Utf8Text {
 public:
  // Throws ImportError when the file can't be read.
  Utf8Text(Workspace& ws, const std::string& path);
  ~Utf8Text();
  Utf8Text(const Utf8Text&) = delete;
  Utf8Text& operator=(const Utf8Text&) = delete;
  std::string_view view() const { return view_; }

 private:
  void* map_ = nullptr;
  std::size_t mapSize_ = 0;
  std::string converted_;
  std::string_view view_;
};

// Reads the records of text into the table: with headerRow the first one gives the names.
// Returns the number of cases: the records less the empty lines at the end. Throws
// ImportError for a quoted field that never ends.
int ReadDelimited(const Workspace& ws, std::string_view text, char delimiter, bool headerRow, ImportTable& table);

}  // namespace tarvika
