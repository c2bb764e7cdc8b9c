#include "frame/report_writer.h"

#include "workspace/numbers.h"

#include <cmath>
#include <filesystem>
#include <fmt/format.h>

#include "lang/cp1250.h"
#include "lang/utf8.h"
#include "numeric/tolerance.h"
#include "workspace/workspace.h"

namespace tarvika {
namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::size_t kFlushSize = 1 << 20;

std::vector<std::string_view> Banner(Language lang, bool rBased) {
  if (rBased) {
    return {"|| ZUL-R 2.0",
            Pick(lang, "|| Multivariate analyses computed by R, prepared and reported by Tarvika",
                 "|| Többváltozós elemzések R-rel számolva, Tarvikával előkészítve és jelentve"),
            Pick(lang, "|| Authors: the Tarvika team", "|| Szerzők: a Tarvika csapata")};
  }
  return {"|| Tarvika 2.0",
          Pick(lang, "|| Statistics for the social and behavioural sciences:",
               "|| Statisztika a társadalom- és viselkedéstudományok számára:"),
          Pick(lang, "|| robust comparison of groups and person-oriented analysis",
               "|| csoportok robusztus összehasonlítása és személyközpontú elemzés"),
          Pick(lang, "|| Authors: the Tarvika team", "|| Szerzők: a Tarvika csapata")};
}

}  // namespace

std::string ToReportEncoding(std::string_view utf8) { return Utf8ToCp1250(utf8); }
std::string FromReportEncoding(std::string_view bytes) { return Cp1250ToUtf8(bytes); }

std::string EscapeHtml(std::string_view s) {
  std::string out;
  out.reserve(s.size());
  for (char c : s) {
    switch (c) {
      case '&': out += "&amp;"; break;
      case '<': out += "&lt;"; break;
      case '>': out += "&gt;"; break;
      default: out.push_back(c);
    }
  }
  return out;
}

std::string LastReportPath(const std::string& programFolder, ReportFormat format) {
  auto p = std::filesystem::path(programFolder) / "output" /
           (format == ReportFormat::Html ? "zuli_akt.html" : "zuli_akt.txt");
  return p.string();
}

std::string CompleteReportPath(const std::string& programFolder) {
  return (std::filesystem::path(programFolder) / "output" / "zuli_tot.txt").string();
}

std::string RatioText(Language lang, int width, int decimals, double guard, double numerator, double denominator,
                      bool padToWidth) {
  if (std::fabs(numerator) < 1e-05) numerator = 0;
  if (std::fabs(denominator) < kZeroTolerance) return "......";
  double value = numerator / denominator;
  if (decimals < 0 && guard < 0) return "......";
  double a = std::fabs(value);
  if (width > 2 && a >= std::pow(10.0, width)) return std::string(Pick(lang, "TooBig", "TúlNagy"));
  int d;
  if (decimals > 0 && decimals < 8) {
    d = decimals;
  } else {
    d = a >= 1000000 ? 0 : a >= 1000 ? 1 : a >= 10 ? 2 : a >= 0.1 ? 3 : 4;
    if (a - std::floor(a) < kZeroTolerance && decimals < 8) d = 0;
    if (a < 1e-05 && decimals == 9) d = 0;
  }
  std::string s = FormatFixed(value, d);
  // A value that rounds to zero prints without a sign.
  if (s.front() == '-' && s.find_first_not_of("-0.") == std::string::npos) s.erase(0, 1);
  // Only a printed number fills the width; the empty cell and "TooBig" are written as they are.
  if (padToWidth && static_cast<int>(s.size()) < width) s.insert(0, width - s.size(), ' ');
  return s;
}

std::string PadName(std::string_view s) { return PadRight(s, 24); }

std::string NameWithLong(const Workspace& ws, int v) {
  std::string name(ws.vars.GetCell(kShortName, v));
  std::string_view longName = ws.vars.GetCell(kLongName, v);
  if (Utf8Length(longName) > Utf8Length(name)) name += " (" + std::string(longName) + ")";
  return name;
}

ReportWriter::ReportWriter(Workspace& ws, ReportFormat format) : ws_(ws), format_(format) {}

ReportWriter::~ReportWriter() {
  if (open_) CloseReport();
}

Language ReportWriter::Lang() const { return ws_.language; }

