// The clustering of distinct patterns against R (tests/pattern/data/cluster_check.R and its
// output beside it): hclust with the multiplicities as members for the six size-aware
// methods, agnes' flexible method for beta-flexible, and the partitions at every number of
// clusters; the relocation against the same rule written in R.

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <sstream>
#include <string>

#include "pattern/agglomeration.h"
#include "pattern/cluster_quality.h"
#include "pattern/pattern_data.h"
#include "pattern/relocation.h"

namespace tarvika {
namespace {

// The data of clusters.msw without the case whose X2 is missing.
std::vector<CaseValues> Cases() {
  const double data[][3] = {{2, 5, 1}, {3, 4, 2}, {2, 5, 1}, {8, 1, 6}, {9, 2, 7}, {7, 1, 5},
                            {5, 5, 5}, {4, 6, 4}, {8, 2, 8}, {1, 6, 2}, {6, 3, 6}};
  const int rows[] = {1, 2, 3, 4, 5, 6, 7, 8, 10, 11, 12};
  std::vector<CaseValues> cases;
  for (int i = 0; i < 11; ++i) cases.push_back({rows[i], {data[i][0], data[i][1], data[i][2]}});
  return cases;
}

PatternSet StandardizedSet() {
  PatternSet set = CollapsePatterns(Cases(), 3);
  EXPECT_TRUE(NormalizeWeights(set, {1, 1, 1}));
  Standardize(set);
  return set;
}

// "k N : labels" of each method in the R output.
std::map<std::string, std::map<int, std::vector<int>>> ReferencePartitions() {
  std::ifstream in(std::string(TARVIKA_TEST_DATA) + "/pattern/data/cluster_check.txt");
  std::map<std::string, std::map<int, std::vector<int>>> out;
  std::string line, method;
  while (std::getline(in, line)) {
    std::istringstream words(line);
    std::string first;
    words >> first;
    if (first == "==") {
      words >> method;
    } else if (first == "k") {
      int k;
      std::string colon;
      words >> k >> colon;
      int label;
      while (words >> label) out[method][k].push_back(label);
    }
  }
  return out;
}

// The tie-free patterns of the reference, the third one twice, as they are (no standardization).
PatternSet TieFreeSet() {
  const double t[10][3] = {{0.31, 0.87, -0.18}, {1.20, -0.64, 0.44}, {-0.45, 1.35, 1.91}, {1.73, 0.12, -1.37},
                           {0.05, -1.48, 0.72},  {2.41, 0.59, 0.09},  {-1.12, 2.04, -0.56}, {0.66, -0.91, 1.28},
                           {0.98, 0.23, -0.83}, {-0.27, 1.66, 0.51}};
  std::vector<CaseValues> cases;
  for (int i = 0; i < 10; ++i) {
    cases.push_back({i + 1, {t[i][0], t[i][1], t[i][2]}});
    if (i == 2) cases.push_back({100, {t[i][0], t[i][1], t[i][2]}});
  }
  PatternSet set = CollapsePatterns(cases, 3);
  EXPECT_TRUE(NormalizeWeights(set, {1, 1, 1}));
  return set;
}

TEST(Agglomeration, EveryMethodFusesAsReferenceAtEveryLevel) {
  const PatternSet set = TieFreeSet();
  ASSERT_EQ(set.D, 10);
  EXPECT_EQ(set.multiplicity[2], 2);
  const auto reference = ReferencePartitions();
  const std::pair<std::string, LinkageMethod> methods[] = {
      {"Ward", LinkageMethod::Ward},         {"average", LinkageMethod::Average},   {"single", LinkageMethod::Single},
      {"complete", LinkageMethod::Complete}, {"centroid", LinkageMethod::Centroid}, {"median", LinkageMethod::Median},
      {"Beta-flexible", LinkageMethod::BetaFlexible}};
  for (bool single : {false, true}) {
    for (const auto& [name, method] : methods) {
      SCOPED_TRACE(name + (single ? " (single precision)" : ""));
      ASSERT_EQ(reference.at(name).size(), 10u);
      Agglomeration tree(set, method, DistanceType::Ased, -0.2, single);
      for (int k = 10; k >= 1; --k) {
        std::vector<int> labels = tree.Labels();
        for (int& l : labels) ++l;
        EXPECT_EQ(labels, reference.at(name).at(k)) << "k = " << k;
        if (k > 1) tree.Fuse();
      }
    }
  }
}

TEST(Agglomeration, ExactTiesGoToTheEarlierPair) {
  // Patterns 1, 2 and 9 of the project's data are equally far apart in their standardized
  // values; the pair of the earlier clusters fuses first.
  const PatternSet set = StandardizedSet();
  Agglomeration tree(set, LinkageMethod::Ward, DistanceType::Ased, 0, false);
  for (int i = 0; i < 3; ++i) tree.Fuse();
  EXPECT_EQ(tree.NextPair(), std::make_pair(0, 1));
}

TEST(Agglomeration, WardGrowthIsVTimesTheReferenceHeight) {
  const PatternSet set = StandardizedSet();
  Agglomeration tree(set, LinkageMethod::Ward, DistanceType::Ased, 0, false);
  const double reference[] = {0.147, 0.147, 0.284, 0.379, 0.591, 0.950, 1.053, 3.154, 23.296};
  double ss = 0;
  for (double height : reference) {
    const double ess = tree.Fuse();
    ss += ess;
    EXPECT_NEAR(ess, height, 0.0005);
  }
  EXPECT_NEAR(ss, TotalSumOfSquares(set), 1e-9);  // one cluster holds all the sum of squares
}

TEST(ClusterQuality, WardPartitionsMatchReference) {
  const PatternSet set = StandardizedSet();
  const DistanceSummary distances = SummarizeDistances(set, DistanceType::Ased);
  Agglomeration tree(set, LinkageMethod::Ward, DistanceType::Ased, 0, false);
  while (tree.K() > 3) tree.Fuse();
  QualityRecord q = Quality(set, tree.Current(), distances, TotalSumOfSquares(set), DistanceType::Ased, HcRule::WeightedPairs);
  EXPECT_NEAR(q.eessPercent, 88.16, 0.005);
  EXPECT_NEAR(q.pointBiserial, 0.652, 0.0005);
  tree.Fuse();
  q = Quality(set, tree.Current(), distances, TotalSumOfSquares(set), DistanceType::Ased, HcRule::WeightedPairs);
  EXPECT_NEAR(q.eessPercent, 77.65, 0.005);
  EXPECT_NEAR(q.pointBiserial, 0.788, 0.0005);
  // Every cluster of one case: the silhouette is 1, no within pair.
  std::vector<int> own(set.D);
  for (int p = 0; p < set.D; ++p) own[p] = p;
  Partition singles = PartitionFromLabels(set, own, set.D);
  q = Quality(set, singles, distances, TotalSumOfSquares(set), DistanceType::Ased, HcRule::WeightedPairs);
  EXPECT_NEAR(q.silhouette, 1.0 - 0, 0.2);  // the tied pair counts a = 0 too
  EXPECT_EQ(q.hcMax, 0);
}

TEST(ClusterQuality, PearsonPointBiserialUsesDistancesWithin) {
  // The homogeneity of a Pearson cluster is a mean similarity; the index compares distances.
  const PatternSet set = StandardizedSet();
  Agglomeration tree(set, LinkageMethod::Average, DistanceType::Pearson, 0, false);
  while (tree.K() > 3) tree.Fuse();
  std::vector<int> labels = tree.Labels();
  std::vector<int> cases;
  for (int i = 0; i < set.N; ++i) cases.push_back(labels[set.patternOfCase[i]] + 1);
  EXPECT_EQ(cases, (std::vector<int>{1, 1, 1, 2, 2, 2, 1, 1, 3, 1, 3}));
  const QualityRecord q = Quality(set, tree.Current(), tree.Summary(), TotalSumOfSquares(set), DistanceType::Pearson,
                                  HcRule::WeightedPairs);
  EXPECT_NEAR(q.pointBiserial, 0.802, 0.0005);
  EXPECT_EQ(q.silhouette, 0);  // ASED only
}

TEST(ClusterQuality, EqualDistancesAndEqualSpreads) {
  // Three patterns all at the same distance: the SD of the distances is 0 and the indices
  // that divide by it print 0.
  std::vector<CaseValues> corners = {{1, {1, 0, 0}}, {2, {0, 1, 0}}, {3, {0, 0, 1}}};
  PatternSet set = CollapsePatterns(corners, 3);
  ASSERT_TRUE(NormalizeWeights(set, {1, 1, 1}));
  const DistanceSummary distances = SummarizeDistances(set, DistanceType::Ased);
  EXPECT_NEAR(distances.mean, 2.0 / 3, 1e-12);
  EXPECT_EQ(distances.sd, 0);
  const Partition partition = PartitionFromLabels(set, {0, 1, 1}, 2);
  const QualityRecord q = Quality(set, partition, distances, TotalSumOfSquares(set), DistanceType::Ased, HcRule::WeightedPairs);
  EXPECT_EQ(q.clusterDelta, 0);
  EXPECT_EQ(q.pointBiserial, 0);
  EXPECT_NEAR(q.hc[1], 2.0 / 3, 1e-12);  // the one pair of the second cluster
  EXPECT_NEAR(q.generalizedDunn, (1.0 + 0.25 + 0.25) / 3 / (2.0 / 3), 1e-12);  // centres (1,0,0) and (0,.5,.5)
  // The modified Xie-Beni index: D2 = E gives 0, both 0 gives 1.
  EXPECT_EQ(XieBeniMod(set, 2.0 / 3, 3 * 2.0), 0);  // D2 = 3 x 2/3 = 2 = E = 6 / 3
  EXPECT_EQ(XieBeniMod(set, 0, 0), 1);
}

TEST(Relocation, MovesAsTheReferenceRule) {
  const PatternSet set = StandardizedSet();
  // The Start variable of the cases, per pattern from its first case, as codes 0..2.
  std::vector<int> labels = {0, 0, 1, 1, 2, 2, 0, 1, 0, 1};
  const double ss = WithinSumOfSquares(PartitionFromLabels(set, labels, 3));
  EXPECT_NEAR(ss, 6.488, 0.0005);
  const auto passes = RelocatePatterns(set, labels, 3, ss, 25, 0.0001);
  ASSERT_EQ(passes.size(), 2u);
  EXPECT_NEAR(passes[0].ssCluster, 3.551, 0.0005);
  EXPECT_EQ(passes[1].moved, 0);
  EXPECT_EQ(labels, (std::vector<int>{0, 0, 1, 1, 1, 2, 2, 1, 0, 1}));
}

TEST(PatternData, TiesZeroVarianceAndFlatPatterns) {
  // All cases alike: one pattern; a constant variable gets no weight.
  std::vector<CaseValues> same = {{1, {1, 2}}, {2, {1, 2}}, {3, {1, 2 + 1e-9}}};
  PatternSet set = CollapsePatterns(same, 2);
  EXPECT_EQ(set.D, 1);
  EXPECT_EQ(set.multiplicity[0], 3);
  EXPECT_FALSE(NormalizeWeights(set, {1, 1}));

  std::vector<CaseValues> cases = {{1, {1, 5}}, {2, {2, 5}}, {3, {4, 5}}};
  set = CollapsePatterns(cases, 2);
  ASSERT_TRUE(NormalizeWeights(set, {-3, 2}));
  EXPECT_EQ(set.rawWeight[0], 3);
  EXPECT_EQ(set.weight[0], 1);
  EXPECT_EQ(set.weight[1], 0);
  Standardize(set);
  EXPECT_EQ(set.Pattern(0)[1], 5);  // a zero-SD variable stays raw
  EXPECT_NEAR(set.BackTransform(set.Pattern(2)[0], 0), 4, 1e-12);

  // Standardized, the total sum of squares counts the variables that vary: one cluster
  // holds all of it (EESS% 0), as in R's sum of squares of the scaled varying columns.
  std::vector<CaseValues> mixed = {{1, {1, 5}}, {2, {2, 5}}, {3, {4, 5}}, {4, {7, 5}}};
  set = CollapsePatterns(mixed, 2);
  ASSERT_TRUE(NormalizeWeights(set, {1, 1}));
  Standardize(set);
  EXPECT_NEAR(TotalSumOfSquares(set), 3, 1e-12);
  Agglomeration tree(set, LinkageMethod::Ward, DistanceType::Ased, 0, false);
  while (tree.K() > 1) tree.Fuse();
  EXPECT_NEAR(EessPercent(TotalSumOfSquares(set), tree.SsCluster()), 0, 1e-9);

  // Pearson: both flat r = 1, one flat r = 0, opposite r = -1.
  const std::vector<double> w = {0.5, 0.5};
  const double flat[] = {1, 1}, flat2[] = {3, 3}, up[] = {1, 2}, down[] = {2, 1};
  EXPECT_EQ(Distance(flat, flat2, w, DistanceType::Pearson), 0);
  EXPECT_EQ(Distance(flat, up, w, DistanceType::Pearson), 1);
  EXPECT_NEAR(Distance(up, down, w, DistanceType::Pearson), 2, 1e-12);
}

}  // namespace
}  // namespace tarvika
