#include "workspace/project_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <optional>
#include <utility>

#include "lang/cp1250.h"
#include "lang/input_file.h"
#include "lang/two_threads.h"
#include "lang/utf8.h"
#include "workspace/declarations.h"
#include "workspace/numbers.h"
#include "workspace/text_files.h"
#include "workspace/workspace.h"

namespace tarvika {

namespace {

constexpr std::string_view kMagic = "<Tarvika_for_windows>";
constexpr std::string_view kOldMagic = "<selvoran_for_windows>";
constexpr std::string_view kVersion = "2.0";

// Raised inside the readers for a file that ends too soon, a blank header line or an
// unreadable number; the load keeps what it read so far.
struct DamagedFile {};

// Raised for counts that no workspace takes (no case, too many variables, ...): the load
// is refused with this message, before the tables change when the counts come first.
struct CountsRefused {
  std::string message;
};

// The next line as UTF-8; throws at the end of the file and on a blank line, which a
// header can't have.
void NextHeaderLine(InputFile& in, std::string& line) {
  if (!in.Next(line, FileEncoding::Windows1250) || line.empty()) throw DamagedFile{};
}

// ---------------------------------------------------------------------------------------
// Header lines "key=value;"

void ReplaceSeparators(std::string& s, char sep) {
  for (char& c : s) {
    if (c == ',' || c == '.') c = sep;
  }
}

int WholeValue(std::string_view value, long long lo, long long hi) {
  auto v = ParseWholeNumber(value);
  if (!v || *v < lo || *v > hi) throw DamagedFile{};
  return static_cast<int>(*v);
}

// A count of "<variables>" or "<cases>": a negative or unreadable one is damage, zero or
// one beyond the workspace's limit is refused with a message that says so.
int CountValue(const Workspace& ws, std::string_view value, long long limit, bool cases) {
  auto v = ParseWholeNumber(value);
  if (!v || *v < 0) throw DamagedFile{};
  if (*v == 0) {
    throw CountsRefused{std::string(cases ? ws.Text("The project has no case; a project has at least one.",
                                                    "A projektben nincs eset; egy projektben legalább egy eset van.")
                                          : ws.Text("The project has no variable; a project has at least one.",
                                                    "A projektben nincs változó; egy projektben legalább egy változó van."))};
  }
  if (*v > limit) {
    throw CountsRefused{fmt::format(
        fmt::runtime(cases ? ws.Text("The project has {} cases; a project can hold at most {}.",
                                     "A projektben {} eset van; egy projekt legfeljebb {} esetet tartalmazhat.")
                           : ws.Text("The project has {} variables; a project can hold at most {}.",
                                     "A projektben {} változó van; egy projekt legfeljebb {} változót tartalmazhat.")),
        *v, limit)};
  }
  return static_cast<int>(*v);
}

// The tables a reader fills: the workspace's, or the merge window's own.
struct Tables {
  DataMatrix& data;
  VariableTable& vars;
  std::vector<char> numeric;  // per column of the data table: the type is numeric
  // No file holds more cases than it has bytes (each needs its line end): the table is
  // never made taller than that, whatever the header claims.
  long long caseBound = kMaxCases;
  int pendingVariables = 0;  // "<variables>" read and not yet applied to the tables
  bool touched = false;      // the tables have changed
  // How far the reading came, for the message about a damaged file.
  int declaredVariables = -1, declaredCases = -1;
  int lastVariable = 0;
  bool headerRead = false;
  int casesRead = 0;
};

// "<variables>" takes effect when the header first needs the tables, so that counts that
// are refused leave them as they were.
void ApplyVariables(Tables& t) {
  if (t.pendingVariables == 0) return;
  const int n = t.pendingVariables;
  t.pendingVariables = 0;
  int rows = t.declaredCases >= 0 ? std::max(t.data.RowCount(), 1) : 1;
  t.data.Resize(0, 0);
  t.data.Resize(n + 1, rows);
  t.vars.SetRowCount(1);
  t.vars.SetRowCount(n + 1);
  for (int i = 1; i <= n; ++i) t.vars.SetCell(kIndex, i, std::to_string(i));
  t.numeric.assign(n + 1, 0);
  t.touched = true;
}

// Appends one label line to the label text. The continuation form "=more;" adds to the
// label before it: "1=a;/" and "=b;" give "1=a,b;/".
void AddLabelLine(std::string& labels, std::string_view line, bool continuation, char sep) {
  if (continuation && line.front() == '=') {
    if (!labels.empty() && labels.back() == '/') labels.pop_back();
    if (!labels.empty() && labels.back() == ';') labels.back() = ',';
    labels.append(ValueOf(line));
    labels.append(";/");
    return;
  }
  std::string key = KeyOf(line);
  ReplaceSeparators(key, sep);
  labels.append(key);
  labels.push_back('=');
  labels.append(ValueOf(line));
  labels.append(";/");
}

// Reads the header up to "<datamatrix>" into the tables. Unknown keys are skipped.
void ReadHeader(InputFile& in, Tables& t, const Workspace& ws, bool continuation) {
  const char sep = ws.decimalSeparator;
  std::string line;
  bool pending = false;  // the line that ended a label list is still to be handled
  int v = 1;
  for (;;) {
    if (!pending) NextHeaderLine(in, line);
    pending = false;
    const std::string key = KeyOf(line);
    const std::string_view value = ValueOf(line);
    if (key == "<variables>") {
      t.declaredVariables = t.pendingVariables = CountValue(ws, value, kMaxVariables, false);
      continue;
    }
    if (key == "<cases>") {
      int m = CountValue(ws, value, kMaxCases, true);
      ApplyVariables(t);
      t.declaredCases = m;
      t.data.SetRowCount(1);
      t.data.SetRowCount(static_cast<int>(std::min<long long>(m, t.caseBound)) + 1, ws.workThreads);
      t.touched = true;
      ws.ShowProgress(fmt::format("{}{}{}", ws.Text(". . . loading (", ". . . betöltés ("), m,
                                  ws.Text(" case)", " eset)")));
      continue;
    }
    if (key == "#") {
      v = WholeValue(value, -1000000000, 1000000000);
      if (v > t.lastVariable && v <= std::max(t.declaredVariables, 0)) t.lastVariable = v;
      continue;
    }
    const bool known = key == "<name>" || key == "<longname>" || line.front() == '$' || key == "<labels>" ||
                       key == "<assign>" || key == "<missing>" || key == "<help>" || key == "<datamatrix>";
    if (!known) continue;
    ApplyVariables(t);
    t.touched = true;
    if (key == "<name>") {
      t.vars.SetCell(kShortName, v, value);
      t.data.SetCell(v, 0, value);
    } else if (key == "<longname>") {
      t.vars.SetCell(kLongName, v, value);
    } else if (line.front() == '$') {
      std::string type = line.substr(1);
      ReplaceSeparators(type, sep);
      t.vars.SetCell(kType, v, type);
      if (v >= 0 && v < static_cast<int>(t.numeric.size())) t.numeric[v] = line.compare(1, 3, "num") == 0;
    } else if (key == "<labels>") {
      std::string labels;
      for (;;) {
        NextHeaderLine(in, line);
        if (line.front() == '#' || line.front() == '<') break;
        AddLabelLine(labels, line, continuation, sep);
      }
      t.vars.SetCell(kGroupLabels, v, labels);
      pending = true;
    } else if (key == "<assign>") {
      t.vars.SetCell(kGroupType, v, value);
    } else if (key == "<missing>") {
      t.vars.SetCell(kMissing, v, value);
    } else if (key == "<help>") {
      t.vars.SetCell(kHelp, v, value);
    } else {
      t.numeric.resize(std::max<std::size_t>(t.numeric.size(), t.data.ColCount()), 0);
      t.headerRead = true;
      return;
    }
  }
}

// A file that can't be opened, or whose first line can't be read, with the reason.
void TellUnreadable(Workspace& ws, const std::string& path, const InputFile& file) {
  std::string_view what = file.IsOpen() ? ws.Text("The file cannot be read: ", "A fájl nem olvasható: ")
                                        : ws.Text("The file cannot be opened: ", "A fájl nem nyitható meg: ");
  ws.user.TellAs(MessageKind::Error, fmt::format("{}{}\r\n{}", what, path, file.Error()));
}

// The first line's key is one of the two magics.
bool HasMagic(InputFile& in) {
  std::string line;
  if (!in.Next(line, FileEncoding::Windows1250)) return false;
  std::string key = KeyOf(line);
  return key == kMagic || key == kOldMagic;
}

// Raised when the first line is not the magic.
struct NotAProjectFile {};

// A project is a regular file that begins with a short line. A device, or a big file with no
// line end near its start, is no project and is not read whole in search of one. Sets the
// bound of the number of cases by the file's size.
bool LooksLikeText(int fd, long long& caseBound) {
  struct stat st;
  if (::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode)) return false;
  caseBound = std::min<long long>(kMaxCases, st.st_size);
  char head[4096];
  ssize_t got = ::pread(fd, head, sizeof head, 0);
  if (got < 0) return false;
  if (static_cast<std::size_t>(got) < sizeof head) return true;
  return std::memchr(head, '\n', sizeof head) != nullptr || std::memchr(head, '\r', sizeof head) != nullptr;
}

// ---------------------------------------------------------------------------------------
// Data rows

// The text of case number r, written into buf.
std::string_view CaseNumberText(int r, char (&buf)[16]) {
  auto res = std::to_chars(buf, buf + sizeof buf, r);
  return std::string_view(buf, static_cast<std::size_t>(res.ptr - buf));
}

void SetCaseNumber(DataMatrix& data, int r) {
  char buf[16];
  data.SetCell(0, r, CaseNumberText(r, buf));
}

// The status line at every 1000th case of the rows [from, to).
void ShowRowProgress(const Workspace& ws, int from, int to, int m) {
  if (!ws.hooks.progress) return;
  for (int r = (from + 999) / 1000 * 1000; r < to; r += 1000) {
    ws.ShowProgress(fmt::format("{}{} / {}", ws.Text("Loading cases: ", "Esetek betöltése: "), r, m));
  }
}

// The first tab in [p, e), or e. Eight bytes at a time while they are there: most fields
// are shorter, and a byte loop would guess their ends wrong.
inline const char* FindTab(const char* p, const char* e) {
  constexpr std::uint64_t kOnes = 0x0101010101010101ULL;
  constexpr std::uint64_t kHighs = 0x8080808080808080ULL;
  while (e - p >= 8) {
    std::uint64_t w;
    std::memcpy(&w, p, 8);
    std::uint64_t x = w ^ (kOnes * '\t');
    std::uint64_t hit = (x - kOnes) & ~x & kHighs;
    if (hit != 0) return p + (__builtin_ctzll(hit) >> 3);
    p += 8;
  }
  while (p != e && *p != '\t') ++p;
  return p;
}

// The separator of a clean number: its "." or ",", or none.
const char* SeparatorOf(std::string_view number) {
  for (const char& c : number) {
    if (c == '.' || c == ',') return &c;
  }
  return nullptr;
}

// Cuts data lines into cells, one row at a time. A load runs two of these on the two
// halves of a batch of lines. The field is carried over from column to column and from row
// to row: a row that runs out of tabs repeats its last cut field up to the column before
// the last, and the last column takes what is left; so a row depends on the row before
// only when it has no tab at all, and a batch is split only before a row with a tab.
class RowCutter {
 public:
  RowCutter(DataMatrix& data, const std::vector<char>& numeric, char sep)
      : data_(data), numeric_(numeric), n_(data.NumberOfVariables()), sep_(sep) {}

