#pragma once
// The statistical functions over the selected variables of a case: one new variable whose
// cell in each case is the mean, SD, variance, minimum, maximum or median of the case's valid
// values among the selected variables, or the number of usable or missing ones.

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "lang/language.h"
#include "transform/new_targets.h"

namespace tarvika {

class Workspace;

// In the order of the dialog's list (1 to 8).
enum class RowStatistic { Mean = 1, SD, Variance, Minimum, Maximum, Median, Usable, Missing };

// "mean", "sd", "variance", "min", "max", "median", "usable", "missing".
std::optional<RowStatistic> RowStatisticOf(std::string_view word);

// The statistic of the valid values of one case (reordered in place) with `missing` values
// left out; nullopt when it has no value: no valid value for the mean, minimum, maximum and
// median, none for the variance and SD either (one value gives 0). The counts always have one.
std::optional<double> RowStatisticValue(RowStatistic f, std::span<double> valid, int missing);

// "MEAN of variables: a, b" / "Átlag(a, b)"; the counts "NUMBER of usable values of
// variables: a, b" / "a, b érvényes értékeinek a száma".
std::string RowStatisticLongName(RowStatistic f, const std::vector<std::string>& names, Language lang);

// The run over all cases. A Before target goes before the leftmost selected variable, an
// After target after the rightmost one. False (after telling the person, nothing changed) when no
// variable is selected, the target is the same variable or its name fails the checks.
bool ApplyStatFunction(Workspace& ws, RowStatistic f, const std::vector<int>& sources, const NewTarget& target);

}  // namespace tarvika
