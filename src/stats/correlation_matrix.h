#pragma once
// Matrices of correlation measures of several variables on their complete cases: Pearson,
// Spearman (Pearson of mid-ranks), Kendall's tau-b and tau; partial coefficients with
// controlled variables; the determinant behind the test of independence of the whole set.

#include <span>
#include <vector>

namespace tarvika {

enum class CorrelationKind { Pearson, Spearman, KendallTauB, KendallTau };

// A square matrix of doubles by rows.
using Matrix = std::vector<std::vector<double>>;

// The mid-ranks of the values in their own order; values within the tolerance are ties.
std::vector<double> MidRanksInOrder(std::span<const double> values);

// The coefficient of one pair of the measure.
double PairCoefficient(CorrelationKind kind, std::span<const double> x, std::span<const double> y);

// The matrix of the measure between all columns (each a variable's values on the same cases),
// its pairs shared among `threads` threads; the same matrix for any number.
Matrix CoefficientMatrix(CorrelationKind kind, const std::vector<std::vector<double>>& columns, int threads = 1);

// The partial coefficient of variables i and j with the variables `controls` held constant,
// from the matrix of all of them: -P_ij / sqrt(P_ii P_jj) with P the inverse of the
// submatrix of i, j and the controls. NaN when that submatrix is singular.
double PartialCoefficient(const Matrix& m, int i, int j, std::span<const int> controls);

// The determinant by elimination with partial pivoting.
double Determinant(Matrix m);

}  // namespace tarvika
