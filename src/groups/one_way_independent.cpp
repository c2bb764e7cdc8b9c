#include "groups/one_way_independent.h"

#include <fmt/format.h>

#include "frame/analysis_run.h"
#include "frame/parameter_names.h"
#include "groups/one_way_means.h"
#include "groups/one_way_ranks.h"
#include "lang/utf8.h"
#include "numeric/parallel_parts.h"
#include "relations/crosstab.h"

namespace tarvika {

namespace {

constexpr std::string_view kLevelText[] = {"10%", "5%", "1%"};

}  // namespace

// Per conditional group and dependent: an interval dependent is compared across the groups
// by the tests of means and variances, a nominal one by the crosstab of the grouping
// variable against it, an ordinal one by the rank tests of stochastic equality.
void OneWayIndependent(AnalysisRun& run) {
  const SelectedIndex& index = run.index;
  const int grouping = index.columns[index.grouping];
  if (GetGroupDefinition(run.ws, grouping).distinct < 2) {
    run.report.BlankLine();
    run.report.Line(std::string(run.T("Grouping variable: ", "Csoportosító változó: ")) +
                    NameWithLong(run.ws, grouping));
    run.report.Line(run.T("Less than two groups have been assigned to this variable.",
                          "Ehhez a változóhoz kettőnél kevesebb csoport van megadva."));
    run.report.Line(run.T("No analysis will be performed.", "Enélkül a program nem tud elemzést végezni."));
    return;
  }
  if (run.request.Get(param::kSignificantOnly)) {
    const int level = run.request.Get(param::kSignificanceLevel);
    run.report.BlankLine();
    run.report.Line(run.T("Results for a dependent variable are not reported unless at least one",
                          "Egy függő változó eredményei csak akkor jelennek meg, ha legalább egy"));
    run.report.Line(fmt::format("{}{}.",
                                run.T("test of group comparison is significant at level ",
                                      "csoportösszehasonlító próba szignifikáns a következő szinten: "),
                                kLevelText[level]));
    run.report.Line(run.T("Lack of significance can also be due to incomplete designs.",
                          "A szignifikancia hiánya a hiányos elrendezésnek is betudható."));
  }
  if (run.request.Get(param::kCompareDistributions)) {
    // The tail left out of the compared region of the distributions of ordinal dependents.
    const int percent = run.request.Get(param::kTrimmingPercent);
    const double epsmin = percent < 1 ? 0.025 : percent > 25 ? 0.25 : percent * 0.01;
    run.report.Line(fmt::format("Epsmin = {:.3f}", epsmin));
  }
  run.ForEachGroup([&] {
    if (run.Conditional() > 0) {
      run.report.BlankLine();
      run.report.Line(fmt::format("{}{}{}{}", run.T("GROUP INDEX: ", "CSOPORTINDEX: "), run.Group(),
                                  run.T(".  GROUP NAME: ", ".  CSOPORTNÉV: "),
                                  Utf8Prefix(run.Groups().distinctNames[run.Group()], 22)));
    }
    OneWayGroupState state;
    // The interval and ordinal dependents are computed two at a time side by side (each
    // reads and computes only its own), then written in their order.
    auto scaleOf = [&](int i) { return run.request.scaleKind[index.columns[i]]; };
    auto compute = [&](int i) {
      const int dependent = index.columns[i];
      return scaleOf(i) == kScaleDiscrete ? ComputeOrdinalDependent(run, dependent)
                                          : ComputeIntervalDependent(run, dependent);
    };
    std::vector<DependentWriter> computed(index.analysed + 1);
    for (int i = 1; i <= index.analysed; ++i) {
      if (scaleOf(i) == kScaleGroupDefined) {
        WriteCrosstab(run, grouping, index.columns[i], CrosstabSections{});
        continue;
      }
      if (!computed[i]) {
        int next = i + 1;
        while (next <= index.analysed && scaleOf(next) == kScaleGroupDefined) ++next;
        const long long rows = static_cast<long long>(run.GroupRows().size());
        const int parts = next <= index.analysed ? PartsFor(run.Threads(), 2, rows) : 1;
        RunParts(parts, [&](int part, const std::atomic<bool>&) {
          const int which = part == 0 ? i : next;
          computed[which] = compute(which);
        });
      }
      computed[i](state);
      computed[i] = nullptr;  // its values and ranks go before the next pair is computed
    }
    WriteOneWaySummaries(run, state.summary);
    WriteRankSummaries(run, state.rankSummary);
  });
}

}  // namespace tarvika
