#pragma once
// A partition of the patterns into clusters with the statistics of each cluster, and the
// quality figures of a partition: EESS%, the point-biserial index and the cluster delta,
// the modified Xie-Beni index, the centre-based silhouette, the homogeneity coefficients
// and the generalized Dunn index.

#include <vector>

#include "pattern/pattern_data.h"

namespace tarvika {

struct Cluster {
  int size = 0;          // cases
  int distinct = 0;      // patterns
  int firstPattern = 0;  // the pattern that gives the cluster its code
  // Per variable on the stored scale; variance with size - 1 (0 for a single case).
  std::vector<double> mean, variance, min, max;
  // Pearson only: the sum of the similarities over the pairs of cases, when known (else -1
  // and it is summed from the patterns).
  double pairSimilarity = -1;
};

struct Partition {
  std::vector<Cluster> clusters;         // in the order of their codes
  std::vector<int> clusterOfPattern;     // 0-based place in clusters
  int K() const { return static_cast<int>(clusters.size()); }
};

// The clusters of a partition given by the place of each pattern (0..k-1), with their
// statistics from the data.
Partition PartitionFromLabels(const PatternSet& set, const std::vector<int>& clusterOfPattern, int k);

// The sum over clusters and variables of the squares around the cluster means (no weights).
double WithinSumOfSquares(const Partition& partition);

// The total sum of squares: (N - 1) times the number of variables with some variance when
// standardized, else (N - 1) times the sum of the variances.
double TotalSumOfSquares(const PatternSet& set);

// How HC of an ASED cluster is obtained: from the pairs of cases (hierarchical reports, by
// the weighted identity 2 x sum of w_v var_v), or 2 x the mean variance with all variables
// alike (relocation reports).
enum class HcRule { WeightedPairs, EqualVariables };

struct QualityRecord {
  double eessPercent = 100;
  double pointBiserial = 0;
  double clusterDelta = 0;
  double xieBeniMod = 0;
  double generalizedDunn = 0;
  double silhouette = 0;
  double hcMean = 0, hcMin = 0, hcMax = 0;
  std::vector<double> hc;  // per cluster
};

double EessPercent(double totalEss, double ssCluster);
// The homogeneity coefficient of each cluster.
std::vector<double> HomogeneityCoefficients(const PatternSet& set, const Partition& partition, DistanceType type,
                                            HcRule rule);
// The smallest ASED between two cluster means.
double ClosestMeans(const PatternSet& set, const Partition& partition);
// The modified Xie-Beni index from the closest means (ASED) and SScluster.
double XieBeniMod(const PatternSet& set, double closestMeans, double ssCluster);

QualityRecord Quality(const PatternSet& set, const Partition& partition, const DistanceSummary& distances,
                      double totalEss, DistanceType type, HcRule rule);

}  // namespace tarvika