  // The field the next row starts from: the last one of the row before.
  std::string_view field;

  void Row(int r, std::string_view raw) {
    NumberRow(r);
    std::string_view line = raw;
    if (!IsAscii(raw)) {
      converted_.clear();
      AppendCp1250AsUtf8(raw, converted_);
      line = converted_;
    }
    const char* p = line.data();
    const char* const e = p + line.size();
    for (int c = 1; c <= n_; ++c) {
      const char* tab = FindTab(p, e);
      bool cut = true;
      if (c == n_) {
        field = std::string_view(p, static_cast<std::size_t>(tab - p));
      } else if (tab != e) {
        field = std::string_view(p, static_cast<std::size_t>(tab - p));
        p = tab + 1;
        if (field.size() == 1 && field[0] == ' ') field = {};
      } else {
        cut = false;  // the row ended too soon: keep the field
      }
      if (cut && numeric_[c] && !field.empty()) {
        const char* s = SeparatorOf(field);
        const std::size_t clean = s == nullptr || *s == sep_ ? CleanPrefixLength(field) : std::string_view::npos;
        if (clean != std::string_view::npos) {
          field = std::string_view(field.data(), clean);  // trailing decimal zeros dropped in place
        } else {
          changed_.assign(field);
          CleanNumericField(changed_, sep_);
          field = changed_;
        }
      }
      Set(c, r, field);
    }
  }

