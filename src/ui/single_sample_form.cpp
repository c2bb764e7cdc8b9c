#include "ui/single_sample_form.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QTableWidget>
#include <QVBoxLayout>

#include "analyses/command_table.h"
#include "lang/help_files.h"
#include "ui/qt_text.h"
#include "workspace/workspace.h"

namespace tarvika {
namespace {

// The tags of the form's controls: lines of the language files.
enum Tag {
  kFormTag = 100,
  kCommandTag = 101,
  kSourceTag = 102,
  kSelectedTag = 103,
  kConditionalTag = 104,
  kRunTag = 105,
  kResetTag = 106,
  kCloseTag = 107,
  kOrdinaryTag = 115,
  kTScaleTag = 116,
  kCommonHypotheticalTag = 119,
  kParametersTag = 120,
};

// The codes of the dialog's command list, in order.
std::vector<int> CommandCodes(DialogKind kind) {
  std::vector<int> codes;
  for (const CommandInfo* command : AllCommands().ListOf(kind)) codes.push_back(command->code);
  return codes;
}

bool CommandUses(int code, std::string_view parameter) {
  const CommandInfo* command = AllCommands().Find(code);
  return command != nullptr && command->Uses(parameter);
}

// "Confidence %": the value is the index 0, 1, 2; the box shows 90, 95, 99 and its buttons
// step through them.
class ConfidenceBox : public QSpinBox {
 public:
  explicit ConfidenceBox(QWidget* parent) : QSpinBox(parent) {
    setRange(0, 2);
    lineEdit()->setReadOnly(true);
  }

