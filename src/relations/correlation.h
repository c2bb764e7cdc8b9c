#pragma once
// Bivariate correlation and linear regression: for each X-Y pair of the relationship
// dialog (every X with every Y, or X[i] with Y[i] when paired; with no Y list every two X
// variables), per conditional group, the basic statistics, both regression lines with
// their error variances, Pearson r, the percentage bend Rpb, the winsorized Rw when
// trimming is asked for, Kendall's tau-b and tau and the shares of concordant and
// discordant pairs, each with its test and confidence limits; a summary table per group,
// the comparison of r between the conditional groups, and the regression estimate saved
// as a new variable.

namespace tarvika {

class AnalysisRun;

void BivariateCorrelation(AnalysisRun& run);

// The heading of a conditional group ("GROUP INDEX: ", the name, the cases read and those
// of the group); nothing without a conditional variable.
void WriteCorrelationGroupHeading(AnalysisRun& run);

}  // namespace tarvika
