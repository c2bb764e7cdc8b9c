#pragma once
// Agglomerative clustering of distinct patterns by the Lance-Williams rules. Clusters keep
// the order of their first patterns; the pair fused at each step is the closest one, an
// exact tie going to the pair whose later cluster comes first, then whose earlier one
// does. Each cluster keeps its nearest earlier cluster, so that a step costs a pass over
// the clusters and the recomputation of the few rows whose neighbour was fused.

#include <cstdint>
#include <cstdlib>
#include <functional>
#include <utility>
#include <vector>

#include "pattern/cluster_quality.h"
#include "pattern/dendrogram.h"
#include "pattern/pattern_data.h"

namespace tarvika {

// The triangle of the distance matrix: memory asked for in large pages before it is first
// written, since a fusion reads two far-apart rows for every cluster and small pages would
// miss their address translations; entries are not initialized.
template <typename T>
class TriangleStore {
 public:
  TriangleStore() = default;
  TriangleStore(const TriangleStore&) = delete;
  TriangleStore& operator=(const TriangleStore&) = delete;
  ~TriangleStore() { std::free(data_); }
  void Allocate(std::size_t count);
  T& operator[](std::size_t i) { return data_[i]; }
  const T& operator[](std::size_t i) const { return data_[i]; }
  const T* data() const { return data_; }

 private:
  T* data_ = nullptr;
};

// Up to this many patterns the matrix is kept in double precision.
inline constexpr int kDoubleMatrixPatterns = 20000;

enum class LinkageMethod { Average = 1, Single, Complete, Centroid, Median, Ward, BetaFlexible };

class Agglomeration {
 public:
  // Builds the matrix of distances between the patterns (with their summary over the pairs
  // of cases): for the median method times V,
  // for Ward's d n_a n_b / (n_a + n_b). Single precision holds the matrix when asked (the
  // fusion heights reported are recomputed from the cluster means in double precision).
  Agglomeration(const PatternSet& set, LinkageMethod method, DistanceType type, double beta, bool singlePrecision,
                const std::function<void(int done, int total)>& progress = {});

  int K() const { return static_cast<int>(active_.size()); }
  // The places (0-based, in code order) of the pair to fuse next; K() must be above 1.
  std::pair<int, int> NextPair() const;
  // The smallest ASED between two cluster means (0 with one cluster).
  double ClosestMeans() const;
  // Fuses the next pair; returns ESSplus, the growth of the within sum of squares.
  double Fuse();
  double SsCluster() const { return ssCluster_; }
  // The mean and SD of the distances over all pairs of cases (before the method's scaling).
  const DistanceSummary& Summary() const { return summary_; }
  // The clusters and the distance of the last fusion.
  const Fusion& LastFusion() const { return last_; }

  // The cluster at a place: size and first pattern.
  int SizeAt(int place) const { return size_[active_[place]]; }
  int FirstPatternAt(int place) const { return active_[place]; }
  // The current partition with its cluster statistics (in code order).
  Partition Current() const;
  // The place of each pattern's cluster.
  std::vector<int> Labels() const;

 private:
  double D(int a, int b) const;  // a < b, ids
  void SetD(int a, int b, double d);
  void RecomputeNeighbour(int b);
  void Prefetch(int k, int p, int q) const;
  double MeanDistance(int a, int b) const;
  void RecomputeMeanNeighbour(int b);

  const PatternSet& set_;
  LinkageMethod method_;
  DistanceType type_;
  double beta_;
  bool single_;
  int n_;
  TriangleStore<double> d64_;
  TriangleStore<float> d32_;
  std::vector<int> active_;  // ids (first patterns) in order
  std::vector<int> size_, distinct_;
  std::vector<double> mean_, ss_, min_, max_;  // per id x V
  std::vector<int> nn_;                        // nearest earlier cluster
  std::vector<double> nnd_;
  std::vector<int> mnn_;  // nearest earlier cluster by the means
  std::vector<double> mnnd_;
  std::vector<int> label_;                 // id of each pattern's cluster
  std::vector<std::vector<int>> members_;  // patterns of each id
  std::vector<double> similarity_;         // Pearson: the sum of similarities over the case pairs of each id
  double ssCluster_ = 0;
  DistanceSummary summary_;
  Fusion last_;
  std::vector<double> fresh_;  // the fused cluster's new distances by place
};

}  // namespace tarvika
