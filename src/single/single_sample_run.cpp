#include "single/single_sample_run.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fmt/format.h>

#include "numeric/parallel_parts.h"
#include "single/single_sample_context.h"
#include "workspace/numbers.h"
#include "lang/utf8.h"
#include "workspace/session.h"
#include "workspace/workspace.h"

namespace tarvika {

SingleSampleContext::SingleSampleContext(AnalysisRun& r)
    : run(r),
      ws(r.ws),
      request(r.request),
      report(r.report),
      index(r.index),
      feed(&r.Feed()),
      mode(r.request.commandCode),
      conditional(r.Conditional()),
      ftable(r.tables.f) {}

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
  switch (request.Get(param::kConfidenceIndex)) {
    case 0: return 90;
    case 2: return 99;
    default: return 95;
  }
}

double SingleSampleContext::CriticalF(int df) const { return CriticalFAt(ftable, df, ConfidencePercent()); }


void ReadGroup(SingleSampleContext& c) {
  const int k = c.index.analysed;
  const bool moments = c.mode == kDetailedStatistics || c.mode == kMeanMedianTests;
  c.stats.assign(k + 1, VariableStats(moments));
  const std::vector<int>& rows = c.GroupRows();
  // Each variable's sums take its values in case order whichever thread adds them, so the
  // statistics are the same for any number of parts; the first part tells the progress.
  const int parts = PartsFor(c.run.Threads(), k, static_cast<long long>(rows.size()));
  RunParts(parts, [&](int p, const std::atomic<bool>& stop) {
    const int first = FirstOfPart(p, parts, k), last = LastOfPart(p, parts, k);
    std::vector<VariableStats> stats(c.stats.begin() + first, c.stats.begin() + last + 1);
    int seen = 0;
    for (int row : rows) {
      if (++seen % 10000 == 0) {
        if (p == 0) c.run.ShowCaseProgress(row);
        if (stop) return;
      }
      for (int i = first; i <= last; ++i) {
        double x;
        if (!c.feed->ReadCell(row, i, x)) stats[i - first].Add(x);
      }
    }
    std::copy(stats.begin(), stats.end(), c.stats.begin() + first);
  });
}

void ForVariablesInPairs(const SingleSampleContext& c, const std::vector<int>& wanted,
                         const std::function<void(int i, int part)>& work) {
  const long long rows = static_cast<long long>(c.GroupRows().size());
  const int count = static_cast<int>(wanted.size());
  for (int w = 0; w < count;) {
    const int parts = w + 1 < count ? PartsFor(c.run.Threads(), 2, rows) : 1;
    RunParts(parts, [&](int part, const std::atomic<bool>&) { work(wanted[w + part], part); });
    w += parts;
  }
}

void WriteGroupHeading(SingleSampleContext& c) {
  const int group = c.run.Group();
  const bool conditional = c.conditional > 0;
  if (group == 1 && c.mode == kBasicStatistics) {
    if (conditional) c.report.BlankLine();
    c.report.Line(c.T("Notation:", "Jelölés:"));
    if (c.ws.language == Language::English) c.report.Line(" - SD = Standard deviation");
    c.report.Line(c.T(" - Rel.SD = Relative SD = Coefficient of variation = SD/Mean",
                   " - Var. eh. = Variációs együttható = Relatív szórás = szórás/átlag"));
    c.report.Line(c.T(" - X_min = Found smallest value", " - X_min = Talált legkisebb érték"));
    c.report.Line(c.T(" - X_max = Found largest value", " - X_max = Talált legnagyobb érték"));
    c.report.Line(c.T(" - z_min = Standardized smallest value = (X_min - Mean)/SD",
                   " - z_min = Standardizált legkisebb érték = (X_min - átlag)/szórás"));
    c.report.Line(c.T(" - z_max = Standardized largest value = (X_max - Mean)/SD",
                   " - z_max = Standardizált legnagyobb érték = (X_max - átlag)/szórás"));
    if (!conditional) c.report.BlankLine();
  }
  if (conditional) {
    c.report.BlankLine();
    c.report.BlankLine();
    c.report.Line(fmt::format("{}{}{}{}",c.T("GROUP INDEX: ", "CSOPORTINDEX: "), group,
                            c.T(".  Group name: ", ".  Csoportnév: "), Utf8Prefix(c.run.Groups().distinctNames[group], 22)));
    c.report.BlankLine();
  }
  c.report.Line(fmt::format("{}{:>5}",c.T("Number of cases read:  ", "A beolvasott összes eset száma: "),
                           c.ws.NumberOfCases()));
  if (conditional) {
    c.report.Line(fmt::format("{}{:>5}",c.T("Cases in current group: ", "Az aktuális csoport elemszáma:   "),
                             c.run.GroupSizes()[group]));
  }
  if (c.mode == kMeanMedianTests || c.mode == kNormalityTests || c.mode == kDistributionFitting) {
    c.report.BlankLine();
    c.report.Line(c.T("Notation:  +: p < 0.10   *: p < 0.05   **: p < 0.01   ***: p < 0.001",
                   "Jelölés:  +: p < 0.10   *: p < 0.05   **: p < 0.01   ***: p < 0.001"));
  }
  c.report.BlankLine();
}

