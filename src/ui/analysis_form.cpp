#include "ui/analysis_form.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QSpinBox>
#include <QTableWidget>
#include <QVBoxLayout>

#include "analyses/command_table.h"
#include "lang/help_files.h"
#include "ui/qt_text.h"
#include "workspace/session.h"
#include "workspace/workspace.h"

namespace tarvika {
namespace {

// The tags of the controls every form shares: lines of the language files.
enum Tag {
  kCommandTag = 101,
  kSourceTag = 102,
  kRunTag = 105,
  kResetTag = 106,
  kCloseTag = 107,
  kOrdinaryTag = 115,
  kTScaleTag = 116,
  kCommonHypotheticalTag = 119,
  kParametersTag = 120,
};

std::vector<int> CommandCodes(const CommandTable& table, DialogKind kind) {
  std::vector<int> codes;
  for (const CommandInfo* command : table.ListOf(kind)) codes.push_back(command->code);
  return codes;
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

// The index of a stored choice among the catalogue's words, in either language.
int ChoiceIndex(const ParameterDefinition& param, std::string_view value) {
  for (std::size_t k = 0; k < param.choices.size(); ++k) {
    if (param.choices[k] == value || TranslateScaleWord(param.choices[k], Language::Hungarian) == value) {
      return static_cast<int>(k);
    }
  }
  return 0;
}

const char* RoleName(ListRole role) {
  switch (role) {
    case ListRole::Selected: return "selected";
    case ListRole::Y: return "y";
    case ListRole::Grouping: return "grouping";
    case ListRole::Covariate: return "covariate";
    case ListRole::Conditional: return "conditional";
  }
  return "";
}

}  // namespace

void ShowToggle(QPushButton* button, std::string_view word) {
  button->setText(ToQt(word));
  button->setStyleSheet(word == kYes ? "background-color: #00ff00;" : "background-color: #ff8000;");
}

AnalysisForm::AnalysisForm(Workspace& ws, DialogKind kind, QWidget* parent)
    : QDialog(parent), ws_(ws), dialog_(AllCommands(), kind), hints_(HintsOf(kind)) {
  setObjectName(ToQt(tarvika::Dialog(kind).formName));
  commandLabel_ = new QLabel(this);
  commandBox_ = new QComboBox(this);
  commandLabel_->setBuddy(commandBox_);
  commandHint_ = new QLabel(this);
  commandHint_->setWordWrap(true);
  sourceLabel_ = new QLabel(this);
  sourceList_ = new QListWidget(this);
  sourceList_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  sourceList_->installEventFilter(this);
  sourceLabel_->setBuddy(sourceList_);
  selectedTable_ = new QTableWidget(0, 2, this);
  selectedTable_->verticalHeader()->hide();
  selectedTable_->horizontalHeader()->setStretchLastSection(true);
  selectedTable_->setSelectionBehavior(QAbstractItemView::SelectRows);
  selectedTable_->setColumnWidth(0, 110);
  selectedTable_->installEventFilter(this);
  refusal_ = new QLabel(this);
  refusal_->setObjectName("refusal");
  refusal_->setStyleSheet("color: #b00000;");
  refusal_->setWordWrap(true);
  parameterBox_ = new QGroupBox(this);
  parameterLayout_ = new QFormLayout(parameterBox_);
  commonHypothetical_ = new QPushButton(this);
  runButton_ = new QPushButton(this);
  resetButton_ = new QPushButton(this);
  closeButton_ = new QPushButton(this);
  // Enter belongs to the lists (it moves names); the run is a click or its mnemonic.
  for (QPushButton* b : {commonHypothetical_, runButton_, resetButton_, closeButton_}) b->setAutoDefault(false);
  for (auto [widget, name] : {std::pair<QWidget*, const char*>{commonHypothetical_, "commonHypothetical"},
                              {runButton_, "run"}, {resetButton_, "reset"}, {closeButton_, "close"}}) {
    widget->setObjectName(name);
  }

  auto* top = new QHBoxLayout;
  top->addWidget(commandLabel_);
  top->addWidget(commandBox_, 1);

  auto* source = new QVBoxLayout;
  source->addWidget(sourceLabel_);
  source->addWidget(sourceList_);
  auto* targetColumn = new QVBoxLayout;
  for (const ListHint& hint : hints_.lists) {
    Target target;
    target.hint = &hint;
    target.box = new QWidget(this);
    auto* grid = new QGridLayout(target.box);
    grid->setContentsMargins(0, 0, 0, 0);
    target.label = new QLabel(target.box);
    auto* to = new QPushButton(">", target.box);
    auto* back = new QPushButton("<", target.box);
    QString role = RoleName(hint.role);
    QString capitalised = role.left(1).toUpper() + role.mid(1);
    to->setObjectName("to" + capitalised);  // toSelected, toGrouping, ...
    back->setObjectName("from" + capitalised);
    for (QPushButton* b : {to, back}) {
      b->setFixedWidth(36);
      b->setAutoDefault(false);
    }
    auto* buttons = new QVBoxLayout;
    buttons->addStretch();
    buttons->addWidget(to);
    buttons->addWidget(back);
    buttons->addStretch();
    QWidget* view = nullptr;
    if (hint.role == ListRole::Selected) {
      view = selectedTable_;
      selectedTable_->setParent(target.box);
    } else {
      target.list = new QListWidget(target.box);
      target.list->setObjectName(role);
      target.list->setSelectionMode(QAbstractItemView::ExtendedSelection);
      target.list->installEventFilter(this);
      if (hint.capacity > 0 && hint.capacity <= 2) {
        target.list->setMaximumHeight(target.list->fontMetrics().height() * (hint.capacity + 1) + 8);
      }
      view = target.list;
      connect(target.list, &QListWidget::itemDoubleClicked, this, [this, r = hint.role] { MoveBack(r); });
    }
    target.label->setBuddy(view);
    grid->addWidget(target.label, 0, 1);
    grid->addLayout(buttons, 1, 0);
    grid->addWidget(view, 1, 1);
    if (hint.role == ListRole::Selected) grid->addWidget(commonHypothetical_, 2, 1);
    targetColumn->addWidget(target.box, hint.role == ListRole::Selected ? 3 : 1);
    connect(to, &QPushButton::clicked, this, [this, r = hint.role] { MoveFromSource(r); });
    connect(back, &QPushButton::clicked, this, [this, r = hint.role] { MoveBack(r); });
    targets_[hint.role] = target;
  }
  if (!targets_.count(ListRole::Selected)) selectedTable_->hide();
  auto* lists = new QHBoxLayout;
  lists->addLayout(source, 2);
  lists->addLayout(targetColumn, 3);

  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(runButton_);
  buttons->addWidget(resetButton_);
  buttons->addWidget(closeButton_);

  auto* parameterScroll = new QScrollArea(this);
  parameterScroll->setWidget(parameterBox_);
  parameterScroll->setWidgetResizable(true);
  parameterScroll->setFrameShape(QFrame::NoFrame);

  auto* layout = new QVBoxLayout(this);
  layout->addLayout(top);
  layout->addWidget(commandHint_);
  layout->addLayout(lists, 3);
  layout->addWidget(refusal_);
  layout->addWidget(parameterScroll, 2);
  layout->addLayout(buttons);

  BuildParameterPanel();

  connect(commandBox_, &QComboBox::currentIndexChanged, this, [this](int index) {
    if (filling_ || index < 0) return;
    std::vector<int> order = CommandCodes(*dialog_.commands, dialog_.kind);
    if (index < static_cast<int>(order.size())) SetCommand(order[index]);
  });
  connect(sourceList_, &QListWidget::itemDoubleClicked, this, [this] { MoveFromSource(ListRole::Selected); });
  connect(selectedTable_, &QTableWidget::cellDoubleClicked, this, [this](int row, int column) {
    if (column == 0) Unselect({selectedTable_->item(row, 0)->text()});
  });
  connect(selectedTable_, &QTableWidget::itemChanged, this, [this](QTableWidgetItem* item) {
    if (filling_ || item->column() != 1) return;
    std::string variable = ToStd(selectedTable_->item(item->row(), 0)->text());
    std::string parameter = ToStd(item->data(Qt::UserRole).toString());
    if (SetForVariable(parameter, variable, ToStd(item->text()))) return;
    filling_ = true;  // the refused value gives way to the one the dialog holds
    item->setText(ToQt(dialog_.ValueFor(parameter, variable)));
    filling_ = false;
  });
  connect(commonHypothetical_, &QPushButton::clicked, this, &AnalysisForm::CommonHypotheticalValue);
  connect(runButton_, &QPushButton::clicked, this, [this] { Run(); });
  connect(resetButton_, &QPushButton::clicked, this, &AnalysisForm::Reset);
  connect(closeButton_, &QPushButton::clicked, this, &QDialog::close);
  ApplyLanguage(nullptr);
}

bool AnalysisForm::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QDialog::eventFilter(watched, event);
  int key = static_cast<QKeyEvent*>(event)->key();
  if (key != Qt::Key_Return && key != Qt::Key_Enter) return QDialog::eventFilter(watched, event);
  // Enter moves the chosen names: from the source into the selected list, from a target list back.
  if (watched == sourceList_) {
    MoveFromSource(ListRole::Selected);
    return true;
  }
  if (watched == selectedTable_) {
    MoveBack(ListRole::Selected);
    return true;
  }
  for (auto& [role, target] : targets_) {
    if (watched == target.list) {
      MoveBack(role);
      return true;
    }
  }
  return QDialog::eventFilter(watched, event);
}

void AnalysisForm::BuildParameterPanel() {
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
        box->setMaximumWidth(110);
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
        toggle->setAutoDefault(false);
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
      case ParameterKind::Choice: {
        auto* box = new QComboBox(parameterBox_);
        for (std::string_view choice : param.choices) box->addItem(ToQt(choice));
        connect(box, &QComboBox::currentTextChanged, this, [this, name](const QString& text) { ChangeValue(name, ToStd(text)); });
        row.label = new QLabel(parameterBox_);
        row.control = box;
        break;
      }
      case ParameterKind::Number:
      case ParameterKind::Text: {
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
      row.label->setBuddy(row.control);
      parameterLayout_->addRow(row.label, row.control);
    } else {
      parameterLayout_->addRow(row.control);
    }
    rows_[name] = row;
  }
}

