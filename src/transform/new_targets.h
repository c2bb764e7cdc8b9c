#pragma once
// Where the derived variables of a transformation go and what they are called: the target
// of each source variable (a new variable before it, after it, at the end of the list, or
// the source itself), the checks of their names before anything changes, and the cell
// reading that all transformations share.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/data_feed.h"
#include "workspace/declarations.h"

namespace tarvika {

class Workspace;

// The list numbers of the placement radio buttons: 0 the same variable, 1 before the old
// variable, 2 after it, 3 at the end of the variable list.
enum class Placement { Same = 0, Before = 1, After = 2, End = 3 };

// "same", "before", "after", "end".
std::optional<Placement> PlacementOf(std::string_view word);

struct NewTarget {
  std::string name;      // ignored for Placement::Same
  std::string longName;  // empty: the text that tells how the variable was made
  Placement place = Placement::End;
};

// The checks before a run: a name for each new variable, each name new and unique (without
// regard to case), at most 8 characters, and room for the new variables. Tells the person
// the first fault and returns false.
bool CheckTargets(Workspace& ws, const std::vector<NewTarget>& targets);

// Writes the derived columns in list order: targets[i] with cells[i] and type texts
// types[i], sources[i] the variable it comes from. A same-variable target takes the cells
// that are not empty and the type; a new variable goes where its placement says, relative
// to the current column of its source. Long names default to longNames[i].
void WriteTargets(Workspace& ws, const std::vector<int>& sources, const std::vector<NewTarget>& targets,
                  const std::vector<std::vector<std::string>>& cells, const std::vector<std::string>& types,
                  const std::vector<std::string>& longNames);

// A variable made of the selected variables of each case (a statistical function, a
// weighted sum). The checks before the run: a variable selected, a new variable rather than
// the same one, and its name; false after telling the first fault.
bool CheckCaseTarget(Workspace& ws, const std::vector<int>& sources, const NewTarget& target);
// Writes it with the type "num=0_0;": a Before target before the leftmost selected
// variable, an After target after the rightmost one, an End target at the end of the list.
void WriteCaseTarget(Workspace& ws, const std::vector<int>& sources, const NewTarget& target,
                     const std::vector<std::string>& cells, const std::string& longName);

// The cells of the chosen variables read as numbers: an empty cell, a text that is no
// number and a declared missing code are missing.
class CellReader {
 public:
  CellReader(Workspace& ws, const std::vector<int>& variables);
  CellReader(const CellReader&) = delete;  // the feed refers to the codes held here
  CellReader& operator=(const CellReader&) = delete;
  // Position i (0-based) of the variables in case `row`; false when the cell is missing.
  bool Read(int row, int i, double& value) const {
    return !feed_.ReadPosition(row, i + 1, value);
  }

 private:
  std::vector<MissingCodes> missing_;
  DataFeed feed_;
};

// The range "lo_hi" of a type text "num=lo_hi;" when lo is below hi.
std::optional<std::pair<double, double>> TypeRange(std::string_view type, char separator);
// "num=" lo "_" hi ";" with the separator.
std::string RangeType(double lo, double hi, char separator);

}  // namespace tarvika
