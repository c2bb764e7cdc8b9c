#include "relations/jaccard_matrix.h"

#include <cmath>
#include <fmt/format.h>
#include <set>
#include <string>

#include "frame/analysis_run.h"
#include "frame/number_text.h"
#include "stats/contingency.h"

namespace tarvika {

void WriteJaccardMatrix(AnalysisRun& run, const std::vector<int>& selected) {
  ReportWriter& r = run.report;
  const int k = static_cast<int>(selected.size());
  std::vector<int> columns = {0};
  columns.insert(columns.end(), selected.begin(), selected.end());
  DataFeed feed(run.ws, r.Missing(), columns);

  // The cases of the group once: valid values, then the values each variable takes.
  std::vector<std::vector<double>> values;
  std::vector<std::vector<std::uint8_t>> missings;
  std::vector<std::set<double>> found(k + 1);
  std::vector<double> value(k + 1, 0);
  std::vector<std::uint8_t> missing(k + 1, 1);
  int seen = 0;
  for (int row : run.GroupRows()) {
    if (++seen % 10000 == 0) run.ShowCaseProgress(row);
    feed.ReadRow(row, k, value, missing);
    for (int i = 1; i <= k; ++i) {
      if (!missing[i]) found[i].insert(value[i]);
    }
    values.push_back(value);
    missings.push_back(missing);
  }
  std::vector<int> binary;  // positions in the feed
  std::string leftOut;
  for (int i = 1; i <= k; ++i) {
    if (found[i].size() == 2) {
      binary.push_back(i);
    } else {
      leftOut += (leftOut.empty() ? "" : ", ") + run.request.shortNames[selected[i - 1]];
    }
  }

  r.BlankLine();
  r.Line(run.T("MATRIX OF JACCARD PROXIMITY MEASURE FOR SELECTED BINARY VARIABLES",
               "A KIJELÖLT BINÁRIS VÁLTOZÓK JACCARD-HASONLÓSÁGI MÁTRIXA"));
  r.Line(run.T("(the larger of the two values counts as presence; J = a/(a + b + c) over cases valid on both)",
               "(a két érték közül a nagyobb jelenti a jelenlétet; J = a/(a + b + c) a mindkét változón érvényes esetekből)"));
  if (binary.size() < 2) {
    r.Line(run.T("There are fewer than two binary variables among the selected ones.",
                 "A kijelölt változók között kettőnél kevesebb bináris van."));
  } else {
    std::vector<std::string> names;
    for (int i : binary) names.push_back(run.request.shortNames[selected[i - 1]]);
    r.BeginTable();
    r.FirstCell("");
    for (const std::string& name : names) r.Cell(name);
    r.EndRow();
    for (std::size_t a = 0; a < binary.size(); ++a) {
      r.FirstCell(names[a]);
      for (std::size_t b = 0; b < binary.size(); ++b) {
        const int i = binary[a], j = binary[b];
        const double presentI = *found[i].rbegin(), presentJ = *found[j].rbegin();
        int both = 0, onlyI = 0, onlyJ = 0;
        for (std::size_t c = 0; c < values.size(); ++c) {
          if (missings[c][i] || missings[c][j]) continue;
          const bool hasI = values[c][i] == presentI, hasJ = values[c][j] == presentJ;
          both += hasI && hasJ;
          onlyI += hasI && !hasJ;
          onlyJ += !hasI && hasJ;
        }
        const double jaccard = JaccardCoefficient(both, onlyI, onlyJ);
        r.NumberCell(std::isnan(jaccard) ? "......" : Fixed(jaccard, 4));
      }
      r.EndRow();
    }
    r.EndTable();
  }
  if (!leftOut.empty()) {
    r.Line(std::string(run.T("Not binary, left out: ", "Nem bináris, kimaradt: ")) + leftOut);
  }
}

}  // namespace tarvika
