#pragma once
// The matrix of a correlation measure (Pearson, Spearman, Kendall's tau-b and tau) of the
// selected variables on their complete cases, per conditional group: the square matrix of
// the X variables, or X by Y (only X[i] with Y[i] when paired); partial coefficients when
// variables are controlled (role C); p values, the ordered listing, Bartlett's test of the
// independence of the whole set, and the comparison of the conditional groups.

namespace tarvika {

class AnalysisRun;

void CorrelationMatrix(AnalysisRun& run);

}  // namespace tarvika
