#pragma once
// AnalysisForm: one form for every analysis dialog, a view of the core's AnalysisDialog.
// The command list, the source list and the dialog's target lists (captions and capacities
// from the form hints), the parameters the chosen command reads (built from the parameter
// catalogue, with their bounds and defaults), the selection's refusal shown before the run
// with Run off until it is gone, run and reset. All checking and the run are the core's.

#include <QDialog>

#include <map>
#include <string>

#include "frame/analysis_dialogs.h"
#include "ui/form_hints.h"

class QComboBox;
class QLabel;
class QListWidget;
class QPushButton;
class QTableWidget;
class QGroupBox;
class QFormLayout;

namespace tarvika {

class LanguageTexts;
class Workspace;

class AnalysisForm : public QDialog {
  Q_OBJECT
 public:
  AnalysisForm(Workspace& ws, DialogKind kind, QWidget* parent = nullptr);

  // Opening: the duplicate-name check (false: the form stays closed), the scale words in
  // the session's language, the lists filled and the panels of the current command shown.
  bool Open();
  // The captions and hints of the controls and the command list, keeping the chosen command.
  void ApplyLanguage(const LanguageTexts* texts);
  // The reset button; also after a project was loaded.
  void Reset();
  // The run button; the report in the form set (html: tables and figures).
  RunResult Run();
  void SetReportFormat(ReportFormat format) { format_ = format; }
  // The explanation of the chosen command ("help/alaps.inf" of the language folder).
  QString CommandHint() const;

  void SetCommand(int code);
  // Moves names from the source list into a target list (the selected one by default), or back.
  void Select(const QStringList& names, ListRole role = ListRole::Selected);
  void Unselect(const QStringList& names);
  // The conditional grouping variable; an empty name puts it back into the source list.
  void SetConditional(const QString& name);
  // A per-command parameter as its control would set it; false (after telling) when refused.
  bool SetParameter(const std::string& name, const std::string& value);
  bool SetForVariable(const std::string& name, const std::string& variable, const std::string& value);

  const AnalysisDialog& Dialog() const { return dialog_; }
  QComboBox* CommandList() const { return commandBox_; }
  QListWidget* SourceListWidget() const { return sourceList_; }
  QTableWidget* SelectedTable() const { return selectedTable_; }
  // The list of a role other than the selected one (nullptr for the selected one).
  QListWidget* TargetList(ListRole role) const;
  QLabel* TargetCaption(ListRole role) const;
  bool TargetShown(ListRole role) const;
  // The message under the lists: why the run would be refused, or empty.
  QString Refusal() const;
  QPushButton* RunButton() const { return runButton_; }
  // The control of a dialog-wide parameter (a spin box, check box, combo box or toggle button).
  QWidget* ParameterControl(const std::string& name) const;
  QString ParameterCaption(const std::string& name) const;
  // The command's entry and the names of its lists, as the results pane's outline shows them.
  QString RunTitle() const;
  QString RunVariables() const;

 signals:
  // Just before the core runs the command.
  void AboutToRun(const QString& title, const QString& variables);
  // After the run, whatever its end.
  void Finished();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct ParameterRow {
    QLabel* label = nullptr;  // none for check boxes and the radio pair
    QWidget* control = nullptr;
    int tag = 0;
  };
  struct Target {
    const ListHint* hint = nullptr;
    QWidget* box = nullptr;  // the caption, buttons and list together
    QLabel* label = nullptr;
    QListWidget* list = nullptr;  // nullptr for the selected list (a table)
  };

  void BuildParameterPanel();
  void FillLists();
  void ShowPanels();
  void ShowRows();
  void ShowValues();
  void ShowRefusal();
  void MoveFromSource(ListRole role);
  void MoveBack(ListRole role);
  void ChangeValue(const std::string& name, const std::string& value);
  void CommonHypotheticalValue();
  std::vector<std::string>* Names(ListRole role);
  int Capacity(ListRole role) const;
  const ListOverride* OverrideOf(ListRole role) const;

  Workspace& ws_;
  AnalysisDialog dialog_;
  const FormHints& hints_;
  const LanguageTexts* texts_ = nullptr;
  std::map<std::string, ParameterRow> rows_;
  std::map<ListRole, Target> targets_;
  bool filling_ = false;
  ReportFormat format_ = ReportFormat::Text;

  QLabel* commandLabel_;
  QComboBox* commandBox_;
  QLabel* commandHint_;
  std::map<int, std::string> commandHints_;
  QLabel* sourceLabel_;
  QListWidget* sourceList_;
  QTableWidget* selectedTable_;
  QLabel* refusal_;
  QGroupBox* parameterBox_;
  QFormLayout* parameterLayout_;
  QPushButton* commonHypothetical_;
  QPushButton* runButton_;
  QPushButton* resetButton_;
  QPushButton* closeButton_;
};

// The look of a " Yes " / " No " toggle: the state is the text, green for " Yes ", orange
// for " No ".
void ShowToggle(QPushButton* button, std::string_view word);

}  // namespace tarvika