QWidget* AnalysisForm::ParameterControl(const std::string& name) const {
  auto it = rows_.find(name);
  return it == rows_.end() ? nullptr : it->second.control;
}

QString AnalysisForm::ParameterCaption(const std::string& name) const {
  auto it = rows_.find(name);
  if (it == rows_.end()) return {};
  if (it->second.label != nullptr) return it->second.label->text();
  auto* check = qobject_cast<QCheckBox*>(it->second.control);
  return check != nullptr ? check->text() : QString();
}

QListWidget* AnalysisForm::TargetList(ListRole role) const {
  auto it = targets_.find(role);
  return it == targets_.end() ? nullptr : it->second.list;
}

QLabel* AnalysisForm::TargetCaption(ListRole role) const {
  auto it = targets_.find(role);
  return it == targets_.end() ? nullptr : it->second.label;
}

bool AnalysisForm::TargetShown(ListRole role) const {
  auto it = targets_.find(role);
  return it != targets_.end() && !it->second.box->isHidden();
}

QString AnalysisForm::Refusal() const { return refusal_->text(); }

bool AnalysisForm::Open() {
  if (!OpenDialog(ws_, dialog_)) return false;
  ShowPanels();
  ShowValues();
  show();
  raise();
  activateWindow();
  sourceList_->setFocus();
  return true;
}

