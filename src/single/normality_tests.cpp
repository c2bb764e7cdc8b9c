// Mode 15: per variable the Kolmogorov test of normality with Lilliefors' p (up to 100
// cases) or the chi-square test on classes (above), and the standardized variables when
// asked for.

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

#include "lang/utf8.h"
#include "single/class_table.h"
#include "single/single_sample_context.h"
#include "stats/goodness_of_fit.h"
#include "stats/moments.h"
#include "workspace/new_variable.h"

namespace tarvika {
namespace {

constexpr int kMaxStandardizedCases = 20000;

// A variable's test, computed for all variables (two at a time on two threads) before any
// block is written.
struct NormalityFigures {
  int distinct = 0;  // distinct values (or classes) in the table, when it was filled
  std::optional<KolmogorovTest> kolmogorov;
  std::optional<ChiSquareNormalityTest> chiSquare;
};

// The pass over the i-th variable's values into `table` and the test on the sorted table.
NormalityFigures ComputeFigures(const SingleSampleContext& c, int i, ClassTable& table, bool tellProgress) {
  const VariableStats& s = c.stats[i];
  NormalityFigures f;
  table.Reset(ClassCountFor(s.count, 1, false, true), s.minimum, s.maximum, true);
  c.ForEachValue(i, [&](int, double x) { table.Add(x); }, tellProgress);
  f.distinct = table.Count();
  if (f.distinct < 3 || StandardDeviation(s) < kZeroTolerance) return f;
  table.Sort();
  if (s.count <= 100) {
    f.kolmogorov = KolmogorovNormality(table.Values(), table.Frequencies(), s);
  } else {
    f.chiSquare = ChiSquareNormality(table.Values(), table.Frequencies(), s);
  }
  return f;
}

class NormalityRun {
 public:
  explicit NormalityRun(SingleSampleContext& c) : c_(c), r_(c.report) {}
  void Variable(int i, const NormalityFigures& f);

 private:
  void Kolmogorov(const KolmogorovTest& test);
  void ChiSquare(const ChiSquareNormalityTest& test, int distinct);
  void SaveStandardized(int i);
  void WriteTooFewValues(int distinct);