  // Stores the long texts kept back, in the order of their rows.
  void StoreLongCells() {
    for (const LongCell& cell : long_) data_.SetCell(cell.c, cell.r, std::string_view(longText_).substr(cell.at, cell.size));
    long_.clear();
    longText_.clear();
  }

  // After the batch's lines go: the field to carry, copied out of them.
  void KeepField(std::string& keep) {
    keep.assign(field);
    field = keep;
  }

 private:
  // A long text goes into its column's arena, which takes one writer at a time: it waits
  // until the batch is cut.
  struct LongCell {
    int c, r;
    std::size_t at, size;
  };

  void Set(int c, int r, std::string_view text) {
    if (data_.SetShortCell(c, r, text)) return;
    long_.push_back({c, r, longText_.size(), text.size()});
    longText_.append(text);
  }

  void NumberRow(int r) {
    char buf[16];
    Set(0, r, CaseNumberText(r, buf));
  }

  DataMatrix& data_;
  const std::vector<char>& numeric_;
  const int n_;
  const char sep_;
  std::string changed_;    // a cleaned number that differs from its text
  std::string converted_;   // a line in UTF-8
  std::vector<LongCell> long_;
  std::string longText_;
};

// The row of a batch where a second cutter may start: the first at or after the middle
// with a tab (or any, with one variable); 0 when there is none.
std::size_t SplitPoint(const std::vector<std::string_view>& lines, int n) {
  for (std::size_t k = lines.size() / 2; k > 0 && k < lines.size(); ++k) {
    if (n == 1 || lines[k].find('\t') != std::string_view::npos) return k;
  }
  return 0;
}

// Reads the m data lines into the workspace, a batch of lines at a time; each batch is cut
// by two threads when the workspace allows it, with the same cells as one would give. (A
// third thread reading the next batch meanwhile was slower on two cores.)
void ReadRows(InputFile& in, Workspace& ws, Tables& t) {
  constexpr std::size_t kBatchRows = 16384;
  constexpr std::size_t kSplitRows = 2048;  // fewer rows are not worth a thread
  DataMatrix& data = ws.data;
  const int m = data.NumberOfCases();
  RowCutter first(data, t.numeric, ws.decimalSeparator), second(data, t.numeric, ws.decimalSeparator);
  std::string batch, carried;
  std::vector<std::size_t> ends;
  std::vector<std::string_view> lines;
  std::string_view raw;
  bool ended = false;
  for (int r0 = 1; r0 <= m && !ended;) {
    batch.clear();
    ends.clear();
    const std::size_t wanted = std::min<std::size_t>(kBatchRows, static_cast<std::size_t>(m - r0 + 1));
    while (ends.size() < wanted) {
      if (!in.NextRaw(raw)) {
        ended = true;
        break;
      }
      batch.append(raw);
      ends.push_back(batch.size());
    }
    ShowRowProgress(ws, r0, r0 + static_cast<int>(ends.size()), m);
    lines.clear();
    for (std::size_t k = 0, begin = 0; k < ends.size(); begin = ends[k++]) {
      lines.emplace_back(batch.data() + begin, ends[k] - begin);
    }
    const std::size_t split = ws.workThreads > 1 && lines.size() >= kSplitRows ? SplitPoint(lines, data.NumberOfVariables()) : 0;
    auto cut = [&lines, r0](RowCutter& cutter, std::size_t from, std::size_t to) {
      for (std::size_t k = from; k < to; ++k) cutter.Row(r0 + static_cast<int>(k), lines[k]);
    };
    const std::size_t firstEnd = split > 0 ? split : lines.size();
    RunOnTwoThreads(split > 0, [&] { cut(second, firstEnd, lines.size()); }, [&] { cut(first, 0, firstEnd); });
    first.StoreLongCells();
    second.StoreLongCells();
    r0 += static_cast<int>(lines.size());
    t.casesRead = r0 - 1;
    (split > 0 ? second : first).KeepField(carried);  // the lines are about to go
    first.field = carried;
  }
  if (ended) throw DamagedFile{};
  if (t.declaredCases > m) throw DamagedFile{};  // more cases claimed than the file can hold
}

// The merge reader's data: a stream of fields that end at a tab or a line end.
bool ReadMergeRows(InputFile& in, Tables& t, char sep) {
  const int n = t.data.NumberOfVariables();
  const int m = t.data.NumberOfCases();
  std::string field;
  std::string line;
  std::string_view rest;
  bool needLine = true;
  for (int r = 1; r <= m; ++r) {
    SetCaseNumber(t.data, r);
    for (int c = 1; c <= n; ++c) {
      if (needLine) {
        if (!in.Next(line, FileEncoding::Windows1250)) return false;
        rest = line;
        needLine = false;
      }
      std::size_t tab = rest.find('\t');
      if (tab == std::string_view::npos) {
        field.assign(rest);
        needLine = true;
      } else {
        field.assign(rest.substr(0, tab));
        rest.remove_prefix(tab + 1);
      }
      if (field == " ") field.clear();
      if (t.numeric[c]) {
        ReplaceSeparators(field, sep);
        CleanNumericField(field, sep);
      }
      t.data.SetCell(c, r, field);
    }
  }
  return true;
}

// ---------------------------------------------------------------------------------------
// Writing files

void TellWriteFailure(Workspace& ws, const std::string& path, const std::string& error) {
  ws.user.TellAs(MessageKind::Error,
                 fmt::format("{}{}\r\n{}", ws.Text("The file cannot be written: ", "A fájl nem írható: "), path, error));
}

std::string ProgramFile(const Workspace& ws, std::string_view name) {
  return (std::filesystem::path(ws.programFolder) / name).string();
}

std::string_view EnglishGroupType(std::string_view word) {
  switch (GroupKindOf(word)) {
    case GroupKind::None:
      return "none";
    case GroupKind::Codes:
      return "codes";
    case GroupKind::Intervals:
      return "intervals";
    case GroupKind::Unknown:
      break;
  }
  return word;
}

// The help text on one line: each line end (CR LF, CR or LF) becomes a backslash.
std::string HelpOnOneLine(std::string_view help) {
  std::string out;
  for (std::size_t i = 0; i < help.size(); ++i) {
    if (help[i] == '\r') {
      out.push_back('\\');
      if (i + 1 < help.size() && help[i + 1] == '\n') ++i;
    } else if (help[i] == '\n') {
      out.push_back('\\');
    } else {
      out.push_back(help[i]);
    }
  }
  return out;
}

// Builds the file's bytes in blocks and remembers the cells whose characters had to be
// replaced.
class ProjectWriter {
 public:
  ProjectWriter(Workspace& ws, AtomicFile& out) : ws_(ws), out_(out) { buf_.reserve(kFlush + 4096); }

