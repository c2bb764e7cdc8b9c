#include "relations/multiple_regression.h"

#include <cmath>
#include <fmt/format.h>
#include <string>
#include <vector>

#include "frame/analysis_run.h"
#include "frame/number_text.h"
#include "frame/parameter_names.h"
#include "relations/correlation.h"
#include "stats/regression.h"
#include "workspace/new_variable.h"
#include "workspace/workspace.h"

namespace tarvika {
namespace {

struct Settings {
  bool forced = false, basic = false, save = false;
  double enterF = 3.84;
  std::string regressionName;
};

// What is saved of one dependent: its estimate and standardized residual per case.
struct Saved {
  int dependent = 0;
  std::vector<std::string> estimate, residual;
};

std::string Number(double x) { return Fixed(x, Decimals(x)); }

class DependentReport {
 public:
  DependentReport(AnalysisRun& run, const Settings& s, const std::vector<int>& xs, int y)
      : run_(run), r_(run.report), s_(s), xs_(xs), y_(y) {}
  void Write(Saved* saved);

 private:
  std::string T(std::string_view english, std::string_view hungarian) const {
    return std::string(run_.T(english, hungarian));
  }
  const std::string& Name(int column) const { return run_.request.shortNames[Variable(column)]; }
  const std::string& LongName(int column) const { return run_.request.longNames[Variable(column)]; }
  int Variable(int column) const { return column < static_cast<int>(xs_.size()) ? xs_[column] : y_; }
  void Read();
  bool Refused(const MultipleRegression& fit);
  void WriteBasicStatistics(const MultipleRegression& fit);
  void WriteSteps(const MultipleRegression& fit);
  void WritePartials(const MultipleRegression& fit);
  void WriteSummary(const MultipleRegression& fit);
  void WriteCoefficients(const MultipleRegression& fit);

