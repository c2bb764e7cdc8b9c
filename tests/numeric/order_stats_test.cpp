#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "numeric/order_stats.h"

namespace tarvika {
namespace {

ValueTable Filled(const std::vector<double>& x) {
  ValueTable t;
  double lo = x[0], hi = x[0];
  for (double v : x) lo = std::min(lo, v), hi = std::max(hi, v);
  t.Reset(lo, hi);
  for (double v : x) t.Add(v);
  return t;
}

struct Reference {
  std::string set;
  int n;
  double q1, median, q3, trim;
  int g;
  double trimmedMean, winsorizedSd, reference, rankSumPlus, countPlus;
  int reducedN;
  double tieCorrection;
  std::vector<double> values;
};

// Rows written by reference/order_stats.R.
std::vector<Reference> ReadReferences() {
  std::ifstream in(TARVIKA_TEST_DATA "/numeric/reference/order_stats.csv");
  std::string line;
  std::getline(in, line);
  std::vector<Reference> rows;
  while (std::getline(in, line)) {
    for (char& c : line) c = c == ',' ? ' ' : c == '"' ? ' ' : c;
    std::istringstream s(line);
    Reference r;
    s >> r.set >> r.n >> r.q1 >> r.median >> r.q3 >> r.trim >> r.g >> r.trimmedMean >> r.winsorizedSd >> r.reference >>
        r.rankSumPlus >> r.countPlus >> r.reducedN >> r.tieCorrection;
    for (double v; s >> v;) r.values.push_back(v);
    rows.push_back(r);
  }
  return rows;
}

TEST(OrderStats, AgreeWithTheReferenceComputations) {
  auto rows = ReadReferences();
  ASSERT_EQ(rows.size(), 4u);
  for (const Reference& r : rows) {
    SCOPED_TRACE(r.set);
    ASSERT_EQ(static_cast<int>(r.values.size()), r.n);
    double lo = *std::min_element(r.values.begin(), r.values.end());
    double hi = *std::max_element(r.values.begin(), r.values.end());
    ValueTable t = Filled(r.values);
    OrderStatistics o = t.OrderStats(r.n, lo, hi);
    EXPECT_NEAR(o.quartile1, r.q1, 1e-9);
    EXPECT_NEAR(o.median, r.median, 1e-9);
    EXPECT_NEAR(o.quartile3, r.q3, 1e-9);
    TrimmedStatistics tr = t.TrimmedStats(r.n, r.trim);
    EXPECT_EQ(tr.trimmedCount, r.g);
    EXPECT_EQ(tr.keptCount, r.n - 2 * r.g);
    EXPECT_NEAR(tr.trimmedMean, r.trimmedMean, 1e-9);
    EXPECT_NEAR(tr.winsorizedSD, r.winsorizedSd, 1e-9);
    ValueTable fresh = Filled(r.values);
    SignedRanks sr = fresh.SignedRankSums(r.reference, r.n);
    EXPECT_EQ(sr.n, r.reducedN);
    EXPECT_NEAR(sr.rankSumPlus, r.rankSumPlus, 1e-9);
    EXPECT_NEAR(sr.countPlus, r.countPlus, 1e-9);
    // The tie constant 0.020833333 stands for 1/48 to 8 digits.
    EXPECT_NEAR(sr.tieCorrection, r.tieCorrection, 2e-8 * r.tieCorrection + 1e-12);
  }
}

TEST(OrderStats, QuantileConventionAndTheFirstEntryRule) {
  OrderStatistics four = Filled({4, 2, 3, 1}).OrderStats(4, 1, 4);
  EXPECT_DOUBLE_EQ(four.median, 2.5);
  EXPECT_DOUBLE_EQ(four.quartile1, 1.5);
  EXPECT_DOUBLE_EQ(four.quartile3, 3.5);
  OrderStatistics five = Filled({5, 1, 4, 2, 3}).OrderStats(5, 1, 5);
  EXPECT_DOUBLE_EQ(five.median, 3);
  EXPECT_DOUBLE_EQ(five.quartile1, 2);
  EXPECT_DOUBLE_EQ(five.quartile3, 4);
  // The median found in the first entry is the minimum, exact hit or not (here an average
  // would give 1.5).
  OrderStatistics first = Filled({1, 2, 1, 2}).OrderStats(4, 1, 2);
  EXPECT_DOUBLE_EQ(first.median, 1);
  EXPECT_DOUBLE_EQ(first.quartile1, 1);
  EXPECT_DOUBLE_EQ(first.quartile3, 2);
  OrderStatistics single = Filled({7, 7, 7}).OrderStats(3, 7, 7);
  EXPECT_DOUBLE_EQ(single.quartile3, 7);
  // Values closer than the tolerance are one value.
  ValueTable near = Filled({1, 1 + 5e-9, 2});
  EXPECT_EQ(near.Count(), 2);
  EXPECT_EQ(near.Frequency(0), 2);
  // A value within the tolerance of two entries counts for the earlier one, also when it
  // repeats; a value equal to an entry counts for that entry.
  const double t = kZeroTolerance;
  ValueTable between = Filled({1 + 1.5 * t, 1, 1 + 0.75 * t, 1 + 0.75 * t, 1, 1 + 1.5 * t});
  EXPECT_EQ(between.Count(), 2);
  EXPECT_EQ(between.Frequency(0), 4);
  EXPECT_EQ(between.Frequency(1), 2);
}

TEST(OrderStats, TrimmingCounts) {
  TrimmedStatistics three = Filled({1, 2, 30}).TrimmedStats(3, 25);
  EXPECT_EQ(three.trimmedCount, 1);
  EXPECT_EQ(three.keptCount, 1);
  EXPECT_DOUBLE_EQ(three.trimmedMean, 2);
  EXPECT_DOUBLE_EQ(three.winsorizedSD, 0);
  TrimmedStatistics nine = Filled({1, 2, 3, 4, 5, 6, 7, 8, 9}).TrimmedStats(9, 5);
  EXPECT_EQ(nine.trimmedCount, 0);
  EXPECT_FALSE(nine.hasTrimming);
}

TEST(OrderStats, TwentyThousandAndOneDistinctValuesTurnIntoBins) {
  ValueTable t;
  t.Reset(0, 20000);
  for (int i = 0; i < 20000; ++i) t.Add(i);
  t.Add(5);  // a repeat keeps the table unbinned
  EXPECT_FALSE(t.Binned());
  EXPECT_EQ(t.Count(), 20000);
  t.Add(20000);  // the 20001st distinct value
  ASSERT_TRUE(t.Binned());
  EXPECT_EQ(t.Count(), kValueTableSize);
  long total = 0;
  for (int k = 0; k < t.Count(); ++k) total += t.Frequency(k);
  EXPECT_EQ(total, 20002);
  EXPECT_EQ(t.Frequency(5), 2);
  EXPECT_EQ(t.Frequency(20000), 1);
  t.Add(0.5);  // binned from now on
  EXPECT_EQ(t.Frequency(0), 2);
  // The median interpolates inside its bin of width 1, which holds values at its lower edge;
  // R's median(c(0:19999, 5, 20000, 0.5)) is 9999 exactly, and so must the binned one be:
  // half a bin off either way is a fault.
  EXPECT_DOUBLE_EQ(t.OrderStats(20003, 0, 20000).median, 9999);
  // Four cases in the median's bin: median(c(0:20000, 10000, 10000, 10000)) is 10000.
  ValueTable four;
  four.Reset(0, 20000);
  for (int i = 0; i <= 20000; ++i) four.Add(i);
  for (int i = 0; i < 3; ++i) four.Add(10000);
  ASSERT_TRUE(four.Binned());
  EXPECT_EQ(four.Frequency(10000), 4);
  EXPECT_DOUBLE_EQ(four.OrderStats(20004, 0, 20000).median, 10000);
}

TEST(SignedRanks, EdgeCases) {
  SignedRanks only = Filled({3, 3}).SignedRankSums(3, 2);
  EXPECT_EQ(only.n, 0);
  EXPECT_DOUBLE_EQ(only.rankSumPlus, 0);
  SignedRanks below = Filled({4, 5, 6}).SignedRankSums(1, 3);
  EXPECT_DOUBLE_EQ(below.rankSumPlus, 6);
  EXPECT_DOUBLE_EQ(below.countPlus, 3);
  // Differences 1, 1, 1 (values 1, 3, 3 around 2) form one tie group of three.
  SignedRanks ties = Filled({1, 3, 3}).SignedRankSums(2, 3);
  EXPECT_DOUBLE_EQ(ties.tieCorrection, (9 - 1) * 0.020833333 * 3);
  EXPECT_DOUBLE_EQ(ties.rankSumPlus, 4);
}

TEST(Sorting, TiesKeepTheExchangeOrderAndMidRanks) {
  std::vector<double> keys = {2, 1, 2, 1, 2};
  std::vector<std::int32_t> tags = {0, 1, 2, 3, 4};
  SortValuesWithInts(keys, tags, 0, 4);
  EXPECT_EQ(keys, (std::vector<double>{1, 1, 2, 2, 2}));
  // Traced by hand: pivot 2 exchanges 0<->4 and 2<->3, then the parts 0..2 and 3..4.
  EXPECT_EQ(tags, (std::vector<std::int32_t>{3, 1, 4, 0, 2}));
  std::vector<double> v = {10, 20, 10, 30, 10};
  MidRanks(v, 5);
  EXPECT_EQ(v, (std::vector<double>{2, 2, 2, 4, 5}));
}

}  // namespace
}  // namespace tarvika