const ListOverride* AnalysisForm::OverrideOf(ListRole role) const {
  for (const ListOverride& o : hints_.overrides) {
    if (o.command == dialog_.commandCode && o.role == role) return &o;
  }
  return nullptr;
}

int AnalysisForm::Capacity(ListRole role) const {
  const ListOverride* o = OverrideOf(role);
  if (o != nullptr && o->capacity >= 0) return o->capacity;
  auto it = targets_.find(role);
  return it == targets_.end() ? 0 : it->second.hint->capacity;
}

void AnalysisForm::ApplyLanguage(const LanguageTexts* texts) {
  texts_ = texts;
  const Language lang = ws_.language;
  QString designed = ToQt(Pick(lang, hints_.titleEnglish, hints_.titleHungarian));
  if (designed.isEmpty()) designed = ToQt(tarvika::Dialog(dialog_.kind).formName);
  setWindowTitle(hints_.titleTag != 0 ? TagCaption(texts, hints_.titleTag, ToStd(designed)) : designed);
  if (hints_.titleTag != 0) setToolTip(TagHint(texts, hints_.titleTag));
  struct Labelled {
    QWidget* widget;
    int tag;
    const char* english;
    const char* hungarian;
  };
  for (auto [widget, tag, english, hungarian] :
       {Labelled{commandLabel_, kCommandTag, "Command", "Parancs"}, Labelled{sourceLabel_, kSourceTag, "Variables", "Változók"},
        Labelled{runButton_, kRunTag, "Run", "Futtatás"}, Labelled{resetButton_, kResetTag, "Reset", "Alaphelyzet"},
        Labelled{closeButton_, kCloseTag, "Close", "Bezárás"},
        Labelled{commonHypothetical_, kCommonHypotheticalTag, "Common hypothetical value", "Közös hipotetikus érték"}}) {
    // Mnemonics: Alt and the first letter reaches the control.
    QString caption = "&" + TagCaption(texts, tag, Pick(lang, english, hungarian)).trimmed();
    if (auto* label = qobject_cast<QLabel*>(widget)) label->setText(caption);
    if (auto* button = qobject_cast<QPushButton*>(widget)) button->setText(caption);
    widget->setToolTip(TagHint(texts, tag));
  }
  parameterBox_->setTitle(TagCaption(texts, kParametersTag, Pick(lang, "Parameters", "Paraméterek")));
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
  // The command list, keeping the chosen command.
  filling_ = true;
  commandBox_->clear();
  for (const CommandInfo* command : dialog_.commands->ListOf(dialog_.kind)) {
    commandBox_->addItem(ToQt(command->Entry(lang)));
    if (!command->Built()) {
      // Listed as the dialog lists it, marked as not yet there.
      commandBox_->setItemData(commandBox_->count() - 1, ToQt(UnderConstruction(lang)), Qt::ToolTipRole);
      commandBox_->setItemData(commandBox_->count() - 1, QColor(Qt::gray), Qt::ForegroundRole);
    }
  }
  filling_ = false;
  ShowPanels();
}