  SingleSampleContext& c_;
  ReportWriter& r_;
};

void NormalityRun::Variable(int i, const NormalityFigures& f) {
  const VariableStats& s = c_.stats[i];
  c_.WriteVariableHeading(i);
  r_.BlankLine();
  r_.Line(fmt::format("{}{}", c_.T("Number of acceptable values: ", "Érvényes értékek száma: "), s.count));
  if (s.count < 8) {
    r_.Line(c_.T("There are few cases to perform a test of normality.", "A normalitásvizsgálathoz kicsi az érvényes értékek száma."));
  } else if (f.distinct < 3) {
    WriteTooFewValues(f.distinct);
  } else if (StandardDeviation(s) < kZeroTolerance) {
    r_.Line(c_.T("Variance is too low to perform a test of normality.", "Nem végezhető normalitásvizsgálat a túl kicsi szórás miatt."));
  } else if (f.kolmogorov) {
    Kolmogorov(*f.kolmogorov);
  } else {
    ChiSquare(*f.chiSquare, f.distinct);
  }
  if (c_.request.Get(param::kSaveStandardized)) SaveStandardized(i);
}

void NormalityRun::WriteTooFewValues(int distinct) {
  r_.Line(fmt::format("{}{}{}", c_.T("Number of different values: ", "A különböző értékek száma: "), distinct,
                      c_.T(". No use to perform a test of normality.", ". Emiatt nincs értelme a normalitásvizsgálatnak.")));
}

void NormalityRun::Kolmogorov(const KolmogorovTest& test) {
  r_.Line(fmt::format("{}{}, D* = {}  (p = {}){}",
                      c_.T("Kolmogorov's test of normality (Lilliefors): Dmax = ",
                           "Kolmogorov-féle normalitásvizsgálat (Lilliefors): Dmax = "),
                      Fixed(test.d, 3), Fixed(test.dStar, 3), Fixed(test.p.p, 4), test.p.marker));
}

void NormalityRun::ChiSquare(const ChiSquareNormalityTest& test, int distinct) {
  if (!test.Tested()) {
    // Three values leave no degree of freedom once the mean and SD are estimated.
    WriteTooFewValues(distinct);
    return;
  }
  r_.Line(fmt::format("{}{}{}{}  (p = {}){}",
                      c_.T("Normality test, chi-square method (df = ", "Normalitásvizsgálat khi-négyzet-próbával (f = "),
                      test.df, c_.T("): Chi-2 = ", "): Khi2 = "), Fixed(test.chi, 3), Fixed(test.p.p, 4), test.p.marker));
  if (test.ManySmallExpected()) {
    r_.Line(c_.T("WARNING", "FIGYELEM:"));
    r_.Line(fmt::format("{}{}%).", c_.T("   There are too many expected cell frequencies less than 5 (",
                                         "   Túl sok 5-nél kisebb várt gyakoriság van ("),
                        Fixed(100.0 * test.smallExpected / test.cells, 1)));
    r_.Line(c_.T("   This may invalidate the chi-square test.", "   Emiatt a khi-négyzet-próba érvénytelen lehet."));
  }
}

void NormalityRun::SaveStandardized(int i) {
  const VariableStats& s = c_.stats[i];
  const double sd = StandardDeviation(s);
  Workspace& ws = c_.ws;
  if (sd <= kZeroTolerance) {
    r_.Line(c_.T("Since this variable has a zero variance, its standardized variable was not created.",
                 "Mivel ezen változó szórása 0, standardizáltját nem hoztuk létre."));
    r_.BlankLine();
    return;
  }
  if (!RoomForVariables(ws, 1)) {
    r_.Line(VariableLimitMessage(ws));
    return;
  }
  if (ws.NumberOfCases() > kMaxStandardizedCases) {
    r_.Line(fmt::format("{}{}{}{}", c_.T("The standardized variables cannot be saved ", "A standardizált változók nem hozhatók létre, mert az esetek száma"),
                        c_.T("since the total number of cases exceeds ", " nagyobb, mint ("), kMaxStandardizedCases,
                        c_.T(".", ").")));
    return;
  }
  const bool tScale = c_.request.Get(param::kStandardizedKind) == 2;
  std::vector<std::string> cells(ws.NumberOfCases());
  c_.ForEachValue(i, [&](int row, double x) {
    double z = (x - s.mean) / sd;
    if (tScale) z = std::trunc(100 * ((x - s.mean) * 10 / sd + 50)) * 0.01;
    cells[row - 1] = DataCell(z, ws.decimalSeparator);
  });
  const std::string base = std::string(Utf8Prefix(c_.Name(i), 7)) + (tScale ? "T" : "z");
  const std::string longName = fmt::format("{}{}", tScale ? c_.T("T-scale of ", "T-skála: ") : c_.T("Standardized ", "Standardizált: "),
                                           c_.Name(i));
  NewVariable(ws, NewVariableName(ws, base), longName, cells);
}

}  // namespace

void WriteNormalityTests(SingleSampleContext& c) {
  const int k = c.index.analysed;
  std::vector<NormalityFigures> figures(k + 1);
  std::vector<int> wanted;
  for (int i = 1; i <= k; ++i) {
    if (c.stats[i].count >= 8) wanted.push_back(i);
  }
  ClassTable tables[2];
  ForVariablesInPairs(c, wanted, [&](int i, int part) {
    if (part == 0) c.ShowVariableProgress(i);
    figures[i] = ComputeFigures(c, i, tables[part], part == 0);
  });
  NormalityRun run(c);
  for (int i = 1; i <= k; ++i) run.Variable(i, figures[i]);
}

}  // namespace tarvika
