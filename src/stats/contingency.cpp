#include "stats/contingency.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tarvika {

namespace {

constexpr double kUndefined = std::numeric_limits<double>::quiet_NaN();

double Ratio(double numerator, double denominator) {
  return denominator > 0 || denominator < 0 ? numerator / denominator : kUndefined;
}

double FLogF(double x) { return x > 0 ? x * std::log(x) : 0; }

// Lambda and tau of predicting the column from the row, for counts or for proportions:
// `weights` is the total of the table, f its cells, rows and columns its margins.
void PredictColumn(const std::vector<std::vector<double>>& f, const std::vector<double>& rows,
                   const std::vector<double>& columns, double total, double& lambda, double& tau) {
  double sumRowMax = 0, sumSquaredOverRow = 0;
  for (std::size_t i = 0; i < f.size(); ++i) {
    sumRowMax += *std::max_element(f[i].begin(), f[i].end());
    for (double x : f[i]) sumSquaredOverRow += x * x / rows[i];
  }
  const double maxColumn = *std::max_element(columns.begin(), columns.end());
  double squaredColumns = 0;
  for (double c : columns) squaredColumns += c * c;
  lambda = Ratio(sumRowMax - maxColumn, total - maxColumn);
  tau = Ratio(sumSquaredOverRow - squaredColumns / total, total - squaredColumns / total);
}

// Every row of the table divided by its margin.
Contingency RowProportions(const Contingency& t) {
  std::vector<std::vector<double>> p = t.f;
  for (int i = 0; i < t.R(); ++i) {
    for (double& x : p[i]) x /= t.rows[i];
  }
  return MakeContingency(std::move(p));
}

}  // namespace

Contingency MakeContingency(std::vector<std::vector<double>> f) {
  Contingency t;
  t.f = std::move(f);
  const std::size_t columns = t.f.empty() ? 0 : t.f[0].size();
  t.rows.assign(t.f.size(), 0);
  t.columns.assign(columns, 0);
  for (std::size_t i = 0; i < t.f.size(); ++i) {
    for (std::size_t j = 0; j < columns; ++j) {
      t.rows[i] += t.f[i][j];
      t.columns[j] += t.f[i][j];
    }
    t.n += t.rows[i];
  }
  return t;
}

Contingency Transposed(const Contingency& t) {
  std::vector<std::vector<double>> f(t.C(), std::vector<double>(t.R()));
  for (int i = 0; i < t.R(); ++i) {
    for (int j = 0; j < t.C(); ++j) f[j][i] = t.f[i][j];
  }
  return MakeContingency(std::move(f));
}

bool IsComplete(const Contingency& t) {
  auto positive = [](double x) { return x > 0; };
  return t.R() > 0 && t.C() > 0 && std::all_of(t.rows.begin(), t.rows.end(), positive) &&
         std::all_of(t.columns.begin(), t.columns.end(), positive);
}

IndependenceTest PearsonIndependence(const Contingency& t) {
  IndependenceTest test;
  test.df = (t.R() - 1) * (t.C() - 1);
  test.minimumExpected = std::numeric_limits<double>::max();
  for (int i = 0; i < t.R(); ++i) {
    for (int j = 0; j < t.C(); ++j) {
      const double e = t.Expected(i, j);
      test.chiSquare += (t.f[i][j] - e) * (t.f[i][j] - e) / e;
      test.minimumExpected = std::min(test.minimumExpected, e);
    }
  }
  test.p = ChiSquareP(test.chiSquare, test.df);
  return test;
}

NominalAssociation NominalMeasures(const Contingency& t, double chiSquare) {
  NominalAssociation m;
  m.cramerV = std::sqrt(Ratio(chiSquare, t.n * (std::min(t.R(), t.C()) - 1)));
  m.contingencyCoefficient = std::sqrt(chiSquare / (chiSquare + t.n));
  return m;
}

TwoByTwoMeasures TwoByTwo(const Contingency& t) {
  TwoByTwoMeasures m;
  double a = t.f[0][0], b = t.f[0][1], c = t.f[1][0], d = t.f[1][1];
  const double ad = a * d, bc = b * c;
  m.yuleQ = Ratio(ad - bc, ad + bc);
  m.yuleY = Ratio(std::sqrt(ad) - std::sqrt(bc), std::sqrt(ad) + std::sqrt(bc));
  m.jaccard = Ratio(d, b + c + d);
  if (a == 0 || b == 0 || c == 0 || d == 0) {
    m.oddsCorrected = true;
    a += 0.5, b += 0.5, c += 0.5, d += 0.5;
  }
  m.oddsRatio = a * d / (b * c);
  return m;
}

