#pragma once
// TKijelolForm, the single-sample dialog: a view of the core's AnalysisDialog. The command
// list, the source, selected and conditional lists with the moving of names, the panels of
// the parameters that apply to the chosen command (built from the parameter catalogue), and
// run and reset. All checking and the run itself are the core's.

#include <QDialog>

#include <map>
#include <string>

#include "frame/analysis_dialogs.h"

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

class TKijelolForm : public QDialog {
  Q_OBJECT
 public:
  TKijelolForm(Workspace& ws, QWidget* parent = nullptr);

  // Opening: the duplicate-name check (false: the form stays closed), the scale words in
  // the session's language, the lists filled and the panels of the current command shown.
  bool Open();
  // The captions and hints of the controls and the command list, keeping the chosen command.
  void ApplyLanguage(const LanguageTexts* texts);
  // The reset button; also after a project was loaded.
  void Reset();
  // The run button.
  RunResult Run();
  // The explanation of the chosen command ("help/alaps.inf" of the language folder).
  QString CommandHint() const;

  void SetCommand(int code);
  // Moves names from the source list into the selected list, or back.
  void Select(const QStringList& names);
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
  // The control of a dialog-wide parameter (a spin box, check box or toggle button).
  QWidget* ParameterControl(const std::string& name) const;
  QString ParameterCaption(const std::string& name) const;

 private:
  struct ParameterRow {
    QLabel* label = nullptr;   // none for check boxes and the radio pair
    QWidget* control = nullptr;
    int tag = 0;
  };

  void BuildParameterPanel();
  void FillLists();
  void ShowPanels();
  void ShowRows();
  void ShowValues();
  void MoveFromSource(bool toConditional);
  void ChangeValue(const std::string& name, const std::string& value);
  void CommonHypotheticalValue();

  Workspace& ws_;
  AnalysisDialog dialog_;
  const LanguageTexts* texts_ = nullptr;
  std::map<std::string, ParameterRow> rows_;
  bool filling_ = false;

  QLabel* commandLabel_;
  QComboBox* commandBox_;
  QLabel* commandHint_;
  std::map<int, std::string> commandHints_;
  QLabel* sourceLabel_;
  QListWidget* sourceList_;
  QLabel* selectedLabel_;
  QTableWidget* selectedTable_;
  QLabel* conditionalLabel_;
  QListWidget* conditionalList_;
  QPushButton* toSelected_;
  QPushButton* fromSelected_;
  QPushButton* toConditional_;
  QPushButton* fromConditional_;
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
