#include "relations/item_analysis.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <string>
#include <vector>

#include "lang/utf8.h"
#include "frame/analysis_run.h"
#include "frame/number_text.h"
#include "frame/parameter_names.h"
#include "relations/correlation.h"
#include "stats/reliability.h"
#include "workspace/new_variable.h"
#include "workspace/workspace.h"
#include "workspace/session.h"

namespace tarvika {
namespace {

constexpr double kZero = 0.00000001;

struct Scale {
  std::vector<int> items;  // positive items, then negative ones
  std::vector<bool> negative;
  int positives = 0, negatives = 0;
  double K = 0;
  int itemMin = 0, itemMax = 0;
  std::string name;
};

std::string Number(double x) { return Fixed(x, Decimals(x)); }

// The complete cases of the rows given: the items as read, and their rows.
void ReadItems(AnalysisRun& run, const Scale& scale, const std::vector<int>& rows,
               std::vector<std::vector<double>>& values, std::vector<int>& used) {
  std::vector<int> columns = {0};
  columns.insert(columns.end(), scale.items.begin(), scale.items.end());
  const int k = static_cast<int>(scale.items.size());
  DataFeed feed(run.ws, run.report.Missing(), columns);
  std::vector<double> value(k + 1, 0);
  std::vector<std::uint8_t> missing(k + 1, 1);
  for (int row : rows) {
    feed.ReadRow(row, k, value, missing);
    bool complete = true;
    for (int i = 1; i <= k; ++i) complete = complete && !missing[i];
    if (!complete) continue;
    values.emplace_back(value.begin() + 1, value.end());
    used.push_back(row);
  }
}

// The help text of the saved scale: its formula.
std::string Formula(const AnalysisRun& run, const Scale& scale) {
  std::string text;
  if (scale.negatives > 0) text = fmt::format("{} + ", scale.itemMin + scale.itemMax);
  for (std::size_t i = 0; i < scale.items.size(); ++i) {
    const std::string& name = run.request.shortNames[scale.items[i]];
    if (scale.negative[i]) {
      text += " - " + name;
    } else {
      text += (i > 0 ? " + " : "") + name;
    }
  }
  return text;
}

// False when the sample's range of the items differs from the declared one (the negative
// items are not turned around then).
bool CheckLimits(AnalysisRun& run, const Scale& scale, const Reliability& rel) {
  ReportWriter& r = run.report;
  bool agree = true;
  if (scale.negatives == 0) return agree;
  if (std::fabs(rel.itemsMin - scale.itemMin) > 0.1) {
    r.Line(fmt::format("{}{}{}{}{}", run.T("The sample minimum of the specified items (xmin=", "A megadott tételek mintabeli minimuma (xmin="),
                       Number(rel.itemsMin), run.T(") and the specified scale minimum (smin=", ") és a megadott skálaminimum (smin="),
                       scale.itemMin, run.T(") are not equal.", ") nem egyenlő.")));
    agree = false;
  }
  if (std::fabs(rel.itemsMax - scale.itemMax) > 0.1) {
    r.Line(fmt::format("{}{}{}{}{}", run.T("The sample manimum of the specified items (xmax=", "A megadott tételek mintabeli maximuma (xmax="),
                       Number(rel.itemsMax), run.T(") and the specified scale maximum (smax=", ") és a megadott skálamaximum (smax="),
                       scale.itemMax, run.T(") are not equal.", ") nem egyenlő.")));
    agree = false;
  }
  if (!agree) {
    r.Line(run.T("For this reason negative items are not converted in the data sheet.",
                 "Emiatt a negatív tételeket nem fordítjuk át az adatállományban."));
  }
  return agree;
}

// An item's short name padded by 28 - 2L blanks (L its length), so that the columns of a
// plain view line up for names of every length.
std::string PaddedItemName(const std::string& name) {
  const int length = static_cast<int>(Utf8Length(name));
  return name + std::string(std::max(0, 28 - 2 * length), ' ');
}

void WriteItemTables(AnalysisRun& run, const Scale& scale, const Reliability& rel) {
  ReportWriter& r = run.report;
  const int k = static_cast<int>(scale.items.size());
  r.BlankLine();
  r.BeginTitledTable(run.T("BASIC DESCRIPTIVE STATISTICS of the individual items", "AZ EGYES TÉTELEK ALAPSTATISZTIKÁI"),
                     {run.T("Item", "Tétel"), run.T("Mean", "Átlag"), run.T("SD", "Szórás"), run.T("Min", "Min."),
                      run.T("Max", "Max.")});
  for (int i = 0; i < k; ++i) {
    const ItemStatistics& it = rel.items[i];
    r.FirstCell(PaddedItemName(run.request.shortNames[scale.items[i]]));
    r.WriteRatio(8, 9, 1, it.mean, 1);
    r.WriteRatio(8, 9, 1, it.sd, 1);
    r.WriteRatio(8, it.min <= kZero ? 0 : 2, 1, it.min, 1);
    r.WriteRatio(8, it.max <= kZero ? 0 : 2, 1, it.max, 1);
    r.EndRow();
  }
  r.EndTable();
  r.BlankLine();
  r.Line(run.T("Item-total (IT) and corrected item-total = item-remainder (IR) correlations",
               "Item-totál (IT) és item-maradék (IM) korrelációk"));
  std::vector<std::string_view> headings = {run.T("Sign", "Előjel"), run.T("Item", "Tétel"), " r(IT)",
                                            run.T(" r(IR)", " r(IM)")};
  if (k > 2) headings.push_back(run.T("     Alpha if item omitted", "    Alfa, ha az item kimarad"));
  r.BeginTitledTable(run.T("(level of significance indicated only for r(IR) values)",
                           "(a szignifikancia szintje csak az r(IM) értékek mellett van jelölve)"),
                     headings);
  for (int i = 0; i < k; ++i) {
    const ItemStatistics& it = rel.items[i];
    r.FirstCell(scale.negative[i] ? " _" : " +");
    r.Cell(PaddedItemName(run.request.shortNames[scale.items[i]]));
    r.NumberCell(Fixed(it.rIT, 2));
    r.NumberCell(fmt::format("{:<8}", Fixed(it.rIR, 2) + std::string(it.pIR.marker)));
    if (k > 2) r.NumberCell(Fixed(it.alphaIfOmitted, 3));
    r.EndRow();
  }
  r.EndTable();
  r.Line(fmt::format("{}{})", run.T("(df = ", "(Szab.fok = "), rel.n - 2));
  r.Line(run.T("  +: p < 0.10   *: p < 0.05   **: p < 0.01;   ***: p < 0.001;",
               "  +: p < 0,10   *: p < 0,05   **: p < 0,01   ***: p < 0,001;"));
  r.Line(run.T(" two-tailed test)", " kétoldalú próba)"));
}

// Writes one group's report; false when the group has too few cases.
bool WriteGroup(AnalysisRun& run, const Scale& scale, bool first, bool& limitsAgree) {
  ReportWriter& r = run.report;
  std::vector<std::vector<double>> values;
  std::vector<int> used;
  ReadItems(run, scale, run.GroupRows(), values, used);
  WriteCorrelationGroupHeading(run);
  r.BlankLine();
  r.Line(fmt::format("{}\"{}\"", run.T("ITEM ANALYSIS PERFORMED FOR SCALE: ", "ITEMANALÍZIS A KÖVETKEZŐ SKÁLÁRA: "),
                     scale.name));
  r.BlankLine();
  if (first) {
    r.Line(run.T("ITEMS:", "TÉTELEK:"));
    for (std::size_t i = 0; i < scale.items.size(); ++i) {
      r.Line(fmt::format("{:3}:\t{}", i + 1, NameWithLong(run.ws, scale.items[i])));
    }
    r.BlankLine();
  }
  r.Line(fmt::format("{}{}", run.T("Number of complete cases: n = ", "A teljes esetek száma: n = "), values.size()));
  if (values.size() <= 2) return false;
  const Reliability rel = ScaleReliability(values, scale.negative, scale.K);
  r.Line(fmt::format("{}{}", run.T("Number of positive items in scale: ", "A skála pozitív tételeinek a száma: "),
                     scale.positives));
  r.Line(fmt::format("{}{}", run.T("Number of negative items in scale: ", "A skála negatív tételeinek a száma: "),
                     scale.negatives));
  r.Line(std::string(run.T("Mean of the scale: ", "Skálaátlag: ")) + Number(rel.scaleMean));
  r.Line(std::string(run.T("SD of the scale: ", "Skálaszórás: ")) + Number(rel.scaleSd));
  r.Line(std::string(run.T("Cronbach-alpha: ", "Cronbach-alfa: ")) + Fixed(rel.alpha, 3));
  limitsAgree = CheckLimits(run, scale, rel) && limitsAgree;
  WriteItemTables(run, scale, rel);
  return true;
}

void SaveScale(AnalysisRun& run, const Scale& scale) {
  ReportWriter& r = run.report;
  if (!RoomForVariables(run.ws, 1)) {
    r.Line(run.T("The scale as a new variable cannot be created", "A skála, mint egy új változó nem hozható létre, mert az összes"));
    r.Line(VariableLimitMessage(run.ws));
    return;
  }
  std::vector<int> all(static_cast<std::size_t>(run.ws.NumberOfCases()));
  for (std::size_t i = 0; i < all.size(); ++i) all[i] = static_cast<int>(i) + 1;
  std::vector<std::vector<double>> values;
  std::vector<int> used;
  ReadItems(run, scale, all, values, used);
  std::vector<std::string> cells(all.size());
  double lo = 0, hi = 0;
  for (std::size_t c = 0; c < values.size(); ++c) {
    double s = 0;
    for (std::size_t i = 0; i < values[c].size(); ++i) s += scale.negative[i] ? scale.K - values[c][i] : values[c][i];
    lo = c == 0 ? s : std::min(lo, s);
    hi = c == 0 ? s : std::max(hi, s);
    cells[used[c] - 1] = DataCell(s, run.ws.decimalSeparator);
  }
  const std::string name = NewVariableName(run.ws, scale.name.empty() ? "Scale" : scale.name);
  const int v = NewVariable(run.ws, name, scale.name, cells);
  if (v == 0) return;
  run.ws.vars.SetCell(kHelp, v, Formula(run, scale));
  run.ws.vars.SetCell(kType, v, fmt::format("num={}_{};", static_cast<long>(lo - 0.5), static_cast<long>(hi + 0.5)));
  r.Line(fmt::format("{}{} = {}", run.T("New variable: ", "Új változó: "), name, Formula(run, scale)));
}

void ConvertNegativeItems(AnalysisRun& run, const Scale& scale) {
  ReportWriter& r = run.report;
  const int cases = run.ws.NumberOfCases();
  for (std::size_t i = 0; i < scale.items.size(); ++i) {
    if (!scale.negative[i]) continue;
    std::vector<std::string> cells(static_cast<std::size_t>(cases));
    DataFeed feed(run.ws, r.Missing(), {0, scale.items[i]});
    for (int row = 1; row <= cases; ++row) {
      double x = 0;
      if (!feed.ReadPosition(row, 1, x)) cells[row - 1] = DataCell(scale.K - x, run.ws.decimalSeparator);
    }
    for (int row = 1; row <= cases; ++row) run.ws.data.SetCell(scale.items[i], row, cells[row - 1]);
  }
  r.Line(run.T("With item conversions the old scores have been overwrited in the data sheet.",
               "Az itemkonverzióval a régi itemértékek felül lettek írva az adatállományban."));
  r.Line(run.T("If you want to keep the old data sheet, save the current data file with a new name.",
               "Ha meg akarod őrizni a régi adatokat is, a jelenlegi adatfájlt mentsd el új néven."));
}

}  // namespace

void ItemAnalysis(AnalysisRun& run) {
  ReportWriter& r = run.report;
  // The sociometric analysis of a class reads the table as a matrix of choices; its
  // scoring is not built yet.
  if (run.request.Get(param::kSociometric)) {
    r.Line(UnderConstruction(run.ws.language));
    return;
  }
  Scale scale;
  for (char role : {'X', 'Y'}) {
    for (int v = 1; v <= run.request.numberOfVariables; ++v) {
      if (run.request.role[v] != role) continue;
      scale.items.push_back(v);
      scale.negative.push_back(role == 'Y');
    }
  }
  const int k = static_cast<int>(scale.items.size());
  if (k < 2) {
    r.Line(run.T("Number of selected items is less than 2.", "Az itemek száma kisebb 2-nél."));
    r.Line(run.T("No analysis can be performed.", "Emiatt a program nem tud elemzést végezni."));
    return;
  }
  for (bool negative : scale.negative) ++(negative ? scale.negatives : scale.positives);
  scale.itemMin = run.request.Get(param::kItemMin);
  scale.itemMax = run.request.Get(param::kItemMax);
  scale.K = scale.itemMin + scale.itemMax;
  scale.name = std::string(run.request.Get(param::kScaleName));
  bool limitsAgree = true, first = true;
  run.ForEachGroup([&] {
    WriteGroup(run, scale, first, limitsAgree);
    first = false;
  });
  if (run.request.Get(param::kSaveScale)) SaveScale(run, scale);
  if (!run.request.Get(param::kConvertNegativeItems) || scale.negatives == 0) return;
  if (run.Conditional() > 0) {
    r.Line(run.T("The negative items have not been converted", "A negatív tételeket nem fordítottuk át, mert feltételes csoportosító"));
    r.Line(run.T(" because conditional grouping variable is specified.", " változó meg van adva."));
  } else if (limitsAgree) {
    ConvertNegativeItems(run, scale);
  }
}

}  // namespace tarvika
