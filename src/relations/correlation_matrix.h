#pragma once
// The matrix of a correlation measure (Pearson, Spearman, Kendall's tau-b and tau) of the
// selected variables on their complete cases, per conditional group: the square matrix of
// the X variables, or X by Y; partial coefficients when variables are controlled (role C);
// p values, the ordered listing and Bartlett's test of the independence of the whole set.

namespace tarvika {

class AnalysisRun;

void CorrelationMatrix(AnalysisRun& run);

}  // namespace tarvika
