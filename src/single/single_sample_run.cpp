#include "single/single_sample_run.h"

#include <cmath>
#include <filesystem>
#include <fmt/format.h>

#include "single/single_sample_context.h"
#include "workspace/numbers.h"
#include "lang/utf8.h"
#include "workspace/session.h"
#include "workspace/workspace.h"

namespace tarvika {

SingleSampleContext::SingleSampleContext(Workspace& w, const AnalysisRequest& r, ReportFormat format)
    : ws(w), request(r), report(w, format), index(BuildSelectedIndex(r)) {}

void SingleSampleContext::WriteVariableHeading(int i) {
  std::string name = Name(i);
  if (Utf8Length(LongName(i)) > Utf8Length(name)) name += " (" + LongName(i) + ")";
  // The English heading opens with a line break, the Hungarian one with a tab in its place.
  if (English()) report.BlankLine();
  report.Line((English() ? "VARIABLE: " : "\tVÁLTOZÓ: ") + name);
}

void SingleSampleContext::WriteIndexAndName(int i) {
  const int length = static_cast<int>(Utf8Length(Name(i)));
  report.FirstCell(fmt::format("{:>3}. ", Column(i)));
  report.Cell(Name(i) + std::string(std::max(0, 24 - 2 * length), ' '));
}

int SingleSampleContext::ConfidencePercent() const {
  switch (request.IntParameter("confidenceIndex", 1)) {
    case 0: return 90;
    case 2: return 99;
    default: return 95;
  }
}

double SingleSampleContext::CriticalF(int df) const {
  FTabResult f = FTabLookup(ftable, 1, df, 0);
  switch (ConfidencePercent()) {
    case 90: return f.CriticalF90;
    case 99: return f.CriticalF99;
    default: return f.CriticalF95;
  }
}

int Decimals(double x) {
  double a = std::fabs(x);
  return a < 0.09995 ? 4 : a < 0.9995 ? 3 : a < 99.995 ? 2 : a < 999999.95 ? 1 : 0;
}

int DecimalsOrWhole(double x) {
  double a = std::fabs(x);
  return a - std::floor(a) < kZeroTolerance ? 0 : Decimals(x);
}

std::string Fixed(double x, int d) {
  std::string s = FormatFixed(x, d);
  if (s.front() == '-' && s.find_first_not_of("-0.") == std::string::npos) s.erase(0, 1);
  return s;
}

std::string Trimmed4(double x) {
  std::string s = Fixed(x, 4);
  while (s.back() == '0') s.pop_back();
  if (s.back() == '.') s.pop_back();
  return s;
}

std::string DataCell(double x, char separator) {
  std::string s;
  for (int d = 4; d >= 0; --d) {
    s = Trimmed4(std::stod(Fixed(x, d)));
    if (s.size() <= 8) break;
  }
  if (separator != '.') {
    for (char& ch : s) {
      if (ch == '.') ch = separator;
    }
  }
  return s;
}

namespace {

constexpr int kProgressStep = 10000;

class SingleSampleRunner {
 public:
  SingleSampleRunner(Workspace& ws, const AnalysisRequest& request, ReportFormat format) : c_(ws, request, format) {}

  bool Run();

 private:
  void ReadGroup(int group);
  void WriteGroupHeading(int group);
  void WriteBasicTable();