  AnalysisRun& run_;
  ReportWriter& r_;
  const Settings& s_;
  const std::vector<int>& xs_;
  int y_;
  std::vector<std::vector<double>> rows_;
  std::vector<int> caseRows_;
};

void DependentReport::Read() {
  std::vector<int> columns = {0};
  columns.insert(columns.end(), xs_.begin(), xs_.end());
  columns.push_back(y_);
  const int count = static_cast<int>(columns.size()) - 1;
  DataFeed feed(run_.ws, r_.Missing(), columns);
  std::vector<double> value(count + 1, 0);
  std::vector<std::uint8_t> missing(count + 1, 1);
  int seen = 0;
  for (int row : run_.GroupRows()) {
    if (++seen % 10000 == 0) run_.ShowCaseProgress(row);
    feed.ReadRow(row, count, value, missing);
    bool complete = true;
    for (int i = 1; i <= count; ++i) complete = complete && !missing[i];
    if (!complete) continue;
    rows_.emplace_back(value.begin() + 1, value.end());
    caseRows_.push_back(row);
  }
}

bool DependentReport::Refused(const MultipleRegression& fit) {
  switch (fit.failure) {
    case RegressionFailure::None:
      return false;
    case RegressionFailure::TooFewCases:
      r_.Line(fmt::format("{}{}", T("Number of acceptable cases, N = ", "Érvényes esetek száma: N = "), fit.n));
      r_.Line(T("Since N is less than the number of independent variables + 2, valid analysis cannot be performed.",
                "Mivel N kisebb, mint a független változók száma + 2, érvényes elemzés nem végezhető."));
      return true;
    case RegressionFailure::ConstantDependent:
      r_.Line(T("The variance of the dependent variable is zero.", "A függő változó varianciája nulla."));
      break;
    case RegressionFailure::ConstantIndependents:
      r_.Line(T("The variance of each independent variable is zero.", "Minden független változó varianciája nulla."));
      break;
  }
  r_.Line(T(" No analysis can be performed.", " Elemzés nem végezhető."));
  return true;
}

void DependentReport::WriteBasicStatistics(const MultipleRegression& fit) {
  r_.BlankLine();
  r_.BeginTitledTable(run_.T("Basic descriptive statistics for complete cases", "Leíró alapstatisztikák"),
                      {run_.T("Index", "Index"), run_.T("Variable", "Változó"), run_.T("Mean", "Átlag"),
                       run_.T("SD", "Szórás"), "Min", "Max", run_.T("Long variable name", "Hosszú változónév")});
  for (std::size_t c = 0; c < fit.mean.size(); ++c) {
    const int column = static_cast<int>(c);
    r_.FirstCell(fmt::format("{}", c + 1));
    r_.Cell(Name(column));
    r_.NumberCell(Number(fit.mean[c]));
    r_.NumberCell(Number(fit.sd[c]));
    r_.NumberCell(Number(fit.min[c]));
    r_.NumberCell(Number(fit.max[c]));
    r_.Cell(LongName(column));
    r_.EndRow();
  }
  r_.EndTable();
}

void DependentReport::WriteSteps(const MultipleRegression& fit) {
  r_.BlankLine();
  r_.BeginTitledTable(
      run_.T("Steps of the selection", "A kiválasztás lépései"),
      {run_.T("Step", "Lépés"), run_.T("Variable", "Változó"), run_.T("In/Out", "Be/Ki"), "R",
       run_.T("R square", "R-négyz."), run_.T("Adjust. R square", "Korr. R-négyz."),
       run_.T("Error variance", "Hibavarian."), run_.T("Stand. error", "St. hiba"),
       run_.T("Partial corr.", "Parc. korr."), run_.T("F_In/Out", "F_Be/Ki"),
       run_.T("Long variable name", "Hosszú változónév")});
  int step = 0;
  for (const RegressionStep& s : fit.steps) {
    r_.FirstCell(fmt::format("{}", ++step));
    r_.Cell(Name(s.variable));
    r_.Cell(s.entered ? T("In", "Be") : T("Out", "Ki"));
    for (double x : {s.r, s.rsq, s.adjustedRsq}) r_.NumberCell(Fixed(x, 4));
    r_.NumberCell(Number(s.errorVariance));
    r_.NumberCell(Number(s.se));
    r_.NumberCell(Fixed(s.partial, 4));
    r_.NumberCell(Fixed(s.f, 3) + std::string(s.p.marker));
    r_.Cell(LongName(s.variable));
    r_.EndRow();
  }
  r_.EndTable();
}

void DependentReport::WritePartials(const MultipleRegression& fit) {
  r_.BlankLine();
  r_.Line(T("Partial correlations between dependent variable and not entered independent variables after each selection",
            "Parciális korrelációk a függő változó és a be nem lépett független változók között minden lépés után"));
  r_.Line(T("(at each step the linear effect of all previosly selected variables are removed)",
            "(minden lépésben a korábban kiválasztott változók lineáris hatását kiszűrjük)"));
  std::vector<std::string> headings = {T("Name of variable entered/removed", "A be-/kilépett változó neve")};
  for (std::size_t c = 0; c < xs_.size(); ++c) headings.push_back(Name(static_cast<int>(c)));
  r_.BeginTable();
  r_.FirstCell(headings.front());
  for (std::size_t i = 1; i < headings.size(); ++i) r_.Cell(headings[i]);
  r_.EndRow();
  for (std::size_t step = 0; step < fit.partials.size(); ++step) {
    r_.FirstCell(step == 0 ? T("Step = 0", "Lépés = 0") : Name(fit.steps[step - 1].variable));
    for (double p : fit.partials[step]) r_.NumberCell(std::isnan(p) ? "     ." : Fixed(p, 4));
    r_.EndRow();
  }
  r_.EndTable();
}

void DependentReport::WriteSummary(const MultipleRegression& fit) {
  r_.BlankLine();
  auto line = [&](std::string_view english, std::string_view hungarian, const std::string& value) {
    r_.Line(T(english, hungarian) + value);
  };
  line("Variance of the dependent variable: Var(Y) = ", "A függő változó varianciája: Var(Y) = ", Number(fit.varDep));
  line("Total sum of squares = ", "Teljes négyzetösszeg = ", Number(fit.totalSS));
  line("Residual sum of squares = ", "Reziduális négyzetösszeg = ", Number(fit.residualSS));
  line("Error variance of the regression estimation: Res = ", "A regressziós becslés hibavarianciája: Res = ",
       Number(fit.errorVariance));
  line("Standard error of the regression estimation: SE = ", "A regressziós becslés standard hibája: SH = ",
       Number(fit.se));
  line("Multiple correlation: R = ", "Többszörös korreláció: R = ", Fixed(std::sqrt(std::max(0.0, fit.rsq)), 4));
  line("R square = ", "R-négyzet = ", Fixed(fit.rsq, 4));
  line("Adjusted R square = ", "Korrigált R-négyzet = ", Fixed(fit.adjustedRsq, 4));
  r_.Line(fmt::format("{}F({}; {}) = {}   (p = {}){}", T("Test of the regression model: ", "A regressziós modell tesztje: "),
                      fit.m, fit.df, Fixed(fit.f, 3), Fixed(fit.p.p, 4), fit.p.marker));
}

void DependentReport::WriteCoefficients(const MultipleRegression& fit) {
  r_.BlankLine();
  r_.BeginTitledTable(
      run_.T("Regression coefficients and their tests of significance",
             "Regressziós együtthatók és szignifikanciájuk"),
      {run_.T("Independent variable", "Független változó"), run_.T("B coeff.", "B együttható"),
       run_.T("St.error", "St. hiba"), "Beta", run_.T("t-value", "t-érték"), run_.T("(p-value)", "(p-érték)"),
       run_.T("Signif.", "Szign."), run_.T("Long variable name", "Hosszú változónév")});
  r_.FirstCell(T("Constant", "Konstans"));
  r_.NumberCell(Fixed(fit.intercept, 4));
  r_.EndRow();
  for (const RegressionCoefficient& c : fit.coefficients) {
    r_.FirstCell(Name(c.variable));
    r_.NumberCell(Fixed(c.b, 4));
    r_.NumberCell(Fixed(c.seB, 4));
    r_.NumberCell(Fixed(c.beta, 4));
    r_.NumberCell(Fixed(c.t, 3));
    r_.NumberCell("(" + Fixed(c.p.p, 4) + ")");
    r_.Cell(c.p.marker);
    r_.Cell(LongName(c.variable));
    r_.EndRow();
  }
  r_.EndTable();
}

void DependentReport::Write(Saved* saved) {
  Read();
  r_.BlankLine();
  r_.Line(T("DEPENDENT VARIABLE: ", "FÜGGŐ VÁLTOZÓ: ") + NameWithLong(run_.ws, y_));
  r_.Line(fmt::format("{}{}", T("Number of listwise complete cases: ", "A teljes esetek száma: "), rows_.size()));
  r_.Line(T("Only listwise complete cases are used in the analysis",
            "Az elemzésben csak a teljes (hiányzó adat nélküli) esetek szerepelnek"));
  const MultipleRegression fit = FitRegression(rows_, s_.forced, s_.enterF);
  if (s_.basic && !rows_.empty()) WriteBasicStatistics(fit);
  if (Refused(fit)) return;
  if (!fit.constant.empty()) {
    r_.Line(T("At least one independent variable has zero variance. These variables will be dropped from further analyses.",
              "Legalább egy független változó varianciája nulla. Ezeket a változókat kihagyjuk a további elemzésből."));
  }
  for (int v : fit.lowTolerance) {
    r_.Line(fmt::format("{}{}", T("Left out for its tolerance below 0.0001 (collinear with the variables in the model): ",
                                  "Kimaradt, mert a toleranciája 0,0001 alatti (a modell változóival kollineáris): "),
                        Name(v)));
  }
  if (fit.steps.empty()) {
    r_.Line(T("No variable has significant predictive information on the dependent variable.",
              "Egyik változó sem hordoz szignifikáns előrejelző információt a függő változóra."));
    return;
  }
  WriteSteps(fit);
  WriteSummary(fit);
  WriteCoefficients(fit);
  if (!s_.forced) WritePartials(fit);
  if (saved == nullptr) return;
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    const double estimate = RegressionEstimate(fit, rows_[i]);
    saved->estimate[caseRows_[i] - 1] = DataCell(estimate, run_.ws.decimalSeparator);
    if (fit.se > 0) saved->residual[caseRows_[i] - 1] = DataCell((rows_[i].back() - estimate) / fit.se, run_.ws.decimalSeparator);
  }
}

void SaveVariables(AnalysisRun& run, const Settings& s, const std::vector<Saved>& saved) {
  ReportWriter& r = run.report;
  for (const Saved& one : saved) {
    if (!RoomForVariables(run.ws, 2)) {
      r.Line(run.T("The regression estimation as a new variable cannot be created",
                   "A regressziós becslés, mint új változó nem hozható létre"));
      r.Line(VariableLimitMessage(run.ws));
      return;
    }
    const std::string& y = run.request.shortNames[one.dependent];
    const std::string name = NewVariableName(run.ws, s.regressionName.empty() ? "RegVar" : s.regressionName);
    const std::string longName = run.English() ? "Regression estimate of " + y : y + " regressziós becslése";
    NewVariable(run.ws, name, longName, one.estimate);
    r.Line(fmt::format("{}{} ({})", run.T("New variable: ", "Új változó: "), name, longName));
    const std::string residual = NewVariableName(run.ws, run.T("StRErr", "StRHiba"));
    const std::string residualLong =
        run.English() ? "Standardized residual of " + y : y + " standardizált reziduuma";
    NewVariable(run.ws, residual, residualLong, one.residual);
    r.Line(fmt::format("{}{} ({})", run.T("New variable: ", "Új változó: "), residual, residualLong));
  }
}

}  // namespace

