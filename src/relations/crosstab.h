#pragma once
// The two-way frequency analysis of discrete variables: for each pair of a row variable
// (the X list) and a column variable (the Y list), per conditional group, the frequency
// table, the percent tables, the measures of relationship, the test of independence and
// the pairwise comparisons of categories that the dialog's toggles ask for.

namespace tarvika {

class AnalysisRun;
struct AnalysisRequest;

// The optional sections of a crosstab; all off, the frequency table, the measures of
// relationship and the test of independence remain.
struct CrosstabSections {
  bool expected = false, rowPercents = false, columnPercents = false, totalPercents = false;
  bool monotonicity = false, prediction = false, pairwise = false, kappa = false;
};
// The sections the relationship dialog's toggles ask for.
CrosstabSections RequestedSections(const AnalysisRequest& request);

void Crosstab(AnalysisRun& run);

// The crosstab of one pair in the current group of the run, from the heading on: the
// categories of a variable with a group definition are its groups, else the values found.
// The one-way comparison of groups writes its nominal dependents through this.
void WriteCrosstab(AnalysisRun& run, int rowVariable, int columnVariable, const CrosstabSections& sections);

}  // namespace tarvika
