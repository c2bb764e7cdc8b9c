// Mode 13: per variable a frequency table with a text histogram (an svg figure in html), a
// table of the groups of a group-defined variable with the test of equal frequencies, and
// the binary and percentile variables of discrete ones.

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "lang/utf8.h"
#include "single/class_table.h"
#include "single/single_sample_context.h"
#include "stats/goodness_of_fit.h"
#include "workspace/new_variable.h"
#include "workspace/numbers.h"

namespace tarvika {
namespace {

constexpr int kBarWidth = 45;

// The bar of a frequency: the frequency itself while the largest is at most 45, else
// trunc(45/largest*frequency), taken in whole numbers so that the largest row gets 45
// exactly (45.0/78*78 is just below 45 in floating point).
int BarLength(int frequency, int largest) {
  return largest <= kBarWidth ? frequency : static_cast<int>(std::int64_t{kBarWidth} * frequency / largest);
}

// The decimals of the value column: the most significant decimals of any value printed
// with at most 5; beyond 4, the decimals that suit the largest absolute value.
int ValueDecimals(const ClassTable& t) {
  int d = 0;
  double largest = 0;
  for (int e = 0; e < t.Count(); ++e) {
    std::string s = FormatFixed(t.Value(e), 5);
    std::size_t last = s.find_last_not_of('0');
    d = std::max(d, static_cast<int>(last - s.find('.')));
    largest = std::max(largest, std::fabs(t.Value(e)));
  }
  return d > 4 ? Decimals(largest) : d;
}

// An svg histogram: one bar per entry, the values under the bars; lines end as the
// report's do.
std::string SvgHistogram(const std::vector<std::string>& labels, const std::vector<int>& freq) {
  std::string svg;
  const int bars = static_cast<int>(freq.size());
  const int largest = std::max(1, *std::max_element(freq.begin(), freq.end()));
  const int barWidth = std::clamp(600 / std::max(bars, 1), 4, 40), height = 200, top = 20, base = top + height;
  const int width = 50 + bars * barWidth + 10;
  svg += fmt::format("<P><svg xmlns=\"http://www.w3.org/2000/svg\" width=\"{}\" height=\"{}\" font-size=\"10\">",
                      width, base + 60);
  svg += "\r\n";
  svg += fmt::format("<line x1=\"48\" y1=\"{}\" x2=\"{}\" y2=\"{}\" stroke=\"black\"/>", base, width - 10, base);
  svg += fmt::format("<line x1=\"48\" y1=\"{}\" x2=\"48\" y2=\"{}\" stroke=\"black\"/>", top, base);
  svg += fmt::format("<text x=\"44\" y=\"{}\" text-anchor=\"end\">{}</text>", top + 4, largest);
  svg += fmt::format("<text x=\"44\" y=\"{}\" text-anchor=\"end\">0</text>", base + 4);
  svg += "\r\n";
  for (int b = 0; b < bars; ++b) {
    const int h = static_cast<int>(std::lround(static_cast<double>(height) * freq[b] / largest));
    const int x = 50 + b * barWidth;
    svg += fmt::format("<rect x=\"{}\" y=\"{}\" width=\"{}\" height=\"{}\" fill=\"#6688cc\" stroke=\"white\">"
                        "<title>{}: {}</title></rect>",
                        x, base - h, barWidth, h, EscapeHtml(labels[b]), freq[b]);
    const int cx = x + barWidth / 2;
    svg += fmt::format("<text x=\"{}\" y=\"{}\" text-anchor=\"end\" transform=\"rotate(-60 {} {})\">{}</text>", cx,
                        base + 12, cx, base + 12, EscapeHtml(labels[b]));
    svg += "\r\n";
  }
  svg += "</svg></P>";
  return svg;
}

// Whether the i-th variable's block needs its table of values or classes: one that is not
// group-defined and has more than one valid value.
bool NeedsClassTable(const SingleSampleContext& c, int i) {
  return c.request.scaleKind[c.Column(i)] != kScaleGroupDefined && c.stats[i].count > 1;
}

// The pass over the i-th variable's values into its table, sorted for printing.
void FillClassTable(const SingleSampleContext& c, int i, int multiplier, ClassTable& table, bool tellProgress) {
  const VariableStats& s = c.stats[i];
  const bool discrete = c.request.scaleKind[c.Column(i)] == kScaleDiscrete;
  table.Reset(ClassCountFor(s.count, multiplier, discrete, false), s.minimum, s.maximum, !discrete);
  c.ForEachValue(i, [&](int, double x) { table.Add(x); }, tellProgress);
  table.Sort();
}

class FrequencyRun {
 public:
  explicit FrequencyRun(SingleSampleContext& c) : c_(c), r_(c.report) {}
  // The block of the i-th variable; its table is filled when NeedsClassTable says so.
  void Variable(int i, const ClassTable* table);

