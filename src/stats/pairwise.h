#pragma once
// Pairwise post hoc comparisons of group means against the studentized range: the q of
// each pair, its df and its mark from the range table. Tukey-Kramer pools the error mean
// square; Games-Howell uses the two groups' own variances and the Welch-Satterthwaite df.

#include <string_view>
#include <vector>

#include "numeric/probability.h"
#include "numeric/stat_tables.h"

namespace tarvika {

enum class PairwiseMethod { TukeyKramer = 0, GamesHowell = 1 };
// What the means are; it only changes the heading of the printed table.
enum class PairwiseKind { Means = 0, RankMeans = 1, AdjustedMeans = 2, TrimmedMeans = 3 };

// One group of the caller's table (a group, or a level of a factor).
struct PairwiseGroup {
  double mean = 0;
  double sd = 0;
  int n = 0;
};

struct PairComparison {
  int first = 0, second = 0;  // the groups' numbers in the caller's table, from 1
  double q = 0;               // 99 when the pair has no variance
  int df = 0;                 // the error df (Tukey), or the pair's own df (Games-Howell)
  std::string_view mark;      // QMark: "**", "* ", "+ " or two blanks
};

struct PairwiseResult {
  PairwiseMethod method = PairwiseMethod::TukeyKramer;
  int k = 0;          // the number of means of the heading and of the range table
  int df = 0;         // the error df of the heading
  int tableSize = 0;  // entries of the caller's table (the labels of pairs depend on it)
  // Every pair i < j of groups with n above 1; empty (nothing to print) when fewer than 3
  // groups have n above 1.
  std::vector<PairComparison> pairs;
};

// round((v1 + v2)^2 / (v1^2/(n1 - 1) + v2^2/(n2 - 1))), v = s^2/n: the Welch-Satterthwaite
// df of a difference of two means. n1, n2 above 1; v1 + v2 above 0.
int SatterthwaiteDf(int n1, int n2, double s1, double s2);

// All pairs of groups with n above 1. Tukey-Kramer: V = (1/n_i + 1/n_j) msError, marked at
// the error df. Games-Howell: an SD below 1e-8 stands as sqrt(msError), V = s_i^2/n_i +
// s_j^2/n_j, marked at the pair's Satterthwaite df (n_i + n_j - 2 when s_i s_j is not
// above 1e-8). q = |mean_i - mean_j| / sqrt(0.5 V), or 99 when V is not above 1e-8.
PairwiseResult PairwiseComparisons(PairwiseMethod method, const std::vector<PairwiseGroup>& groups, int k, int df,
                                   double msError, const StudentizedRangeTable& table);

// The levels of a repeated-measures factor, all of the same n: q = |mean_i - mean_j| /
// sqrt(msError / n), marked at the error df.
PairwiseResult TukeyForFactor(const std::vector<double>& means, int n, int k, int df, double msError,
                              const StudentizedRangeTable& table);

// The levels of a factor with their own within-level SDs: Games-Howell without a pooled
// error term.
PairwiseResult GamesHowellForFactor(const std::vector<PairwiseGroup>& levels, int k,
                                    const StudentizedRangeTable& table);

// The levels of a factor of a two-way design, given as sums of the cell means over the
// `cells` levels of the other factor (so that sum / cells is the unweighted level mean) with
// the levels' SDs and sizes. Otherwise as PairwiseComparisons.
PairwiseResult TukeyKramerForLevels(PairwiseMethod method, const std::vector<double>& levelSums, int cells,
                                    const std::vector<PairwiseGroup>& levels, int k, int df, double msError,
                                    const StudentizedRangeTable& table);

// Each level of a factor against the mean of all levels, by a Scheffe contrast.
struct LevelToRest {
  int level = 0;       // the level's number in the caller's table, from 1
  double effect = 0;   // level mean - mean of the level means
  double f = 0;        // Scheffe F at (L - 1, df)
  PValue p;            // upper tail of f
  double bonferroniP = 0;  // the contrast's own F at (1, df), times L, at most 1
};
struct ScheffeToRestResult {
  int levels = 0;  // L: the levels with n above 1
  int df = 0;
  std::vector<LevelToRest> rows;  // empty when fewer than 3 levels have n above 1
};

// Level means are levelSums / cells over the levels with n above 1. With S the sum of the
// means and H the sum of 1/n: D = (L m - S)^2, G = msError ((L - 2) L / n + H) (the variance
// of the contrast L m - S), F = D / ((L - 1) G).
ScheffeToRestResult ScheffeToRest(const std::vector<double>& levelSums, int cells, const std::vector<int>& n, int df,
                                  double msError);

}  // namespace tarvika
