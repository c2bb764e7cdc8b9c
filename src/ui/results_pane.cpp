#include "ui/results_pane.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QFontDatabase>
#include <QHeaderView>
#include <QLabel>
#include <QRegularExpression>
#include <QScrollArea>
#include <QPointer>
#include <QScrollBar>
#include <QTimer>
#include <QSvgRenderer>
#include <QSvgWidget>
#include <QSplitter>
#include <QTableWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "frame/report_writer.h"
#include "ui/qt_text.h"
#include "workspace/text_files.h"

namespace tarvika {
namespace {

// The lines of a report in blocks: a run of lines with tabs is a table, the rest is text.
struct Block {
  bool table = false;
  std::vector<QStringList> rows;  // for text: one cell per line
  QString svg;                    // a figure of an html report, in place of rows
};

// An html report's text between its figures: cells end with tabs, rows and breaks with
// line ends, as the text form of a report has them.
QString HtmlAsText(QString html) {
  html.remove('\r').remove('\n');
  html.replace(QRegularExpression("</t[dh]>", QRegularExpression::CaseInsensitiveOption), "\t");
  html.replace(QRegularExpression("</tr>|<br\\s*/?>|</p>|<p>|</h\\d>|</div>|</title>", QRegularExpression::CaseInsensitiveOption), "\n");
  html.remove(QRegularExpression("<title>[^<]*", QRegularExpression::CaseInsensitiveOption));
  html.remove(QRegularExpression("<[^>]*>"));
  html.replace("&lt;", "<").replace("&gt;", ">").replace("&quot;", "\"").replace("&nbsp;", " ").replace("&amp;", "&");
  return html;
}

std::vector<Block> Blocks(const QString& report) {
  std::vector<Block> blocks;
  QString text = report;
  text.replace("\r\n", "\n");
  for (const QString& line : text.split('\n')) {
    bool table = line.contains('\t');
    if (blocks.empty() || blocks.back().table != table || !blocks.back().svg.isEmpty()) blocks.push_back({table, {}, {}});
    QStringList cells = table ? line.split('\t') : QStringList{line};
    while (table && cells.size() > 1 && cells.back().trimmed().isEmpty()) cells.removeLast();
    blocks.back().rows.push_back(cells);
  }
  // Trailing empty lines of a text block say nothing.
  for (Block& block : blocks) {
    while (!block.table && !block.rows.empty() && block.rows.back().front().trimmed().isEmpty()) block.rows.pop_back();
  }
  std::erase_if(blocks, [](const Block& b) { return b.rows.empty() && b.svg.isEmpty(); });
  return blocks;
}

// The blocks of a report: an html one is cut at its figures, each figure a block of its own.
std::vector<Block> ReportBlocks(const QString& report, bool html) {
  if (!html) return Blocks(report);
  std::vector<Block> blocks;
  static const QRegularExpression figure("<svg.*?</svg>", QRegularExpression::CaseInsensitiveOption |
                                                              QRegularExpression::DotMatchesEverythingOption);
  qsizetype at = 0;
  for (auto it = figure.globalMatch(report); it.hasNext();) {
    QRegularExpressionMatch m = it.next();
    for (Block& b : Blocks(HtmlAsText(report.mid(at, m.capturedStart() - at)))) blocks.push_back(std::move(b));
    blocks.push_back({false, {}, m.captured()});
    at = m.capturedEnd();
  }
  for (Block& b : Blocks(HtmlAsText(report.mid(at)))) blocks.push_back(std::move(b));
  return blocks;
}

QString Escape(const QString& text) { return text.toHtmlEscaped(); }

bool WriteWhole(const std::string& path, const QString& text, std::string* error) {
  AtomicFile file(path);
  QByteArray bytes = text.toUtf8();
  if (file.Open() && file.Write(std::string_view(bytes.constData(), bytes.size())) && file.Commit(false)) return true;
  if (error) *error = file.error();
  return false;
}

}  // namespace

bool LooksNumeric(const QString& cell) {
  static const QRegularExpression number(R"(^[-+]?(\d+([.,]\d*)?|[.,]\d+)([eE][-+]?\d+)?%?\**$)");
  return number.match(cell.trimmed()).hasMatch();
}

ResultsPane::ResultsPane(QWidget* parent) : QWidget(parent) {
  outline_ = new QTreeWidget(this);
  outline_->setObjectName("outline");
  outline_->setHeaderHidden(true);
  outline_->setColumnCount(1);
  scroll_ = new QScrollArea(this);
  scroll_->setWidgetResizable(true);
  content_ = new QWidget(scroll_);
  contentLayout_ = new QVBoxLayout(content_);
  // The runs keep their whole height; the pane scrolls over them.
  contentLayout_->setSizeConstraint(QLayout::SetMinimumSize);
  contentLayout_->addStretch();
  scroll_->setWidget(content_);
  auto* splitter = new QSplitter(Qt::Vertical, this);
  splitter->addWidget(outline_);
  splitter->addWidget(scroll_);
  splitter->setStretchFactor(1, 4);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(splitter);
  connect(outline_, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* item) {
    if (item != nullptr) ShowRun(outline_->indexOfTopLevelItem(item));
  });
}

