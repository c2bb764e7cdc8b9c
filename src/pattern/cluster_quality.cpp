#include "pattern/cluster_quality.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tarvika {

Partition PartitionFromLabels(const PatternSet& set, const std::vector<int>& clusterOfPattern, int k) {
  Partition partition;
  partition.clusterOfPattern = clusterOfPattern;
  partition.clusters.assign(k, Cluster{});
  for (Cluster& c : partition.clusters) {
    c.firstPattern = -1;
    c.mean.assign(set.V, 0);
    c.variance.assign(set.V, 0);
    c.min.assign(set.V, 999999999.0);
    c.max.assign(set.V, -999999999.0);
  }
  std::vector<double> ss(static_cast<std::size_t>(k) * set.V, 0);
  for (int p = 0; p < set.D; ++p) {
    Cluster& c = partition.clusters[clusterOfPattern[p]];
    if (c.firstPattern < 0) c.firstPattern = p;
    const double w = set.multiplicity[p];
    c.size += set.multiplicity[p];
    ++c.distinct;
    const double* x = set.Pattern(p);
    for (int v = 0; v < set.V; ++v) {
      // Welford's update with a weight.
      const double delta = x[v] - c.mean[v];
      c.mean[v] += delta * w / c.size;
      ss[static_cast<std::size_t>(clusterOfPattern[p]) * set.V + v] += w * delta * (x[v] - c.mean[v]);
      c.min[v] = std::min(c.min[v], x[v]);
      c.max[v] = std::max(c.max[v], x[v]);
    }
  }
  for (int j = 0; j < k; ++j) {
    Cluster& c = partition.clusters[j];
    for (int v = 0; v < set.V; ++v) {
      c.variance[v] = c.size > 1 ? std::max(0.0, ss[static_cast<std::size_t>(j) * set.V + v]) / (c.size - 1) : 0;
    }
  }
  return partition;
}

double WithinSumOfSquares(const Partition& partition) {
  double ss = 0;
  for (const Cluster& c : partition.clusters) {
    for (double var : c.variance) ss += (c.size - 1) * var;
  }
  return ss;
}

double TotalSumOfSquares(const PatternSet& set) {
  double total = 0;
  for (int v = 0; v < set.V; ++v) {
    if (set.standardized) {
      total += set.variance[v] > kPatternZero ? set.N - 1.0 : 0.0;
    } else {
      total += (set.N - 1.0) * set.variance[v];
    }
  }
  return total;
}

double EessPercent(double totalEss, double ssCluster) {
  return totalEss > kPatternZero ? (totalEss - ssCluster) * 100 / totalEss : 100;
}

std::vector<double> HomogeneityCoefficients(const PatternSet& set, const Partition& partition, DistanceType type,
                                            HcRule rule) {
  const int k = partition.K();
  std::vector<double> hc(k, 0);
  if (type == DistanceType::Ased) {
    for (int j = 0; j < k; ++j) {
      const Cluster& c = partition.clusters[j];
      if (c.size < 2) continue;
      double sum = 0;
      for (int v = 0; v < set.V; ++v) {
        sum += (rule == HcRule::WeightedPairs ? set.weight[v] : 1.0 / set.V) * c.variance[v];
      }
      hc[j] = 2 * sum > kPatternZero ? 2 * sum : 0;
    }
    return hc;
  }
  // Pearson: the mean similarity over the pairs of cases, identical cases similar by 1.
  std::vector<double> sum(k, 0);
  bool known = true;
  for (int j = 0; j < k; ++j) {
    sum[j] = partition.clusters[j].pairSimilarity;
    known = known && sum[j] >= 0;
  }
  if (!known) std::fill(sum.begin(), sum.end(), 0.0);
  for (int a = 0; a < set.D && !known; ++a) {
    const int j = partition.clusterOfPattern[a];
    const double na = set.multiplicity[a];
    sum[j] += 0.5 * na * (na - 1);
    for (int b = a + 1; b < set.D; ++b) {
      if (partition.clusterOfPattern[b] != j) continue;
      sum[j] += na * set.multiplicity[b] * (1 - Distance(set.Pattern(a), set.Pattern(b), set.weight, type));
    }
  }
  for (int j = 0; j < k; ++j) {
    const double n = partition.clusters[j].size;
    hc[j] = n < 2 ? 1 : (2 * sum[j] / (n * (n - 1)));
    if (n >= 2 && std::fabs(sum[j]) <= kPatternZero) hc[j] = 0;
  }
  return hc;
}

