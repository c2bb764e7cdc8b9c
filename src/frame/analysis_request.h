#pragma once
// The request of one analysis run, as the dialogs build it from the scratch columns of the
// variable table, and the orders in which an analysis reads the selected variables.

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "frame/parameter_names.h"

namespace tarvika {

class Workspace;

// Scale kinds of ScaleKind[]: how a selected variable is to be treated.
enum ScaleKindCode : std::uint8_t { kScaleContinuous = 0, kScaleDiscrete = 1, kScaleGroupDefined = 2 };

// Rebuilt at every run. All per-variable vectors run from 1 to numberOfVariables (entry 0
// is unused).
struct AnalysisRequest {
  std::int32_t commandCode = 0;
  DialogKind dialog = DialogKind::SingleSample;
  std::int32_t numberOfCases = 0;
  std::int32_t numberOfVariables = 0;
  std::int32_t numberOfSelected = 0;
  std::vector<char> role;              // 'X', 'Y', 'G', 'C', 'N' or ' '
  std::vector<std::uint8_t> scaleKind;  // ScaleKindCode
  std::vector<std::string> shortNames;  // cut to 8 characters
  std::vector<std::string> longNames;
  // The dialog's other parameters by their names, as the controls hold them (toggles as
  // " Yes " / " No ", flags as "on" / "off"); the per-variable ones are in the scratch
  // columns of the variable table.
  std::map<std::string, std::string, std::less<>> parameters;

  // A parameter's value, read by its typed name; a parameter the request doesn't hold
  // reads as the catalogue's default. A name that the dialog's catalogue doesn't have, or
  // has with another kind, is a programming error: it throws std::logic_error.
  int Get(IntegerParameter p) const;
  double Get(NumberParameter p) const;
  bool Get(ToggleParameter p) const;      // " Yes "
  int Get(ThreeStateParameter p) const;   // " Yes " 2, " If signif. " 1, " No " 0
  bool Get(FlagParameter p) const;        // "on"
  std::string_view Get(ChoiceParameter p) const;
  std::string_view Get(TextParameter p) const;

 private:
  std::string_view Text(std::string_view name, ParameterKind kind) const;
};

// "continuous"/"folytonos" and "interval"/"intervallum" 0, "discrete"/"diszkrét" and
// "ordinal"/"ordinális" 1, "group.def."/"csop.def." and "nominal"/"nominális" 2; anything
// else 0.
std::uint8_t ScaleKindOf(std::string_view word);

// Fills the request from the tables: counts, Role[] from the first letter of each Role
// cell, ScaleKind[] from the Attribute cell, copies of the names.
AnalysisRequest BuildRequest(const Workspace& ws, int commandCode, int numberOfSelected,
                             DialogKind dialog = DialogKind::SingleSample);

// The variables an analysis reads, as positions 1..K of the feed: all "X" in table order,
// then all "C", then the first "G", last the "N". columns[0] is unused.
struct SelectedIndex {
  std::vector<int> columns;
  int analysed = 0;     // how many "X" lead the list
  int covariates = 0;   // how many "C" follow them
  int grouping = 0;     // position of the "G", 0 when none
  int conditional = 0;  // position of the "N" (always K), 0 when none
  int Count() const { return static_cast<int>(columns.size()) - 1; }
};

SelectedIndex BuildSelectedIndex(const AnalysisRequest& request);

// The groups of a grouping variable, from its GroupType and GroupLabels. Entries 1..count.
struct GroupDefinition {
  int kind = 0;   // 0 none, 1 codes, 2 intervals (3 behaves as codes)
  int count = 0;  // at most kMaxGroups
  std::vector<double> lo, hi;       // for codes both hold the code; intervals are widened
  std::vector<std::string> names;   // labels cut to 10 characters
  std::vector<int> map;             // entry -> merged group 1..distinct
  int distinct = 0;                 // number of distinct names
  std::vector<std::string> distinctNames;  // 1..distinct, in order of first appearance
};
inline constexpr int kMaxGroups = 100;
inline constexpr int kGroupNameLength = 10;


}  // namespace tarvika
