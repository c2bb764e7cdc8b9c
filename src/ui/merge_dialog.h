#pragma once
// "Merge files": the variables of the working file and of the added file, the list of the
// new table's variables (moved, paired, renamed), the key variable and the source
// indicator; then the united table, which the window takes over as its working file.

#include <QDialog>

#include <functional>
#include <optional>
#include <string>

#include "editing/merge_files.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QListWidget;

namespace tarvika {

class MergeDialog : public QDialog {
  Q_OBJECT
 public:
  // The added file is already read. `use` takes the united table over as the working file.
  MergeDialog(Workspace& ws, MergeMode mode, MergeSource source, std::string sourcePath,
              std::function<void(TableSnapshot)> use, QWidget* parent = nullptr);

  QListWidget* Working() const { return working_; }
  QListWidget* Added() const { return added_; }
  QListWidget* United() const { return united_; }
  QLineEdit* Key() const { return key_; }
  QCheckBox* IndicatorOn() const { return indicatorOn_; }
  QLineEdit* IndicatorName() const { return indicatorName_; }
  QLabel* Info() const { return info_; }

  // The buttons' work: the chosen source variables into the new table, the chosen entries of
  // the new table back out; a pair of one working and one added variable (chosen in the source
  // lists or as two entries of the new table); a new name for the chosen entry; the list
  // started again (with the key typed); the united table built; and taken over.
  void MoveIn();
  void MoveOut();
  bool Pair();
  bool Rename();
  bool Reset();
  bool Merge();
  bool Finish();

 private:
  void ShowLists();
  void ShowInfo(QListWidget* list);
  // The plan with the indicator as the fields give it.
  MergePlan CurrentPlan() const;

  Workspace& ws_;
  MergeMode mode_;
  MergeSource source_;
  std::string sourcePath_;
  std::function<void(TableSnapshot)> use_;
  MergePlan plan_;
  std::optional<TableSnapshot> target_;
  QListWidget *working_, *added_, *united_;
  QLineEdit *key_ = nullptr, *indicatorName_;
  QCheckBox* indicatorOn_;
  QLabel *info_, *summary_;
};

}  // namespace tarvika
