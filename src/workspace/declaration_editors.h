#pragma once
// The editors of single declarations: missing codes, group labels, the type, and the change
// of a group type. Each is a parameter set with its checks; the desktop program shows it as
// a form. A check that fails tells the person and changes nothing.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "lang/language.h"

namespace tarvika {

class UserChannel;
class Workspace;

// Missing codes: up to three discrete values, a range, or a range and one value.
enum class MissingMode { Discrete, Range, RangeAndValue };

struct MissingEditor {
  MissingMode mode = MissingMode::Discrete;
  std::string values[3];  // discrete codes; in the range modes values[2] is the extra code
  std::string low, high;

  // The Missing cell text, or nullopt after telling the fault.
  std::optional<std::string> Build(UserChannel& user, Language lang, char separator) const;
};

// Group labels of codes ("1=male;/") or intervals ("0_10=low;/").
class LabelEditor {
 public:
  LabelEditor(bool intervals, std::string_view labels, char separator);

  struct Entry {
    std::string low;   // the code, or the low end of an interval, as text
    std::string high;  // the high end of an interval; empty for codes
    std::string label;
  };

  // Adds an entry, or replaces entry index (0-based); false after telling the fault.
  bool Add(UserChannel& user, Language lang, const Entry& entry);
  bool Change(UserChannel& user, Language lang, int index, const Entry& entry);
  void Remove(int index);

  // Typed values that were not yet added or changed make the exit ask first.
  bool ConfirmExit(UserChannel& user, Language lang, bool pendingInput) const;

  const std::vector<Entry>& Entries() const { return entries_; }
  // The GroupLabels text of the entries, intervals in ascending order.
  std::string Text() const;

 private:
  bool Check(UserChannel& user, Language lang, const Entry& entry, int replacing) const;
  bool intervals_;
  char separator_;
  std::vector<Entry> entries_;
};

// The type of a variable: "num" with an optional range, "string" with a length, "date", "link".
struct TypeEditor {
  std::string kind = "num";
  std::string minimum, maximum;  // for "num"; both empty: no range
  int length = 0;                // for "string"

  // The editor set to a present Type cell: "num=lo_hi;" (no range for "0_0"), "string=n;", ...
  static TypeEditor FromType(std::string_view type);

  std::optional<std::string> Build(UserChannel& user, Language lang, char separator) const;
};

// The group type of variable row (0: the default variable) chosen from the drop-down list.
// Labels that do not fit the new type are offered for deletion; a refusal cancels.
// False when nothing changed.
bool ChangeGroupType(Workspace& ws, int row, std::string_view newWord);

// The project file ends a header value at its first ";": a short name, long name, help text
// or group label cannot hold one. False after telling the person; other columns pass.
bool CheckDeclarationText(Workspace& ws, int column, std::string_view text);

// A group type typed into the cell instead of chosen: refused with a message.
void RefuseTypedGroupType(Workspace& ws);

// "Properties of the default variable": the type, the group type word and the group labels
// that new variables get. A change goes at once to row 0 of the variable table and to
// "default.var"; false (after telling why) when something is refused, and nothing changes.
bool ChangeDefaultVariable(Workspace& ws, const TypeEditor& type, std::string_view groupType, std::string_view labels);

}  // namespace tarvika
