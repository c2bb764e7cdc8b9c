#include "ui/merge_dialog.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>

#include "ui/qt_text.h"
#include "ui/typed_lists.h"

namespace tarvika {
namespace {

// The variable an item of a list stands for (a source list) or the entry (the new table).
constexpr int kIndexRole = Qt::UserRole;

QPushButton* Button(QWidget* parent, std::string_view caption, const char* objectName) {
  auto* button = new QPushButton(ToQt(caption), parent);
  button->setObjectName(objectName);
  button->setAutoDefault(false);
  return button;
}

std::vector<int> ChosenIndexes(const QListWidget* list) {
  std::vector<int> chosen;
  for (const QListWidgetItem* item : list->selectedItems()) chosen.push_back(item->data(kIndexRole).toInt());
  std::sort(chosen.begin(), chosen.end());
  return chosen;
}

}  // namespace

MergeDialog::MergeDialog(Workspace& ws, MergeMode mode, MergeSource source, std::string sourcePath,
                         std::function<void(TableSnapshot)> use, QWidget* parent)
    : QDialog(parent), ws_(ws), mode_(mode), source_(std::move(source)), sourcePath_(std::move(sourcePath)), use_(std::move(use)) {
  const bool addCases = mode == MergeMode::AddCases;
  setObjectName("TMergeCForm");
  setWindowTitle(ToQt(addCases ? ws.Text("Merge files: add cases from ", "Fájlok egyesítése: esetek hozzáadása innen: ")
                               : ws.Text("Merge files: add variables from ", "Fájlok egyesítése: változók hozzáadása innen: ")) +
                 ToQt(std::filesystem::path(sourcePath_).filename().string()));
  working_ = new QListWidget(this);
  added_ = new QListWidget(this);
  united_ = new QListWidget(this);
  for (QListWidget* list : {working_, added_, united_}) {
    list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    connect(list, &QListWidget::itemSelectionChanged, this, [this, list] { ShowInfo(list); });
  }
  info_ = new QLabel(this);
  info_->setObjectName("info");
  summary_ = new QLabel(this);
  summary_->setObjectName("summary");

  auto* lists = new QGridLayout;
  lists->addWidget(new QLabel(ToQt(ws.Text("Working file [0]", "Aktuális állomány [0]")), this), 0, 0);
  lists->addWidget(new QLabel(ToQt(ws.Text("Added file [1]", "Hozzáadott állomány [1]")), this), 2, 0);
  lists->addWidget(new QLabel(ToQt(ws.Text("The united table", "Az egyesített tábla")), this), 0, 2);
  lists->addWidget(working_, 1, 0);
  lists->addWidget(added_, 3, 0);
  lists->addWidget(united_, 1, 2, 3, 1);
  auto* moves = new QVBoxLayout;
  QPushButton* in = Button(this, "->", "moveIn");
  QPushButton* out = Button(this, "<-", "moveOut");
  QPushButton* pair = Button(this, ws.Text("Pair", "Párosít"), "pair");
  QPushButton* rename = Button(this, ws.Text("Rename", "Átnevez"), "rename");
  QPushButton* reset = Button(this, ws.Text("&Reset", "&Alaphelyzet"), "reset");
  for (QPushButton* b : {in, out, pair, rename, reset}) moves->addWidget(b);
  moves->addStretch();
  lists->addLayout(moves, 1, 1, 3, 1);

  auto* options = new QFormLayout;
  if (!addCases) {
    key_ = new QLineEdit(this);
    key_->setObjectName("key");
    options->addRow(ToQt(ws.Text("Key variables to identify cases:", "Az eseteket azonosító kulcsváltozó:")), key_);
    // A key changes which added variables join, so the list starts again with it.
    connect(key_, &QLineEdit::editingFinished, this, [this] {
      // Unmarked first: a refusal's message box takes the focus and finishes the editing again.
      if (!key_->isModified()) return;
      key_->setModified(false);
      Reset();
    });
  }
  indicatorOn_ = new QCheckBox(ToQt(ws.Text("indicate case source as variable:", "az eset forrása változóként:")), this);
  indicatorName_ = new QLineEdit("x", this);
  indicatorName_->setObjectName("indicator");
  options->addRow(indicatorOn_, indicatorName_);
  options->addRow(new QLabel(ToQt(ws.Text(" 0 ", " 0 ")), this),
                  new QLabel(ToQt(ws.CurrentFileName().empty() ? std::string(ws.Text("working file", "aktuális állomány"))
                                                               : std::filesystem::path(ws.CurrentFileName()).filename().string()),
                             this));
  options->addRow(new QLabel(" 1 ", this), new QLabel(ToQt(std::filesystem::path(sourcePath_).filename().string()), this));

  QPushButton* merge = Button(this, ws.Text("Merge files", "Fájlok egyesítése"), "merge");
  QPushButton* finish = Button(this, ws.Text("Set the merged file as new working file and close this window",
                                             "Az egyesített fájl legyen az új munkafájl, és zárjuk be ezt az ablakot"),
                               "finish");
  QPushButton* cancel = Button(this, ws.Text("Cancel", "Mégse"), "cancel");
  auto* bottom = new QHBoxLayout;
  bottom->addWidget(merge);
  bottom->addWidget(finish);
  bottom->addStretch();
  bottom->addWidget(cancel);

  auto* layout = new QVBoxLayout(this);
  layout->addLayout(lists);
  layout->addWidget(info_);
  layout->addLayout(options);
  layout->addWidget(summary_);
  layout->addLayout(bottom);

  connect(in, &QPushButton::clicked, this, &MergeDialog::MoveIn);
  connect(out, &QPushButton::clicked, this, &MergeDialog::MoveOut);
  connect(pair, &QPushButton::clicked, this, &MergeDialog::Pair);
  connect(rename, &QPushButton::clicked, this, &MergeDialog::Rename);
  connect(reset, &QPushButton::clicked, this, &MergeDialog::Reset);
  connect(merge, &QPushButton::clicked, this, &MergeDialog::Merge);
  connect(finish, &QPushButton::clicked, this, &MergeDialog::Finish);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  // Any change of the plan or the indicator makes the united table built before stale.
  connect(indicatorOn_, &QCheckBox::toggled, this, [this] { target_.reset(); });
  connect(indicatorName_, &QLineEdit::textChanged, this, [this] { target_.reset(); });
  Reset();
}

MergePlan MergeDialog::CurrentPlan() const {
  MergePlan plan = plan_;
  plan.indicator = indicatorOn_->isChecked() ? ToStd(indicatorName_->text().trimmed()) : std::string();
  return plan;
}

void MergeDialog::ShowLists() {
  target_.reset();
  summary_->clear();
  std::vector<bool> workingUsed(ws_.NumberOfVariables() + 1, false), addedUsed(source_.vars.RowCount(), false);
  united_->clear();
  for (int i = 0; i < static_cast<int>(plan_.united.size()); ++i) {
    const UnitedVariable& u = plan_.united[i];
    workingUsed[u.working] = addedUsed[u.added] = true;
    QString entry = ToQt(u.Entry(ws_, source_)).replace("&", " & ");
    // A pair shows its two source names; a new name for its column stands after them.
    if (u.working > 0 && u.added > 0 && u.name != ws_.vars.GetCell(kShortName, u.working)) entry += " -> " + ToQt(u.name);
    auto* item = new QListWidgetItem(entry, united_);
    item->setData(kIndexRole, i);
  }
  auto fill = [this](QListWidget* list, const VariableTable& vars, const std::vector<bool>& used, int skip, const char* mark) {
    list->clear();
    for (int v = 1; v < vars.RowCount(); ++v) {
      if (used[v] || v == skip) continue;
      auto* item = new QListWidgetItem(ToQt(vars.GetCell(kShortName, v)) + " " + mark, list);
      item->setData(kIndexRole, v);
    }
  };
  fill(working_, ws_.vars, workingUsed, 0, "[0]");
  // Adding variables, the added file's key is the working file's key and joins no column.
  fill(added_, source_.vars, addedUsed, mode_ == MergeMode::AddVariables ? plan_.addedKey : 0, "[1]");
}

void MergeDialog::ShowInfo(QListWidget* list) {
  QList<QListWidgetItem*> chosen = list->selectedItems();
  if (chosen.size() != 1) {
    info_->clear();
    return;
  }
  int index = chosen.front()->data(kIndexRole).toInt();
  if (list == working_) {
    info_->setText(ToQt(MergeVariableInfo(ws_, ws_.vars, index)));
  } else if (list == added_) {
    info_->setText(ToQt(MergeVariableInfo(ws_, source_.vars, index)));
  } else {
    const UnitedVariable& u = plan_.united[index];
    info_->setText(ToQt(u.working > 0 ? MergeVariableInfo(ws_, ws_.vars, u.working) : MergeVariableInfo(ws_, source_.vars, u.added)));
  }
}

void MergeDialog::MoveIn() {
  for (int v : ChosenIndexes(working_)) plan_.united.push_back({v, 0, std::string(ws_.vars.GetCell(kShortName, v))});
  for (int v : ChosenIndexes(added_)) plan_.united.push_back({0, v, std::string(source_.vars.GetCell(kShortName, v))});
  ShowLists();
}

void MergeDialog::MoveOut() {
  std::vector<int> chosen = ChosenIndexes(united_);
  for (auto it = chosen.rbegin(); it != chosen.rend(); ++it) plan_.united.erase(plan_.united.begin() + *it);
  ShowLists();
}

bool MergeDialog::Pair() {
  std::vector<int> a = ChosenIndexes(working_), b = ChosenIndexes(added_);
  bool paired = false;
  if (a.size() == 1 && b.size() == 1) {
    // One of each source list: both join the new table, then share a line.
    plan_.united.push_back({a[0], 0, std::string(ws_.vars.GetCell(kShortName, a[0]))});
    plan_.united.push_back({0, b[0], std::string(source_.vars.GetCell(kShortName, b[0]))});
    const int n = static_cast<int>(plan_.united.size());
    paired = PairVariables(ws_, plan_, n - 2, n - 1);
    if (!paired) plan_.united.resize(n - 2);
  } else {
    std::vector<int> entries = ChosenIndexes(united_);
    if (entries.size() == 2) {
      // The working file's entry first: its name names the column.
      if (plan_.united[entries[0]].working == 0) std::swap(entries[0], entries[1]);
      paired = PairVariables(ws_, plan_, entries[0], entries[1]);
    } else {
      ws_.user.Tell(ws_.Text("Pair a variable of the working file with one of the added file.",
                             "Az aktuális állomány egy változóját a hozzáadott állomány egy változójával párosítsa."));
    }
  }
  ShowLists();
  return paired;
}

bool MergeDialog::Rename() {
  std::vector<int> entries = ChosenIndexes(united_);
  if (entries.size() != 1) return false;
  const std::string& name = plan_.united[entries[0]].name;
  std::optional<std::string> typed =
      ws_.user.AskText(std::string(ws_.Text("Rename variable ", "Változó átnevezése: ")) + name, name);
  if (!typed) return false;
  MergePlan plan = CurrentPlan();
  if (!RenameUnited(ws_, plan, entries[0], *typed)) return false;
  plan_.united = plan.united;
  ShowLists();
  united_->setCurrentRow(entries[0]);
  return true;
}

bool MergeDialog::Reset() {
  std::vector<std::string> keys = key_ != nullptr ? SplitTyped(ToStd(key_->text()), ',') : std::vector<std::string>{};
  std::optional<MergePlan> plan = StartMergePlan(ws_, source_, mode_, keys);
  if (!plan) {
    // A key the two files don't share (told): the list without a key.
    plan = StartMergePlan(ws_, source_, mode_, {});
    if (key_ != nullptr) key_->clear();
  }
  plan_ = *plan;
  ShowLists();
  return key_ == nullptr || keys.empty() || plan_.key > 0;
}

bool MergeDialog::Merge() {
  target_ = MergeTables(ws_, source_, CurrentPlan(), sourcePath_);
  if (!target_) {
    summary_->clear();
    return false;
  }
  summary_->setText(ToQt(fmt::format("{}{}{}{}{}", ws_.Text("The united table: ", "Az egyesített tábla: "), target_->data.ColCount() - 1,
                                     ws_.Text(" variables, ", " változó, "), target_->data.RowCount() - 1,
                                     ws_.Text(" cases", " eset"))));
  return true;
}

bool MergeDialog::Finish() {
  if (!target_ && !Merge()) return false;
  use_(std::move(*target_));
  target_.reset();
  accept();
  return true;
}

}  // namespace tarvika