  SingleSampleContext c_;
};

bool SingleSampleRunner::Run() {
  Workspace& ws = c_.ws;
  ReportWriter& report = c_.report;
  const int mode = c_.mode = c_.request.commandCode;
  if (!report.OpenReport(SingleSampleTitle(mode, ws.language))) return false;
  if (mode < 11 || mode > 15) {
    report.Line(UnderConstruction(ws.language));
    report.CloseReport();
    report.ShowReport();
    return true;
  }
  c_.feed.emplace(ws, report.Missing(), c_.index.columns);
  int groupCount = 1;
  if (c_.index.conditional > 0) {
    c_.conditional = c_.index.columns[c_.index.conditional];
    c_.groups = GetGroupDefinition(ws, c_.conditional);
    c_.sizes = CountConditionalGroups(report, *c_.feed, c_.groups, c_.conditional);
    groupCount = c_.groups.distinct;
  } else {
    c_.sizes = {0, ws.NumberOfCases()};
  }
  if (mode != 11) {
    const std::filesystem::path folder = TableFolder(ws.programFolder);
    c_.ftable = LoadFTable(folder);
    if (mode == 14) {
      LoadWilcoxonTable(folder);
      LoadSignTable(folder);
    }
  }
  for (int g = 1; g <= groupCount; ++g) {
    if (c_.sizes[g] == 0) continue;
    c_.group = g;
    ReadGroup(g);
    WriteGroupHeading(g);
    switch (mode) {
      case 11: WriteBasicTable(); break;
      case 12:
        if (c_.request.IntParameter("trimmingPercent") > 0) {
          WriteTestBlocks(c_, false);
        } else {
          WriteDetailedTable(c_);
        }
        break;
      case 13: WriteFrequencyTables(c_); break;
      case 14: WriteTestBlocks(c_, true); break;
      case 15: WriteNormalityTests(c_); break;
    }
  }
  ws.ShowProgress("", kSingleWindow);
  report.CloseReport();
  report.ShowReport();
  return true;
}

void SingleSampleRunner::ReadGroup(int group) {
  const Workspace& ws = c_.ws;
  const int k = c_.index.analysed;
  const bool moments = c_.mode == 12 || c_.mode == 14;
  c_.stats.assign(k + 1, VariableStats(moments));
  c_.groupRows.clear();
  std::vector<double> values(c_.index.Count() + 1, 0);
  std::vector<std::uint8_t> missings(c_.index.Count() + 1, 1);
  const int cases = ws.NumberOfCases();
  for (int row = 1; row <= cases; ++row) {
    if (row % kProgressStep == 0) ws.ShowProgress(fmt::format("{}{}", c_.T("Case: ", "Eset: "), row), kSingleWindow);
    if (c_.conditional > 0) {
      // The conditional cell is the last column of the row: foreign text there is missing
      // here, though the group sizes (read cell by cell) count it as the code 0.
      double code;
      if (c_.feed->ReadPosition(row, c_.index.conditional, code) || FindMergedGroup(c_.groups, code) != group) continue;
    }
    c_.groupRows.push_back(row);
    c_.feed->ReadRow(row, k, values, missings);
    for (int i = 1; i <= k; ++i) {
      if (!missings[i]) c_.stats[i].Add(values[i]);
    }
  }
}

void SingleSampleRunner::WriteGroupHeading(int group) {
  const bool conditional = c_.conditional > 0;
  if (group == 1 && c_.mode == 11) {
    if (conditional) c_.report.BlankLine();
    c_.report.Line(c_.T("Notation:", "Jelölés:"));
    if (c_.ws.language == Language::English) c_.report.Line(" - SD = Standard deviation");
    c_.report.Line(c_.T(" - Rel.SD = Relative SD = Coefficient of variation = SD/Mean",
                   " - Var. eh. = Variációs együttható = Relatív szórás = szórás/átlag"));
    c_.report.Line(c_.T(" - X_min = Found smallest value", " - X_min = Talált legkisebb érték"));
    c_.report.Line(c_.T(" - X_max = Found largest value", " - X_max = Talált legnagyobb érték"));
    c_.report.Line(c_.T(" - z_min = Standardized smallest value = (X_min - Mean)/SD",
                   " - z_min = Standardizált legkisebb érték = (X_min - átlag)/szórás"));
    c_.report.Line(c_.T(" - z_max = Standardized largest value = (X_max - Mean)/SD",
                   " - z_max = Standardizált legnagyobb érték = (X_max - átlag)/szórás"));
    if (!conditional) c_.report.BlankLine();
  }
  if (conditional) {
    c_.report.BlankLine();
    c_.report.BlankLine();
    c_.report.Line(fmt::format("{}{}{}{}",c_.T("GROUP INDEX: ", "CSOPORTINDEX: "), group,
                            c_.T(".  Group name: ", ".  Csoportnév: "), Utf8Prefix(c_.groups.distinctNames[group], 22)));
    c_.report.BlankLine();
  }
  c_.report.Line(fmt::format("{}{:>5}",c_.T("Number of cases read:  ", "A beolvasott összes eset száma: "),
                           c_.ws.NumberOfCases()));
  if (conditional) {
    c_.report.Line(fmt::format("{}{:>5}",c_.T("Cases in current group: ", "Az aktuális csoport elemszáma:   "),
                             c_.sizes[group]));
  }
  if (c_.mode >= 14 && c_.mode <= 16) {
    c_.report.BlankLine();
    c_.report.Line(c_.T("Notation:  +: p < 0.10   *: p < 0.05   **: p < 0.01   ***: p < 0.001",
                   "Jelölés:  +: p < 0.10   *: p < 0.05   **: p < 0.01   ***: p < 0.001"));
  }
  c_.report.BlankLine();
}

void SingleSampleRunner::WriteBasicTable() {
  c_.report.BeginTable();
  const bool english = c_.ws.language == Language::English;
  const std::vector<std::string_view> head =
      english ? std::vector<std::string_view>{"Index", "Variable       ", "Cases", "Mean", "SD", "Rel.SD", "X_min",
                                              "X_max", "z_min", "z_max", "Long variable name"}
              : std::vector<std::string_view>{"Index", "Változó       ", "Esetek", "Átlag", "Szórás", "Var. eh.",
                                              "X_min", "X_max", "z_min", "z_max", "Hosszú változónév"};
  c_.report.FirstCell(head[0]);
  for (std::size_t c = 1; c < head.size(); ++c) c_.report.Cell(head[c]);
  c_.report.EndRow();
  for (int i = 1; i <= c_.index.analysed; ++i) {
    const VariableStats& s = c_.stats[i];
    c_.WriteIndexAndName(i);
    c_.report.Cell(std::to_string(s.count));
    if (s.count == 0) {
      for (int c = 0; c < 7; ++c) c_.report.Cell("...");
    } else {
      const double sd = StandardDeviation(s);
      c_.report.WriteRatio(8, 8, 1, s.mean, 1);
      c_.report.WriteRatio(8, 9, 1, sd, 1);
      c_.report.WriteRatio(8, -1, s.minimum, sd, s.mean);
      c_.report.WriteRatio(8, 0, 1, s.minimum, 1);
      c_.report.WriteRatio(8, 0, 1, s.maximum, 1);
      c_.report.WriteRatio(7, 2, 1, s.minimum - s.mean, sd);
      c_.report.WriteRatio(7, 2, 1, s.maximum - s.mean, sd);
    }
    const std::string& longName = c_.LongName(i);
    if (Utf8Length(longName) > 1) c_.report.Cell(" " + longName);
    c_.report.EndRow();
  }
  c_.report.EndTable();
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