QString AnalysisForm::CommandHint() const {
  auto it = commandHints_.find(dialog_.commandCode);
  return it == commandHints_.end() ? QString() : ToQt(it->second);
}

void AnalysisForm::SetCommand(int code) {
  dialog_.commandCode = code;
  // A list the command doesn't read, or one over its capacity, gives its names back.
  for (auto& [role, target] : targets_) {
    const bool shown = target.hint->ReadBy(code);
    std::vector<std::string>* names = Names(role);
    if (!shown && names != nullptr) names->clear();
    if (!shown && role == ListRole::Conditional) dialog_.conditional.clear();
    int capacity = Capacity(role);
    if (names != nullptr && capacity > 0 && static_cast<int>(names->size()) > capacity) names->resize(capacity);
  }
  ShowPanels();
}

void AnalysisForm::ShowPanels() {
  const int code = dialog_.commandCode;
  std::vector<int> order = CommandCodes(*dialog_.commands, dialog_.kind);
  auto at = std::find(order.begin(), order.end(), code);
  filling_ = true;
  if (at != order.end()) commandBox_->setCurrentIndex(static_cast<int>(at - order.begin()));
  filling_ = false;
  const Language lang = ws_.language;
  for (auto& [role, target] : targets_) {
    target.box->setHidden(!target.hint->ReadBy(code));
    const ListOverride* o = OverrideOf(role);
    std::string_view english = o ? o->english : target.hint->english, hungarian = o ? o->hungarian : target.hint->hungarian;
    QString caption = o == nullptr && target.hint->captionTag != 0
                          ? TagCaption(texts_, target.hint->captionTag, Pick(lang, english, hungarian))
                          : ToQt(Pick(lang, english, hungarian));
    target.label->setText(caption);
  }
  ShowRows();
  commandHint_->setText(CommandHint());
  const CommandInfo* command = dialog_.commands->Find(code);
  commonHypothetical_->setVisible(command != nullptr && command->Uses(param::kHypotheticalValue.name));
  FillLists();
}

void AnalysisForm::ShowRows() {
  const CommandInfo* command = dialog_.commands->Find(dialog_.commandCode);
  bool any = false;
  for (auto& [name, row] : rows_) {
    bool shown = command != nullptr && command->Uses(name);
    parameterLayout_->setRowVisible(row.control, shown);
    // A parameter under a switch is asked only while the switch is on.
    std::string_view onSwitch = SwitchOf(name);
    if (!onSwitch.empty()) {
      std::string value = dialog_.Value(onSwitch);
      bool on = ToggleValue(value) == 2 || value == "on";
      row.control->setEnabled(on);
      if (row.label != nullptr) row.label->setEnabled(on);
    }
    any = any || shown;
  }
  parameterBox_->setVisible(any);
}