  // A header line: the parts, then CR LF. where names the cell for the message.
  bool Line(std::string_view head, std::string_view value, std::string_view tail,
            std::string_view where = {}) {
    buf_.append(head);
    Text(value, where);
    buf_.append(tail);
    buf_.append("\r\n");
    return Flush(false);
  }

  void Text(std::string_view text, std::string_view where) {
    if (IsAscii(text)) {
      buf_.append(text);
    } else if (AppendUtf8AsCp1250(text, buf_) > 0) {
      Note(where);
    }
  }

  void Cell(std::string_view text, int c, int r) {
    if (IsAscii(text)) {
      buf_.append(text);
    } else if (AppendUtf8AsCp1250(text, buf_) > 0) {
      Note(fmt::format("{}, {}", ws_.data.GetCell(c, 0),
                       fmt::format(fmt::runtime(ws_.Text("case {}", "{}. eset")), r)));
    }
  }

  void Raw(std::string_view bytes) { buf_.append(bytes); }

  bool Flush(bool all) {
    if (buf_.size() < kFlush && !all) return true;
    bool ok = out_.Write(buf_);
    buf_.clear();
    return ok;
  }

  const std::vector<std::string>& replaced() const { return replaced_; }
  std::size_t replacedCount() const { return replacedCount_; }

