// Mode 12 without trimming: one line per variable with median, mean, its standard error and
// confidence interval, skewness and kurtosis.

#include <cmath>

#include "lang/utf8.h"
#include "single/single_sample_context.h"
#include "stats/moments.h"

namespace tarvika {
namespace {

// Skewness or kurtosis with its significance marker, the marker in a field of 6.
std::string ShapeCell(double value, std::string_view significance) {
  std::string marker = " " + std::string(significance);
  return Fixed(value, std::fabs(value) < 1000 ? 3 : 2) + marker + std::string(6 - marker.size(), ' ');
}

void WriteDetailedRow(SingleSampleContext& c, int i, double median) {
  const VariableStats& s = c.stats[i];
  ReportWriter& r = c.report;
  c.WriteIndexAndName(i);
  if (s.count == 0) {
    r.Cell(fmt::format("{:>5}{}", 0, std::string(58, '.')));
  } else {
    const double se = StandardErrorOfMean(s);
    const double half = se * std::sqrt(c.CriticalF(s.count - 1));
    r.Cell(fmt::format("{:>5}", s.count));
    r.WriteRatio(8, 0, 1, median, 1);
    r.WriteRatio(8, 8, 1, s.mean, 1);
    // One value has no standard error: the zero denominator prints the empty cell "......".
    const double unit = s.count == 1 ? 0 : 1;
    r.WriteRatio(8, 9, 1, se, unit);
    r.WriteRatio(8, 8, 1, s.mean - half, unit);
    r.WriteRatio(8, 8, 1, s.mean + half, unit);
    const ShapeTest shape = NormalityByShape(s);
    r.Cell(ShapeCell(shape.skewness, shape.skewnessP.marker));
    r.Cell(ShapeCell(shape.kurtosis, shape.kurtosisP.marker));
  }
  if (Utf8Length(c.LongName(i)) > 30) r.Cell(" " + c.LongName(i));
  r.EndRow();
}

}  // namespace

void FillValueTable(const SingleSampleContext& c, int i, ValueTable& table, Deviations* deviations, bool tellProgress) {
  const VariableStats& s = c.stats[i];
  table.Reset(s.minimum, s.maximum);
  c.ForEachValue(
      i,
      [&](int, double x) {
        table.Add(x);
        if (deviations == nullptr) return;
        const double d = std::fabs(x - deviations->reference);
        if (d <= kZeroTolerance) return;
        if (++deviations->count <= 100) deviations->first.push_back(d);
      },
      tellProgress);
}

namespace {

// The median of each variable (its mean when its variance is zero), two variables side by
// side: the second part fills a value table of its own and tells no progress.
std::vector<double> Medians(SingleSampleContext& c) {
  const int k = c.index.analysed;
  std::vector<double> medians(k + 1, 0);
  std::vector<int> wanted;
  for (int i = 1; i <= k; ++i) {
    medians[i] = c.stats[i].mean;
    if (!ZeroVariance(c.stats[i])) wanted.push_back(i);
  }
  ValueTable second;
  ForVariablesInPairs(c, wanted, [&](int i, int part) {
    ValueTable& table = part == 0 ? c.values : second;
    FillValueTable(c, i, table, nullptr, part == 0);
    medians[i] = table.OrderStats(c.stats[i].count, c.stats[i].minimum, c.stats[i].maximum).median;
  });
  return medians;
}

}  // namespace

void WriteDetailedTable(SingleSampleContext& c) {
  ReportWriter& r = c.report;
  const std::string percent = std::to_string(c.ConfidencePercent());
  const std::vector<std::string> head =
      c.English() ? std::vector<std::string>{"Index", "Variable        ", "Cases", "Median", "Mean", "St.Err.",
                                             percent + "% C.I.", "limits", "Skewness        ", "Kurtosis",
                                             "Long variable name"}
                  : std::vector<std::string>{"Index", "Változó        ", "Esetek", "Medián", "Átlag", "St.hiba",
                                             percent + "%-os", "konf.int.", "Ferdeség       ", "Csúcsosság",
                                             "Hosszú változónév"};
  r.BeginTable();
  r.FirstCell(head[0]);
  for (std::size_t k = 1; k < head.size(); ++k) r.Cell(head[k]);
  r.EndRow();
  const std::vector<double> medians = Medians(c);
  for (int i = 1; i <= c.index.analysed; ++i) WriteDetailedRow(c, i, medians[i]);
  r.EndTable();
  if (c.index.analysed > 0 && c.stats[c.index.analysed].count > 0) {
    r.BlankLine();
    r.Line(c.T("Notation in testing normality via skewness and kurtosis:  *: p<.05  **: p<.01  ***: p<.001",
               "Jelölés a normalitás tesztelésénél a Ferdeség és a Csúcsosság segítségével:  *: p < 0,05  **: p < 0,01  "
               "***: p < 0,001"));
  }
}

}  // namespace tarvika
