#include "pattern/pattern_data.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace tarvika {

double PatternSet::BackTransform(double z, int v) const {
  double value = standardized && sd[v] > kPatternZero ? z * sd[v] + mean[v] : z;
  return value * value <= kPatternZero ? 0 : value;
}

PatternSet CollapsePatterns(const std::vector<CaseValues>& cases, int V) {
  PatternSet set;
  set.V = V;
  set.N = static_cast<int>(cases.size());
  set.mean.assign(V, 0);
  set.variance.assign(V, 0);
  set.sd.assign(V, 0);
  set.min.assign(V, 999999999.0);
  set.max.assign(V, -999999999.0);
  std::vector<double> ss(V, 0);
  for (int i = 0; i < set.N; ++i) {
    set.caseRows.push_back(cases[i].row);
    for (int v = 0; v < V; ++v) {
      const double x = cases[i].values[v];
      const double delta = x - set.mean[v];
      set.mean[v] += delta / (i + 1);
      ss[v] += delta * (x - set.mean[v]);
      set.min[v] = std::min(set.min[v], x);
      set.max[v] = std::max(set.max[v], x);
    }
  }
  for (int v = 0; v < V; ++v) {
    const double var = set.N > 1 ? ss[v] / (set.N - 1) : 0;
    set.variance[v] = var > kPatternZero ? var : 0;
    set.sd[v] = std::sqrt(set.variance[v]);
  }

  // Ties: the cases sorted by their values bring tied cases together; each case joins the
  // pattern of the earliest case it is tied with.
  std::vector<int> order(set.N);
  std::iota(order.begin(), order.end(), 0);
  auto less = [&](int a, int b) {
    const auto& x = cases[a].values;
    const auto& y = cases[b].values;
    for (int v = 0; v < V; ++v) {
      if (x[v] != y[v]) return x[v] < y[v];
    }
    return a < b;
  };
  std::sort(order.begin(), order.end(), less);
  auto tied = [&](int a, int b) {
    for (int v = 0; v < V; ++v) {
      if (std::fabs(cases[a].values[v] - cases[b].values[v]) > kPatternZero) return false;
    }
    return true;
  };
  std::vector<int> leader(set.N);
  for (std::size_t i = 0; i < order.size();) {
    std::size_t j = i + 1;
    while (j < order.size() && tied(order[i], order[j])) ++j;
    const int first = *std::min_element(order.begin() + i, order.begin() + j);
    for (std::size_t t = i; t < j; ++t) leader[order[t]] = first;
    i = j;
  }
  set.patternOfCase.assign(set.N, -1);
  for (int i = 0; i < set.N; ++i) {
    if (leader[i] == i) {
      set.patternOfCase[i] = set.D++;
      set.multiplicity.push_back(1);
      set.firstRow.push_back(cases[i].row);
      set.x.insert(set.x.end(), cases[i].values.begin(), cases[i].values.end());
    } else {
      set.patternOfCase[i] = set.patternOfCase[leader[i]];
      ++set.multiplicity[set.patternOfCase[i]];
    }
  }
  return set;
}

bool NormalizeWeights(PatternSet& set, const std::vector<double>& weights) {
  set.rawWeight.assign(set.V, 1);
  set.weight.assign(set.V, 0);
  double sum = 0;
  for (int v = 0; v < set.V; ++v) {
    set.rawWeight[v] = std::fabs(weights[v]);
    set.weight[v] = set.variance[v] <= kPatternZero ? 0 : set.rawWeight[v];
    sum += set.weight[v];
  }
  if (sum <= kPatternZero) return false;
  for (double& w : set.weight) w /= sum;
  return true;
}

void Standardize(PatternSet& set) {
  set.standardized = true;
  for (int p = 0; p < set.D; ++p) {
    for (int v = 0; v < set.V; ++v) {
      if (set.sd[v] > kPatternZero) {
        double& x = set.x[static_cast<std::size_t>(p) * set.V + v];
        x = (x - set.mean[v]) / set.sd[v];
      }
    }
  }
}

double Distance(const double* a, const double* b, const std::vector<double>& weight, DistanceType type) {
  const int V = static_cast<int>(weight.size());
  if (type == DistanceType::Ased) return Ased(a, b, weight.data(), V);
  double ma = 0, mb = 0;
  for (int v = 0; v < V; ++v) {
    ma += weight[v] * a[v];
    mb += weight[v] * b[v];
  }
  double sab = 0, saa = 0, sbb = 0;
  for (int v = 0; v < V; ++v) {
    sab += weight[v] * (a[v] - ma) * (b[v] - mb);
    saa += weight[v] * (a[v] - ma) * (a[v] - ma);
    sbb += weight[v] * (b[v] - mb) * (b[v] - mb);
  }
  double r;
  if (saa < kPatternZero && sbb < kPatternZero) {
    r = 1;
  } else if (saa < kPatternZero || sbb < kPatternZero) {
    r = 0;
  } else {
    r = sab / std::sqrt(saa * sbb);
  }
  return r * r <= kPatternZero ? 1 : 1 - r;
}

DistanceSummary SummarizeDistances(const PatternSet& set, DistanceType type) {
  DistanceSummary s;
  const double pairs = 0.5 * set.N * (set.N - 1.0);
  if (pairs <= 0) return s;
  // Two passes: the mean first, then the squares around it.
  double sum = 0;
  for (int a = 0; a < set.D; ++a) {
    for (int b = a + 1; b < set.D; ++b) {
      sum += static_cast<double>(set.multiplicity[a]) * set.multiplicity[b] *
             Distance(set.Pattern(a), set.Pattern(b), set.weight, type);
    }
  }
  s.mean = sum / pairs;
  double ss = 0;
  for (int a = 0; a < set.D; ++a) {
    const double n = set.multiplicity[a];
    ss += 0.5 * n * (n - 1) * s.mean * s.mean;
    for (int b = a + 1; b < set.D; ++b) {
      const double d = Distance(set.Pattern(a), set.Pattern(b), set.weight, type) - s.mean;
      ss += n * set.multiplicity[b] * d * d;
    }
  }
  s.sd = ss > kPatternZero && pairs > 1 ? std::sqrt(ss / (pairs - 1)) : 0;
  return s;
}

}  // namespace tarvika