 private:
  static constexpr std::size_t kFlush = 1 << 20;
  static constexpr std::size_t kListed = 20;

  void Note(std::string_view where) {
    if (replaced_.size() < kListed) replaced_.emplace_back(where);
    ++replacedCount_;
  }

  Workspace& ws_;
  AtomicFile& out_;
  std::string buf_;
  std::vector<std::string> replaced_;
  std::size_t replacedCount_ = 0;
};

bool WriteProject(Workspace& ws, ProjectWriter& w) {
  const DataMatrix& data = ws.data;
  const VariableTable& vars = ws.vars;
  const int n = data.NumberOfVariables();
  const int m = data.NumberOfCases();
  w.Line(kMagic, "=", std::string(kVersion) + ";");
  w.Line("<variables>=", std::to_string(n), ";");
  w.Line("<cases>=", std::to_string(m), ";");
  for (int i = 1; i <= n; ++i) {
    std::string name(vars.GetCell(kShortName, i));
    auto where = [&](std::string_view key) { return fmt::format("{}: {}", name, key); };
    w.Line("#=", std::to_string(i), ";");
    w.Line("<name>=", name, ";", where("<name>"));
    w.Line("<longname>=", vars.GetCell(kLongName, i), ";", where("<longname>"));
    std::string type(vars.GetCell(kType, i));
    if (type.empty() || type.back() != ';') type.push_back(';');
    w.Line("$", type, "", where("$"));
    w.Line("<assign>=", EnglishGroupType(vars.GetCell(kGroupType, i)), ";", where("<assign>"));
    w.Line("<labels>=;", "", "");
    std::string labels(vars.GetCell(kGroupLabels, i));
    if (labels.size() > 2) {
      // One line per entry "value=label;": the "/" after each ";" goes, while a "/" inside
      // a label stays, so that the label reads back whole.
      std::string_view rest = labels;
      while (!rest.empty()) {
        if (rest.front() == '/') {
          rest.remove_prefix(1);
          continue;
        }
        std::size_t end = rest.find(';');
        std::string_view piece = rest.substr(0, end == std::string_view::npos ? rest.size() : end + 1);
        w.Line("", piece, "", where("<labels>"));
        rest.remove_prefix(piece.size());
      }
    }
    w.Line("<help>=", HelpOnOneLine(vars.GetCell(kHelp, i)), ";", where("<help>"));
    w.Line("<missing>=", vars.GetCell(kMissing, i), ";", where("<missing>"));
  }
  w.Line("<datamatrix>=;", "", "");
  for (int r = 1; r <= m; ++r) {
    if (r % 1000 == 0 && ws.hooks.progress) {
      ws.ShowProgress(fmt::format("{}{}", ws.Text("Writing cases: ", "Esetek kiírása: "), r));
    }
    for (int c = 1; c <= n; ++c) {
      if (c > 1) w.Raw("\t");
      w.Cell(data.GetCell(c, r), c, r);
    }
    w.Raw("\r\n");
    if (!w.Flush(false)) return false;
  }
  ws.ShowProgress(fmt::format("{}{}", ws.Text("Writing cases: ", "Esetek kiírása: "), m));
  return w.Flush(true);
}

std::string FullPath(const std::string& path) {
  std::error_code ec;
  auto full = std::filesystem::absolute(path, ec);
  return ec ? path : full.lexically_normal().string();
}

// Keeps the smallest legal shape of the tables after a damaged file: one variable, one case.
void KeepMinimalShape(Workspace& ws) {
  if (ws.data.ColCount() < 2) ws.data.SetColCount(2);
  if (ws.data.RowCount() < 2) ws.data.SetRowCount(2);
  if (ws.vars.RowCount() < ws.data.ColCount()) {
    int old = ws.vars.RowCount();
    ws.vars.SetRowCount(ws.data.ColCount());
    for (int i = old; i < ws.vars.RowCount(); ++i) ws.vars.SetCell(kIndex, i, std::to_string(i));
  }
}

// The second line of the message about a damaged file.
std::string HowMuchWasRead(const Workspace& ws, const Tables& t) {
  auto count = [](int k) { return k >= 0 ? std::to_string(k) : std::string("?"); };
  int variables = t.headerRead ? t.declaredVariables : t.lastVariable;
  return fmt::format(
      fmt::runtime(ws.Text("Read: the declarations of {} of {} variables and {} of {} cases. The project is "
                           "untitled now: save it under a new name.",
                           "Beolvasva: {1} változó közül {0} deklarációja és {3} eset közül {2}. A projekt most "
                           "névtelen: mentse új néven.")),
      variables, count(t.declaredVariables), t.casesRead, count(t.declaredCases));
}

}  // namespace