std::vector<std::string>* AnalysisForm::Names(ListRole role) {
  switch (role) {
    case ListRole::Selected: return &dialog_.selected;
    case ListRole::Y: return &dialog_.yList;
    case ListRole::Grouping: return &dialog_.grouping;
    case ListRole::Covariate: return &dialog_.covariates;
    case ListRole::Conditional: return nullptr;
  }
  return nullptr;
}

void AnalysisForm::FillLists() {
  filling_ = true;
  sourceList_->clear();
  for (const std::string& name : SourceList(ws_, dialog_)) sourceList_->addItem(ToQt(name));

  // The per-variable parameter of the command, if any, is the second column.
  const CommandInfo* command = dialog_.commands->Find(dialog_.commandCode);
  const ParameterDefinition* perVariable = nullptr;
  for (const ParameterDefinition& param : DialogParameters(dialog_.kind)) {
    if (param.perVariable && command != nullptr && command->Uses(param.name)) perVariable = &param;
  }
  selectedTable_->clearContents();
  selectedTable_->setRowCount(static_cast<int>(dialog_.selected.size()));
  selectedTable_->setColumnHidden(1, perVariable == nullptr);
  selectedTable_->horizontalHeader()->setVisible(perVariable != nullptr);
  QLabel* caption = TargetCaption(ListRole::Selected);
  QString firstTitle = caption != nullptr ? caption->text().remove('&') : QString();
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
    std::string parameter(perVariable->name);
    std::string value = dialog_.ValueFor(parameter, variable);
    if (perVariable->kind == ParameterKind::Choice) {
      auto* box = new QComboBox(selectedTable_);
      for (std::string_view choice : perVariable->choices) box->addItem(ToQt(TranslateScaleWord(choice, ws_.language)));
      box->setCurrentIndex(ChoiceIndex(*perVariable, value));
      connect(box, &QComboBox::currentIndexChanged, this, [this, parameter, variable, box](int) {
        if (!filling_) SetForVariable(parameter, variable, ToStd(box->currentText()));
      });
      selectedTable_->setCellWidget(r, 1, box);
    } else {
      auto* item = new QTableWidgetItem(ToQt(value));
      item->setData(Qt::UserRole, ToQt(parameter));
      selectedTable_->setItem(r, 1, item);
    }
  }
  for (auto& [role, target] : targets_) {
    if (target.list == nullptr) continue;
    target.list->clear();
    if (role == ListRole::Conditional) {
      if (!dialog_.conditional.empty()) target.list->addItem(ToQt(dialog_.conditional));
    } else {
      for (const std::string& name : *Names(role)) target.list->addItem(ToQt(name));
    }
  }
  filling_ = false;
  ShowRefusal();
}

void AnalysisForm::ShowRefusal() {
  const CommandInfo* command = dialog_.commands->Find(dialog_.commandCode);
  QString refusal = ToQt(SelectionRefusal(ws_, dialog_));
  refusal_->setText(refusal);
  runButton_->setEnabled(refusal.isEmpty() && command != nullptr && command->Built());
  runButton_->setToolTip(command != nullptr && !command->Built() ? ToQt(UnderConstruction(ws_.language)) : TagHint(texts_, kRunTag));
}

void AnalysisForm::ShowValues() {
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
    } else if (auto* choice = qobject_cast<QComboBox*>(row.control)) {
      choice->setCurrentIndex(ChoiceIndex(*FindParameter(dialog_.kind, name), value));
    } else if (name == "standardizedKind") {
      row.control->findChild<QRadioButton*>(value == "2" ? "tscale" : "ordinary")->setChecked(true);
    }
  }
  filling_ = false;
  ShowRows();
}

void AnalysisForm::ChangeValue(const std::string& name, const std::string& value) {
  if (filling_) return;
  SetParameter(name, value);
}

bool AnalysisForm::SetParameter(const std::string& name, const std::string& value) {
  std::string error;
  bool ok = dialog_.Set(name, value, ws_.language, &error);
  if (!ok) ws_.user.TellAs(MessageKind::Warning, error);
  ShowValues();
  return ok;
}

bool AnalysisForm::SetForVariable(const std::string& name, const std::string& variable, const std::string& value) {
  std::string error;
  bool ok = dialog_.SetFor(name, variable, value, ws_.language, &error);
  if (!ok) ws_.user.TellAs(MessageKind::Warning, error);
  return ok;
}

