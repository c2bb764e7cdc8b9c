#pragma once
// The report viewer without its window: two pages of text, the last report
// ("zuli_akt.txt") and the collected reports of the session ("zuli_tot.txt"), and the
// commands that move, convert, search and store them.

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvika {

class Workspace;

// From the first "." on, each "." directly followed by a digit becomes the separator.
std::string ConvertDecimals(std::string_view text, char separator);

// The "Show as HTML" form of a report given as lines (without line ends).
std::string ReportToHtml(const std::vector<std::string>& lines);

class ReportViewer {
 public:
  enum Page { kLast = 0, kComplete = 1 };

  explicit ReportViewer(Workspace& ws);

  // Opens a file with the system's default handler (html reports); empty: nothing happens.
  std::function<void(const std::string& path)> openExternal;

  // Loads each page from its file when the file exists; the title is the path of the first
  // page; with a local separator other than "." the first page shows decimal commas.
  void Open();
  // Reloads both pages, converting the decimals; a missing file is told.
  void Refresh();

  // The text of a page, lines separated by "\n".
  const std::string& Text(Page page) const { return text_[page]; }
  std::vector<std::string> Lines(Page page) const;
  void SetText(Page page, std::string text) { text_[page] = std::move(text); }
  Page Shown() const { return shown_; }
  void Show(Page page);
  const std::string& Title() const { return title_; }
  bool Closed() const { return closed_; }

  // "Append to complete output": the first page goes to the end of the second, the banner
  // lines only when the second page was empty.
  void AppendToComplete();
  // "Save output and exit": the second page becomes "zuli_tot.txt". False (after telling)
  // when it can't be written.
  bool SaveAndExit();
  // "Exit without saving": both pages emptied, "zuli_tot.txt" and its html form deleted.
  void ExitWithoutSaving();
  void Close() { closed_ = true; }

  // Find and replace on the shown page. The selection is the last text found.
  bool FindNext(std::string_view what, bool caseSensitive);
  // Replaces the selection when it holds the text, then finds the next occurrence.
  bool Replace(std::string_view what, std::string_view with, bool caseSensitive);
  // Replaces until nothing more is found and tells "Replaced: " with one less than the
  // rounds made; returns that number.
  int ReplaceAll(std::string_view what, std::string_view with, bool caseSensitive);
  std::size_t SelectionStart() const { return selStart_; }
  std::size_t SelectionLength() const { return selLength_; }

  // "Show as HTML": converts the first page, stores it as "zuli_akt.html" and opens it.
  // Returns the path, empty when it couldn't be written.
  std::string ShowAsHtml();

 private:
  bool LoadPage(Page page, const std::string& path, bool tellMissing);
  bool Find(std::string_view what, bool caseSensitive, bool tell);
  bool SelectionHolds(std::string_view what, bool caseSensitive) const;

  Workspace& ws_;
  std::string text_[2];
  std::string path_[2];
  std::string title_;
  Page shown_ = kLast;
  bool closed_ = false;
  std::size_t selStart_ = 0;
  std::size_t selLength_ = 0;
};

}  // namespace tarvika