 protected:
  QString textFromValue(int value) const override { return QString::number(value == 0 ? 90 : value == 1 ? 95 : 99); }
  int valueFromText(const QString& text) const override { return text == "90" ? 0 : text == "99" ? 2 : 1; }
};

int ScaleIndex(std::string_view word) {
  for (int k = 0; k < 3; ++k) {
    if (word == SingleScaleWord(k, Language::English) || word == SingleScaleWord(k, Language::Hungarian)) return k;
  }
  return 0;
}

}  // namespace

void ShowToggle(QPushButton* button, std::string_view word) {
  button->setText(ToQt(word));
  button->setStyleSheet(word == kYes ? "background-color: #00ff00;" : "background-color: #ff8000;");
}

TKijelolForm::TKijelolForm(Workspace& ws, QWidget* parent)
    : QDialog(parent), ws_(ws), dialog_(AllCommands(), DialogKind::SingleSample) {
  commandLabel_ = new QLabel(this);
  commandBox_ = new QComboBox(this);
  commandHint_ = new QLabel(this);
  commandHint_->setWordWrap(true);
  sourceLabel_ = new QLabel(this);
  sourceList_ = new QListWidget(this);
  sourceList_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  selectedLabel_ = new QLabel(this);
  selectedTable_ = new QTableWidget(0, 2, this);
  selectedTable_->verticalHeader()->hide();
  selectedTable_->horizontalHeader()->setStretchLastSection(true);
  selectedTable_->setSelectionBehavior(QAbstractItemView::SelectRows);
  selectedTable_->setColumnWidth(0, 110);
  conditionalLabel_ = new QLabel(this);
  conditionalList_ = new QListWidget(this);
  conditionalList_->setMaximumHeight(conditionalList_->fontMetrics().height() * 2 + 8);
  toSelected_ = new QPushButton(">", this);
  fromSelected_ = new QPushButton("<", this);
  toConditional_ = new QPushButton(">", this);
  fromConditional_ = new QPushButton("<", this);
  for (QPushButton* b : {toSelected_, fromSelected_, toConditional_, fromConditional_}) b->setFixedWidth(36);
  parameterBox_ = new QGroupBox(this);
  parameterLayout_ = new QFormLayout(parameterBox_);
  commonHypothetical_ = new QPushButton(this);
  runButton_ = new QPushButton(this);
  resetButton_ = new QPushButton(this);
  closeButton_ = new QPushButton(this);
  runButton_->setDefault(true);
  for (auto [widget, name] : {std::pair<QWidget*, const char*>{toSelected_, "toSelected"}, {fromSelected_, "fromSelected"},
                              {toConditional_, "toConditional"}, {fromConditional_, "fromConditional"},
                              {commonHypothetical_, "commonHypothetical"}, {runButton_, "run"},
                              {resetButton_, "reset"}, {closeButton_, "close"}, {conditionalList_, "conditional"}}) {
    widget->setObjectName(name);
  }

  auto* top = new QHBoxLayout;
  top->addWidget(commandLabel_);
  top->addWidget(commandBox_, 1);

  auto* source = new QVBoxLayout;
  source->addWidget(sourceLabel_);
  source->addWidget(sourceList_);
  auto* moves = new QVBoxLayout;
  moves->addStretch();
  moves->addWidget(toSelected_);
  moves->addWidget(fromSelected_);
  moves->addStretch();
  moves->addWidget(toConditional_);
  moves->addWidget(fromConditional_);
  auto* targets = new QVBoxLayout;
  targets->addWidget(selectedLabel_);
  targets->addWidget(selectedTable_, 1);
  targets->addWidget(commonHypothetical_);
  targets->addWidget(conditionalLabel_);
  targets->addWidget(conditionalList_);
  auto* lists = new QHBoxLayout;
  lists->addLayout(source, 2);
  lists->addLayout(moves);
  lists->addLayout(targets, 3);

  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(runButton_);
  buttons->addWidget(resetButton_);
  buttons->addWidget(closeButton_);

  auto* layout = new QVBoxLayout(this);
  layout->addLayout(top);
  layout->addWidget(commandHint_);
  layout->addLayout(lists, 1);
  layout->addWidget(parameterBox_);
  layout->addLayout(buttons);

  BuildParameterPanel();

  connect(commandBox_, &QComboBox::currentIndexChanged, this, [this](int index) {
    if (filling_ || index < 0) return;
    std::vector<int> order = CommandCodes(dialog_.kind);
    if (index < static_cast<int>(order.size())) SetCommand(order[index]);
  });
  connect(toSelected_, &QPushButton::clicked, this, [this] { MoveFromSource(false); });
  connect(toConditional_, &QPushButton::clicked, this, [this] { MoveFromSource(true); });
  connect(sourceList_, &QListWidget::itemDoubleClicked, this, [this] { MoveFromSource(false); });
  connect(fromSelected_, &QPushButton::clicked, this, [this] {
    QStringList names;
    for (const QModelIndex& index : selectedTable_->selectionModel()->selectedRows()) {
      names << selectedTable_->item(index.row(), 0)->text();
    }
    Unselect(names);
  });
  connect(selectedTable_, &QTableWidget::cellDoubleClicked, this, [this](int row, int column) {
    if (column == 0) Unselect({selectedTable_->item(row, 0)->text()});
  });
  connect(fromConditional_, &QPushButton::clicked, this, [this] { SetConditional(QString()); });
  connect(conditionalList_, &QListWidget::itemDoubleClicked, this, [this] { SetConditional(QString()); });
  connect(selectedTable_, &QTableWidget::itemChanged, this, [this](QTableWidgetItem* item) {
    if (filling_ || item->column() != 1) return;
    std::string variable = ToStd(selectedTable_->item(item->row(), 0)->text());
    if (SetForVariable("hypotheticalValue", variable, ToStd(item->text()))) return;
    filling_ = true;  // the refused value gives way to the one the dialog holds
    item->setText(ToQt(dialog_.ValueFor("hypotheticalValue", variable)));
    filling_ = false;
  });
  connect(commonHypothetical_, &QPushButton::clicked, this, &TKijelolForm::CommonHypotheticalValue);
  connect(runButton_, &QPushButton::clicked, this, [this] { Run(); });
  connect(resetButton_, &QPushButton::clicked, this, &TKijelolForm::Reset);
  connect(closeButton_, &QPushButton::clicked, this, &QDialog::close);
  ApplyLanguage(nullptr);
}

void TKijelolForm::BuildParameterPanel() {
  for (const ParameterDefinition& param : DialogParameters(dialog_.kind)) {
    if (param.perVariable) continue;  // a column of the selected list
    std::string name(param.name);
    ParameterRow row;
    row.tag = param.captionTag;
    switch (param.kind) {
      case ParameterKind::Integer: {
        if (name == "standardizedKind") {
          // Two radio buttons, "Ordinary..." (1) and "T-scale..." (2).
          auto* pair = new QWidget(parameterBox_);
          auto* layout = new QHBoxLayout(pair);
          layout->setContentsMargins(0, 0, 0, 0);
          auto* ordinary = new QRadioButton(pair);
          auto* tScale = new QRadioButton(pair);
          ordinary->setObjectName("ordinary");
          tScale->setObjectName("tscale");
          layout->addWidget(ordinary);
          layout->addWidget(tScale);
          layout->addStretch();
          connect(ordinary, &QRadioButton::toggled, this, [this, name](bool on) { ChangeValue(name, on ? "1" : "2"); });
          row.control = pair;
          break;
        }
        QSpinBox* box = name == "confidenceIndex" ? new ConfidenceBox(parameterBox_) : new QSpinBox(parameterBox_);
        if (name != "confidenceIndex") box->setRange(param.minimum, param.maximum);
        box->setMaximumWidth(90);
        connect(box, &QSpinBox::valueChanged, this, [this, name](int v) { ChangeValue(name, std::to_string(v)); });
        row.label = new QLabel(parameterBox_);
        row.control = box;
        break;
      }
      case ParameterKind::Flag: {
        auto* check = new QCheckBox(parameterBox_);
        connect(check, &QCheckBox::toggled, this, [this, name](bool on) { ChangeValue(name, on ? "on" : "off"); });
        row.control = check;
        break;
      }
      case ParameterKind::Toggle:
      case ParameterKind::ThreeState: {
        auto* toggle = new QPushButton(parameterBox_);
        toggle->setMaximumWidth(90);
        bool three = param.kind == ParameterKind::ThreeState;
        connect(toggle, &QPushButton::clicked, this, [this, name, three] {
          std::string now = dialog_.Value(name);
          std::string next = now == kYes ? (three ? std::string(kIfSignificant) : std::string(kNo))
                                         : now == kNo ? std::string(kYes) : std::string(kNo);
          ChangeValue(name, next);
        });
        row.label = new QLabel(parameterBox_);
        row.control = toggle;
        break;
      }
      default: {
        auto* edit = new QLineEdit(parameterBox_);
        edit->setMaximumWidth(160);
        connect(edit, &QLineEdit::editingFinished, this, [this, name, edit] { ChangeValue(name, ToStd(edit->text())); });
        row.label = new QLabel(parameterBox_);
        row.control = edit;
        break;
      }
    }
    row.control->setObjectName(ToQt(param.name));
    if (row.label != nullptr) {
      parameterLayout_->addRow(row.label, row.control);
    } else {
      parameterLayout_->addRow(row.control);
    }
    rows_[name] = row;
  }
}

QWidget* TKijelolForm::ParameterControl(const std::string& name) const {
  auto it = rows_.find(name);
  return it == rows_.end() ? nullptr : it->second.control;
}

QString TKijelolForm::ParameterCaption(const std::string& name) const {
  auto it = rows_.find(name);
  if (it == rows_.end()) return {};
  if (it->second.label != nullptr) return it->second.label->text();
  auto* check = qobject_cast<QCheckBox*>(it->second.control);
  return check != nullptr ? check->text() : QString();
}

bool TKijelolForm::Open() {
  if (!OpenDialog(ws_, dialog_)) return false;
  ShowPanels();
  ShowValues();
  show();
  raise();
  activateWindow();
  return true;
}

void TKijelolForm::ApplyLanguage(const LanguageTexts* texts) {
  texts_ = texts;
  const Language lang = ws_.language;
  setWindowTitle(TagCaption(texts, kFormTag, "TKijelolForm"));
  setToolTip(TagHint(texts, kFormTag));
  struct Labelled {
    QWidget* widget;
    int tag;
  };
  for (auto [widget, tag] : {Labelled{commandLabel_, kCommandTag}, Labelled{sourceLabel_, kSourceTag},
                             Labelled{selectedLabel_, kSelectedTag}, Labelled{conditionalLabel_, kConditionalTag},
                             Labelled{runButton_, kRunTag}, Labelled{resetButton_, kResetTag},
                             Labelled{closeButton_, kCloseTag}, Labelled{commonHypothetical_, kCommonHypotheticalTag}}) {
    QString caption = TagCaption(texts, tag);
    if (auto* label = qobject_cast<QLabel*>(widget)) label->setText(caption);
    if (auto* button = qobject_cast<QPushButton*>(widget)) button->setText(caption);
    widget->setToolTip(TagHint(texts, tag));
  }
  parameterBox_->setTitle(TagCaption(texts, kParametersTag));
  for (auto& [name, row] : rows_) {
    const ParameterDefinition* param = FindParameter(dialog_.kind, name);
    QString caption = TagCaption(texts, row.tag, Pick(lang, param->english, param->hungarian));
    if (row.label != nullptr) row.label->setText(caption);
    if (auto* check = qobject_cast<QCheckBox*>(row.control)) check->setText(caption);
    row.control->setToolTip(TagHint(texts, row.tag));
  }
  if (QWidget* pair = ParameterControl("standardizedKind")) {
    pair->findChild<QRadioButton*>("ordinary")->setText(TagCaption(texts, kOrdinaryTag, "1"));
    pair->findChild<QRadioButton*>("tscale")->setText(TagCaption(texts, kTScaleTag, "2"));
  }
  commandHints_ = LoadCommandHints(ws_.programFolder, lang);
  // The command list from its two item lists, keeping the chosen command.
  filling_ = true;
  commandBox_->clear();
  for (const CommandInfo* command : AllCommands().ListOf(dialog_.kind)) commandBox_->addItem(ToQt(command->Entry(lang)));
  filling_ = false;
  ShowPanels();
}

QString TKijelolForm::CommandHint() const {
  auto it = commandHints_.find(dialog_.commandCode);
  return it == commandHints_.end() ? QString() : ToQt(it->second);
}

void TKijelolForm::SetCommand(int code) {
  dialog_.commandCode = code;
  ShowPanels();
}

void TKijelolForm::ShowPanels() {
  const int code = dialog_.commandCode;
  std::vector<int> order = CommandCodes(dialog_.kind);
  auto at = std::find(order.begin(), order.end(), code);
  filling_ = true;
  if (at != order.end()) commandBox_->setCurrentIndex(static_cast<int>(at - order.begin()));
  filling_ = false;
  ShowRows();
  commandHint_->setText(CommandHint());
  commonHypothetical_->setVisible(CommandUses(code, param::kHypotheticalValue.name));
  FillLists();
}

void TKijelolForm::ShowRows() {
  bool any = false;
  for (auto& [name, row] : rows_) {
    bool shown = CommandUses(dialog_.commandCode, name);
    // The kind of the saved variables is asked only while saving is switched on.
    if (name == "standardizedKind") shown = shown && ToggleValue(dialog_.Value("saveStandardized")) == 2;
    parameterLayout_->setRowVisible(row.control, shown);
    any = any || shown;
  }
  parameterBox_->setVisible(any);
}

void TKijelolForm::FillLists() {
  filling_ = true;
  sourceList_->clear();
  for (const std::string& name : SourceList(ws_, dialog_)) sourceList_->addItem(ToQt(name));

  // The per-variable parameter of the command, if any, is the second column.
  const ParameterDefinition* perVariable = nullptr;
  for (const ParameterDefinition& param : DialogParameters(dialog_.kind)) {
    if (param.perVariable && CommandUses(dialog_.commandCode, param.name)) perVariable = &param;
  }
  selectedTable_->clearContents();
  selectedTable_->setRowCount(static_cast<int>(dialog_.selected.size()));
  selectedTable_->setColumnHidden(1, perVariable == nullptr);
  selectedTable_->horizontalHeader()->setVisible(perVariable != nullptr);
  QString firstTitle = TagCaption(texts_, kSelectedTag);
  QString secondTitle = perVariable != nullptr
                            ? TagCaption(texts_, perVariable->captionTag,
                                         Pick(ws_.language, perVariable->english, perVariable->hungarian))
                            : QString();
  selectedTable_->setHorizontalHeaderLabels({firstTitle, secondTitle});
  for (int r = 0; r < static_cast<int>(dialog_.selected.size()); ++r) {
    const std::string& variable = dialog_.selected[r];
    auto* nameItem = new QTableWidgetItem(ToQt(variable));
    nameItem->setFlags(nameItem->flags() & ~Qt::ItemIsEditable);
    selectedTable_->setItem(r, 0, nameItem);
    if (perVariable == nullptr) continue;
    std::string value = dialog_.ValueFor(perVariable->name, variable);
    if (perVariable->kind == ParameterKind::Choice) {
      auto* box = new QComboBox(selectedTable_);
      for (int k = 0; k < 3; ++k) box->addItem(ToQt(SingleScaleWord(k, ws_.language)));
      box->setCurrentIndex(ScaleIndex(value));
      std::string parameter(perVariable->name);
      connect(box, &QComboBox::currentIndexChanged, this, [this, parameter, variable](int k) {
        if (!filling_) SetForVariable(parameter, variable, std::string(SingleScaleWord(k, ws_.language)));
      });
      selectedTable_->setCellWidget(r, 1, box);
    } else {
      selectedTable_->setItem(r, 1, new QTableWidgetItem(ToQt(value)));
    }
  }
  conditionalList_->clear();
  if (!dialog_.conditional.empty()) conditionalList_->addItem(ToQt(dialog_.conditional));
  filling_ = false;
}

void TKijelolForm::ShowValues() {
  filling_ = true;
  for (auto& [name, row] : rows_) {
    std::string value = dialog_.Value(name);
    if (auto* box = qobject_cast<QSpinBox*>(row.control)) {
      box->setValue(std::stoi(value));
    } else if (auto* check = qobject_cast<QCheckBox*>(row.control)) {
      check->setChecked(value == "on");
    } else if (auto* toggle = qobject_cast<QPushButton*>(row.control)) {
      ShowToggle(toggle, value);
    } else if (auto* edit = qobject_cast<QLineEdit*>(row.control)) {
      edit->setText(ToQt(value));
    } else if (name == "standardizedKind") {
      row.control->findChild<QRadioButton*>(value == "2" ? "tscale" : "ordinary")->setChecked(true);
    }
  }
  filling_ = false;
  ShowRows();
}

void TKijelolForm::ChangeValue(const std::string& name, const std::string& value) {
  if (filling_) return;
  SetParameter(name, value);
}

bool TKijelolForm::SetParameter(const std::string& name, const std::string& value) {
  std::string error;
  bool ok = dialog_.Set(name, value, ws_.language, &error);
  if (!ok) ws_.user.Tell(error);
  ShowValues();
  return ok;
}

bool TKijelolForm::SetForVariable(const std::string& name, const std::string& variable, const std::string& value) {
  std::string error;
  bool ok = dialog_.SetFor(name, variable, value, ws_.language, &error);
  if (!ok) ws_.user.Tell(error);
  return ok;
}

void TKijelolForm::MoveFromSource(bool toConditional) {
  QStringList names;
  for (QListWidgetItem* item : sourceList_->selectedItems()) names << item->text();
  if (names.isEmpty()) return;
  if (toConditional) {
    SetConditional(names.front());
  } else {
    Select(names);
  }
}

void TKijelolForm::Select(const QStringList& names) {
  std::vector<std::string> source = SourceList(ws_, dialog_);
  for (const QString& name : names) {
    std::string n = ToStd(name);
    if (std::find(source.begin(), source.end(), n) != source.end()) dialog_.selected.push_back(n);
  }
  FillLists();
}

void TKijelolForm::Unselect(const QStringList& names) {
  for (const QString& name : names) std::erase(dialog_.selected, ToStd(name));
  FillLists();
}

void TKijelolForm::SetConditional(const QString& name) {
  std::vector<std::string> source = SourceList(ws_, dialog_);
  std::string n = ToStd(name);
  if (n.empty() || std::find(source.begin(), source.end(), n) != source.end()) dialog_.conditional = n;
  FillLists();
}

void TKijelolForm::CommonHypotheticalValue() {
  auto value = ws_.user.AskText(ToStd(TagCaption(texts_, kCommonHypotheticalTag)), "1");
  if (!value) return;
  for (const std::string& variable : dialog_.selected) {
    if (!SetForVariable("hypotheticalValue", variable, *value)) break;
  }
  FillLists();
}

void TKijelolForm::Reset() {
  ResetDialog(dialog_);
  FillLists();
}

RunResult TKijelolForm::Run() {
  RunResult result = RunAnalysis(ws_, dialog_, ReportFormat::Text);
  // Without its statistical tables the program can't go on: the message was told, it stops.
  if (result == RunResult::TablesMissing) QCoreApplication::exit(1);
  ShowValues();  // the save switch went back to " No "
  return result;
}

}  // namespace tarvika
