// The pairwise post hoc comparisons and the studentized range lookup, against R's
// TukeyHSD, Welch t test, ptukey and qtukey (reference/pairwise.R), and by hand.

#include "stats/pairwise.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <string>

#include "support/reference_csv.h"
#include "support/temp_folder.h"

namespace tarvika {
namespace {

using test::ReferenceCsv;

const StudentizedRangeTable& Shipped() {
  static const StudentizedRangeTable table =
      LoadStudentizedRangeTable(std::filesystem::path(TARVIKA_SOURCE_DIR) / "data" / "stattab");
  return table;
}

// The mark that an exact p deserves, or "" when p lies so near a level that the table's
// rounding to two decimals may decide either way.
std::string ExpectedMark(double p) {
  for (double level : {0.01, 0.05, 0.10}) {
    if (std::fabs(p / level - 1) < 0.1) return "";
  }
  return p < 0.01 ? "**" : p < 0.05 ? "* " : p < 0.10 ? "+ " : "  ";
}

struct ReferenceSet {
  std::vector<PairwiseGroup> groups;
  double mse = 0;
  int df = 0;
};

std::map<std::string, ReferenceSet> ReadSets() {
  ReferenceCsv csv("pairwise_groups.csv", "stats");
  std::map<std::string, ReferenceSet> sets;
  for (size_t r = 0; r < csv.size(); ++r) {
    ReferenceSet& set = sets[csv.Text(r, "set")];
    set.groups.push_back({csv.Number(r, "mean"), csv.Number(r, "sd"), static_cast<int>(csv.Number(r, "n"))});
    set.mse = csv.Number(r, "mse");
    set.df = static_cast<int>(csv.Number(r, "df"));
  }
  return sets;
}

TEST(Pairwise, TukeyKramerAndGamesHowellAgreeWithR) {
  const auto sets = ReadSets();
  std::map<std::string, PairwiseResult> tukey, gamesHowell;
  for (const auto& [name, set] : sets) {
    const int k = static_cast<int>(set.groups.size());
    tukey[name] = PairwiseComparisons(PairwiseMethod::TukeyKramer, set.groups, k, set.df, set.mse, Shipped());
    gamesHowell[name] = PairwiseComparisons(PairwiseMethod::GamesHowell, set.groups, k, set.df, set.mse, Shipped());
    EXPECT_EQ(tukey[name].pairs.size(), static_cast<size_t>(k * (k - 1) / 2)) << name;
  }
  ReferenceCsv pairs("pairwise_pairs.csv", "stats");
  std::map<std::string, size_t> next;
  int marksChecked = 0;
  for (size_t r = 0; r < pairs.size(); ++r) {
    const std::string set = pairs.Text(r, "set");
    const size_t index = next[set]++;
    const PairComparison& t = tukey[set].pairs.at(index);
    const PairComparison& g = gamesHowell[set].pairs.at(index);
    const std::string where = set + " " + pairs.Text(r, "i") + "-" + pairs.Text(r, "j");
    ASSERT_EQ(t.first, static_cast<int>(pairs.Number(r, "i"))) << where;
    ASSERT_EQ(t.second, static_cast<int>(pairs.Number(r, "j"))) << where;
    EXPECT_NEAR(t.q, pairs.Number(r, "tukey_q"), 1e-7 * t.q) << where;
    EXPECT_EQ(t.df, sets.at(set).df) << where;
    EXPECT_NEAR(g.q, pairs.Number(r, "welch_q"), 1e-9 * g.q) << where;
    EXPECT_EQ(g.df, std::lround(pairs.Number(r, "welch_df"))) << where;
    for (auto [pair, p] : {std::pair{&t, pairs.Number(r, "tukey_p")}, {&g, pairs.Number(r, "games_howell_p")}}) {
      const std::string expected = ExpectedMark(p);
      if (expected.empty()) continue;
      EXPECT_EQ(pair->mark, expected) << where << " p = " << p;
      ++marksChecked;
    }
  }
  EXPECT_EQ(next.size(), sets.size());
  EXPECT_GT(marksChecked, 130);
}

TEST(Pairwise, HandBuiltQAndTheCorners) {
  // q = |difference| / sqrt(0.5 V). Tukey-Kramer with msError 2: V(1,4) = (1/2 + 1/5) 2 = 1.4.
  const std::vector<PairwiseGroup> groups = {{1, 1, 2}, {3, 2, 4}, {9, 0, 1}, {6, 3, 5}};
  PairwiseResult tk = PairwiseComparisons(PairwiseMethod::TukeyKramer, groups, 4, 8, 2, Shipped());
  ASSERT_EQ(tk.pairs.size(), 3u);  // the group of one case is left out of every pair
  EXPECT_EQ(tk.tableSize, 4);
  EXPECT_EQ(std::pair(tk.pairs[1].first, tk.pairs[1].second), std::pair(1, 4));
  EXPECT_NEAR(tk.pairs[0].q, 2 / std::sqrt(0.75), 1e-12);
  EXPECT_NEAR(tk.pairs[1].q, 5 / std::sqrt(0.7), 1e-12);
  EXPECT_NEAR(tk.pairs[2].q, 3 / std::sqrt(0.45), 1e-12);
  // Games-Howell: V(2,4) = 4/4 + 9/5; df = round(2.8^2 / (1/3 + 3.24/4)) = round(6.857) = 7.
  PairwiseResult gh = PairwiseComparisons(PairwiseMethod::GamesHowell, groups, 4, 8, 2, Shipped());
  EXPECT_NEAR(gh.pairs[2].q, 3 / std::sqrt(1.4), 1e-12);
  EXPECT_EQ(gh.pairs[2].df, 7);
  EXPECT_EQ(SatterthwaiteDf(4, 5, 2, 3), 7);
  EXPECT_EQ(SatterthwaiteDf(10, 10, 1.5, 1.5), 18);

  // A group without spread borrows sqrt(msError) in Games-Howell: V = 4/4 + 4/3.
  const std::vector<PairwiseGroup> flat = {{0, 2, 4}, {5, 0, 3}, {1, 2, 6}};
  gh = PairwiseComparisons(PairwiseMethod::GamesHowell, flat, 3, 10, 4, Shipped());
  EXPECT_NEAR(gh.pairs[0].q, 5 / std::sqrt(0.5 * (1 + 4.0 / 3)), 1e-12);
  EXPECT_EQ(gh.pairs[0].df, SatterthwaiteDf(4, 3, 2, 2));
  // With no error either, the pair's df is n_i + n_j - 2 and identical means give q = 99,
  // marked from the table like any large q.
  const std::vector<PairwiseGroup> constant = {{5, 0, 3}, {5, 0, 4}, {5, 0, 5}};
  for (PairwiseMethod method : {PairwiseMethod::TukeyKramer, PairwiseMethod::GamesHowell}) {
    PairwiseResult r = PairwiseComparisons(method, constant, 3, 9, 0, Shipped());
    ASSERT_EQ(r.pairs.size(), 3u);
    EXPECT_EQ(r.pairs[0].q, 99);
    EXPECT_EQ(r.pairs[0].mark, "**");
    EXPECT_EQ(r.pairs[2].df, method == PairwiseMethod::TukeyKramer ? 9 : 7);
  }
  // Two usable groups: nothing to compare. A df of 2: no mark whatever q.
  EXPECT_TRUE(PairwiseComparisons(PairwiseMethod::TukeyKramer, {{1, 1, 5}, {2, 1, 1}, {9, 1, 5}}, 3, 8, 1, Shipped())
                  .pairs.empty());
  EXPECT_EQ(PairwiseComparisons(PairwiseMethod::TukeyKramer, constant, 3, 2, 0, Shipped()).pairs[0].mark, "  ");
}

TEST(Pairwise, VariantsForFactorsAndLevels) {
  const auto sets = ReadSets();
  const ReferenceSet& unequal = sets.at("unequal");
  const int k = static_cast<int>(unequal.groups.size());
  // Games-Howell for a factor has no pooled term and equals the Welch comparisons.
  PairwiseResult gh = GamesHowellForFactor(unequal.groups, k, Shipped());
  ReferenceCsv pairs("pairwise_pairs.csv", "stats");
  size_t index = 0;
  for (size_t r = 0; r < pairs.size(); ++r) {
    if (pairs.Text(r, "set") != "unequal") continue;
    EXPECT_NEAR(gh.pairs.at(index).q, pairs.Number(r, "welch_q"), 1e-9 * gh.pairs[index].q);
    EXPECT_EQ(gh.pairs.at(index).df, std::lround(pairs.Number(r, "welch_df")));
    ++index;
  }
  EXPECT_EQ(index, gh.pairs.size());

  // Levels of one n: q = |difference| / sqrt(msError / n).
  PairwiseResult tf = TukeyForFactor({10, 12, 15.5}, 8, 3, 14, 4.5, Shipped());
  ASSERT_EQ(tf.pairs.size(), 3u);
  EXPECT_NEAR(tf.pairs[1].q, 5.5 / 0.75, 1e-12);
  EXPECT_EQ(tf.pairs[1].df, 14);
  EXPECT_EQ(tf.pairs[1].mark, "**");  // the 1% q for k 3, df 14 is 4.89

  // Level sums over 3 cells are level means times 3: the same q as the means give.
  std::vector<double> sums;
  for (const PairwiseGroup& g : unequal.groups) sums.push_back(3 * g.mean);
  for (PairwiseMethod method : {PairwiseMethod::TukeyKramer, PairwiseMethod::GamesHowell}) {
    PairwiseResult levels = TukeyKramerForLevels(method, sums, 3, unequal.groups, k, unequal.df, unequal.mse, Shipped());
    PairwiseResult means = PairwiseComparisons(method, unequal.groups, k, unequal.df, unequal.mse, Shipped());
    ASSERT_EQ(levels.pairs.size(), means.pairs.size());
    for (size_t i = 0; i < means.pairs.size(); ++i) {
      EXPECT_NEAR(levels.pairs[i].q, means.pairs[i].q, 1e-9 * means.pairs[i].q);
      EXPECT_EQ(levels.pairs[i].df, means.pairs[i].df);
    }
  }
}

TEST(Pairwise, ScheffeToRestAgreesWithTheLinearModel) {
  const ReferenceSet unequal = ReadSets().at("unequal");
  std::vector<double> sums;
  std::vector<int> n;
  for (const PairwiseGroup& g : unequal.groups) {
    sums.push_back(2 * g.mean);
    n.push_back(g.n);
  }
  ScheffeToRestResult result = ScheffeToRest(sums, 2, n, unequal.df, unequal.mse);
  EXPECT_EQ(result.levels, 5);
  ReferenceCsv csv("pairwise_scheffe.csv", "stats");
  ASSERT_EQ(result.rows.size(), csv.size());
  for (size_t r = 0; r < csv.size(); ++r) {
    const LevelToRest& row = result.rows[r];
    EXPECT_EQ(row.level, static_cast<int>(r) + 1);
    EXPECT_NEAR(row.effect, csv.Number(r, "effect"), 1e-9);
    EXPECT_NEAR(row.f, csv.Number(r, "f"), 1e-9 * csv.Number(r, "f"));
    EXPECT_NEAR(row.p.p, csv.Number(r, "p"), 5e-5) << r;
  }
  // Fewer than 3 levels of more than one case: nothing.
  EXPECT_TRUE(ScheffeToRest({2, 4, 6}, 1, {5, 1, 5}, 8, 1).rows.empty());
}

TEST(StudentizedRange, LookupAgreesWithQtukeyOnAndBetweenRows) {
  ReferenceCsv csv("pairwise_critical.csv", "stats");
  for (size_t r = 0; r < csv.size(); ++r) {
    const int k = static_cast<int>(csv.Number(r, "k"));
    const int df = static_cast<int>(csv.Number(r, "df"));
    const std::array<double, 3> exact = {csv.Number(r, "q90"), csv.Number(r, "q95"), csv.Number(r, "q99")};
    const std::array<double, 3> table = StudentizedRangeCritical(Shipped(), k, df);
    const bool onRow = df <= 20 || df == 255;
    for (size_t i = 0; i < 3; ++i) {
      const std::string where = "k " + std::to_string(k) + " df " + std::to_string(df) + " level " + std::to_string(i);
      if (onRow) {
        EXPECT_NEAR(table[i], exact[i], 0.0051) << where;
      } else if (df < 255) {
        // Linear in df between rows: within 0.6 percent, on the safe side.
        EXPECT_NEAR(table[i], exact[i], 0.006 * exact[i]) << where;
        EXPECT_GE(table[i], exact[i] - 0.005) << where;
      } else {
        // Beyond the last row, linear in 1/df toward the limit: within the table's rounding.
        EXPECT_NEAR(table[i], exact[i], 0.0051 + 0.001 * exact[i]) << where;
      }
    }
    // A q a percent below or above each critical value gets the mark of its level.
    const std::array<std::string_view, 4> marks = {"  ", "+ ", "* ", "**"};
    for (size_t i = 0; i < 3; ++i) {
      if (0.99 * exact[i] >= 2.33) {
        EXPECT_EQ(QMark(Shipped(), k, df, 0.99 * exact[i]), marks[i]) << k << " " << df;
      }
      EXPECT_EQ(QMark(Shipped(), k, df, 1.01 * exact[i]), marks[i + 1]) << k << " " << df;
    }
    // More than 20 means read the column of 20.
    if (k == 20) {
      EXPECT_EQ(StudentizedRangeCritical(Shipped(), 33, df), table);
    }
  }
}

TEST(StudentizedRange, LimitRowIsTheRangeOfNormalValues) {
  ReferenceCsv csv("pairwise_critical_limit.csv", "stats");
  ASSERT_EQ(csv.size(), 57u);
  for (size_t r = 0; r < csv.size(); ++r) {
    const size_t k = static_cast<size_t>(csv.Number(r, "k"));
    const double level = csv.Number(r, "level");
    const size_t i = level > 0.09 ? 0 : level > 0.04 ? 1 : 2;
    EXPECT_NEAR(kStudentizedRangeLimit[i][k - 2] / 100.0, csv.Number(r, "q"), 0.005) << k << " " << level;
  }
}

TEST(StudentizedRange, MarkCornersAndTheMissingFile) {
  // Below 2.33 nothing is looked up; 2.33 itself is the 10% value of k 2 at df 255 and
  // above the value for more df.
  EXPECT_EQ(QMark(Shipped(), 2, 255, 2.3299), "  ");
  EXPECT_EQ(QMark(Shipped(), 2, 255, 2.33), "+ ");
  EXPECT_EQ(QMark(Shipped(), 2, 100000, 2.33), "+ ");
  EXPECT_EQ(QMark(Shipped(), 3, 2, 50), "  ");
  EXPECT_EQ(QMark(Shipped(), 1, 30, 50), "  ");
  EXPECT_EQ(QMark(Shipped(), 21, 30, 50), "**");
  test::TempFolder folder;
  try {
    LoadStudentizedRangeTable(folder.path());
    FAIL() << "no exception";
  } catch (const MissingTableFile& missing) {
    EXPECT_EQ(missing.name(), "TSTAB.TXT");
  }
}

}  // namespace
}  // namespace tarvika