void AnalysisForm::MoveFromSource(ListRole role) {
  QStringList names;
  for (QListWidgetItem* item : sourceList_->selectedItems()) names << item->text();
  if (names.isEmpty() && sourceList_->currentItem() != nullptr) names << sourceList_->currentItem()->text();
  if (names.isEmpty()) return;
  int row = sourceList_->currentRow();
  if (role == ListRole::Conditional) {
    SetConditional(names.front());
  } else {
    Select(names, role);
  }
  // The next name is ready for the next Enter.
  if (sourceList_->count() > 0) sourceList_->setCurrentRow(std::min(std::max(row, 0), sourceList_->count() - 1));
}

void AnalysisForm::MoveBack(ListRole role) {
  if (role == ListRole::Conditional) {
    SetConditional(QString());
    return;
  }
  QStringList names;
  if (role == ListRole::Selected) {
    for (const QModelIndex& index : selectedTable_->selectionModel()->selectedRows()) {
      names << selectedTable_->item(index.row(), 0)->text();
    }
  } else if (QListWidget* list = TargetList(role)) {
    for (QListWidgetItem* item : list->selectedItems()) names << item->text();
  }
  Unselect(names);
}

void AnalysisForm::Select(const QStringList& names, ListRole role) {
  std::vector<std::string>* target = Names(role);
  if (target == nullptr) return;
  std::vector<std::string> source = SourceList(ws_, dialog_);
  int capacity = Capacity(role);
  for (const QString& name : names) {
    std::string n = ToStd(name);
    if (capacity > 0 && static_cast<int>(target->size()) >= capacity) break;
    if (std::find(source.begin(), source.end(), n) != source.end()) target->push_back(n);
  }
  FillLists();
}

void AnalysisForm::Unselect(const QStringList& names) {
  for (const QString& name : names) {
    for (ListRole role : {ListRole::Selected, ListRole::Y, ListRole::Grouping, ListRole::Covariate}) {
      std::erase(*Names(role), ToStd(name));
    }
  }
  FillLists();
}

void AnalysisForm::SetConditional(const QString& name) {
  std::vector<std::string> source = SourceList(ws_, dialog_);
  std::string n = ToStd(name);
  if (n.empty() || std::find(source.begin(), source.end(), n) != source.end()) dialog_.conditional = n;
  FillLists();
}

void AnalysisForm::CommonHypotheticalValue() {
  auto value = ws_.user.AskText(ToStd(commonHypothetical_->text().remove('&')), "1");
  if (!value) return;
  for (const std::string& variable : dialog_.selected) {
    if (!SetForVariable("hypotheticalValue", variable, *value)) break;
  }
  FillLists();
}

void AnalysisForm::Reset() {
  ResetDialog(dialog_);
  FillLists();
}

QString AnalysisForm::RunTitle() const {
  const CommandInfo* command = dialog_.commands->Find(dialog_.commandCode);
  return command == nullptr ? QString() : ToQt(command->Entry(ws_.language));
}

QString AnalysisForm::RunVariables() const {
  QStringList parts;
  auto join = [](const std::vector<std::string>& names) {
    QStringList list;
    for (const std::string& n : names) list << ToQt(n);
    return list.join(", ");
  };
  if (!dialog_.selected.empty()) parts << join(dialog_.selected);
  if (!dialog_.yList.empty()) parts << "Y: " + join(dialog_.yList);
  if (!dialog_.grouping.empty()) parts << "G: " + join(dialog_.grouping);
  if (!dialog_.covariates.empty()) parts << "C: " + join(dialog_.covariates);
  QString names = parts.join("; ");
  // The conditional grouping variable after a bar: "Pulse, Height | Smoke".
  if (!dialog_.conditional.empty()) names += " | " + ToQt(dialog_.conditional);
  return names;
}

RunResult AnalysisForm::Run() {
  emit AboutToRun(RunTitle(), RunVariables());
  RunResult result = RunAnalysis(ws_, dialog_, format_);
  // Without its statistical tables the program can't go on: the message was told, it stops.
  if (result == RunResult::TablesMissing) QCoreApplication::exit(1);
  ShowValues();  // the save switch went back to " No "
  ShowRefusal();
  emit Finished();
  return result;
}

}  // namespace tarvika