double ClosestMeans(const PatternSet& set, const Partition& partition) {
  double best = std::numeric_limits<double>::max();
  const int k = partition.K();
  for (int i = 1; i < k; ++i) {
    for (int j = 0; j < i; ++j) {
      best = std::min(best, Distance(partition.clusters[j].mean.data(), partition.clusters[i].mean.data(), set.weight,
                                     DistanceType::Ased));
    }
  }
  return k > 1 ? best : 0;
}

double XieBeniMod(const PatternSet& set, double closestMeans, double ssCluster) {
  const double d2 = set.V * closestMeans;
  const double e = ssCluster / set.N;
  const double big = std::max(d2, e);
  return big <= kPatternZero ? 1 : (d2 - e) / big;
}

QualityRecord Quality(const PatternSet& set, const Partition& partition, const DistanceSummary& distances,
                      double totalEss, DistanceType type, HcRule rule) {
  QualityRecord q;
  const int k = partition.K();
  const double ss = WithinSumOfSquares(partition);
  q.eessPercent = EessPercent(totalEss, ss);
  q.hc = HomogeneityCoefficients(set, partition, type, rule);
  double maxHc = 0;
  q.hcMin = std::numeric_limits<double>::max();
  q.hcMax = -std::numeric_limits<double>::max();
  for (int j = 0; j < k; ++j) {
    q.hcMean += partition.clusters[j].size * q.hc[j] / set.N;
    q.hcMin = std::min(q.hcMin, q.hc[j]);
    q.hcMax = std::max(q.hcMax, q.hc[j]);
    maxHc = std::max(maxHc, q.hc[j]);
  }

  // Within and between pairs of cases.
  const double P = 0.5 * set.N * (set.N - 1.0);
  double W = 0, mw = 0;
  for (const Cluster& c : partition.clusters) {
    if (c.size > 1) W += 0.5 * c.size * (c.size - 1.0);
  }
  for (int j = 0; j < k; ++j) {
    const double n = partition.clusters[j].size;
    // With Pearson's r the coefficient is a mean similarity: its distance is 1 - HC.
    const double within = type == DistanceType::Pearson && n > 1 ? 1 - q.hc[j] : q.hc[j];
    if (within > kPatternZero && W > 0) mw += n * (n - 1) * within / W;
  }
  mw *= 0.5;
  const double B = std::round(P) - W;
  const double mb = B > 0 ? (P * distances.mean - W * mw) / B : 0;
  q.clusterDelta = distances.sd > kPatternZero ? (mb - mw) / distances.sd : 0;
  if (P > 1) {
    const double f = (B / P) * W / (P - 1);
    q.pointBiserial = f > 0 ? q.clusterDelta * std::sqrt(f) : 0;
  }

  const double closest = ClosestMeans(set, partition);
  q.xieBeniMod = XieBeniMod(set, closest, ss);
  q.generalizedDunn = maxHc <= kPatternZero ? 100 : closest / maxHc;

  if (type == DistanceType::Ased) {
    double sum = 0;
    for (int p = 0; p < set.D; ++p) {
      const int own = partition.clusterOfPattern[p];
      const double a = Ased(set.Pattern(p), partition.clusters[own].mean.data(), set.weight.data(), set.V);
      double b = 999999999.0;
      for (int j = 0; j < k; ++j) {
        if (j == own) continue;
        b = std::min(b, Ased(set.Pattern(p), partition.clusters[j].mean.data(), set.weight.data(), set.V));
      }
      const double big = std::max(a, b);
      sum += set.multiplicity[p] * (big > kPatternZero ? (b - a) / big : 0);
    }
    q.silhouette = sum / set.N;
  }
  return q;
}

}  // namespace tarvika
