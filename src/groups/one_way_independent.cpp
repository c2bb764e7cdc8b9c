#include "groups/one_way_independent.h"

#include <fmt/format.h>

#include "frame/analysis_run.h"
#include "lang/utf8.h"
#include "relations/crosstab.h"

namespace tarvika {

// Per conditional group and dependent: a nominal dependent is compared across the groups
// by the crosstab of the grouping variable against it; the interval and ordinal branches
// are still to come.
void OneWayIndependent(AnalysisRun& run) {
  const SelectedIndex& index = run.index;
  const int grouping = index.columns[index.grouping];
  run.ForEachGroup([&] {
    if (run.Conditional() > 0) {
      run.report.BlankLine();
      run.report.Line(fmt::format("{}{}{}{}", run.T("GROUP INDEX: ", "CSOPORTINDEX: "), run.Group(),
                                  run.T(".  GROUP NAME: ", ".  CSOPORTNÉV: "),
                                  Utf8Prefix(run.Groups().distinctNames[run.Group()], 22)));
    }
    for (int i = 1; i <= index.analysed; ++i) {
      const int dependent = index.columns[i];
      if (run.request.scaleKind[dependent] == kScaleGroupDefined) {
        WriteCrosstab(run, grouping, dependent, CrosstabSections{});
      } else {
        run.report.BlankLine();
        run.report.Line(std::string(run.T("DEPENDENT VARIABLE: ", "FÜGGŐ VÁLTOZÓ: ")) + NameWithLong(run.ws, dependent));
        run.report.Line("Sorry, under construction.");
      }
    }
  });
}

}  // namespace tarvika
