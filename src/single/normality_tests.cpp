// Mode 15: per variable the Kolmogorov test of normality with Lilliefors' p (up to 100
// cases) or the chi-square test on classes (above), and the standardized variables when
// asked for.

#include <algorithm>
#include <cmath>

#include "lang/utf8.h"
#include "single/class_table.h"
#include "single/single_sample_context.h"
#include "stats/goodness_of_fit.h"
#include "stats/moments.h"
#include "workspace/new_variable.h"

namespace tarvika {
namespace {

constexpr int kMaxStandardizedCases = 20000;

class NormalityRun {
 public:
  explicit NormalityRun(SingleSampleContext& c) : c_(c), r_(c.report) {}
  void Variable(int i);

 private:
  void Kolmogorov(int i);
  void ChiSquare(int i);
  void SaveStandardized(int i);
  void WriteTooFewValues();

  SingleSampleContext& c_;
  ReportWriter& r_;
  ClassTable table_;
};

void NormalityRun::Variable(int i) {
  const VariableStats& s = c_.stats[i];
  c_.WriteVariableHeading(i);
  r_.BlankLine();
  r_.Line(fmt::format("{}{}", c_.T("Number of acceptable values: ", "Érvényes értékek száma: "), s.count));
  if (s.count < 8) {
    r_.Line(c_.T("There are few cases to perform a test of normality.", "A normalitásvizsgálathoz kicsi az érvényes értékek száma."));
  } else {
    table_.Reset(ClassCountFor(s.count, 1, false, true), s.minimum, s.maximum, true);
    c_.ForEachValue(i, [&](int, double x) { table_.Add(x); });
    if (table_.Count() < 3) {
      WriteTooFewValues();
    } else if (StandardDeviation(s) < kZeroTolerance) {
      r_.Line(c_.T("Variance is too low to perform a test of normality.", "Nem végezhető normalitásvizsgálat a túl kicsi szórás miatt."));
    } else {
      table_.Sort();
      if (s.count <= 100) {
        Kolmogorov(i);
      } else {
        ChiSquare(i);
      }
    }
  }
  if (c_.request.Get(param::kSaveStandardized)) SaveStandardized(i);
}

void NormalityRun::WriteTooFewValues() {
  r_.Line(fmt::format("{}{}{}", c_.T("Number of different values: ", "A különböző értékek száma: "), table_.Count(),
                      c_.T(". No use to perform a test of normality.", ". Emiatt nincs értelme a normalitásvizsgálatnak.")));
}

void NormalityRun::Kolmogorov(int i) {
  const KolmogorovTest test = KolmogorovNormality(table_.Values(), table_.Frequencies(), c_.stats[i]);
  r_.Line(fmt::format("{}{}, D* = {}  (p = {}){}",
                      c_.T("Kolmogorov's test of normality (Lilliefors): Dmax = ",
                           "Kolmogorov-féle normalitásvizsgálat (Lilliefors): Dmax = "),
                      Fixed(test.d, 3), Fixed(test.dStar, 3), Fixed(test.p.p, 4), test.p.marker));
}

void NormalityRun::ChiSquare(int i) {
  const ChiSquareNormalityTest test = ChiSquareNormality(table_.Values(), table_.Frequencies(), c_.stats[i]);
  if (!test.Tested()) {
    // Three values leave no degree of freedom once the mean and SD are estimated.
    WriteTooFewValues();
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
  NormalityRun run(c);
  for (int i = 1; i <= c.index.analysed; ++i) {
    c.ShowVariableProgress(i);
    run.Variable(i);
  }
}

}  // namespace tarvika