void MultipleRegressionRun(AnalysisRun& run) {
  Settings s;
  s.forced = run.request.Get(param::kForced);
  s.enterF = run.request.Get(param::kEnterF);
  s.basic = run.request.Get(param::kBasicStatistics);
  s.save = run.request.Get(param::kSaveRegression);
  s.regressionName = std::string(run.request.Get(param::kRegressionName));
  ReportWriter& r = run.report;
  std::vector<int> xs, ys;
  for (int v = 1; v <= run.request.numberOfVariables; ++v) {
    if (run.request.role[v] == 'X') xs.push_back(v);
    if (run.request.role[v] == 'Y') ys.push_back(v);
  }
  if (xs.empty()) {
    r.Line(run.T("Number of independent variables is less than 1.", "A független változók száma kisebb 1-nél."));
    r.Line(run.T("No analysis can be performed.", "Emiatt a program nem tud elemzést végezni."));
    return;
  }
  if (ys.empty()) {
    r.Line(run.T("No dependent variable has been selected.", "Nincs függő változó kiválasztva, "));
    r.Line(run.T("No analysis can be performed.", " ezért elemzés nem végezhető."));
    return;
  }
  r.Line(s.forced ? run.T("Type of regression: all variables entered",
                          "Regresszióelemzés típusa: minden változó bevonásával")
                  : run.T("Type of regression: stepwise linear",
                          "Regresszióelemzés típusa: lépésenkénti (stepwise) lineáris regresszió"));
  if (!s.forced) r.Line(fmt::format("F_In/Out = {}", Number(s.enterF)));
  const std::size_t cases = static_cast<std::size_t>(run.ws.NumberOfCases());
  std::vector<Saved> saved;
  if (s.save) {
    for (int y : ys) saved.push_back({y, std::vector<std::string>(cases), std::vector<std::string>(cases)});
  }
  run.ForEachGroup([&] {
    WriteCorrelationGroupHeading(run);
    for (std::size_t i = 0; i < ys.size(); ++i) {
      DependentReport(run, s, xs, ys[i]).Write(s.save ? &saved[i] : nullptr);
    }
    r.BlankLine();
    r.Line(run.T("  Significance:   +: p < 0.10  *: p < 0.05   **: p < 0.01   ***: p < 0.001",
                 "  Szignifikancia:   +: p < 0.10  *: p < 0.05   **: p < 0.01   ***: p < 0.001"));
  });
  if (s.save) SaveVariables(run, s, saved);
}

}  // namespace tarvika
