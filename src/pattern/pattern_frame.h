#pragma once
// The run frame of the pattern analyses: the selected variables with their weights and
// names, the complete cases of the current group, and the saving of a cluster code.

#include <string>
#include <vector>

#include "pattern/cluster_quality.h"
#include "pattern/pattern_data.h"

namespace tarvika {

class AnalysisRun;

struct PatternVariables {
  std::vector<int> columns;              // variable numbers of the X variables, in order
  std::vector<std::string> names;        // short names
  std::vector<std::string> headings;     // short names as table headings
  std::vector<std::string> longNames;
  std::vector<double> weights;           // as given: blank 1, a negative one by its size
  int V() const { return static_cast<int>(columns.size()); }
};

PatternVariables ReadPatternVariables(const AnalysisRun& run);

// The complete cases of the current group over the variables (feed positions 1..V), with
// the value of an extra feed position (the starting code) when `extra` is set.
std::vector<CaseValues> ReadCompleteCases(const AnalysisRun& run, int V, int extra, std::vector<double>* extraValues,
                                          std::vector<char>* extraMissing);

// Mt, VarT and SDt of the unstandardized reports: the mean of the means, the weight-mean of
// the variances with the weights as given, and its root.
struct PooledScale {
  double mt = 0, varT = 0, sdT = 0;
};
PooledScale Pooled(const PatternSet& set);

// A figure of homogeneity as the reports show it: divided by VarT without standardization.
double HcShown(const PatternSet& set, double hc);

// Makes the empty variable of a cluster code at the end of the list; 0, after the report
// says so, when the variable limit keeps it from being made.
int NewClusterCodeVariable(AnalysisRun& run, const std::string& name, const std::string& longName);

// Writes the cluster code (1..k) of each complete case into a variable: made at the first
// group of a run (column 0), filled in at the next ones. Returns the column, 0 when the
// variable limit kept it from being made (the report then says so).
int SaveClusterCodes(AnalysisRun& run, const PatternSet& set, const std::vector<int>& codeOfPattern,
                     const std::string& name, const std::string& longName, int column);

}  // namespace tarvika
