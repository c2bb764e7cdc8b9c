#include "transform/recode_rules.h"

#include <cmath>

#include "lang/utf8.h"
#include "workspace/numbers.h"

namespace tarvika {
namespace {

std::string_view Trim(std::string_view s) {
  while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) s.remove_prefix(1);
  while (!s.empty() && (s.back() == ' ' || s.back() == '\t' || s.back() == '\r')) s.remove_suffix(1);
  return s;
}

std::optional<std::int64_t> FixedNumber(std::string_view text, char separator) {
  auto value = ParseEitherSeparator(Trim(text), separator);
  if (!value || !std::isfinite(*value) || std::fabs(*value) > 1e14) return std::nullopt;
  return FixedPoint(*value);
}

// "a ... b" or "a through b": the two sides, trimmed.
std::optional<std::pair<std::string_view, std::string_view>> RangeSides(std::string_view text) {
  for (std::string_view joint : {std::string_view("..."), std::string_view(" through ")}) {
    const std::size_t at = text.find(joint);
    if (at != std::string_view::npos) return std::pair{Trim(text.substr(0, at)), Trim(text.substr(at + joint.size()))};
  }
  return std::nullopt;
}

bool ParseOldValue(RecodeRule& rule, std::string_view old, char separator) {
  switch (rule.kind) {
    case RuleKind::Value: {
      if (old.empty()) return false;
      rule.text = std::string(old);
      if (auto fixed = FixedNumber(old, separator)) {
        rule.textIsNumber = true;
        rule.low = *fixed;
      }
      return true;
    }
    case RuleKind::Missing:
      return EqualIgnoringCase(old, "Missing");
    case RuleKind::Else:
      return EqualIgnoringCase(old, "Else");
    case RuleKind::Range:
    case RuleKind::Lowest:
    case RuleKind::Highest: {
      const auto sides = RangeSides(old);
      if (!sides) return false;
      auto [left, right] = *sides;
      if (rule.kind == RuleKind::Lowest) {
        if (!EqualIgnoringCase(left, "minimum") && !EqualIgnoringCase(left, "Lowest")) return false;
      } else if (auto low = FixedNumber(left, separator)) {
        rule.low = *low;
      } else {
        return false;
      }
      if (rule.kind == RuleKind::Highest) return EqualIgnoringCase(right, "maximum") || EqualIgnoringCase(right, "highest");
      auto high = FixedNumber(right, separator);
      if (!high) return false;
      rule.high = *high;
      return true;
    }
  }
  return false;
}

bool ParseNewValue(RecodeRule& rule, std::string_view text, char separator) {
  if (text == "SYSMIS") {
    rule.newValue = NewValue::SysMis;
  } else if (EqualIgnoringCase(text, "same") || EqualIgnoringCase(text, "Ugyanaz")) {
    rule.newValue = NewValue::Same;
  } else if (auto number = ParseFourDecimals(text, separator)) {
    rule.newValue = NewValue::Number;
    rule.number = *number;
  } else {
    return false;
  }
  return true;
}

}  // namespace

std::int64_t FixedPoint(double value) { return std::llround(value * 10000); }

std::optional<RecodeRule> ParseRule(std::string_view line, bool withNewValue, char separator) {
  line = Trim(line);
  if (line.size() < 4 || line[0] != '(' || line[2] != ')' || line[1] < 'a' || line[1] > 'f') return std::nullopt;
  RecodeRule rule;
  rule.kind = static_cast<RuleKind>(line[1] - 'a');
  std::string_view rest = Trim(line.substr(3));
  const std::size_t arrow = rest.find("->");
  if (withNewValue != (arrow != std::string_view::npos)) return std::nullopt;
  if (withNewValue) {
    if (!ParseNewValue(rule, Trim(rest.substr(arrow + 2)), separator)) return std::nullopt;
    rest = Trim(rest.substr(0, arrow));
  }
  if (!ParseOldValue(rule, rest, separator)) return std::nullopt;
  return rule;
}

bool RuleFits(const RecodeRule& rule, const RuleCell& cell) {
  switch (rule.kind) {
    case RuleKind::Value:
      return cell.text == rule.text || (rule.textIsNumber && cell.isNumber && cell.fixed == rule.low);
    case RuleKind::Missing:
      return cell.missing;
    case RuleKind::Range:
      return cell.isNumber && rule.low <= cell.fixed && cell.fixed <= rule.high;
    case RuleKind::Lowest:
      return cell.isNumber && cell.fixed <= rule.high;
    case RuleKind::Highest:
      return cell.isNumber && cell.fixed >= rule.low;
    case RuleKind::Else:
      return true;
  }
  return false;
}

}  // namespace tarvika