void WriteBasicTable(SingleSampleContext& c) {
  c.report.BeginTable();
  const bool english = c.ws.language == Language::English;
  const std::vector<std::string_view> head =
      english ? std::vector<std::string_view>{"Index", "Variable       ", "Cases", "Mean", "SD", "Rel.SD", "X_min",
                                              "X_max", "z_min", "z_max", "Long variable name"}
              : std::vector<std::string_view>{"Index", "Változó       ", "Esetek", "Átlag", "Szórás", "Var. eh.",
                                              "X_min", "X_max", "z_min", "z_max", "Hosszú változónév"};
  c.report.FirstCell(head[0]);
  for (std::size_t h = 1; h < head.size(); ++h) c.report.Cell(head[h]);
  c.report.EndRow();
  for (int i = 1; i <= c.index.analysed; ++i) {
    const VariableStats& s = c.stats[i];
    c.WriteIndexAndName(i);
    c.report.Cell(std::to_string(s.count));
    if (s.count == 0) {
      for (int k = 0; k < 7; ++k) c.report.Cell("...");
    } else {
      // One value has no SD: its SD, Rel.SD and z cells print as the empty cell "......",
      // which is what a zero denominator gives.
      const bool one = s.count == 1;
      const double sd = StandardDeviation(s);
      c.report.WriteRatio(8, 8, 1, s.mean, 1);
      c.report.WriteRatio(8, 9, 1, sd, one ? 0 : 1);
      c.report.WriteRatio(8, -1, s.minimum, sd, one ? 0 : s.mean);
      c.report.WriteRatio(8, 0, 1, s.minimum, 1);
      c.report.WriteRatio(8, 0, 1, s.maximum, 1);
      c.report.WriteRatio(7, 2, 1, s.minimum - s.mean, sd);
      c.report.WriteRatio(7, 2, 1, s.maximum - s.mean, sd);
    }
    const std::string& longName = c.LongName(i);
    if (Utf8Length(longName) > 1) c.report.Cell(" " + longName);
    c.report.EndRow();
  }
  c.report.EndTable();
}

namespace {

// One run of a single-sample command: per group the first pass, the heading and the
// command's tables.
void RunSingleSample(AnalysisRun& run, void (*writeMode)(SingleSampleContext&)) {
  SingleSampleContext c(run);
  run.ForEachGroup([&] {
    ReadGroup(c);
    WriteGroupHeading(c);
    writeMode(c);
  });
}

void WriteDetailedOrTrimmed(SingleSampleContext& c) {
  if (c.request.Get(param::kTrimmingPercent) > 0) {
    WriteTestBlocks(c, false);
  } else {
    WriteDetailedTable(c);
  }
}

}  // namespace

void BasicStatistics(AnalysisRun& run) { RunSingleSample(run, WriteBasicTable); }
void DetailedStatistics(AnalysisRun& run) { RunSingleSample(run, WriteDetailedOrTrimmed); }
void Frequencies(AnalysisRun& run) { RunSingleSample(run, WriteFrequencyTables); }
void MeanMedianTests(AnalysisRun& run) { RunSingleSample(run, [](SingleSampleContext& c) { WriteTestBlocks(c, true); }); }
void NormalityTests(AnalysisRun& run) { RunSingleSample(run, WriteNormalityTests); }

}  // namespace tarvika
