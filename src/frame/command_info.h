#pragma once
// What a command is: one row of the command table holds everything the dialogs, the menu,
// the command line and the run need to know of it. The table itself (with the analysis
// functions) is made above the analysis families, in src/analyses; the frame only reads
// rows.

#include <string_view>
#include <vector>

#include "frame/dialog_parameters.h"
#include "lang/language.h"

namespace tarvika {

class AnalysisRun;

// The command codes of the dialogs' command lists.
enum CommandCode : int {
  kBasicStatistics = 11,
  kDetailedStatistics = 12,
  kFrequencies = 13,
  kMeanMedianTests = 14,
  kNormalityTests = 15,
  kDistributionFitting = 16,
  kOneWayIndependent = 21,
  kOneWayRepeated = 22,
  kTwoWayIndependent = 23,
  kTwoWayMixed = 24,
  kTwoWayRank = 25,
  kInterRater = 26,
  kCorrelationRegression = 31,
  kCorrelationMatrix = 32,
  kMultipleRegression = 33,
  kCrosstab = 34,
  kItemAnalysis = 35,
  kPatternDescribe = 51,
  kPatternImpute = 52,
  kPatternResidue = 53,
  kHierarchicalCluster = 54,
  kRelocation = 55,
  kConfiguralFrequency = 56,
  kExacon = 57,
  kCentroidComparison = 58,
  kDensePoint = 59,
  kTimeSeparation = 60,
  kTimeFusion = 61,
  kClusterValidation = 62,
};

// The dialog a command belongs to: its form's name, the window name of its progress
// messages and the main-menu entry that opens it.
struct DialogInfo {
  DialogKind kind;
  std::string_view formName;     // "TKijelolForm"
  std::string_view windowName;   // "KijelolForm"
  std::string_view menuCommand;  // "analysis.single"
};
const DialogInfo& Dialog(DialogKind kind);

// What the run command asks of the selection before anything is touched.
struct SelectionRule {
  // One variable is always needed (in the relations dialog the X or the Y list will do);
  // more dependents when this is above 1.
  int minimumSelected = 1;
  int minimumGrouping = 0;  // grouping variables
  bool caseCode = false;    // a case code variable, from the grouping or the covariate list
};

// Which per-variable parameters the run writes into the scratch columns of the variable
// table, besides the role letters.
struct ScratchMapping {
  std::string_view attribute;  // a per-variable parameter written into the Attribute column
  std::string_view parameter;  // a per-variable parameter written into the Parameter column
};

// A name parameter the run makes a legal short name of before anything else, when its
// switch (a toggle; empty: always) is on.
struct OutputName {
  std::string_view nameParameter;
  std::string_view switchParameter;
  std::string_view fallback;
};

// The statistical tables a command reads; they are loaded before the report is truncated.
enum class StatTable { F, Wilcoxon, Sign, StudentizedRange };

// The analysis of a command: called once per run by the frame, after the report is open
// and the groups are found; it walks the groups with AnalysisRun::ForEachGroup.
using AnalysisFunction = void (*)(AnalysisRun& run);

struct CommandInfo {
  int code = 0;
  DialogKind dialog = DialogKind::SingleSample;
  std::string_view english, hungarian;            // the entry in the dialog's command list
  std::string_view titleEnglish, titleHungarian;  // the report's title
  bool offered = true;                            // listed in the dialog and accepted by a run
  SelectionRule selection;
  ScratchMapping scratch;
  std::vector<OutputName> outputNames;
  std::vector<std::string_view> parameters;  // the dialog parameters the command reads
  std::vector<StatTable> tables;
  AnalysisFunction analyse = nullptr;  // nullptr: not built ("Sorry, under construction.")

  bool Built() const { return analyse != nullptr; }
  bool Uses(std::string_view parameter) const;
  std::string_view Entry(Language lang) const { return Pick(lang, english, hungarian); }
  std::string_view Title(Language lang) const { return Pick(lang, titleEnglish, titleHungarian); }
};

class CommandTable {
 public:
  explicit CommandTable(std::vector<CommandInfo> rows);

  const CommandInfo* Find(int code) const;
  // The offered commands of a dialog in the order of its list.
  std::vector<const CommandInfo*> ListOf(DialogKind dialog) const;
  const std::vector<CommandInfo>& Rows() const { return rows_; }
  // True when some offered command of the dialog opened by the menu entry is built.
  bool MenuEntryHasBuiltCommand(std::string_view menuCommand) const;

 private:
  std::vector<CommandInfo> rows_;
};

}  // namespace tarvika
