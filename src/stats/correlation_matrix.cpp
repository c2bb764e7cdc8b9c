#include "stats/correlation_matrix.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

#include "numeric/parallel_parts.h"
#include "numeric/tolerance.h"
#include "stats/correlation.h"

namespace tarvika {

std::vector<double> MidRanksInOrder(std::span<const double> values) {
  const int n = static_cast<int>(values.size());
  std::vector<int> order(n);
  std::iota(order.begin(), order.end(), 0);
  std::stable_sort(order.begin(), order.end(), [&](int a, int b) { return values[a] < values[b]; });
  std::vector<double> ranks(n);
  for (int start = 0; start < n;) {
    int end = start + 1;
    while (end < n && values[order[end]] - values[order[end - 1]] < kZeroTolerance) ++end;
    const double rank = (start + 1 + end) / 2.0;  // the mean of positions start+1 .. end
    for (int k = start; k < end; ++k) ranks[order[k]] = rank;
    start = end;
  }
  return ranks;
}

double PairCoefficient(CorrelationKind kind, std::span<const double> x, std::span<const double> y) {
  switch (kind) {
    case CorrelationKind::Pearson:
      return MomentsOf(x, y).r;
    case CorrelationKind::Spearman: {
      const std::vector<double> rx = MidRanksInOrder(x), ry = MidRanksInOrder(y);
      return MomentsOf(rx, ry).r;
    }
    case CorrelationKind::KendallTauB:
      return KendallOf(x, y).tauB;
    case CorrelationKind::KendallTau:
      return KendallOf(x, y).tau;
  }
  return 0;
}

Matrix CoefficientMatrix(CorrelationKind kind, const std::vector<std::vector<double>>& columns, int threads) {
  const int p = static_cast<int>(columns.size());
  const long long n = p > 0 ? static_cast<long long>(columns[0].size()) : 0;
  Matrix m(p, std::vector<double>(p, 1));
  // Each column's ranks and each pair's coefficient depend on nothing else, so the parts
  // that compute them side by side give the matrix of one thread.
  const int ranked = kind == CorrelationKind::Spearman ? p : 0;
  std::vector<std::vector<double>> ranks(ranked);
  int parts = PartsFor(threads, ranked, n);
  ForEachItemInParts(parts, ranked, [&](int i) { ranks[i] = MidRanksInOrder(columns[i]); });
  std::vector<std::pair<int, int>> pairs;
  for (int i = 0; i < p; ++i) {
    for (int j = i + 1; j < p; ++j) pairs.emplace_back(i, j);
  }
  const int count = static_cast<int>(pairs.size());
  parts = PartsFor(threads, count, n);
  ForEachItemInParts(parts, count, [&](int k) {
    const auto [i, j] = pairs[k];
    const double c = kind == CorrelationKind::Spearman ? MomentsOf(ranks[i], ranks[j]).r
                                                       : PairCoefficient(kind, columns[i], columns[j]);
    m[i][j] = m[j][i] = c;
  });
  return m;
}

namespace {

// The inverse by Gauss-Jordan elimination with partial pivoting; false when singular.
bool Invert(Matrix& a) {
  const int n = static_cast<int>(a.size());
  Matrix inverse(n, std::vector<double>(n, 0));
  for (int i = 0; i < n; ++i) inverse[i][i] = 1;
  for (int col = 0; col < n; ++col) {
    int pivot = col;
    for (int r = col + 1; r < n; ++r) {
      if (std::fabs(a[r][col]) > std::fabs(a[pivot][col])) pivot = r;
    }
    if (std::fabs(a[pivot][col]) < kZeroTolerance) return false;
    std::swap(a[pivot], a[col]);
    std::swap(inverse[pivot], inverse[col]);
    const double d = a[col][col];
    for (int k = 0; k < n; ++k) {
      a[col][k] /= d;
      inverse[col][k] /= d;
    }
    for (int r = 0; r < n; ++r) {
      if (r == col || a[r][col] == 0) continue;
      const double f = a[r][col];
      for (int k = 0; k < n; ++k) {
        a[r][k] -= f * a[col][k];
        inverse[r][k] -= f * inverse[col][k];
      }
    }
  }
  a = std::move(inverse);
  return true;
}

}  // namespace

double PartialCoefficient(const Matrix& m, int i, int j, std::span<const int> controls) {
  std::vector<int> index = {i, j};
  index.insert(index.end(), controls.begin(), controls.end());
  Matrix sub(index.size(), std::vector<double>(index.size()));
  for (std::size_t a = 0; a < index.size(); ++a) {
    for (std::size_t b = 0; b < index.size(); ++b) sub[a][b] = m[index[a]][index[b]];
  }
  if (!Invert(sub) || sub[0][0] <= 0 || sub[1][1] <= 0) return std::numeric_limits<double>::quiet_NaN();
  return std::clamp(-sub[0][1] / std::sqrt(sub[0][0] * sub[1][1]), -1.0, 1.0);
}

double Determinant(Matrix m) {
  const int n = static_cast<int>(m.size());
  double det = 1;
  for (int col = 0; col < n; ++col) {
    int pivot = col;
    for (int r = col + 1; r < n; ++r) {
      if (std::fabs(m[r][col]) > std::fabs(m[pivot][col])) pivot = r;
    }
    if (m[pivot][col] == 0) return 0;
    if (pivot != col) {
      std::swap(m[pivot], m[col]);
      det = -det;
    }
    det *= m[col][col];
    for (int r = col + 1; r < n; ++r) {
      const double f = m[r][col] / m[col][col];
      for (int k = col; k < n; ++k) m[r][k] -= f * m[col][k];
    }
  }
  return det;
}

}  // namespace tarvika