bool ReportWriter::OpenReport(std::string_view title) {
  if (open_) CloseReport();
  path_ = LastReportPath(ws_.programFolder, format_);
  std::error_code ec;
  std::filesystem::create_directories(std::filesystem::path(path_).parent_path(), ec);
  file_.open(path_, std::ios::binary | std::ios::trunc);
  if (!file_) return false;
  open_ = true;
  failed_ = false;
  buffer_.clear();

  bool rBased = !title.empty() && title.front() == '#';
  if (rBased) title.remove_prefix(1);
  if (Html()) {
    Write("<HTML><HEAD><!-- Created with Selvoran for Win/2.0 -->");
    EndLine();
    // The file is written in the code page of the project files.
    Write("<META charset=\"windows-1250\">");
    EndLine();
    Write("<TITLE>" + EscapeHtml(title) + "</TITLE>");
    EndLine();
    Write("</HEAD><BODY BACKGROUND=\"HATTER.jpg\">");
    EndLine();
    Write("<B>" + EscapeHtml(title) + "</B><P>");
    EndLine();
  } else {
    for (std::string_view line : Banner(ws_.language, rBased)) Line(line);
    BlankLine();
    Line(std::string(ws_.Text("Name of input file: ", "Az input fájl neve: ")) + ws_.CurrentFileName());
    BlankLine();
    Line(title);
    BlankLine();
  }
  missing_ = ParseMissing(ws_);
  return true;
}

bool ReportWriter::CloseReport() {
  if (!open_) return !failed_;
  if (Html()) {
    Write("</BODY></HTML>");
    EndLine();
  }
  Flush();
  file_.close();
  if (file_.fail()) failed_ = true;
  open_ = false;
  return !failed_;
}

void ReportWriter::ShowReport() const {
  if (ws_.hooks.showReport) ws_.hooks.showReport(path_);
}

void ReportWriter::Write(std::string_view text) { buffer_.append(text); }

void ReportWriter::EndLine() {
  buffer_.append(kLineEnd);
  if (buffer_.size() >= kFlushSize) Flush();
}

void ReportWriter::Flush() {
  if (buffer_.empty()) return;
  std::string bytes = ToReportEncoding(buffer_);
  buffer_.clear();
  if (failed_) return;  // the report is lost already; later text would only be cut elsewhere
  file_.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  file_.flush();
  if (!file_) failed_ = true;
}

void ReportWriter::Line(std::string_view text) {
  if (Html()) {
    Write(EscapeHtml(text));
    Write("<BR>");
  } else {
    Write(text);
  }
  EndLine();
}

void ReportWriter::BeginTable(std::string_view attributes) {
  if (!Html()) return;
  Write("<TABLE ");
  Write(attributes);
  Write(">");
  EndLine();
}

void ReportWriter::EndTable() {
  if (!Html()) return;
  Write("</TABLE>");
  EndLine();
}

void ReportWriter::FirstCell(std::string_view text) {
  if (Html()) {
    Write("<TR>");
    Cell(text);
  } else {
    Write(text);
  }
}

void ReportWriter::FirstCellRightAligned(std::string_view text, int width) {
  FirstCell(Html() ? std::string(text) : fmt::format("{:>{}}", text, width));
}

void ReportWriter::BeginTitledTable(std::string_view title, const std::vector<std::string_view>& headings) {
  if (!Html()) {
    Line(title);
    std::string row;
    for (std::size_t i = 0; i < headings.size(); ++i) row += (i == 0 ? "" : "\t") + std::string(headings[i]);
    Line(row);
    return;
  }
  Write("<TABLE BORDER CELLPADDING=\"2\"><TR>");
  EndLine();
  Write(fmt::format("<TD COLSPAN={} bgcolor=\"#ffffff\">{}</TD></TR>", headings.size(), EscapeHtml(title)));
  EndLine();
  Write("<TR>");
  for (std::string_view h : headings) Write(fmt::format("<TD bgcolor=\"#aaCCff\">{}</TD>", EscapeHtml(h)));
  Write("</TR>");
  EndLine();
}

void ReportWriter::CellIn(std::string_view openTag, std::string_view text) {
  if (Html()) {
    Write(std::string(openTag) + EscapeHtml(text) + "</TD>");
    EndLine();
  } else {
    Write("\t");
    Write(text);
  }
}

void ReportWriter::Cell(std::string_view text) { CellIn("<TD>", text); }

void ReportWriter::NumberCell(std::string_view text) { CellIn("<TD ALIGN=RIGHT>", text); }

void ReportWriter::TextOnlyCell(std::string_view text) {
  if (!Html()) Cell(text);
}

void ReportWriter::Figure(std::string_view svg) {
  if (!Html()) return;
  Write(svg);
  EndLine();
}

void ReportWriter::EndRow() {
  if (Html()) Write("</TR>");
  EndLine();
}

void ReportWriter::WriteRatio(int width, int decimals, double guard, double numerator, double denominator) {
  NumberCell(RatioText(ws_.language, width, decimals, guard, numerator, denominator, Html()));
}

}  // namespace tarvika
