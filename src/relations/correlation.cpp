#include "relations/correlation.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <optional>
#include <string>
#include <vector>

#include "frame/analysis_run.h"
#include "frame/number_text.h"
#include "frame/parameter_names.h"
#include "lang/utf8.h"
#include "numeric/order_stats.h"
#include "numeric/probability.h"
#include "numeric/tolerance.h"
#include "stats/correlation.h"
#include "workspace/new_variable.h"
#include "workspace/workspace.h"

namespace tarvika {
namespace {

struct Settings {
  bool paired = false;
  int confidence = 95;
  double z = 1.959963984540054;  // the normal quantile of the confidence
  int level = 1;                 // the column of the critical tau: 0.10, 0.05, 0.01
  int trimPercent = 0;           // 0: no winsorized r
  int localRange = 0;            // -3 to 9: the size of the window of local correlations
  bool listP = false, basic = false, compare = false, plot = false, local = false, save = false;
  std::string regressionName;
};

Settings SettingsOf(const AnalysisRequest& request) {
  Settings s;
  s.paired = request.Get(param::kPairing) == "Pair";
  const std::string_view confidence = request.Get(param::kConfidence);
  if (confidence == "90") {
    s.confidence = 90;
    s.z = 1.6448536269514722;
    s.level = 0;
  } else if (confidence == "99") {
    s.confidence = 99;
    s.z = 2.5758293035489004;
    s.level = 2;
  }
  s.trimPercent = std::clamp(request.Get(param::kTrimmingPercent), 0, 25);
  s.listP = request.Get(param::kListPValues);
  s.basic = request.Get(param::kBasicStatistics);
  s.compare = request.Get(param::kCompareConditionalGroups);
  s.plot = request.Get(param::kBivariatePlot);
  s.local = request.Get(param::kLocalCorrelations);
  s.localRange = std::clamp(request.Get(param::kLocalRange), -3, 9);
  s.save = request.Get(param::kSaveRegression);
  s.regressionName = std::string(request.Get(param::kRegressionName));
  return s;
}

// One measure with its test and limits, as its report line and the summary show it.
struct Measure {
  double value = 0;
  PValue p;
  bool approximate = false;  // "p ~": the p of a small sample whose marker is exact
  Limits limits;
};

// What the summary table and the comparison of groups keep of one pair in one group.
struct PairResult {
  int x = 0, y = 0;
  int n = 0;
  bool measured = false;  // enough cases and both variables vary
  std::optional<Measure> r, rpb, tauB;
  double pPos = 0, pNeg = 0;
};

// The test of tau without ties: exact markers and critical half widths up to 30 cases,
// the normal approximation beyond.
Measure TauTest(int n, double tau, double se, const Settings& s) {
  Measure m{.value = tau};
  if (n < 5) {
    m.p = Marked(1);
    m.limits = {std::max(-1.0, tau - 1.1), std::min(1.0, tau + 1.1)};
    return m;
  }
  const double s0 = TauNullSd(n);
  m.p = NormalP2(tau / s0);
  double half = s.z * (se > 0 ? se : s0);
  if (n <= kTauTableLastN) {
    const double a = std::fabs(tau) + 1e-12;
    std::string_view marker = "";
    if (a >= TauCritical(n, 2)) {
      marker = m.p.p > 0.001 ? "**" : "***";
    } else if (a >= TauCritical(n, 1)) {
      marker = "*";
    } else if (a >= TauCritical(n, 0)) {
      marker = "+";
    }
    m.p.marker = marker;
    m.approximate = true;
    half = TauCritical(n, s.level);
  }
  m.limits = {std::max(-1.0, tau - half), std::min(1.0, tau + half)};
  return m;
}

// The two-sided p of a correlation by the t of df degrees of freedom; a correlation of 1
// has p = 0, near 1 its t is taken as it is rather than held at 100.
PValue CorrelationP(double value, int df) {
  if (df < 1) return Marked(1);
  const double unexplained = 1 - value * value;
  if (unexplained <= 0) return Marked(0);
  return StudentP2(std::sqrt(df * value * value / unexplained), df);
}

Measure CorrelationMeasure(double value, int n, int g, const Settings& s) {
  return {.value = value, .p = CorrelationP(value, n - 2 - 2 * g), .limits = FisherLimits(value, n - 2 * g, s.z)};
}

std::string Equation(char left, char right, const RegressionLine& line) {
  const double b = line.slope;
  return fmt::format("{} = {} {} {}{}", left, Fixed(line.intercept, Decimals(line.intercept)), b < 0 ? '-' : '+',
                     Fixed(std::fabs(b), Decimals(b)), right);
}

std::string Number(double x) { return Fixed(x, Decimals(x)); }

// The scatter plot of the pairs for the html report, at most 5000 points drawn.
std::string SvgScatter(const std::vector<double>& x, const std::vector<double>& y, const PairMoments& m,
                       const std::string& xName, const std::string& yName) {
  constexpr int kWidth = 360, kHeight = 280, kLeft = 56, kBottom = 240, kTop = 12, kRight = 340;
  auto px = [&](double v) { return kLeft + (v - m.minX) / (m.maxX - m.minX) * (kRight - kLeft); };
  auto py = [&](double v) { return kBottom - (v - m.minY) / (m.maxY - m.minY) * (kBottom - kTop); };
  std::string svg = fmt::format(
      "<P><svg xmlns=\"http://www.w3.org/2000/svg\" width=\"{}\" height=\"{}\" font-size=\"10\">\r\n", kWidth, kHeight);
  svg += fmt::format("<line x1=\"{0}\" y1=\"{1}\" x2=\"{2}\" y2=\"{1}\" stroke=\"black\"/>", kLeft, kBottom, kRight);
  svg += fmt::format("<line x1=\"{0}\" y1=\"{1}\" x2=\"{0}\" y2=\"{2}\" stroke=\"black\"/>\r\n", kLeft, kTop, kBottom);
  svg += fmt::format("<text x=\"{}\" y=\"{}\">{}</text>", kLeft, kBottom + 14, Number(m.minX));
  svg += fmt::format("<text x=\"{}\" y=\"{}\" text-anchor=\"end\">{}</text>", kRight, kBottom + 14, Number(m.maxX));
  svg += fmt::format("<text x=\"{}\" y=\"{}\" text-anchor=\"middle\">{}</text>", (kLeft + kRight) / 2, kBottom + 30,
                     EscapeHtml(xName));
  svg += fmt::format("<text x=\"{}\" y=\"{}\" text-anchor=\"end\">{}</text>", kLeft - 4, kBottom, Number(m.minY));
  svg += fmt::format("<text x=\"{}\" y=\"{}\" text-anchor=\"end\">{}</text>", kLeft - 4, kTop + 8, Number(m.maxY));
  svg += fmt::format("<text x=\"12\" y=\"{0}\" text-anchor=\"middle\" transform=\"rotate(-90 12 {0})\">{1}</text>\r\n",
                     (kTop + kBottom) / 2, EscapeHtml(yName));
  const std::size_t step = std::max<std::size_t>(1, x.size() / 5000);
  for (std::size_t i = 0; i < x.size(); i += step) {
    svg += fmt::format("<circle cx=\"{:.1f}\" cy=\"{:.1f}\" r=\"2\" fill=\"#6688cc\"/>", px(x[i]), py(y[i]));
    if (i % (20 * step) == 19 * step) svg += "\r\n";
  }
  // The line of y on x across the range of x.
  const BivariateRegression line = RegressionOf(m);
  auto lineY = [&](double v) { return std::clamp(py(line.yOnX.intercept + line.yOnX.slope * v), 0.0, 1.0 * kHeight); };
  svg += fmt::format("\r\n<line x1=\"{}\" y1=\"{:.1f}\" x2=\"{}\" y2=\"{:.1f}\" stroke=\"#cc4444\"/>", kLeft,
                     lineY(m.minX), kRight, lineY(m.maxX));
  svg += "</svg></P>";
  return svg;
}

class PairReport {
 public:
  PairReport(AnalysisRun& run, const Settings& s, int x, int y) : run_(run), r_(run.report), s_(s) {
    result_.x = x;
    result_.y = y;
  }
  PairResult Write();
  // The estimate of Y from X for the cases of the group with a valid X, written into
  // cells (one per case of the data); nothing when the pair had too few cases.
  void Estimate(std::vector<std::string>& cells) const;