 private:
  void FrequencyTable(int i);
  void GroupFrequencyTable(int i);
  void Binarize(int i);
  void Percentiles(int i);
  // The row of a table entry: label, frequency, percent, cumulative percent and bar.
  void Row(std::string_view label, int frequency, int n, double& cumulative, int largest);
  std::string Percent(double part, double whole) const { return Fixed(100.0 * part / whole, 1); }

  SingleSampleContext& c_;
  ReportWriter& r_;
  const ClassTable* table_ = nullptr;
};

void FrequencyRun::Variable(int i, const ClassTable* table) {
  const VariableStats& s = c_.stats[i];
  table_ = table;
  c_.WriteVariableHeading(i);
  const std::uint8_t scale = c_.request.scaleKind[c_.Column(i)];
  if (scale == kScaleGroupDefined) {
    GroupFrequencyTable(i);
    return;
  }
  const bool discrete = scale == kScaleDiscrete;
  FrequencyTable(i);
  if (!discrete || s.count <= 1) return;
  if (c_.request.Get(param::kBinarize) && c_.conditional == 0) Binarize(i);
  if (c_.request.Get(param::kPercentile) && c_.conditional == 0) Percentiles(i);
}

void FrequencyRun::Row(std::string_view label, int frequency, int n, double& cumulative, int largest) {
  cumulative += frequency;
  r_.FirstCell(label);
  r_.Cell(std::to_string(frequency));
  r_.Cell(Percent(frequency, n));
  r_.Cell(Percent(cumulative, n));
  // The html form draws the bars as a figure below the table.
  r_.TextOnlyCell("|" + std::string(BarLength(frequency, largest), '='));
  r_.EndRow();
}

void FrequencyRun::FrequencyTable(int i) {
  const int n = c_.stats[i].count;
  const std::string& name = c_.Name(i);
  if (n <= 1) {
    r_.Line(n == 0 ? (c_.English() ? "No acceptable case was found for variable " + name + "."
                                   : "'" + name + "' változónak nincs érvényes értéke.")
                   : (c_.English() ? "Only 1 acceptable case was found for variable " + name + "."
                                   : "'" + name + "' változónak csak egy esetben volt érvényes értéke."));
    return;
  }
  const int d = ValueDecimals(*table_);
  int largest = table_->Other();
  for (int e = 0; e < table_->Count(); ++e) largest = std::max(largest, table_->Frequency(e));
  r_.BeginTable();
  r_.FirstCell(table_->Classes() ? c_.T("Midpoint", "Oszt.köz.") : c_.T("Value", "Érték"));
  for (std::string_view head : {c_.T("Freq.", "Gyak"), std::string_view("%"), c_.T("Cum%", "Kum%")}) r_.Cell(head);
  r_.EndRow();
  double cumulative = 0;
  std::vector<std::string> labels;
  std::vector<int> freq;
  for (int e = 0; e < table_->Count(); ++e) {
    labels.push_back(Fixed(table_->Value(e), d));
    freq.push_back(table_->Frequency(e));
    Row(labels.back(), table_->Frequency(e), n, cumulative, largest);
  }
  if (table_->Other() != 0) {
    labels.emplace_back(c_.T("Other", "Egyéb"));
    freq.push_back(table_->Other());
    Row(c_.T("Other:", "Egyéb:"), table_->Other(), n, cumulative, largest);
  }
  r_.FirstCell(c_.T("TOTAL:", "Össz.:"));
  r_.Cell(std::to_string(n));
  r_.EndRow();
  r_.EndTable();
  r_.Figure(SvgHistogram(labels, freq));
}

void FrequencyRun::GroupFrequencyTable(int i) {
  const GroupDefinition groups = GetGroupDefinition(c_.ws, c_.Column(i));
  if (groups.kind == 0) {
    r_.Line(c_.T("No group has been assigned to this variable.", "Ehhez a változóhoz nincs megadva csoportkijelölés."));
    r_.BlankLine();
    return;
  }
  const int valid = c_.stats[i].count;
  std::vector<int> freq(groups.distinct + 1, 0);
  c_.ForEachValue(i, [&](int, double x) {
    if (int g = FindMergedGroup(groups, x); g > 0) ++freq[g];
  });
  int total = 0;
  for (int g = 1; g <= groups.distinct; ++g) total += freq[g];
  if (total == 0) {
    r_.Line(c_.T("Number of cases falling into the specified groups = 0.", "A kijelölt csoportokba eső egyedek száma = 0."));
    return;
  }
  const bool test = c_.request.Get(param::kTestEqualFrequencies);
  const bool english = c_.English();
  const std::string_view nameHead =
      groups.kind == 2 ? c_.T("Value         ", "Érték         ") : c_.T("Group name ", "Csoportnév ");
  std::vector<std::string_view> head1 = {"", c_.T("Group        ", "Csoport      "), c_.T("Simple", "Egyszerű"),
                                         c_.T("Relative", "Relatív"), ""};
  std::vector<std::string_view> head2 = {"Index", nameHead, c_.T("freq.", "gyak."), c_.T("percent", "százalék"),
                                         c_.T("percent", "százalék")};
  if (test) {
    head1.insert(head1.end(), {c_.T("Standard.", "Standard."), c_.T("Adjusted", "Korrigált")});
    head2.insert(head2.end(), {c_.T("residual", "reziduum"), c_.T("p-value", "p-érték")});
  } else {
    head1.push_back("");
    head2.push_back(c_.T("Cum%", "Kum%"));
  }
  r_.BeginTable();
  for (const auto* head : {&head1, &head2}) {
    r_.FirstCell((*head)[0]);
    for (std::size_t k = 1; k < head->size(); ++k) r_.Cell((*head)[k]);
    r_.EndRow();
  }
  const EqualFrequencyTest equal = EqualFrequencies(std::span<const int>(freq).subspan(1));
  double cumulative = 0;
  for (int g = 1; g <= groups.distinct; ++g) {
    r_.FirstCell(fmt::format("{:>3}", g));
    r_.Cell(groups.distinctNames[g]);
    r_.Cell(std::to_string(freq[g]));
    r_.Cell(Percent(freq[g], total));
    r_.Cell(Percent(freq[g], valid));
    if (test) {
      r_.Cell(Fixed(equal.residuals[g - 1], 2) + std::string(equal.residualMarkers[g - 1]));
      r_.Cell(Fixed(equal.adjustedP[g - 1], 4));
    } else {
      cumulative += freq[g];
      r_.Cell(Percent(cumulative, total));
    }
    r_.EndRow();
  }
  r_.EndTable();
  r_.Line(std::string(37, '-'));
  // The summary rows give the share of all valid cases first, and the total then "100".
  r_.BeginTable();
  r_.FirstCell(c_.T("Total:                ", "Összesen:             "));
  r_.Cell(std::to_string(total));
  r_.Cell(Percent(total, valid));
  r_.Cell("100");
  r_.EndRow();
  r_.FirstCell(c_.T("Outside groups:", "Csoportokon kívül:"));
  r_.Cell(std::to_string(valid - total));
  r_.Cell(Percent(valid - total, valid));
  r_.EndRow();
  r_.FirstCell(c_.T("Total:          ", "Összesen:       "));
  r_.Cell(std::to_string(valid));
  r_.EndRow();
  r_.EndTable();
  if (!test) return;
  r_.BlankLine();
  r_.Line(c_.T("Testing the equality of expected group proportions via chi-square test:",
               "A várt csoportarányok egyenlőségének vizsgálata khi-négyzet-próbával:"));
  r_.Line(fmt::format(" Chi2({}) = {}  (p = {}){}", equal.df, Fixed(equal.chi, 3), Fixed(equal.p.p, 4), equal.p.marker));
  if (equal.expected < 5) {
    const std::string e = Fixed(equal.expected, 2);
    r_.Line(english ? "The common expected cell frequency: " + e + " < 5. This may invalidate the chi-square-test."
                    : "A közös várt cellagyakoriság: " + e + " < 5. Emiatt a khi-négyzet-próba érvénytelen lehet.");
  }
  r_.BlankLine();
  r_.Line(c_.T("Notation:  +: p < 0.10   *: p < 0.05   **: p < 0.01   ***: p < 0.001",
               "Jelölés:  +: p < 0.10   *: p < 0.05   **: p < 0.01   ***: p < 0.001"));
}

void FrequencyRun::Binarize(int i) {
  const int distinct = table_->Count();
  if (distinct > 20 || table_->Other() > 0) {
    r_.Line(c_.T("Since this variable has more than 20 different values, it was not binarized.",
                 "Mivel ezen változónak 20-nál több különböző értéke van, nem binarizáltuk."));
    return;
  }
  if (!RoomForVariables(c_.ws, distinct)) {
    r_.Line(VariableLimitMessage(c_.ws));
    return;
  }
  const std::string stem(Utf8Prefix(c_.Name(i), 5));
  std::vector<std::string> names;
  int clashes = 0;
  for (int e = 0; e < distinct; ++e) {
    names.push_back(fmt::format("{}_{}", stem, static_cast<long long>(table_->Value(e))));
    if (NewVariableName(c_.ws, names.back()) != names.back()) ++clashes;
  }
  if (clashes == distinct) return;
  const int cases = c_.ws.NumberOfCases();
  for (int e = 0; e < distinct; ++e) {
    std::vector<std::string> cells(cases);
    c_.ForEachValue(i, [&](int row, double x) { cells[row - 1] = std::fabs(x - table_->Value(e)) < kZeroTolerance ? "1" : "0"; });
    const std::string name = NewVariableName(c_.ws, names[e]);
    NewVariable(c_.ws, name, fmt::format("{} = {}", c_.Name(i), Trimmed4(table_->Value(e))), cells);
  }
}

void FrequencyRun::Percentiles(int i) {
  const int distinct = table_->Count();
  if (distinct > 1000 || table_->Other() > 0) {
    r_.Line(c_.T("Since this variable has more than 1000 different values, its percentile transform was not created.",
                 "Mivel ezen változónak 1000-nél több különböző értéke van, percentilis transzformáltját nem hoztuk létre."));
    return;
  }
  if (!RoomForVariables(c_.ws, 1)) {
    r_.Line(VariableLimitMessage(c_.ws));
    return;
  }
  std::vector<double> cumulative(distinct);
  double running = 0;
  for (int e = 0; e < distinct; ++e) {
    running += table_->Frequency(e);
    cumulative[e] = 100.0 * running / c_.stats[i].count;
  }
  std::vector<std::string> cells(c_.ws.NumberOfCases());
  c_.ForEachValue(i, [&](int row, double x) {
    int e = table_->SortedEntry(x);
    if (e >= 0) cells[row - 1] = DataCell(std::trunc(10 * cumulative[e]) * 0.1, c_.ws.decimalSeparator);
  });
  std::string base(Utf8Prefix(c_.Name(i), 7));
  base += "P";
  NewVariable(c_.ws, NewVariableName(c_.ws, base), fmt::format("{} {}", c_.T("Percentile of", "Percentilis:"), c_.Name(i)),
              cells);
}

}  // namespace

void WriteFrequencyTables(SingleSampleContext& c) {
  // The tables are filled two variables at a time and the blocks written after each pair,
  // in order, so that no more than two tables are kept.
  FrequencyRun run(c);
  const int multiplier = c.request.Get(param::kClassMultiplier);
  ClassTable tables[2];
  std::vector<int> pair;
  int written = 0;
  auto fillAndWriteThrough = [&](int last) {
    ForVariablesInPairs(c, pair, [&](int i, int part) {
      if (part == 0) c.ShowVariableProgress(i);
      // On one thread both variables of a pair come as part 0: the table is the pair's.
      FillClassTable(c, i, multiplier, tables[i == pair[0] ? 0 : 1], part == 0);
    });
    for (int i = written + 1; i <= last; ++i) {
      const auto filled = std::find(pair.begin(), pair.end(), i);
      if (filled == pair.end()) c.ShowVariableProgress(i);
      run.Variable(i, filled == pair.end() ? nullptr : &tables[filled - pair.begin()]);
    }
    written = last;
    pair.clear();
  };
  for (int i = 1; i <= c.index.analysed; ++i) {
    if (NeedsClassTable(c, i)) pair.push_back(i);
    if (pair.size() == 2) fillAndWriteThrough(i);
  }
  fillAndWriteThrough(c.index.analysed);
  const bool off = c.conditional > 0 && !c.writeBackRefusalTold;
  c.writeBackRefusalTold = c.conditional > 0;
  if (off && c.request.Get(param::kBinarize)) {
    c.report.Line(c.T("Since conditional group is specified, binarization was not done.",
                      "Mivel feltételes csoport ki lett jelölve, binarizálást nem végeztünk."));
  }
  if (off && c.request.Get(param::kPercentile)) {
    c.report.Line(c.T("Since conditional group is specified, percentile variables were not created.",
                      "Mivel feltételes csoport ki lett jelölve, percentilis változókat nem hoztunk létre."));
  }
}

}  // namespace tarvika
