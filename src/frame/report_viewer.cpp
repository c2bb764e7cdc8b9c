#include "frame/report_viewer.h"

#include <algorithm>
#include <filesystem>
#include <fmt/format.h>

#include "frame/report_writer.h"
#include "lang/input_file.h"
#include "lang/utf8.h"
#include "workspace/text_files.h"
#include "workspace/workspace.h"

namespace tarvika {
namespace {

namespace fs = std::filesystem;

std::string WithoutStars(std::string_view s) {
  std::string out;
  for (char c : s) {
    if (c != '*') out.push_back(c);
  }
  return out;
}

std::string HtmlRow(std::string_view line) {
  std::string out = "<TR>";
  std::size_t start = 0;
  while (true) {
    std::size_t tab = line.find('\t', start);
    std::string_view cell = line.substr(start, tab == std::string_view::npos ? std::string_view::npos : tab - start);
    std::string attributes;
    bool endsBlank = !cell.empty() && cell.back() == ' ';
    if (endsBlank && cell.front() == ' ') {
      attributes = " align=center";
    } else if (endsBlank) {
      attributes = " align=left";
    } else {
      attributes = " align=right";
    }
    if (cell.ends_with("**") || cell.ends_with("** ")) {
      attributes += " bgcolor=\"#00ff6b\"";
    } else if (cell.ends_with("*") || cell.ends_with("* ")) {
      attributes += " bgcolor=\"#ffff00\"";
    }
    out += "<TD" + attributes + ">" + EscapeHtml(WithoutStars(cell)) + "</TD>";
    if (tab == std::string_view::npos) break;
    start = tab + 1;
  }
  return out + "</TR>";
}

std::vector<std::string> SplitLines(std::string_view text) {
  std::vector<std::string> lines;
  if (text.empty()) return lines;
  std::size_t start = 0;
  while (true) {
    std::size_t end = text.find('\n', start);
    lines.emplace_back(text.substr(start, end == std::string_view::npos ? std::string_view::npos : end - start));
    if (end == std::string_view::npos) break;
    start = end + 1;
  }
  return lines;
}

}  // namespace

std::string ConvertDecimals(std::string_view text, char separator) {
  std::string out(text);
  std::size_t first = out.find('.');
  if (first == std::string::npos) return out;
  for (std::size_t i = first; i + 1 < out.size(); ++i) {
    if (out[i] == '.' && out[i + 1] >= '0' && out[i + 1] <= '9') out[i] = separator;
  }
  return out;
}

std::string ReportToHtml(const std::vector<std::string>& lines) {
  std::string out = "<HTML><HEAD><TITLE></TITLE></HEAD><BODY>\r\n";
  bool inTable = false;
  auto paragraph = [&](std::string_view align) {
    out += inTable ? "</TABLE><P align=" : "<P align=";
    out += align;
    out += ">";
    inTable = false;
  };
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const std::string& line = lines[i];
    bool hasTab = line.find('\t') != std::string::npos;
    if (line.empty()) {
      paragraph("left");
    } else if (line == " ") {
      paragraph("right");
    } else if (line == "  ") {
      paragraph("center");
    } else if (hasTab) {
      if (!inTable) out += "<TABLE BORDER>";
      inTable = true;
      out += HtmlRow(line);
    } else {
      if (inTable) out += "</TABLE></P>";
      inTable = false;
      bool nextIsRow = i + 1 < lines.size() && lines[i + 1].find('\t') != std::string::npos;
      if (line.starts_with("   ") && nextIsRow) {
        auto columns = std::count(lines[i + 1].begin(), lines[i + 1].end(), '\t') + 1;
        out += fmt::format("<TABLE BORDER><TR><TD bgcolor=#000000 colspan={}><B><FONT COLOR=\"#ffffff\">{}</FONT></B></TD></TR>",
                           columns, EscapeHtml(line));
        inTable = true;
      } else if (line.ends_with("**")) {
        out += "<FONT color=\"#ff0000\">" + EscapeHtml(line.substr(0, line.find_last_not_of('*') + 1)) + "</FONT><BR>";
      } else if (line.ends_with("*")) {
        out += "<FONT color=\"#0000ff\">" + EscapeHtml(line.substr(0, line.find_last_not_of('*') + 1)) + "</FONT><BR>";
      } else {
        out += EscapeHtml(line) + "<BR>";
      }
    }
    out += "\r\n";
  }
  if (inTable) out += "</TABLE>\r\n";
  out += "</BODY></HTML>\r\n";
  return out;
}

ReportViewer::ReportViewer(Workspace& ws) : ws_(ws) {
  path_[kLast] = LastReportPath(ws.programFolder);
  path_[kComplete] = CompleteReportPath(ws.programFolder);
}

bool ReportViewer::LoadPage(Page page, const std::string& path, bool tellMissing) {
  auto lines = ReadLines(path, FileEncoding::Windows1250);
  if (!lines) {
    if (tellMissing) {
      ws_.user.Tell(std::string(ws_.Text("Output file missing: ", "Kimeneti fájl hiányzik: ")) + path);
    }
    return false;
  }
  std::string text;
  for (std::size_t i = 0; i < lines->size(); ++i) {
    if (i > 0) text.push_back('\n');
    text += (*lines)[i];
  }
  text_[page] = std::move(text);
  return true;
}

