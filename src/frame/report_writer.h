#pragma once
// The report of one analysis: a plain text file of CR LF lines whose table cells are
// separated by tabs (or, in html mode, an html file), written line by line while the
// analysis computes. "output/zuli_akt.txt" (or ".html") under the program folder.

#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "lang/language.h"
#include "workspace/declarations.h"

namespace tarvika {

class Workspace;

enum class ReportFormat { Text, Html };

// The one place where report text meets the disk: the tables hold UTF-8, report files are
// Windows-1250 like the project files.
std::string ToReportEncoding(std::string_view utf8);
std::string FromReportEncoding(std::string_view bytes);

// "<programFolder>/output/zuli_akt.txt" (".html" in html mode) and the session report
// "<programFolder>/output/zuli_tot.txt".
std::string LastReportPath(const std::string& programFolder, ReportFormat format = ReportFormat::Text);
std::string CompleteReportPath(const std::string& programFolder);

// s with "&", "<" and ">" written as html entities.
std::string EscapeHtml(std::string_view s);

// The text of a number cell without its frame (the tab or the <TD>): divides, guards and
// prints with a dot. `width` pads a printed number (not "......" or "TooBig") on the left
// when padToWidth is set (html mode). See WriteRatio for the meaning of the arguments.
std::string RatioText(Language lang, int width, int decimals, double guard, double numerator, double denominator,
                      bool padToWidth = false);

// s padded with blanks to 24 characters.
std::string PadName(std::string_view s);

// The short name of variable v, followed by " (" long name ")" when the long name has more
// characters than the short one.
std::string NameWithLong(const Workspace& ws, int v);

class ReportWriter {
 public:
  explicit ReportWriter(Workspace& ws, ReportFormat format = ReportFormat::Text);
  ~ReportWriter();
  ReportWriter(const ReportWriter&) = delete;
  ReportWriter& operator=(const ReportWriter&) = delete;

  // Truncates and opens the report, writes the banner, the input file and the title, and
  // parses the missing-value declarations of all variables. A title beginning with "#" is
  // that of an R-based analysis: the "#" goes and the R banner is used. False when the file
  // can't be opened.
  bool OpenReport(std::string_view title);
  // Writes the closing tags in html mode, flushes and closes. False when any write or the
  // close failed (a full disk): the report is then incomplete.
  bool CloseReport();
  // Hands the closed report to the viewer (the showReport hook).
  void ShowReport() const;

  const std::string& Path() const { return path_; }
  ReportFormat Format() const { return format_; }
  bool Html() const { return format_ == ReportFormat::Html; }
  Language Lang() const;
  Workspace& Ws() const { return ws_; }
  // The missing codes parsed by OpenReport, entries 1..number of variables.
  const std::vector<MissingCodes>& Missing() const { return missing_; }

  // Raw text, exactly as given, and the line end.
  void Write(std::string_view text);
  void EndLine();
  // A line of running text: in html mode escaped and ended by "<BR>".
  void Line(std::string_view text);
  void BlankLine() { Line(""); }

  // A table row: the first cell as it is, every further cell after a tab. In html mode
  // "<TR>" and "<TD>" cells, one per line; BeginTable/EndTable frame the rows there and
  // write nothing in text mode.
  void BeginTable(std::string_view attributes = "BORDER");
  void EndTable();
  void FirstCell(std::string_view text);
  // The first cell right-aligned in `width` places in the text form (html cells align by
  // themselves).
  void FirstCellRightAligned(std::string_view text, int width);
  // A table that opens with a title row and a row of column headings; in the text form the
  // title and the tab-separated headings are two lines. EndTable closes it.
  void BeginTitledTable(std::string_view title, const std::vector<std::string_view>& headings);
  void Cell(std::string_view text);
  // A cell that holds a number: in html right-aligned.
  void NumberCell(std::string_view text);
  // A cell only the text form has (a bar of '=' drawn in the text); html leaves it out
  // and shows a Figure instead.
  void TextOnlyCell(std::string_view text);
  void EndRow();
  // A figure (inline svg) that only the html form shows.
  void Figure(std::string_view svg);

  // The number cell of all tables (the text of RatioText, framed as a cell):
  //  - |numerator| below 1e-05 counts as 0; |denominator| below the zero tolerance gives "......";
  //  - negative decimals with a negative guard give "......";
  //  - width above 2 and |value| >= 10^width gives "TooBig";
  //  - decimals 1..7 print that many decimals;
  //  - otherwise the decimals follow the size (0 from 1e6, 1 from 1000, 2 from 10, 3 from
  //    0.1, else 4); whole values print without decimals unless decimals is 8 or 9, and
  //    with 9 values below 1e-05 print as 0.
  void WriteRatio(int width, int decimals, double guard, double numerator, double denominator);

 private:
  void Flush();
  // A cell: in html opened by the tag, in text after a tab.
  void CellIn(std::string_view openTag, std::string_view text);

  Workspace& ws_;
  ReportFormat format_;
  std::string path_;
  std::ofstream file_;
  std::string buffer_;
  std::vector<MissingCodes> missing_;
  bool open_ = false;
  bool failed_ = false;
};

}  // namespace tarvika