Monotonicity MonotonicityMeasures(const Contingency& t) {
  Monotonicity m;
  const int rows = t.R(), columns = t.C();
  // prefix[i][j]: the count in rows < i and columns < j; every corner sum of a cell is a
  // rectangle of it.
  std::vector<std::vector<double>> prefix(rows + 1, std::vector<double>(columns + 1, 0));
  for (int i = 0; i < rows; ++i) {
    for (int j = 0; j < columns; ++j) {
      prefix[i + 1][j + 1] = t.f[i][j] + prefix[i][j + 1] + prefix[i + 1][j] - prefix[i][j];
    }
  }
  auto block = [&](int r0, int r1, int c0, int c1) {
    return prefix[r1][c1] - prefix[r0][c1] - prefix[r1][c0] + prefix[r0][c0];
  };
  auto corner = [&](int i, int j, bool below, bool right) {
    return block(below ? i + 1 : 0, below ? rows : i, right ? j + 1 : 0, right ? columns : j);
  };
  std::vector<std::vector<double>> difference(rows, std::vector<double>(columns));
  for (int i = 0; i < rows; ++i) {
    for (int j = 0; j < columns; ++j) {
      const double belowRight = corner(i, j, true, true), belowLeft = corner(i, j, true, false);
      m.concordant += t.f[i][j] * belowRight;
      m.discordant += t.f[i][j] * belowLeft;
      difference[i][j] = belowRight + corner(i, j, false, false) - belowLeft - corner(i, j, false, true);
    }
  }
  const double cd = m.concordant - m.discordant;
  double squaredRows = 0, squaredColumns = 0, variance = -4 * cd * cd / t.n;
  for (double r : t.rows) squaredRows += r * r;
  for (double c : t.columns) squaredColumns += c * c;
  for (int i = 0; i < rows; ++i) {
    for (int j = 0; j < columns; ++j) variance += t.f[i][j] * difference[i][j] * difference[i][j];
  }
  const double n2 = t.n * t.n;
  m.gamma = Ratio(cd, m.concordant + m.discordant);
  m.tauB = Ratio(2 * cd, std::sqrt((n2 - squaredRows) * (n2 - squaredColumns)));
  m.somersCR = Ratio(2 * cd, n2 - squaredRows);
  m.somersRC = Ratio(2 * cd, n2 - squaredColumns);
  // Rounding can leave a tiny negative variance where it is 0 (every pair tied).
  m.z = variance > 1e-9 * n2 ? cd / std::sqrt(variance) : kUndefined;
  m.p = std::isnan(m.z) ? Marked(1) : NormalP2(m.z);
  return m;
}

PredictiveAssociation PredictiveMeasures(const Contingency& t) {
  PredictiveAssociation m;
  const Contingency turned = Transposed(t);
  PredictColumn(t.f, t.rows, t.columns, t.n, m.lambdaCR, m.tauCR);
  PredictColumn(turned.f, turned.rows, turned.columns, turned.n, m.lambdaRC, m.tauRC);
  const Contingency byRow = RowProportions(t), byColumn = RowProportions(turned);
  PredictColumn(byRow.f, byRow.rows, byRow.columns, byRow.n, m.lambdaStarCR, m.tauStarCR);
  PredictColumn(byColumn.f, byColumn.rows, byColumn.columns, byColumn.n, m.lambdaStarRC, m.tauStarRC);
  return m;
}

Uncertainty UncertaintyCoefficients(const Contingency& t) {
  double cells = 0, rows = 0, columns = 0;
  for (const auto& row : t.f) {
    for (double x : row) cells += FLogF(x);
  }
  for (double r : t.rows) rows += FLogF(r);
  for (double c : t.columns) columns += FLogF(c);
  // N times the entropies: H(R) N = N ln N - sum r ln r, and so on.
  const double nLogN = FLogF(t.n);
  const double hRows = nLogN - rows, hColumns = nLogN - columns, hCells = nLogN - cells;
  const double shared = hRows + hColumns - hCells;
  return {Ratio(shared, hColumns), Ratio(shared, hRows)};
}

Kappa CohenKappa(const Contingency& t) {
  Kappa k;
  double spread = 0;
  for (int i = 0; i < t.R(); ++i) {
    const double pRow = t.rows[i] / t.n, pColumn = t.columns[i] / t.n;
    k.observed += t.f[i][i] / t.n;
    k.chance += pRow * pColumn;
    spread += pRow * pColumn * (pRow + pColumn);
  }
  k.kappa = Ratio(k.observed - k.chance, 1 - k.chance);
  const double variance = k.chance + k.chance * k.chance - spread;
  k.se0 = variance > 0 ? std::sqrt(variance) / ((1 - k.chance) * std::sqrt(t.n)) : kUndefined;
  k.z = Ratio(k.kappa, k.se0);
  k.p = std::isnan(k.z) ? Marked(1) : NormalP2(k.z);
  return k;
}

double RowPairChiSquare(const Contingency& t, int a, int b) {
  const double total = t.rows[a] + t.rows[b];
  double chi = 0;
  for (int j = 0; j < t.C(); ++j) {
    const double column = t.f[a][j] + t.f[b][j];
    if (column <= 0) continue;
    for (int i : {a, b}) {
      const double e = t.rows[i] * column / total;
      chi += (t.f[i][j] - e) * (t.f[i][j] - e) / e;
    }
  }
  return chi;
}

double JaccardCoefficient(int both, int firstOnly, int secondOnly) {
  return Ratio(both, both + firstOnly + secondOnly);
}

}  // namespace tarvika
