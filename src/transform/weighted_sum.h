#pragma once
// The weighted sum of the selected variables of each case: sum of w_i x_i with the raw
// weights, one new variable. A case with any selected variable missing gets an empty cell.
// The describe command of the pattern analyses saves the same sum for its group's cases.

#include <span>
#include <string>
#include <vector>

#include "lang/language.h"
#include "transform/new_targets.h"

namespace tarvika {

class Workspace;

// The sum of w_i x_i of one case.
double WeightedSumValue(std::span<const double> x, std::span<const double> weights);

// The cell of every case, empty where a selected variable is missing (an empty cell, a text
// that is no number, a declared missing code) or the sum is not finite.
std::vector<std::string> WeightedSumCells(Workspace& ws, const std::vector<int>& sources,
                                          const std::vector<double>& weights);

// "wsum(2*A+1.5*B-0.5*C)" / "Súlyozott összeg(2*A+1,5*B-0,5*C)", the weights with the
// separator of the tables.
std::string WeightedSumLongName(const std::vector<std::string>& names, const std::vector<double>& weights,
                                char separator, Language lang);

// The run over all cases; placed as the statistical functions place their variable. False
// after telling the person (nothing changed) when no variable is selected, the weights do
// not match the variables one to one, or the target fails the checks.
bool ApplyWeightedSum(Workspace& ws, const std::vector<int>& sources, const std::vector<double>& weights,
                      const NewTarget& target);

}  // namespace tarvika