 private:
  std::string T(std::string_view english, std::string_view hungarian) const {
    return std::string(run_.T(english, hungarian));
  }
  const std::string& Name(int v) const { return run_.request.shortNames[v]; }
  void Read();
  void WriteBasicStatistics(const BivariateRegression& line);
  void WriteErrorVariances(const BivariateRegression& line);
  void WriteMeasure(std::string_view label, const Measure& m);
  void WriteMeasures();
  void WriteLocalCorrelations();

  AnalysisRun& run_;
  ReportWriter& r_;
  const Settings& s_;
  std::vector<double> x_, y_;
  PairMoments m_;
  PairResult result_;
};

void PairReport::Read() {
  run_.ForEachPair(result_.x, result_.y, [&](int, double x, double y) {
    x_.push_back(x);
    y_.push_back(y);
  });
}

PairResult PairReport::Write() {
  Read();
  m_ = MomentsOf(x_, y_);
  const int n = m_.n;
  result_.n = n;
  r_.BlankLine();
  r_.Line(T("ANALYZED PAIR OF VARIABLES:", "ELEMZENDŐ VÁLTOZÓPÁR:"));
  r_.Line("X = " + NameWithLong(run_.ws, result_.x));
  r_.Line("Y = " + NameWithLong(run_.ws, result_.y));
  r_.Line(fmt::format("{}{}", T("Number of acceptable values for both X and Y:  N = ",
                                "X-re és Y-ra egyaránt érvényes értékek száma:  N = "),
                      n));
  if (n < 3) {
    r_.Line(T("Number of acceptable values is too small.", "Az érvényes esetek száma túl kicsi,"));
    r_.Line(T("No analysis will be made for this pair of variables.",
              " ezért erre a változópárra nem végzünk elemzést."));
    return result_;
  }
  const BivariateRegression line = RegressionOf(m_);
  if (s_.basic) {
    WriteBasicStatistics(line);
  } else {
    r_.Line(fmt::format("{}{},  {}", T("Regression equations: ", "Regressziós egyenletek: "),
                        Equation('x', 'y', line.xOnY), Equation('y', 'x', line.yOnX)));
  }
  WriteErrorVariances(line);
  if (!m_.VariesX() || !m_.VariesY()) {
    r_.Line(!m_.VariesX() ? T("The SD of variable X is 0.", "Az X változó szórása 0.")
                          : T("The SD of variable Y is 0.", "Az Y változó szórása 0."));
    r_.Line(T("Accordingly, for this pair of variables all correlations are zero.",
              "Ezért ennél a változópárnál minden korreláció nulla."));
    if (s_.plot) r_.Line(T("No plot is made for this pair of variables.", "Erről a változópárról nem készül ábra."));
    return result_;
  }
  result_.measured = true;
  WriteMeasures();
  if (s_.local) WriteLocalCorrelations();
  if (s_.plot) r_.Figure(SvgScatter(x_, y_, m_, Name(result_.x), Name(result_.y)));
  return result_;
}

void PairReport::WriteBasicStatistics(const BivariateRegression& line) {
  r_.BlankLine();
  r_.BeginTable();
  r_.FirstCell(T("Variable    ", "Változó     "));
  for (std::string_view h : {T("Mean", "Átlag"), T("Variance", "Var."), T("Min", "Min."), T("Max", "Max."),
                             T("Regression equation", "Regressziós egyenlet")}) {
    r_.Cell(h);
  }
  r_.EndRow();
  auto row = [&](std::string_view side, int v, double mean, double sd, double lo, double hi, const std::string& eq) {
    r_.FirstCell(fmt::format("   {}: {}", side, Name(v)));
    r_.WriteRatio(9, 9, 1, mean, 1);
    r_.WriteRatio(11, 9, 1, sd * sd, 1);
    r_.WriteRatio(9, 0, 1, lo, 1);
    r_.WriteRatio(9, 0, 1, hi, 1);
    r_.Cell(eq);
    r_.EndRow();
  };
  row("X", result_.x, m_.meanX, m_.sdX, m_.minX, m_.maxX, Equation('x', 'y', line.xOnY));
  row("Y", result_.y, m_.meanY, m_.sdY, m_.minY, m_.maxY, Equation('y', 'x', line.yOnX));
  r_.EndTable();
}

void PairReport::WriteErrorVariances(const BivariateRegression& line) {
  for (const auto& [side, ms, se] : {std::tuple{'X', line.msErrX, line.seX}, std::tuple{'Y', line.msErrY, line.seY}}) {
    r_.Line(run_.English() ? fmt::format("{0}: Residual mean square (Error variance): MSerr({0}) = {1}, SE({0}) = {2} (df = {3})",
                                         side, Number(ms), Number(se), line.df)
                           : fmt::format("{0}: Reziduális variancia (Hibavariancia): Res({0}) = {1}, SH({0}) = {2} (f = {3})",
                                         side, Number(ms), Number(se), line.df));
  }
}

void PairReport::WriteMeasure(std::string_view label, const Measure& m) {
  const double v = std::clamp(m.value, -1.0, 1.0);
  r_.Line(fmt::format("{}{}   p {} {}{}   C{} = ({}; {})", label, Fixed(v, 3), m.approximate ? '~' : '=',
                      Fixed(m.p.p, 4), m.p.marker, s_.confidence, Fixed(m.limits.lower, 3), Fixed(m.limits.upper, 3)));
}

void PairReport::WriteMeasures() {
  const int n = m_.n;
  r_.BlankLine();
  r_.Line(run_.English() ? fmt::format("CORRELATION measures between X and Y, and corresponding {}% confidence limits "
                                       "for the theoretical values:",
                                       s_.confidence)
                         : fmt::format(" Korrelációk és {}%-os intervallumbecslés az elméleti értékre:", s_.confidence));
  result_.r = CorrelationMeasure(m_.r, n, 0, s_);
  WriteMeasure("  r = ", *result_.r);
  if (n >= 4) {
    if (const std::optional<double> rpb = PercentageBendCorrelation(x_, y_)) {
      result_.rpb = CorrelationMeasure(*rpb, n, 0, s_);
      WriteMeasure("  Rpb = ", *result_.rpb);
    }
  }
  if (s_.trimPercent > 0) {
    const int g = TrimmedCount(n, s_.trimPercent);
    if (const std::optional<double> rw = WinsorizedCorrelation(x_, y_, g)) {
      // Wilcox's test: the t of n - 2 df, referred to the t distribution of h - 2 df.
      Measure w = CorrelationMeasure(*rw, n, g, s_);
      const double unexplained = 1 - *rw * *rw;
      w.p = unexplained <= 0 ? Marked(0) : StudentP2(*rw * std::sqrt((n - 2) / unexplained), n - 2 * g - 2);
      WriteMeasure(fmt::format("  Rw({}%, g = {}) = ", s_.trimPercent, g), w);
    } else {
      r_.Line(T(" - Rw was not calculated due to small sample size and/or trimming %.",
                " - Rw-t nem számítottuk ki a kis mintaelemszám és trimmelési % miatt."));
    }
  }
  const KendallMeasures k = KendallOf(x_, y_);
  Measure tauB;
  if (k.tauB == 0) {
    tauB = TauTest(n, 0, 0, s_);
  } else {
    tauB = {.value = k.tauB, .p = NormalP2(std::fabs(k.zTauB))};
    double half = s_.z * k.seTauB;
    if (n >= 5 && n <= kTauTableLastN) {
      tauB.approximate = true;
      half = TauCritical(n, s_.level);
    } else if (n < 5) {
      half = 1.1;
    }
    tauB.limits = {std::max(-1.0, k.tauB - half), std::min(1.0, k.tauB + half)};
  }
  result_.tauB = tauB;
  WriteMeasure("  tau-b = ", tauB);
  const Measure tau = TauTest(n, k.tau, k.seTau, s_);
  WriteMeasure("  tau = ", tau);
  // p_pos and p_neg share the pairs that are not tied: their difference is 100 tau, so
  // their limits are those of tau moved onto them.
  const double untied = (k.pPos + k.pNeg) / 100;
  auto share = [&](double t) { return std::clamp(50 * (untied + t), 0.0, 100 * untied); };
  result_.pPos = k.pPos;
  result_.pNeg = k.pNeg;
  r_.Line(fmt::format(" p_pos = {}   C{} = ({}; {}),  p_neg = {}   C{} = ({}; {})", Fixed(k.pPos, 2), s_.confidence,
                      Fixed(share(tau.limits.lower), 2), Fixed(share(tau.limits.upper), 2), Fixed(k.pNeg, 2),
                      s_.confidence, Fixed(share(-tau.limits.upper), 2), Fixed(share(-tau.limits.lower), 2)));
}

void PairReport::WriteLocalCorrelations() {
  // The window holds 5% of the cases per step of the local range from -3 (5%) to 9 (65%),
  // at least 5 cases; ten points along X show their window's line.
  constexpr int kPoints = 10, kFewest = 5;
  const int n = m_.n;
  r_.BlankLine();
  r_.Line(T("Point-wise slopes (b) and correlations (r) for detecting nonlinear relationship",
            "Pontonkénti meredekségek (b) és korrelációk (r) a nemlineáris kapcsolat felderítésére"));
  if (n < 2 * kFewest) {
    r_.Line(T("Too few cases for local correlations.", "A lokális korrelációkhoz kevés az eset."));
    return;
  }
  const int window = std::max(kFewest, static_cast<int>(std::lround(n * (s_.localRange + 4) * 0.05)));
  const LocalRegression local = LocalRegressionOf(x_, y_, window, kPoints);
  r_.BeginTable();
  r_.FirstCell(T("X-value", "X-érték"));
  for (std::string_view h : {T("X_left", "X_bal"), T("X_right", "X_jobb"), T("Local b", "Lokális b"),
                             T("Local r", "Lokális r"), T("Cases", "Esetek"), T("Sign", "Szign.")}) {
    r_.Cell(h);
  }
  r_.EndRow();
  for (const LocalLine& l : local.lines) {
    r_.FirstCell(Number(l.x));
    r_.NumberCell(Number(l.left));
    r_.NumberCell(Number(l.right));
    r_.NumberCell(Number(l.slope));
    r_.NumberCell(Fixed(l.r, 3));
    r_.NumberCell(fmt::format("{}", l.cases));
    r_.Cell(CorrelationP(l.r, l.cases - 2).marker);
    r_.EndRow();
  }
  r_.EndTable();
  r_.Line(T("Explained variance proportion by linear regression = ",
            "A lineáris regresszióval magyarázott variancia aránya = ") + Fixed(local.linearShare, 4));
  r_.Line(T("Explained variance proportion by smoothed nonlinear regression = ",
            "A simított nemlineáris regresszióval magyarázott variancia aránya = ") + Fixed(local.smoothedShare, 4));
  r_.Line(T("Nonlinear increment = ", "Nemlineáris többlet = ") + Fixed(local.smoothedShare - local.linearShare, 4));
  r_.Line(T("Nonlinear correlation of smoothed nonlinear regression = ",
            "A simított nemlineáris regresszió korrelációja = ") + Fixed(std::sqrt(local.smoothedShare), 3));
}

void PairReport::Estimate(std::vector<std::string>& cells) const {
  if (m_.n < 3) return;
  const RegressionLine line = RegressionOf(m_).yOnX;
  run_.ForEachValue(result_.x, [&](int row, double x) {
    cells[row - 1] = DataCell(line.intercept + line.slope * x, run_.ws.decimalSeparator);
  });
}

std::string MeasureCell(const std::optional<Measure>& m) {
  return m ? Fixed(std::clamp(m->value, -1.0, 1.0), 3) + std::string(m->p.marker) : "-";
}

void WriteSummary(AnalysisRun& run, const Settings& s, const std::vector<PairResult>& results) {
  std::vector<std::string> headings = {run.English() ? "Row " : "Sor ", "X ",
                                       std::string(run.T("Y variable    ", "Y változó     ")), " r"};
  if (s.listP) headings.push_back("p");
  headings.push_back(" Rpb");
  if (s.listP) headings.push_back("p");
  headings.push_back(" Tau-b");
  if (s.listP) headings.push_back("p");
  for (std::string h : {"p_pos", "p_neg"}) headings.push_back(h);
  headings.push_back(std::string(run.T("Long variable name", "Hosszú változónév")));
  ReportWriter& r = run.report;
  r.BlankLine();
  r.BeginTitledTable(run.T("SUMMARY OF THE CORRELATIONS", "A KORRELÁCIÓK ÖSSZESÍTÉSE"),
                     std::vector<std::string_view>(headings.begin(), headings.end()));
  int row = 0;
  for (const PairResult& p : results) {
    r.FirstCell(fmt::format("{}", ++row));
    r.Cell(run.request.shortNames[p.x]);
    r.Cell(run.request.shortNames[p.y]);
    for (const std::optional<Measure>* m : {&p.r, &p.rpb, &p.tauB}) {
      r.NumberCell(MeasureCell(*m));
      if (s.listP) r.NumberCell(*m ? Fixed((*m)->p.p, 4) : "-");
    }
    r.NumberCell(p.measured ? Fixed(p.pPos, 2) : "-");
    r.NumberCell(p.measured ? Fixed(p.pNeg, 2) : "-");
    r.Cell(run.request.longNames[p.y]);
    r.EndRow();
  }
  r.EndTable();
}

// The chi-square test of equal r of one pair across the conditional groups, by Fisher's z
// weighted with n - 3; groups with fewer than 4 cases or |r| of 1 stay out.
void WriteGroupComparison(AnalysisRun& run, const std::vector<std::vector<PairResult>>& byGroup,
                          const std::vector<int>& groups) {
  ReportWriter& r = run.report;
  r.BlankLine();
  r.Line(run.T("COMPARISON OF THE CORRELATIONS (r) OF THE CONDITIONAL GROUPS",
               "A FELTÉTELES CSOPORTOK KORRELÁCIÓINAK (r) ÖSSZEHASONLÍTÁSA"));
  for (std::size_t pair = 0; pair < byGroup.front().size(); ++pair) {
    const PairResult& first = byGroup.front()[pair];
    r.BlankLine();
    r.Line(fmt::format("X = {},  Y = {}", run.request.shortNames[first.x], run.request.shortNames[first.y]));
    r.BeginTitledTable("", {run.T("Group", "Csoport"), run.T("Group name", "Csoportnév"), "N", "r"});
    double w = 0, wz = 0, wzz = 0;
    int entered = 0;
    for (std::size_t g = 0; g < byGroup.size(); ++g) {
      const PairResult& p = byGroup[g][pair];
      r.FirstCell(fmt::format("{}", groups[g]));
      r.Cell(Utf8Prefix(run.Groups().distinctNames[groups[g]], 22));
      r.NumberCell(fmt::format("{}", p.n));
      r.NumberCell(p.r ? Fixed(p.r->value, 3) : "-");
      r.EndRow();
      if (!p.r || p.n < 4 || std::fabs(p.r->value) >= 0.99999999) continue;
      const double z = FisherZ(p.r->value), weight = p.n - 3;
      w += weight;
      wz += weight * z;
      wzz += weight * z * z;
      ++entered;
    }
    r.EndTable();
    if (entered < 2) {
      r.Line(run.T("Fewer than two groups have a correlation to compare.",
                   "Kettőnél kevesebb csoportnak van összehasonlítható korrelációja."));
      continue;
    }
    const double chi = std::max(0.0, wzz - wz * wz / w);
    const PValue p = ChiSquareP(chi, entered - 1);
    r.Line(fmt::format("{}Chi2({}) = {}  (p = {}){}", run.T("Test of equal correlations: ", "Az egyenlő korrelációk próbája: "),
                       entered - 1, Fixed(chi, 3), Fixed(p.p, 4), p.marker));
  }
}

void WriteNotation(AnalysisRun& run, const Settings& s) {
  ReportWriter& r = run.report;
  r.BlankLine();
  r.Line(run.T("Notation:", "Jelölések:"));
  r.Line(run.T("  r:  Pearson product-moment correlation coefficient", "  r:  Pearson-féle szorzatmomentum-korrelációs együttható"));
  r.Line(run.T("  Rpb:  Wilcox's robust percentage bend coefficient of correlation",
               "  Rpb:  Wilcox-féle robusztus (percentage bend) korrelációs együttható"));
  if (s.trimPercent > 0) {
    r.Line(run.T("  Rw:  Winsorized correlation coefficient (g values winsorized at each end)",
                 "  Rw:  winsorizált korrelációs együttható (mindkét végén g érték winsorizálva)"));
  }
  r.Line(run.T("  Tau-b:  Kendall's tau-b measure of monotonicity", "  Tau-b:  Kendall-féle tau-b monotonitási mutató"));
  r.Line(run.T("  Tau:  Kendall's tau measure of monotonicity", "  Tau:  Kendall-féle tau monotonitási mutató"));
  r.Line(run.T("  p_pos:  Percentage of positive relationship (concordancy)",
               "  p_pos:  A pozitív kapcsolat százaléka (konkordancia)"));
  r.Line(run.T("  p_neg:  Percentage of negative relationship (discordancy)",
               "  p_neg:  A negatív kapcsolat százaléka (diszkordancia)"));
  r.Line(run.T("  Significance:   +: p < 0.10  *: p < 0.05   **: p < 0.01   ***: p < 0.001",
               "  Szignifikancia:   +: p < 0.10  *: p < 0.05   **: p < 0.01   ***: p < 0.001"));
}

std::vector<std::pair<int, int>> PairsOf(const AnalysisRequest& request, bool paired) {
  std::vector<int> xs, ys;
  for (int v = 1; v <= request.numberOfVariables; ++v) {
    if (request.role[v] == 'X') xs.push_back(v);
    if (request.role[v] == 'Y') ys.push_back(v);
  }
  std::vector<std::pair<int, int>> pairs;
  if (ys.empty()) {
    for (std::size_t i = 0; i < xs.size(); ++i) {
      for (std::size_t j = i + 1; j < xs.size(); ++j) pairs.emplace_back(xs[i], xs[j]);
    }
  } else if (paired) {
    for (std::size_t i = 0; i < xs.size(); ++i) pairs.emplace_back(xs[i], ys[i]);
  } else {
    for (int x : xs) {
      for (int y : ys) pairs.emplace_back(x, y);
    }
  }
  return pairs;
}

}  // namespace

void WriteCorrelationGroupHeading(AnalysisRun& run) {
  if (run.Conditional() == 0) return;
  ReportWriter& r = run.report;
  r.BlankLine();
  r.Line(fmt::format("{}{}{}{}", run.T("GROUP INDEX: ", "CSOPORTINDEX: "), run.Group(),
                     run.T(".  GROUP NAME: ", ".  CSOPORTNÉV: "), Utf8Prefix(run.Groups().distinctNames[run.Group()], 22)));
  r.Line(fmt::format("{}{}", run.T("Total number of cases read:    ", "Az összes beolvasott eset száma: "),
                     run.ws.NumberOfCases()));
  r.Line(fmt::format("{}{}", run.T("Number of cases in this group: ", "Az esetek száma ebben a csoportban: "),
                     run.GroupSizes()[run.Group()]));
}

void BivariateCorrelation(AnalysisRun& run) {
  const Settings s = SettingsOf(run.request);
  ReportWriter& r = run.report;
  int xCount = 0, yCount = 0;
  for (int v = 1; v <= run.request.numberOfVariables; ++v) {
    xCount += run.request.role[v] == 'X';
    yCount += run.request.role[v] == 'Y';
  }
  if (s.paired && yCount > 0 && xCount != yCount) {
    r.Line(run.T("Since there are different number of X and Y variables, pairing is impossible, program stops.",
                 "Mivel az X és az Y változók száma különböző, a párosítás nem lehetséges, a program leáll."));
    return;
  }
  if (xCount + yCount < 2) {
    r.Line(run.T("Number of dependent variables is less than 2.", "A függő változók száma kevesebb, mint 2."));
    r.Line(run.T("No analysis will be performed.", "Nem végzünk elemzést."));
    return;
  }
  const int cases = run.ws.NumberOfCases();
  r.Line(fmt::format("{}{}", run.T("Number of cases read: N = ", "Beolvasott esetek száma: N = "), cases));
  if (cases < 2) {
    r.Line(run.T("Since N is less than 2, no analysis is performed.", "Mivel N kisebb, mint 2, nem végzünk elemzést."));
    return;
  }
  const std::vector<std::pair<int, int>> pairs = PairsOf(run.request, s.paired);
  std::vector<std::vector<std::string>> estimates(s.save ? pairs.size() : 0,
                                                  std::vector<std::string>(static_cast<std::size_t>(cases)));
  std::vector<std::vector<PairResult>> byGroup;
  std::vector<int> groups;
  run.ForEachGroup([&] {
    WriteCorrelationGroupHeading(run);
    WriteNotation(run, s);
    std::vector<PairResult> results;
    for (std::size_t i = 0; i < pairs.size(); ++i) {
      PairReport pair(run, s, pairs[i].first, pairs[i].second);
      results.push_back(pair.Write());
      if (s.save) pair.Estimate(estimates[i]);
    }
    WriteSummary(run, s, results);
    byGroup.push_back(std::move(results));
    groups.push_back(run.Group());
  });
  if (s.compare && run.Conditional() > 0 && byGroup.size() >= 2 && !pairs.empty()) {
    WriteGroupComparison(run, byGroup, groups);
  }
  if (!s.save) return;
  for (std::size_t i = 0; i < pairs.size(); ++i) {
    if (!RoomForVariables(run.ws, 1)) {
      r.Line(VariableLimitMessage(run.ws));
      return;
    }
    const auto [x, y] = pairs[i];
    const std::string name = NewVariableName(run.ws, s.regressionName.empty() ? "RegVar" : s.regressionName);
    const std::string longName =
        run.English() ? fmt::format("Regression estimate of {} from {}", run.request.shortNames[y], run.request.shortNames[x])
                      : fmt::format("{} regressziós becslése {} alapján", run.request.shortNames[y], run.request.shortNames[x]);
    NewVariable(run.ws, name, longName, estimates[i]);
    r.Line(fmt::format("{}{} ({})", run.T("New variable: ", "Új változó: "), name, longName));
  }
}

}  // namespace tarvika