QTableWidget* ResultsPane::MakeTable(const std::vector<QStringList>& rows, QWidget* parent) {
  int columns = 0;
  for (const QStringList& row : rows) columns = std::max(columns, static_cast<int>(row.size()));
  auto* table = new QTableWidget(static_cast<int>(rows.size()), columns, parent);
  table->horizontalHeader()->hide();
  table->verticalHeader()->hide();
  table->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table->setShowGrid(false);
  table->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  table->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() + 4);
  for (int r = 0; r < static_cast<int>(rows.size()); ++r) {
    for (int c = 0; c < static_cast<int>(rows[r].size()); ++c) {
      QString text = rows[r][c].trimmed();
      auto* item = new QTableWidgetItem(text);
      item->setTextAlignment((LooksNumeric(text) ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
      table->setItem(r, c, item);
    }
  }
  // A caption row (one text, fewer cells than the table) spans to the right edge instead of
  // widening its column.
  for (int r = 0; r < static_cast<int>(rows.size()); ++r) {
    const QStringList& row = rows[r];
    int filled = 0, at = -1;
    for (int c = 0; c < static_cast<int>(row.size()); ++c) {
      if (!row[c].trimmed().isEmpty()) {
        ++filled;
        at = c;
      }
    }
    if (filled == 1 && row.size() < columns && !LooksNumeric(row[at]) && columns - at > 1) table->setSpan(r, at, 1, columns - at);
  }
  table->resizeColumnsToContents();
  for (int c = 0; c < columns; ++c) table->setColumnWidth(c, table->columnWidth(c) + 12);
  // The whole table shows: the pane scrolls, never the table.
  table->setFixedSize(table->horizontalHeader()->length() + 2 * table->frameWidth(),
                      table->verticalHeader()->length() + 2 * table->frameWidth());
  table->setContextMenuPolicy(Qt::ActionsContextMenu);
  auto* copy = new QAction(copyWord_, table);
  copy->setShortcut(QKeySequence::Copy);
  copy->setShortcutContext(Qt::WidgetShortcut);
  connect(copy, &QAction::triggered, this, [this, table] { CopyTable(table); });
  table->addAction(copy);
  return table;
}

void ResultsPane::AddRun(const QString& title, const QString& variables, const QString& report, bool html) {
  Run run{title, variables, report, html, QDateTime::currentDateTime(), nullptr, {}, {}};
  run.section = new QWidget(content_);
  auto* layout = new QVBoxLayout(run.section);
  layout->setSizeConstraint(QLayout::SetMinimumSize);
  auto* heading = new QLabel(QString("<b>%1</b> &nbsp; %2 &nbsp; <i>%3</i>")
                                 .arg(Escape(title), Escape(variables), run.time.toString("HH:mm:ss")),
                             run.section);
  layout->addWidget(heading);
  const QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  for (const Block& block : ReportBlocks(report, html)) {
    if (!block.svg.isEmpty()) {
      auto* picture = new QSvgWidget(run.section);
      picture->load(block.svg.toUtf8());
      picture->setFixedSize(picture->renderer()->defaultSize());
      layout->addWidget(picture);
      run.figures.push_back(picture);
      continue;
    }
    if (block.table) {
      QTableWidget* table = MakeTable(block.rows, run.section);
      layout->addWidget(table);
      run.tables.push_back(table);
      continue;
    }
    QStringList lines;
    for (const QStringList& row : block.rows) lines << row.front();
    auto* text = new QLabel(lines.join('\n'), run.section);
    text->setTextFormat(Qt::PlainText);
    text->setFont(fixed);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    layout->addWidget(text);
  }
  contentLayout_->insertWidget(contentLayout_->count() - 1, run.section);
  auto* item = new QTreeWidgetItem(outline_, {run.time.toString("HH:mm:ss") + "  " + title + (variables.isEmpty() ? "" : "  (" + variables + ")")});
  item->setToolTip(0, variables);
  runs_.push_back(std::move(run));
  outline_->setCurrentItem(item);
}

bool ResultsPane::AddReportFile(const QString& title, const QString& variables, const std::string& path) {
  QFile file(QString::fromStdString(path));
  if (!file.open(QIODevice::ReadOnly)) return false;
  QByteArray bytes = file.readAll();
  // Reports are written in the report encoding; read back into the text the run wrote.
  QString text = ToQt(FromReportEncoding(std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size()))));
  const bool html = path.ends_with(".html");
  QString shownTitle = title;
  if (shownTitle.isEmpty()) {
    // Without a form's title: the report's first line after its heading.
    for (const QString& line : (html ? HtmlAsText(text) : text).split('\n')) {
      if (!line.trimmed().isEmpty() && !line.startsWith("||")) {
        shownTitle = line.trimmed();
        break;
      }
    }
  }
  AddRun(shownTitle, variables, text, html);
  return true;
}