// ---------------------------------------------------------------------------------------

std::string WithExtension(const std::string& path, std::string_view ext) {
  std::filesystem::path p(path);
  p.replace_extension(ext);
  return p.string();
}

std::string SuggestedOutputFile(const std::string& path) {
  std::filesystem::path p(path);
  std::string ext = p.extension().string();
  std::string stem = path.substr(0, path.size() - ext.size());
  return stem + "_imp" + ext;
}

LoadResult LoadProject(Workspace& ws, const std::string& givenPath) {
  const std::string path = FullPath(givenPath);
  InputFile file(path);
  if (!file.IsOpen()) {
    TellUnreadable(ws, path, file);
    return LoadResult::Unreadable;
  }
  const std::string target = FollowLinks(path);
  RemoveStaleTemporaries(target);
  const std::optional<FileIdentity> identity = IdentityOfOpenFile(file.fd());
  Tables tables{ws.data, ws.vars, {}};
  std::optional<std::string> damage;
  ws.busy = true;
  try {
    if (!LooksLikeText(file.fd(), tables.caseBound)) throw NotAProjectFile{};
    if (!HasMagic(file)) {
      if (!file.Failed()) throw NotAProjectFile{};
      ws.busy = false;
      TellUnreadable(ws, path, file);
      return LoadResult::Unreadable;
    }
    ReadHeader(file, tables, ws, true);
    ReadRows(file, ws, tables);
  } catch (const NotAProjectFile&) {
    ws.busy = false;
    ws.user.Tell(
        ws.Text("This is an invalid Tarvika file: either the file name or the first line is incorrect.",
                "Ez nem egy szabályos Tarvika fájl: a fájl neve vagy az első sor hibás!"));
    return LoadResult::NotAProject;
  } catch (const CountsRefused& refused) {
    if (!tables.touched) {
      ws.busy = false;
      ws.user.Tell(refused.message);
      return LoadResult::Refused;
    }
    damage = refused.message;
  } catch (const DamagedFile&) {
    damage = ws.Text("Invalid or damaged Tarvika file", "Hibás vagy sérült Tarvika fájl!");
  }
  if (damage) {
    // What was read stays, but the project gets no name: a Save must not write the partial
    // tables over the file they came from.
    ApplyVariables(tables);
    ws.user.Tell(*damage + "\r\n" + HowMuchWasRead(ws, tables));
    KeepMinimalShape(ws);
    ws.data.RenumberCases();
    // The damage was told once: the declarations the file lost get free names rather than
    // a question for each of them.
    for (int v = 1; v <= ws.NumberOfVariables(); ++v) {
      if (ws.vars.GetCell(kShortName, v).empty()) ws.vars.SetCell(kShortName, v, FreeVarName(ws, v));
    }
  }

  NormaliseShortNames(ws);
  ws.data.SetCell(0, 0, "");
  ws.dataChanged = false;

  ws.suggestedOutputFile = SuggestedOutputFile(path);
  ws.SetCurrentFile(damage ? std::string() : path);
  ws.knownFile = damage ? std::string() : target;
  ws.knownFileIdentity = damage ? std::nullopt : identity;

  std::vector<std::string> recent = LoadRecentFiles(ws);
  const std::string entry = WithExtension(path, ".msw");
  recent.push_back(entry);
  for (int i = static_cast<int>(recent.size()) - 2; i >= 0; --i) {
    if (EqualIgnoringCase(recent[i], entry)) recent.erase(recent.begin() + i);
  }
  StoreRecentFiles(ws, recent);

  NormaliseShortNames(ws);
  CheckDuplicateNames(ws);
  ws.ShowProgress("");
  ws.busy = false;
  return damage ? LoadResult::Damaged : LoadResult::Loaded;
}

