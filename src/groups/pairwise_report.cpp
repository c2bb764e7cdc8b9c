#include "groups/pairwise_report.h"

#include <fmt/format.h>

#include "frame/number_text.h"
#include "frame/report_writer.h"
#include "lang/utf8.h"

namespace tarvika {
namespace {

constexpr std::string_view kVariancesNoteEnglish = "(population variances may differ, df's are in parentheses):";
constexpr std::string_view kVariancesNoteHungarian = "(elméleti szórások különbözhetnek, zárójelben a szabadságfokok):";

// "T1 2" for a small table; with ten or more entries "T1_12", which can't be read as "T11 2".
std::string PairLabel(const PairwiseResult& result, const PairComparison& pair) {
  return fmt::format(" T{}{}{}", pair.first, result.tableSize > 9 ? "_" : "", pair.second);
}

}  // namespace

std::vector<std::string> OneWayPairwiseHeading(Language lang, PairwiseMethod method, PairwiseKind kind, int k,
                                               int df) {
  const bool english = lang == Language::English;
  if (method == PairwiseMethod::GamesHowell) {
    std::string_view what;
    switch (kind) {
      case PairwiseKind::Means: what = english ? "means" : "Átlagok"; break;
      case PairwiseKind::TrimmedMeans: what = english ? "trimmed means" : "Trimmelt átlagok"; break;
      case PairwiseKind::RankMeans: what = english ? "rankmeans" : "Rangátlagok"; break;
      case PairwiseKind::AdjustedMeans: what = english ? "adjusted means" : "Korrigált átlagok"; break;
    }
    if (english) return {fmt::format("Games-Howell pairwise comparison of {} {}", what, kVariancesNoteEnglish)};
    return {fmt::format("{} Games-Howell-féle páronkénti összehasonlítása {}", what, kVariancesNoteHungarian)};
  }
  switch (kind) {
    case PairwiseKind::Means:
      return {english ? fmt::format("Tukey-Kramer pairwise comparison of means (k = {}, df = {}):", k, df)
                      : fmt::format("Átlagok Tukey-Kramer-féle páronkénti összehasonlítása (k = {}, df = {}):", k, df)};
    case PairwiseKind::TrimmedMeans:
      return {english ? fmt::format("Tukey-Kramer pairwise comparison of trimmed means (k = {}, df = {}):", k, df)
                      : fmt::format("Trimmelt átlagok Tukey-Kramer-féle páronkénti összehasonlítása (k = {}, df = {}):",
                                    k, df)};
    case PairwiseKind::RankMeans:
      return {english ? fmt::format("Tukey-Kramer pairwise comparison of rankmeans (k = {}, df = {}):", k, df)
                      : fmt::format("Rangátlagok Tukey-Kramer-féle páronkénti összehasonlítása  (k = {}, df = {}):", k,
                                    df)};
    case PairwiseKind::AdjustedMeans:
      return {english ? fmt::format("Tukey-Kramer pairwise comparison of adjusted means (k={}, df={}):", k, df)
                      : fmt::format("Korrigált átlagok Tukey-Kramer-féle páronkénti összehasonlítása (k = {}, df={}):",
                                    k, df)};
  }
  return {};
}

std::vector<std::string> TukeyForFactorHeading(Language lang, FactorMeans means, std::string_view name, int k,
                                               int df) {
  if (lang == Language::English) {
    switch (means) {
      case FactorMeans::Means:
        return {fmt::format("Tukey-type pairwise comparison of means (k = {}, df = {}):", k, df)};
      case FactorMeans::TrimmedMeans:
        return {fmt::format("Tukey-type pairwise comparison of trimmed means (k = {}, df = {}):", k, df)};
      case FactorMeans::NamedFactor:
        return {fmt::format("Tukey-type pairwise comparison of means for factor {} (k = {}, df = {}):", name, k, df)};
      case FactorMeans::RankMeans:
        return {fmt::format("Tukey-type pairwise comparison of rank means (k = {}, df = {}):", k, df)};
    }
  }
  switch (means) {
    case FactorMeans::Means:
      return {fmt::format("Átlagok Tukey-féle páronkénti összehasonlítása (k = {}, f = {}):", k, df)};
    case FactorMeans::TrimmedMeans:
      return {fmt::format("Trimmelt átlagok Tukey-féle páronkénti összehasonlítása (k = {}, f = {}):", k, df)};
    case FactorMeans::NamedFactor:
      return {fmt::format("{}: szintátlagok Tukey-féle páronkénti összehasonlítása (k = {}, f = {}):", name, k, df)};
    case FactorMeans::RankMeans:
      return {fmt::format("Rangátlagok Tukey-féle páronkénti összehasonlítása (k = {}, f = {}):", k, df)};
  }
  return {};
}

std::vector<std::string> GamesHowellForFactorHeading(Language lang, bool trimmed, std::string_view name) {
  if (lang == Language::English) {
    return {fmt::format("Games-Howell pairwise comparison of {} for factor {} {}", trimmed ? "trimmed means" : "means",
                        name, kVariancesNoteEnglish)};
  }
  return {fmt::format("{}: {} Games-Howell-féle páronkénti összehasonlítása {}", name,
                      trimmed ? "trimmelt szintátlagok" : "szintátlagok", kVariancesNoteHungarian)};
}

std::vector<std::string> LevelsPairwiseHeading(Language lang, PairwiseMethod method, bool trimmed,
                                               std::string_view name, int k, int df) {
  const bool english = lang == Language::English;
  if (method == PairwiseMethod::GamesHowell) {
    if (english) {
      return {fmt::format("Games-Howell pairwise comparison of {} for factor {}", trimmed ? "trimmed means" : "means",
                          name),
              std::string(kVariancesNoteEnglish)};
    }
    return {fmt::format("{}: {} Games-Howell-féle páronkénti összehasonlítása", name,
                        trimmed ? "trimmelt szintátlagok" : "szintátlagok"),
            std::string(kVariancesNoteHungarian)};
  }
  if (english) {
    return {fmt::format("Tukey-Kramer pairwise comparison of {} (k = {}, df = {}) for factor: {}",
                        trimmed ? "trimmed means" : "means", k, df, name)};
  }
  return {fmt::format("{}: {} Tukey-Kramer-féle páronkénti összehasonlítása (k = {}, f = {}):", name,
                      trimmed ? "trimmelt szintátlagok" : "szintátlagok", k, df)};
}

void WritePairwiseComparisons(ReportWriter& report, const std::vector<std::string>& heading,
                              const PairwiseResult& result) {
  if (result.pairs.empty()) return;
  report.BlankLine();
  for (const std::string& line : heading) report.Line(line);
  const bool tukey = result.method == PairwiseMethod::TukeyKramer;
  const size_t perLine = tukey ? 5 : 4;
  report.BeginTable();
  for (size_t i = 0; i < result.pairs.size(); ++i) {
    const PairComparison& pair = result.pairs[i];
    const std::string text =
        tukey ? fmt::format("{:>13}{}", PairLabel(result, pair) + "= " + Fixed(pair.q, 2), pair.mark)
              : fmt::format("{:>17}{}",
                            fmt::format("{}({}; {})= {}", PairLabel(result, pair), result.k, pair.df, Fixed(pair.q, 2)),
                            pair.mark);
    if (i % perLine == 0) {
      report.FirstCell(text);
    } else {
      report.Cell(text);
    }
    if (i % perLine == perLine - 1 || i + 1 == result.pairs.size()) report.EndRow();
  }
  report.EndTable();
  report.BlankLine();
}

void WritePairwiseComparisons(ReportWriter& report, PairwiseKind kind, const PairwiseResult& result) {
  WritePairwiseComparisons(report, OneWayPairwiseHeading(report.Lang(), result.method, kind, result.k, result.df),
                           result);
}

void WriteScheffeToRest(ReportWriter& report, bool trimmed, std::string_view factorName,
                        const std::vector<std::string>& levelNames, const ScheffeToRestResult& result) {
  if (result.rows.empty()) return;
  const Language lang = report.Lang();
  std::string title;
  if (lang == Language::English) {
    title = fmt::format("{}{}",
                        trimmed ? "Scheffé-type comparison of trimmed mean of each group to the rest for factor: "
                                : "Scheffé-type comparison of each group mean to the rest for factor: ",
                        factorName);
  } else {
    title = fmt::format("{}: {}", factorName,
                        trimmed ? "trimmelt szintátlagok egyenkénti Scheffé-féle összehasonlítása a trimmelt összátlaggal"
                                : "szintátlagok egyenkénti Scheffé-féle összehasonlítása az összátlaggal");
  }
  const std::string fHeading = fmt::format("F({}; {})", result.levels - 1, result.df);
  report.BlankLine();
  report.BeginTitledTable(title, {"Index", Pick(lang, "Group name   ", "Csoportnév   "), Pick(lang, "Effect", "Hatás"),
                                  fHeading, Pick(lang, "p-value", "p-érték")});
  for (const LevelToRest& row : result.rows) {
    const std::string& name = levelNames.at(static_cast<size_t>(row.level - 1));
    // Short names get wider fields so that the columns of a tab-separated text stay aligned.
    const size_t length = Utf8Length(name);
    report.FirstCell(std::to_string(row.level));
    report.Cell(PadRight(name, length < 5 ? 22 : length < 7 ? 16 : 14));
    report.NumberCell(Fixed(row.effect, 2));
    report.NumberCell(Fixed(row.f, 3));
    report.NumberCell(fmt::format("        {}{}", Fixed(row.p.p, 4), row.p.marker));
    report.EndRow();
  }
  report.EndTable();
  report.BlankLine();
}

}  // namespace tarvika
