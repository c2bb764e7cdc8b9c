#include "ui/split_dialog.h"

#include <QFileDialog>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>

#include <algorithm>
#include <charconv>
#include <filesystem>

#include "ui/qt_text.h"
#include "ui/typed_lists.h"

namespace tarvika {
namespace {

// A case bound as typed: -1 for an empty field (the core asks for it), a number past the
// table for a text that is no whole number (the core tells the bounds).
int CaseBound(const QLineEdit* field, int cases) {
  const std::string text = ToStd(field->text().trimmed());
  if (text.empty()) return -1;
  int n = 0;
  auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), n);
  if (ec != std::errc() || end != text.data() + text.size() || n < 1) return cases + 1;
  return n;
}

// The data folder of the program: where the file dialog starts and a bare name goes.
std::filesystem::path DataFolder(const Workspace& ws) { return std::filesystem::path(ws.programFolder) / "dat"; }

}  // namespace

SplitDialog::SplitDialog(Workspace& ws, QWidget* parent) : QDialog(parent), ws_(ws) {
  setObjectName("TSplitForm");
  setWindowTitle(ToQt(ws.Text("Split file", "Fájl felosztása")));
  variables_ = new QListWidget(this);
  variables_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  for (int v = 1; v <= ws.NumberOfVariables(); ++v) variables_->addItem(ToQt(ws.vars.GetCell(kShortName, v)));
  both_ = new QListWidget(this);
  both_->setObjectName("both");

  auto* sections = new QHBoxLayout;
  sections->addWidget(MakeSection(0, ToQt(ws.Text(" First file", " Első fájl"))));
  sections->addWidget(MakeSection(1, ToQt(ws.Text("Second file ", "Második fájl "))));
  auto* lists = new QHBoxLayout;
  auto* left = new QVBoxLayout;
  left->addWidget(new QLabel(ToQt(ws.Text("Variables of the data table:", "Az adattábla változói:")), this));
  left->addWidget(variables_);
  auto* right = new QVBoxLayout;
  right->addWidget(new QLabel(ToQt(ws.Text("Variables in both files:", "Változók mindkét fájlban:")), this));
  right->addWidget(both_);
  lists->addLayout(left);
  lists->addLayout(right);
  auto* close = new QPushButton(ToQt(ws.Text("Close", "Bezár")), this);
  close->setAutoDefault(false);
  connect(close, &QPushButton::clicked, this, &QDialog::accept);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(sections);
  layout->addLayout(lists);
  layout->addWidget(close, 0, Qt::AlignRight);
  ShowBoth();
}

QWidget* SplitDialog::MakeSection(int section, const QString& title) {
  Section& s = sections_[section];
  auto* box = new QGroupBox(title, this);
  s.file = new QLineEdit(box);
  s.file->setPlaceholderText(ToQt(DataFolder(ws_).string() + "/"));
  s.variables = new QLineEdit(box);
  s.variables->setPlaceholderText(ToQt(ws_.Text("all", "mind")));
  s.all = new QRadioButton(ToQt(ws_.Text("All", "Mind")), box);
  s.range = new QRadioButton(ToQt(ws_.Text("The next cases below", "Az alábbi esetek")), box);
  s.all->setChecked(true);
  s.from = new QLineEdit(box);
  s.to = new QLineEdit(box);
  auto* browse = new QPushButton("...", box);
  auto* add = new QPushButton(ToQt(ws_.Text("Add the chosen variables", "A kijelölt változók hozzáadása")), box);
  auto* write = new QPushButton(ToQt(section == 0 ? ws_.Text("Write the first file", "Az első fájl írása")
                                                  : ws_.Text("Write the second file", "A második fájl írása")),
                                box);
  for (QPushButton* b : {browse, add, write}) b->setAutoDefault(false);
  write->setObjectName(section == 0 ? "writeFirst" : "writeSecond");

  auto* file = new QHBoxLayout;
  file->addWidget(s.file);
  file->addWidget(browse);
  auto* cases = new QFormLayout;
  cases->addRow(s.all);
  cases->addRow(s.range);
  cases->addRow(ToQt(ws_.Text("from:", "ettől:")), s.from);
  cases->addRow(ToQt(ws_.Text("to:", "eddig:")), s.to);
  auto* casesBox = new QGroupBox(ToQt(ws_.Text(" Cases ", " Esetek ")), box);
  casesBox->setLayout(cases);
  auto* form = new QFormLayout(box);
  form->addRow(ToQt(ws_.Text("File name:", "Fájlnév:")), file);
  form->addRow(ToQt(ws_.Text("Variables:", "Változók:")), s.variables);
  form->addRow(add);
  form->addRow(casesBox);
  form->addRow(write);

  connect(browse, &QPushButton::clicked, this, [this, &s] {
    QString path = QFileDialog::getSaveFileName(this, QString(), ToQt(DataFolder(ws_).string()),
                                                "Tarvika (*.msw)");
    if (!path.isEmpty()) s.file->setText(path);
  });
  connect(add, &QPushButton::clicked, this, [this, &s] {
    QStringList names;
    if (!s.variables->text().trimmed().isEmpty()) names << s.variables->text().trimmed();
    for (int i = 0; i < variables_->count(); ++i)
      if (variables_->item(i)->isSelected()) names << variables_->item(i)->text();
    s.variables->setText(names.join(", "));
  });
  connect(s.variables, &QLineEdit::textChanged, this, &SplitDialog::ShowBoth);
  // Typing a bound chooses the range.
  for (QLineEdit* bound : {s.from, s.to}) connect(bound, &QLineEdit::textEdited, s.range, [&s] { s.range->setChecked(true); });
  connect(write, &QPushButton::clicked, this, [this, section] { Write(section); });
  return box;
}

std::optional<SplitPart> SplitDialog::PartOf(int section) {
  const Section& s = sections_[section];
  SplitPart part;
  std::string file = ToStd(s.file->text().trimmed());
  if (!file.empty()) {
    // A bare name goes into the data folder, as a project.
    std::filesystem::path path(file);
    if (!path.has_parent_path()) path = DataFolder(ws_) / path;
    if (path.extension().empty()) path += ".msw";
    part.path = path.string();
  }
  std::optional<std::vector<int>> variables = TypedVariables(ws_, ToStd(s.variables->text()));
  if (!variables) return std::nullopt;
  part.variables = *variables;
  if (s.range->isChecked()) {
    part.firstCase = CaseBound(s.from, ws_.NumberOfCases());
    part.lastCase = CaseBound(s.to, ws_.NumberOfCases());
  }
  return part;
}

bool SplitDialog::Write(int section) {
  std::optional<SplitPart> part = PartOf(section);
  return part && SplitFile(ws_, *part);
}

void SplitDialog::ShowBoth() {
  both_->clear();
  auto namesOf = [this](int section) {
    std::vector<std::string> names;
    std::string typed = ToStd(sections_[section].variables->text());
    if (typed.find_first_not_of(" \t,") == std::string::npos) {
      for (int v = 1; v <= ws_.NumberOfVariables(); ++v) names.emplace_back(ws_.vars.GetCell(kShortName, v));
    } else {
      for (const std::string& name : SplitTyped(typed, ','))
        if (int v = VariableOfName(ws_, name)) names.emplace_back(ws_.vars.GetCell(kShortName, v));
    }
    return names;
  };
  const std::vector<std::string> first = namesOf(0), second = namesOf(1);
  for (const std::string& name : first)
    if (std::find(second.begin(), second.end(), name) != second.end()) both_->addItem(ToQt(name));
}

}  // namespace tarvika
