#pragma once
// The rule lines of recoding and counting. A line starts with its kind in brackets:
//   (a) v -> new              the cell text is v (or the same number, to four decimals)
//   (b) Missing -> new        the cell is empty or holds a declared missing code
//   (c) low ... high -> new   low <= value <= high     also "(c) low through high"
//   (d) minimum ... high      value <= high            also "(d) Lowest through high"
//   (e) low ... maximum       value >= low             also "(e) low through highest"
//   (f) Else -> new           always
// The new value is a number, "SYSMIS" (the cell becomes empty) or "same" ("Ugyanaz": the
// old cell is copied). Count lines are the part before the arrow. Numbers are compared as
// four-decimal fixed point: value times 10000, rounded to a whole number.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tarvika {

enum class RuleKind { Value, Missing, Range, Lowest, Highest, Else };
enum class NewValue { None, Number, SysMis, Same };

struct RecodeRule {
  RuleKind kind = RuleKind::Else;
  std::string text;          // (a): the value as written
  std::int64_t low = 0;      // (a), (c), (e): fixed point
  std::int64_t high = 0;     // (c), (d): fixed point
  bool textIsNumber = false; // (a): low holds its value
  NewValue newValue = NewValue::None;
  double number = 0;         // NewValue::Number, held to four decimals
};

// A value in the four-decimal fixed point of the comparisons.
std::int64_t FixedPoint(double value);

// A line of the recoding list (withNewValue) or of the count list; nullopt when it is not in
// one of the forms above. Numbers may use either decimal separator.
std::optional<RecodeRule> ParseRule(std::string_view line, bool withNewValue, char separator);

// The cell as a rule sees it.
struct RuleCell {
  std::string_view text;
  bool isNumber = false;
  std::int64_t fixed = 0;  // when isNumber
  bool missing = false;    // empty, or a declared missing code
};

bool RuleFits(const RecodeRule& rule, const RuleCell& cell);

}  // namespace tarvika
