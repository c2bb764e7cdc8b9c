#pragma once
// The declaration mini-languages of the variable table (type, group labels, group type,
// missing codes), their parsers, and the validation that repairs them.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "workspace/variable_table.h"

namespace tarvika {

class Workspace;

// The parsed missing-code declaration of one variable.
struct MissingCodes {
  // 0 no codes; 1, 2, 3 that many discrete codes (in lo, hi, extra); 4 a range lo..hi;
  // 5 a range and the discrete code extra.
  std::int32_t count = 0;
  double lo = 0;
  double hi = 0;
  double extra = 0;
};

struct MissingParse {
  MissingCodes codes;
  bool fault = false;      // the text was not in canonical form
  std::string canonical;   // the canonical text of what was understood
};

// Parses a Missing cell; numbers are held to four decimals.
MissingParse ParseMissingText(std::string_view text, char separator);

// Parses the Missing cells of all variables into entries 1..n (entry 0 unused). A faulty
// cell is rewritten in canonical form, except for variables whose scale kind is 2
// (nominal); scaleKinds, when given, is indexed by variable number.
std::vector<MissingCodes> ParseMissing(Workspace& ws, const std::vector<std::uint8_t>* scaleKinds = nullptr);

// One entry of a group-label list: a code (lo == hi) or an interval lo_hi, and its label.
struct LabelEntry {
  double lo = 0;
  double hi = 0;
  std::string label;
};

// Parses "value=label;/value=label;/" for codes or "lo_hi=label;/" for intervals.
// nullopt when the text is faulty.
std::optional<std::vector<LabelEntry>> ParseLabelText(std::string_view text, bool intervals, char separator);

// The group labels of variable v by its group type: codes or intervals; empty for none.
std::optional<std::vector<LabelEntry>> ParseLabels(const Workspace& ws, int v);

// The bounds lo, hi of a type "num=" lo "_" hi ";"; nullopt for another type or no bounds.
std::optional<std::pair<double, double>> NumericTypeRange(std::string_view type, char separator);

// Repairs a Type cell to one of its legal forms.
std::string NormaliseType(std::string_view type, char separator);

// Cuts names to 8 characters (keeping the full name as long name where there was none)
// and renames later duplicates to "abcde~00", "abcde~01", ...; writes the header row.
void NormaliseShortNames(Workspace& ws);

// Whether a row other than exceptRow has this short name, ignoring case.
bool ShortNameInUse(const Workspace& ws, std::string_view name, int exceptRow = 0);
// The first "var_N", N from 1 to 10000, that no row other than exceptRow uses; empty when
// all are taken.
std::string FreeVarName(const Workspace& ws, int exceptRow = 0);

// Compares short names ignoring case and tells the person about duplicates; asks for
// missing short names. False when there were duplicates.
bool CheckDuplicateNames(Workspace& ws);

// Repairs all declarations so that each ends in a legal form; rebuilds the header row.
void ValidateDeclarations(Workspace& ws);

// Type control on leaving cell (c, r) of the data table. Cleans a numeric cell and stores
// it; false (after telling the person) when the value is not numeric or out of range.
bool CheckCell(Workspace& ws, int c, int r);
// The same check without telling: what is wrong with the cell (the window offers its
// choices for a value out of range instead of the message), and the message of a fault.
enum class CellFault { None, NonNumeric, OutOfRange };
CellFault FindCellFault(Workspace& ws, int c, int r);
void TellCellFault(const Workspace& ws, int c, CellFault fault);

}  // namespace tarvika
