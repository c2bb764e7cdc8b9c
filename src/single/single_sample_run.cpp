#include "single/single_sample_run.h"

#include <cmath>
#include <fmt/format.h>

#include "frame/data_feed.h"
#include "lang/utf8.h"
#include "workspace/session.h"
#include "workspace/workspace.h"

namespace tarvika {
namespace {

constexpr std::string_view kWindow = "KijelolForm";
constexpr int kProgressStep = 10000;

// The per-variable accumulators of one group.
struct VariableStats {
  std::int32_t count = 0;
  double mean = 0;
  double m2 = 0;
  double m3 = 0;
  double m4 = 0;
  double minimum = 999999999;
  double maximum = -999999999;
  double variance = 0;
};

class SingleSampleRunner {
 public:
  SingleSampleRunner(Workspace& ws, const AnalysisRequest& request, ReportFormat format)
      : ws_(ws), request_(request), report_(ws, format), index_(BuildSelectedIndex(request)) {}

  bool Run();

 private:
  std::string_view T(std::string_view english, std::string_view hungarian) const { return ws_.Text(english, hungarian); }
  void ReadGroup(int group, const DataFeed& feed);
  void WriteGroupHeading(int group);
  void WriteBasicTable();

  Workspace& ws_;
  const AnalysisRequest& request_;
  ReportWriter report_;
  SelectedIndex index_;
  int mode_ = 11;
  int conditional_ = 0;  // variable number of the conditional grouping variable
  GroupDefinition groups_;
  std::vector<int> sizes_;
  std::vector<VariableStats> stats_;  // 1..analysed
};

bool SingleSampleRunner::Run() {
  mode_ = request_.commandCode;
  if (!report_.OpenReport(SingleSampleTitle(mode_, ws_.language))) return false;
  if (mode_ != 11) {
    report_.Line(UnderConstruction(ws_.language));
    report_.CloseReport();
    report_.ShowReport();
    return true;
  }
  DataFeed feed(ws_, report_.Missing(), index_.columns);
  int groupCount = 1;
  if (index_.conditional > 0) {
    conditional_ = index_.columns[index_.conditional];
    groups_ = GetGroupDefinition(ws_, conditional_);
    sizes_ = CountConditionalGroups(report_, feed, groups_, conditional_);
    groupCount = groups_.distinct;
  } else {
    sizes_ = {0, ws_.NumberOfCases()};
  }
  for (int g = 1; g <= groupCount; ++g) {
    if (sizes_[g] == 0) continue;
    ReadGroup(g, feed);
    WriteGroupHeading(g);
    WriteBasicTable();
  }
  ws_.ShowProgress("", kWindow);
  report_.CloseReport();
  report_.ShowReport();
  return true;
}

void SingleSampleRunner::ReadGroup(int group, const DataFeed& feed) {
  const int k = index_.analysed;
  stats_.assign(k + 1, VariableStats{});
  std::vector<double> values(index_.Count() + 1, 0);
  std::vector<std::uint8_t> missings(index_.Count() + 1, 1);
  const int cases = ws_.NumberOfCases();
  for (int row = 1; row <= cases; ++row) {
    if (row % kProgressStep == 0) ws_.ShowProgress(fmt::format("{}{}", T("Case: ", "Eset: "), row), kWindow);
    if (conditional_ > 0) {
      double code;
      bool missing;
      feed.ReadValue(row, conditional_, code, missing);
      if (missing || FindMergedGroup(groups_, code) != group) continue;
    }
    feed.ReadRow(row, k, values, missings);
    for (int i = 1; i <= k; ++i) {
      if (missings[i]) continue;
      VariableStats& s = stats_[i];
      const double x = values[i];
      const long double n = ++s.count;
      const long double d = (x - static_cast<long double>(s.mean)) / n;
      const long double e = d * d;
      if (x > s.maximum) s.maximum = x;
      if (x < s.minimum) s.minimum = x;
      s.m2 = static_cast<double>(s.m2 + n * e * (n - 1));
      s.mean = static_cast<double>(s.mean + d);
    }
  }
  for (int i = 1; i <= k; ++i) {
    if (stats_[i].count > 2) stats_[i].variance = stats_[i].m2 / (stats_[i].count - 1);
  }
}

void SingleSampleRunner::WriteGroupHeading(int group) {
  const bool conditional = conditional_ > 0;
  if (group == 1 && mode_ == 11) {
    if (conditional) report_.BlankLine();
    report_.Line(T("Notation:", "Jelölés:"));
    if (ws_.language == Language::English) report_.Line(" - SD = Standard deviation");
    report_.Line(T(" - Rel.SD = Relative SD = Coefficient of variation = SD/Mean",
                   " - Var. eh. = Variációs együttható = Relatív szórás = szórás/átlag"));
    report_.Line(T(" - X_min = Found smallest value", " - X_min = Talált legkisebb érték"));
    report_.Line(T(" - X_max = Found largest value", " - X_max = Talált legnagyobb érték"));
    report_.Line(T(" - z_min = Standardized smallest value = (X_min - Mean)/SD",
                   " - z_min = Standardizált legkisebb érték = (X_min - átlag)/szórás"));
    report_.Line(T(" - z_max = Standardized largest value = (X_max - Mean)/SD",
                   " - z_max = Standardizált legnagyobb érték = (X_max - átlag)/szórás"));
    if (!conditional) report_.BlankLine();
  }
  if (conditional) {
    report_.BlankLine();
    report_.BlankLine();
    report_.Line(fmt::format("{}{}{}{}", T("GROUP INDEX: ", "CSOPORTINDEX: "), group,
                             T(".  Group name: ", ".  Csoportnév: "), Utf8Prefix(groups_.distinctNames[group], 22)));
    report_.BlankLine();
  }
  report_.Line(fmt::format("{}{:>5}", T("Number of cases read:  ", "A beolvasott összes eset száma: "),
                           ws_.NumberOfCases()));
  if (conditional) {
    report_.Line(fmt::format("{}{:>5}", T("Cases in current group: ", "Az aktuális csoport elemszáma:   "),
                             sizes_[group]));
  }
  if (mode_ >= 14 && mode_ <= 16) {
    report_.BlankLine();
    report_.Line(T("Notation:  +: p < 0.10   *: p < 0.05   **: p < 0.01   ***: p < 0.001",
                   "Jelölés:  +: p < 0.10   *: p < 0.05   **: p < 0.01   ***: p < 0.001"));
  }
  report_.BlankLine();
}

void SingleSampleRunner::WriteBasicTable() {
  for (int i = 1; i <= index_.analysed; ++i) {
    if (stats_[i].variance > 0.00000001) stats_[i].variance = std::sqrt(stats_[i].variance);
  }
  report_.BeginTable();
  const bool english = ws_.language == Language::English;
  const std::vector<std::string_view> head =
      english ? std::vector<std::string_view>{"Index", "Variable       ", "Cases", "Mean", "SD", "Rel.SD", "X_min",
                                              "X_max", "z_min", "z_max", "Long variable name"}
              : std::vector<std::string_view>{"Index", "Változó       ", "Esetek", "Átlag", "Szórás", "Var. eh.",
                                              "X_min", "X_max", "z_min", "z_max", "Hosszú változónév"};
  report_.FirstCell(head[0]);
  for (std::size_t c = 1; c < head.size(); ++c) report_.Cell(head[c]);
  report_.EndRow();
  for (int i = 1; i <= index_.analysed; ++i) {
    const int v = index_.columns[i];
    const VariableStats& s = stats_[i];
    const std::string& name = request_.shortNames[v];
    const int length = static_cast<int>(Utf8Length(name));
    report_.FirstCell(fmt::format("{:>3}. ", v));
    report_.Cell(name + std::string(std::max(0, 24 - 2 * length), ' '));
    report_.Cell(std::to_string(s.count));
    if (s.count == 0) {
      for (int c = 0; c < 7; ++c) report_.Cell("...");
    } else {
      const double sd = s.variance;
      report_.WriteRatio(8, 8, 1, s.mean, 1);
      report_.WriteRatio(8, 9, 1, sd, 1);
      report_.WriteRatio(8, -1, s.minimum, sd, s.mean);
      report_.WriteRatio(8, 0, 1, s.minimum, 1);
      report_.WriteRatio(8, 0, 1, s.maximum, 1);
      report_.WriteRatio(7, 2, 1, s.minimum - s.mean, sd);
      report_.WriteRatio(7, 2, 1, s.maximum - s.mean, sd);
    }
    const std::string& longName = request_.longNames[v];
    if (Utf8Length(longName) > 1) report_.Cell(" " + longName);
    report_.EndRow();
  }
  report_.EndTable();
}

}  // namespace

std::string_view SingleSampleTitle(int mode, Language lang) {
  switch (mode) {
    case 11: return Pick(lang, "Basic descriptive statistics", "Alapstatisztikák");
    case 12: return Pick(lang, "Detailed descriptive statistics", "Részletes leíró statisztikák");
    case 13: return Pick(lang, "Frequencies, histogram", "Gyakoriság, hisztogram");
    case 14:
      return Pick(lang, "Tests on the mean and the median", "Változók középértékére vonatkozó hipotézisek vizsgálata");
    case 15:
      return Pick(lang, "Test of normality (Null hypothesis: X is normally distributed)",
                  "Normalitásvizsgálat (a normális eloszlás nullhipotézisének tesztelése)");
    case 16: return Pick(lang, "Distribution fitting", "Eloszlásvizsgálat");
    default: return {};
  }
}

bool SingleSampleRun(Workspace& ws, const AnalysisRequest& request, ReportFormat format) {
  SingleSampleRunner runner(ws, request, format);
  return runner.Run();
}

}  // namespace tarvika