bool SaveProject(Workspace& ws, const std::string& givenPath) {
  if (givenPath.empty()) {
    ws.user.Tell(ws.Text("The project has no file name yet: save it under a new name.",
                         "A projektnek még nincs fájlneve: mentse új néven."));
    return false;
  }
  const std::string path = FullPath(givenPath);
  AtomicFile out(path);
  if (!out.Open()) {
    TellWriteFailure(ws, path, out.error());
    return false;
  }
  if (out.file() == ws.knownFile) out.RequireUnchanged(ws.knownFileIdentity);
  ProjectWriter writer(ws, out);
  if (!WriteProject(ws, writer) || !out.Commit(true)) {
    ws.ShowProgress("");
    TellWriteFailure(ws, path,
                     out.changedMeanwhile()
                         ? std::string(ws.Text("Another program has changed it since this project was opened or "
                                               "saved; save the project under a new name.",
                                               "Egy másik program megváltoztatta, mióta ez a projekt megnyílt vagy "
                                               "mentésre került; mentse a projektet új néven."))
                         : out.error());
    return false;
  }
  ws.knownFile = out.file();
  ws.knownFileIdentity = out.written();
  if (writer.replacedCount() > 0) {
    std::string list;
    for (const std::string& where : writer.replaced()) list += "\r\n" + where;
    if (writer.replacedCount() > writer.replaced().size()) list += "\r\n...";
    ws.user.Tell(fmt::format(
        "{}{}",
        ws.Text(
            "A project file cannot hold some characters of these cells; they were saved as \"?\":",
            "Ezeknek a celláknak néhány karakterét a projektfájl nem tudja tárolni; helyükre \"?\" került:"),
        list));
  }

  // The newest entry is the last, as a load stores it; the window shows it first.
  std::vector<std::string> recent = LoadRecentFiles(ws);
  recent.push_back(path);
  StoreRecentFiles(ws, recent);

  ws.user.TellAs(MessageKind::Information, "Saved: " + path);
  ws.ShowProgress("");
  ws.SetCurrentFile(path);
  ws.dataChanged = false;
  return true;
}

