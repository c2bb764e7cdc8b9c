#include "stats/distribution_comparison.h"

#include <algorithm>
#include <cmath>

namespace tarvika {

constexpr int kCells = 101;

CellTable BinIntoCells(const std::vector<std::vector<double>>& values) {
  CellTable t;
  bool first = true;
  double high = 0;
  for (const auto& v : values) {
    t.sizes.push_back(static_cast<int>(v.size()));
    for (double x : v) {
      if (first || x < t.rangeMin) t.rangeMin = x;
      if (first || x > high) high = x;
      first = false;
    }
  }
  t.cellWidth = (high - t.rangeMin) / 100;
  if (t.cellWidth <= 0.0001) return t;
  for (const auto& v : values) {
    std::vector<int> c(kCells, 0);
    for (double x : v) ++c[std::clamp(static_cast<int>(std::lround((x - t.rangeMin) / t.cellWidth)), 0, 100)];
    t.counts.push_back(std::move(c));
  }
  return t;
}

std::vector<std::vector<int>> CumulativeCounts(const CellTable& cells) {
  std::vector<std::vector<int>> cum;
  for (const auto& c : cells.counts) {
    std::vector<int> s(c.size());
    int sum = 0;
    for (std::size_t i = 0; i < c.size(); ++i) s[i] = sum += c[i];
    cum.push_back(std::move(s));
  }
  return cum;
}

std::vector<int> SelectCutpoints(const std::vector<double>& pooledCounts, double epsmin, int maxCutpoints) {
  const int cells = static_cast<int>(pooledCounts.size());
  double total = 0;
  for (double c : pooledCounts) total += c;
  if (total <= 0) return {};
  std::vector<double> cum(cells);
  double running = 0;
  for (int c = 0; c < cells; ++c) cum[c] = (running += pooledCounts[c]) / total;
  int first = cells - 1;
  for (int c = 0; c < cells; ++c) {
    if (pooledCounts[c] > 0 && cum[c] >= epsmin && total * cum[c] > 3) {
      first = c;
      break;
    }
  }
  int last = 0;
  for (int c = cells - 2; c >= 0; --c) {
    if (pooledCounts[c] > 0 && cum[c] + epsmin <= 1 && total * cum[c] < total - 3) {
      last = c;
      break;
    }
  }
  if (last < first) {
    return {cum[last] * (1 - cum[last]) > cum[first] * (1 - cum[first]) ? last : first};
  }
  std::vector<int> numbered;
  for (int c = first; c <= last; ++c) {
    if (pooledCounts[c] > 0) numbered.push_back(c);
  }
  if (static_cast<int>(numbered.size()) <= maxCutpoints) return numbered;
  std::vector<int> chosen = {first, last};
  while (static_cast<int>(chosen.size()) < maxCutpoints) {
    // The adjacent chosen pair with the widest gap of cum that has a cell between them.
    int widest = -1;
    for (std::size_t i = 0; i + 1 < chosen.size(); ++i) {
      const bool between = std::any_of(numbered.begin(), numbered.end(),
                                       [&](int c) { return c > chosen[i] && c < chosen[i + 1]; });
      if (!between) continue;
      // Shares that differ only by rounding count as a tie, which the first pair wins.
      if (widest < 0 ||
          cum[chosen[i + 1]] - cum[chosen[i]] > cum[chosen[widest + 1]] - cum[chosen[widest]] + 1e-12) {
        widest = static_cast<int>(i);
      }
    }
    if (widest < 0) break;
    const double middle = (cum[chosen[widest]] + cum[chosen[widest + 1]]) / 2;
    int best = -1;
    for (int c : numbered) {
      if (c <= chosen[widest] || c >= chosen[widest + 1]) continue;
      if (best < 0 || std::fabs(cum[c] - middle) < std::fabs(cum[best] - middle) - 1e-12) best = c;
    }
    chosen.insert(chosen.begin() + widest + 1, best);
  }
  return chosen;
}

std::string_view ChiSquareCaseMark(double p) {
  if (p <= 0.00144) return "***";
  if (p <= 0.01044) return "**";
  if (p <= 0.05044) return "*";
  if (p <= 0.10044) return "+";
  return "";
}

CutComparison CompareAtCut(int a, int b, int n1, int n2) {
  CutComparison r;
  const double A = a, B = b, A2 = n1 - a, B2 = n2 - b;
  const double N = n1 + n2;
  if ((A + B) * (A2 + B2) <= 0) return r;
  r.defined = true;
  const double q = (n1 * B2 + A * n2) / (2.0 * n1 * n2);
  r.correctPercent = 100 * std::max(q, 1 - q);
  r.phi = (A * B2 - B * A2) / std::sqrt(static_cast<double>(n1) * n2) / std::sqrt((A + B) * (A2 + B2));
  r.oddsDefined = A * B2 > 1e-8;
  if (r.oddsDefined) r.odds = B * A2 / (A * B2);
  const double smallestExpected = std::min(n1, n2) * std::min(A + B, A2 + B2) / N;
  if (smallestExpected >= 20) {
    r.chiSquare = r.phi * r.phi * N;
    r.p = NormalP2(std::fabs(r.phi) * std::sqrt(N));
  } else {
    r.fisher = true;
    r.p = Marked(FisherExactP2(a, n1 - a, b, n2 - b).p2);
  }
  return r;
}

}  // namespace tarvika
