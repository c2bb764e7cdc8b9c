#pragma once
// The printed tables of the pairwise post hoc comparisons: a heading, then one cell per
// pair ("T12= 3.45**"), five to a line for Tukey, four for Games-Howell with the pair's df;
// and the table of each level against the rest.
//
// In an analysis whose command row asks for StatTable::StudentizedRange:
//   const PairwiseResult tukey = PairwiseComparisons(PairwiseMethod::TukeyKramer, groups, k, df, msError,
//                                                    run.tables.studentizedRange);
//   WritePairwiseComparisons(run.report, PairwiseKind::Means, tukey);

#include <string>
#include <string_view>
#include <vector>

#include "lang/language.h"
#include "stats/pairwise.h"

namespace tarvika {

class ReportWriter;

// The heading lines of the one-way tables: the kind of means, the method, k and df.
std::vector<std::string> OneWayPairwiseHeading(Language lang, PairwiseMethod method, PairwiseKind kind, int k, int df);

// The headings of TukeyForFactor: the means of a one-factor design, their trimmed means,
// the means of a named factor, the rank means.
enum class FactorMeans { Means, TrimmedMeans, NamedFactor, RankMeans };
std::vector<std::string> TukeyForFactorHeading(Language lang, FactorMeans means, std::string_view name, int k, int df);
// GamesHowellForFactor: one line.
std::vector<std::string> GamesHowellForFactorHeading(Language lang, bool trimmed, std::string_view name);
// TukeyKramerForLevels: one line for Tukey-Kramer; two for Games-Howell, the note about
// the variances on a line of its own.
std::vector<std::string> LevelsPairwiseHeading(Language lang, PairwiseMethod method, bool trimmed,
                                               std::string_view name, int k, int df);

// A blank line, the heading, the cells of the pairs and a blank line; nothing when the
// result has no pairs. The cells take the form of result.method.
void WritePairwiseComparisons(ReportWriter& report, const std::vector<std::string>& heading,
                              const PairwiseResult& result);
// The one-way table with its heading.
void WritePairwiseComparisons(ReportWriter& report, PairwiseKind kind, const PairwiseResult& result);

// The table of each level against the rest; levelNames[i] names level i + 1. Nothing when
// the result has no rows.
void WriteScheffeToRest(ReportWriter& report, bool trimmed, std::string_view factorName,
                        const std::vector<std::string>& levelNames, const ScheffeToRestResult& result);

}  // namespace tarvika