MergeSource ReadMergeSource(Workspace& ws, const std::string& path, MergeMode mode) {
  MergeSource src;
  src.vars.Resize(kVariableTableColumns, 1);
  src.data.Resize(2, 2);
  InputFile file(path);
  if (!file.IsOpen()) {
    TellUnreadable(ws, path, file);
    return src;
  }
  try {
    Tables tables{src.data, src.vars, {}};
    if (!LooksLikeText(file.fd(), tables.caseBound)) throw NotAProjectFile{};
    if (!HasMagic(file)) {
      if (!file.Failed()) throw NotAProjectFile{};
      TellUnreadable(ws, path, file);
      return src;
    }
    ReadHeader(file, tables, ws, false);
    if (!ReadMergeRows(file, tables, ws.decimalSeparator)) {
      ws.user.Tell(ws.Text("Error while reading data table.\r\nReading interrupted.",
                           "Hiba az adattábla olvasása közben.\r\nBeolvasás félbeszakítva."));
      src.result = LoadResult::Damaged;
      return src;
    }
  } catch (const NotAProjectFile&) {
    ws.user.Tell(ws.Text("This is not a valid Tarvika file.", "Ez nem egy szabályos Tarvika állomány"));
    src.result = LoadResult::NotAProject;
    return src;
  } catch (const CountsRefused& refused) {
    ws.user.Tell(refused.message);
    src.result = LoadResult::Refused;
    return src;
  } catch (const DamagedFile&) {
    ws.user.Tell(ws.Text("Invalid or damaged Tarvika file", "Hibás vagy sérült Tarvika fájl!"));
    src.result = LoadResult::Damaged;
    return src;
  }
  src.data.SetCell(0, 0, "");
  src.result = LoadResult::Loaded;
  src.title =
      (mode == MergeMode::AddCases ? "Merge files: add cases from " : "Merge files: add variables from ") +
      path;
  return src;
}

void LoadDefaultVariable(Workspace& ws) {
  const std::string path = ProgramFile(ws, "default.var");
  std::vector<std::string> lines;
  if (auto read = ReadLines(path, FileEncoding::Windows1250)) {
    lines = std::move(*read);
  } else {
    lines = {"num=0_0;", "", "nincs"};
    WriteTextLines(path, lines, nullptr);
  }
  lines.resize(3);
  ws.vars.SetDefaultVariable(lines[0], lines[1], lines[2]);
}

bool SaveDefaultVariable(Workspace& ws, std::string_view type, std::string_view labels,
                         std::string_view groupType) {
  ws.vars.SetDefaultVariable(type, labels, groupType);
  const std::string path = ProgramFile(ws, "default.var");
  std::string error;
  if (!WriteTextLines(path, {std::string(type), std::string(labels), std::string(groupType)}, &error)) {
    TellWriteFailure(ws, path, error);
    return false;
  }
  return true;
}

std::vector<std::string> LoadRecentFiles(const Workspace& ws) {
  std::vector<std::string> files;
  if (auto lines = ReadLines(ProgramFile(ws, "last.mod"), FileEncoding::Windows1250)) {
    for (std::string& line : *lines) {
      if (!line.empty()) files.push_back(std::move(line));
    }
  }
  return files;
}

bool StoreRecentFiles(const Workspace& ws, const std::vector<std::string>& files) {
  return WriteTextLines(ProgramFile(ws, "last.mod"), files, nullptr);
}

std::vector<std::string> RecentFilesToShow(const Workspace& ws) {
  std::vector<std::string> shown;
  std::vector<std::string> stored = LoadRecentFiles(ws);
  for (auto it = stored.rbegin(); it != stored.rend(); ++it) {
    std::error_code ec;
    if (!std::filesystem::is_regular_file(*it, ec)) continue;
    bool seen = std::any_of(shown.begin(), shown.end(), [&](const std::string& s) { return EqualIgnoringCase(s, *it); });
    if (!seen) shown.push_back(*it);
  }
  return shown;
}

}  // namespace tarvika