std::vector<std::string> ReportViewer::Lines(Page page) const { return SplitLines(text_[page]); }

void ReportViewer::Open() {
  closed_ = false;
  for (Page page : {kLast, kComplete}) {
    if (fs::exists(path_[page])) LoadPage(page, path_[page], false);
  }
  title_ = path_[kLast];
  shown_ = kLast;
  if (ws_.decimalSeparator != '.') text_[kLast] = ConvertDecimals(text_[kLast], ws_.decimalSeparator);
}

void ReportViewer::Refresh() {
  for (Page page : {kLast, kComplete}) {
    if (!LoadPage(page, path_[page], true)) continue;
    if (ws_.decimalSeparator == '.') continue;
    std::vector<std::string> lines = SplitLines(text_[page]);
    std::string converted;
    for (std::size_t i = 0; i < lines.size(); ++i) {
      if (i > 0) converted.push_back('\n');
      converted += ConvertDecimals(lines[i], ws_.decimalSeparator);
    }
    text_[page] = std::move(converted);
  }
}

void ReportViewer::Show(Page page) {
  shown_ = page;
  title_ = path_[page];
  selStart_ = selLength_ = 0;
}

void ReportViewer::AppendToComplete() {
  std::string& all = text_[kComplete];
  if (all.empty()) {
    all = text_[kLast];
  } else {
    all += "\n" + std::string(56, '_') + "\n";
    for (const std::string& line : SplitLines(text_[kLast])) {
      if (line.starts_with("|| ")) continue;
      all += "\n" + line;
    }
  }
  Show(kComplete);
}

bool ReportViewer::SaveAndExit() {
  if (!WriteTextLines(path_[kComplete], SplitLines(text_[kComplete]))) {
    ws_.user.Tell(std::string(ws_.Text("Could not write ", "Nem írható: ")) + path_[kComplete]);
    return false;
  }
  closed_ = true;
  return true;
}

void ReportViewer::ExitWithoutSaving() {
  text_[kLast].clear();
  std::error_code ec;
  fs::remove(path_[kComplete], ec);
  fs::remove(fs::path(path_[kComplete]).replace_extension(".html"), ec);
  text_[kComplete].clear();
  closed_ = true;
}

bool ReportViewer::Find(std::string_view what, bool caseSensitive, bool tell) {
  const std::string& text = text_[shown_];
  std::size_t from = std::min(selStart_ + selLength_, text.size());
  std::size_t at = std::string::npos;
  if (!what.empty()) {
    // Folding keeps the byte length of every character, so positions carry over.
    at = caseSensitive ? text.find(what, from) : FoldCase(text).find(FoldCase(what), from);
  }
  if (at == std::string::npos) {
    if (tell) {
      ws_.user.Tell(fmt::format("{}\"{}\"{}", ws_.Text("Could not find (more) ", "Nem található (több) "), what,
                                ws_.Text(" in this text.", " ebben a szövegben.")));
    }
    return false;
  }
  selStart_ = at;
  selLength_ = what.size();
  return true;
}

bool ReportViewer::FindNext(std::string_view what, bool caseSensitive) { return Find(what, caseSensitive, true); }

bool ReportViewer::SelectionHolds(std::string_view what, bool caseSensitive) const {
  if (selLength_ == 0 || selLength_ != what.size()) return false;
  std::string_view selected = std::string_view(text_[shown_]).substr(selStart_, selLength_);
  return caseSensitive ? selected == what : EqualIgnoringCase(selected, what);
}

bool ReportViewer::Replace(std::string_view what, std::string_view with, bool caseSensitive) {
  if (SelectionHolds(what, caseSensitive)) {
    text_[shown_].replace(selStart_, selLength_, with);
    selLength_ = with.size();
  }
  return Find(what, caseSensitive, true);
}

int ReportViewer::ReplaceAll(std::string_view what, std::string_view with, bool caseSensitive) {
  int rounds = 0;
  bool found;
  do {
    ++rounds;
    if (SelectionHolds(what, caseSensitive)) {
      text_[shown_].replace(selStart_, selLength_, with);
      selLength_ = with.size();
    }
    found = Find(what, caseSensitive, false);
  } while (found);
  int replaced = rounds - 1;
  ws_.user.Tell(fmt::format("{}{}", ws_.Text("Replaced: ", "Cserék száma: "), replaced));
  return replaced;
}

std::string ReportViewer::ShowAsHtml() {
  std::string path = LastReportPath(ws_.programFolder, ReportFormat::Html);
  AtomicFile file(path);
  if (!file.Open() || !file.Write(ToReportEncoding(ReportToHtml(Lines(kLast)))) || !file.Commit(false)) {
    ws_.user.Tell(std::string(ws_.Text("Could not write ", "Nem írható: ")) + path);
    return {};
  }
  if (openExternal) openExternal(path);
  return path;
}

}  // namespace tarvika