void ResultsPane::ShowRun(int run) {
  if (run < 0 || run >= RunCount()) return;
  // Once the new section is laid out: a run just added has no place yet.
  QPointer<QWidget> section = runs_[run].section;
  QTimer::singleShot(0, this, [this, section] {
    if (section) scroll_->verticalScrollBar()->setValue(section->y());
  });
}

QString ResultsPane::TableText(const QTableWidget* table) {
  QStringList lines;
  for (int r = 0; r < table->rowCount(); ++r) {
    QStringList cells;
    for (int c = 0; c < table->columnCount(); ++c) {
      const QTableWidgetItem* item = table->item(r, c);
      cells << (item != nullptr ? item->text() : QString());
    }
    while (!cells.isEmpty() && cells.back().isEmpty()) cells.removeLast();
    lines << cells.join('\t');
  }
  return lines.join('\n') + '\n';
}

void ResultsPane::CopyTable(const QTableWidget* table) const { QApplication::clipboard()->setText(TableText(table)); }

QString ResultsPane::SessionHtml() const {
  QString html = "<!DOCTYPE html>\n<html><head><meta charset=\"utf-8\"><title>Tarvika</title>\n"
                 "<style>td{padding:0 .6em}td.n{text-align:right}pre{margin:.3em 0}</style></head><body>\n";
  for (const Run& run : runs_) {
    html += QString("<h2>%1</h2>\n<p>%2 &mdash; %3</p>\n")
                .arg(Escape(run.title), Escape(run.variables), run.time.toString(Qt::ISODate));
    for (const Block& block : ReportBlocks(run.report, run.html)) {
      if (!block.svg.isEmpty()) {
        html += "<p>" + block.svg + "</p>\n";
        continue;
      }
      if (!block.table) {
        QStringList lines;
        for (const QStringList& row : block.rows) lines << Escape(row.front());
        html += "<pre>" + lines.join('\n') + "</pre>\n";
        continue;
      }
      html += "<table>\n";
      for (const QStringList& row : block.rows) {
        html += "<tr>";
        for (const QString& cell : row) {
          QString text = cell.trimmed();
          html += (LooksNumeric(text) ? "<td class=\"n\">" : "<td>") + Escape(text) + "</td>";
        }
        html += "</tr>\n";
      }
      html += "</table>\n";
    }
  }
  return html + "</body></html>\n";
}

QString ResultsPane::SessionText() const {
  QStringList parts;
  for (const Run& run : runs_) parts << (run.html ? HtmlAsText(run.report) : run.report);
  return parts.join("\n\n");
}

bool ResultsPane::ExportHtml(const std::string& path, std::string* error) const { return WriteWhole(path, SessionHtml(), error); }
bool ResultsPane::ExportText(const std::string& path, std::string* error) const { return WriteWhole(path, SessionText(), error); }

}  // namespace tarvika
