#include "pattern/relocation.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <map>

#include "frame/analysis_run.h"
#include "frame/number_text.h"
#include "workspace/workspace.h"
#include "frame/parameter_names.h"
#include "pattern/agglomeration.h"
#include "pattern/cluster_report.h"
#include "pattern/pattern_head.h"
#include "pattern/pattern_text.h"

namespace tarvika {
namespace {

constexpr int kMaxStartCodes = 100;

// Cluster sizes and means on the stored scale, kept in step with the moves.
struct Centres {
  std::vector<double> size;
  std::vector<double> mean;  // K x V
};

Centres CentresOf(const PatternSet& set, const std::vector<int>& labels, int K) {
  Centres c{std::vector<double>(K, 0), std::vector<double>(static_cast<std::size_t>(K) * set.V, 0)};
  for (int p = 0; p < set.D; ++p) {
    c.size[labels[p]] += set.multiplicity[p];
    for (int v = 0; v < set.V; ++v) c.mean[static_cast<std::size_t>(labels[p]) * set.V + v] += set.multiplicity[p] * set.Pattern(p)[v];
  }
  for (int j = 0; j < K; ++j) {
    for (int v = 0; v < set.V; ++v) {
      if (c.size[j] > 0) c.mean[static_cast<std::size_t>(j) * set.V + v] /= c.size[j];
    }
  }
  return c;
}

// The codes in order with the empty clusters left out.
std::vector<int> Compact(const std::vector<int>& labels, int K, int* used) {
  std::vector<int> count(K, 0), place(K, -1);
  for (int l : labels) ++count[l];
  int next = 0;
  for (int j = 0; j < K; ++j) {
    if (count[j] > 0) place[j] = next++;
  }
  std::vector<int> out(labels.size());
  for (std::size_t p = 0; p < labels.size(); ++p) out[p] = place[labels[p]];
  *used = next;
  return out;
}

}  // namespace

std::vector<RelocationPass> RelocatePatterns(const PatternSet& set, std::vector<int>& labels, int K, double ssStart,
                                             int maxIterations, double tolerance, const std::function<void(int)>& progress) {
  const int V = set.V;
  Centres c = CentresOf(set, labels, K);
  std::vector<RelocationPass> passes;
  double ss = ssStart;
  int iter = 0;
  while (true) {
    ++iter;
    if (progress) progress(iter);
    const double ssOld = ss;
    int moved = 0;
    for (int p = 0; p < set.D; ++p) {
      const int source = labels[p];
      const double w = set.multiplicity[p];
      const double ns = c.size[source];
      if (ns <= 1) continue;
      const double* x = set.Pattern(p);
      const double* ms = c.mean.data() + static_cast<std::size_t>(source) * V;
      double loss = 0;
      if (ns != w) {
        for (int v = 0; v < V; ++v) loss += ns * w / (ns - w) * (x[v] - ms[v]) * (x[v] - ms[v]);
      }
      double best = 0;
      int target = -1;
      for (int j = 0; j < K; ++j) {
        if (j == source) continue;
        const double nd = c.size[j];
        const double* md = c.mean.data() + static_cast<std::size_t>(j) * V;
        double gain = 0;
        for (int v = 0; v < V; ++v) gain += nd * w / (nd + w) * (x[v] - md[v]) * (x[v] - md[v]);
        const double delta = gain - loss;
        if (delta < best) {
          best = delta;
          target = j;
          moved += static_cast<int>(w);  // counted at every better candidate, as reported
        }
      }
      if (target < 0) continue;
      ss += best;
      double* msw = c.mean.data() + static_cast<std::size_t>(source) * V;
      double* mdw = c.mean.data() + static_cast<std::size_t>(target) * V;
      const double nd = c.size[target];
      for (int v = 0; v < V; ++v) {
        msw[v] = ns - w > 0 ? (ns * msw[v] - w * x[v]) / (ns - w) : 0;
        mdw[v] = (nd * mdw[v] + w * x[v]) / (nd + w);
      }
      c.size[source] -= w;
      c.size[target] += w;
      labels[p] = target;
    }
    passes.push_back({moved, ss});
    if (ssOld - ss < tolerance || iter == maxIterations) break;
  }
  return passes;
}

std::vector<int> RelocateAndReport(AnalysisRun& run, const PatternVariables& vars, const PatternSet& set,
                                   const DistanceSummary& distances, RelocationStart start, int maxIterations,
                                   double tolerance) {
  ReportWriter& r = run.report;
  const double totalEss = TotalSumOfSquares(set);
  r.BlankLine();
  r.Line(fmt::format("{}{}{}", run.T("RELOCATION: K-Means Cluster Analysis with ", "RELOKÁCIÓ: k-közép klaszteranalízis "),
                     start.K, run.T(" clusters", " klaszterrel")));
  r.Line(fmt::format("{}{}", run.T("Total Error Sum of Squares (Total ESS) = ", "Teljes hiba négyzetes összeg = "),
                     Fixed(totalEss, 3)));
  r.Line(fmt::format("{}{}", run.T("Starting within cluster sum of squares: SScluster = ",
                                   "Kezdő klaszteren belüli négyzetösszeg: SSklaszter = "),
                     Fixed(start.ssCluster, 3)));
  const double startEess = EessPercent(totalEss, start.ssCluster);
  r.Line(fmt::format("{}{}",
                     start.hierarchical ? run.T("Explained ESS% (EESS%) = ", "Megmagyarázott ESS% (EESS%) = ")
                                        : run.T("Starting Explained ESS% (EESS%) = ", "Kezdő megmagyarázott ESS% (EESS%) = "),
                     Fixed(startEess, 2)));
  r.BlankLine();
  // Two heading lines: "Iter." over "number", "Reloc." over "cases".
  r.BeginTable();
  r.FirstCell(run.T("Iter.", "Iter."));
  r.Cell(run.T("Reloc.", "Áttett"));
  r.Cell(run.T("SScluster", "SSklaszter"));
  r.Cell("EESS%");
  r.EndRow();
  r.FirstCell(run.T("number", "sorszám"));
  r.Cell(run.T("cases", "esetek"));
  r.EndRow();
  std::vector<int> labels = start.labels;
  const std::vector<RelocationPass> passes =
      RelocatePatterns(set, labels, start.K, start.ssCluster, maxIterations, tolerance,
                       [&](int iter) { run.ShowProgress(fmt::format("{}{}", run.T("Iter: ", "Iter: "), iter)); });
  for (std::size_t i = 0; i < passes.size(); ++i) {
    r.FirstCell(fmt::format(" i={}", i + 1));
    r.NumberCell(std::to_string(passes[i].moved));
    r.NumberCell(Fixed(passes[i].ssCluster, 3) + "   ");
    r.NumberCell(Fixed(EessPercent(totalEss, passes[i].ssCluster), 2));
    r.EndRow();
  }
  r.EndTable();
  int K = 0;
  labels = Compact(labels, start.K, &K);
  const Partition partition = PartitionFromLabels(set, labels, K);
  const QualityRecord q = Quality(set, partition, distances, totalEss, DistanceType::Ased, HcRule::EqualVariables);
  if (start.fromVariable && q.eessPercent <= startEess) {
    r.BlankLine();
    r.Line(run.T("The relocation could not increase the value of EESS%.", "A relokáció nem tudta növelni az EESS% értékét."));
    return labels;
  }
  ClusterBlock block;
  block.kmeans = true;
  block.meansTables = true;
  block.totalEss = totalEss;
  block.ssCluster = WithinSumOfSquares(partition);
  WriteClusterStatistics(run, vars, set, partition, q, block);
  return labels;
}

namespace {

void WriteQualityFootnote(AnalysisRun& run) {
  run.report.Line(run.T("In computing HCmean, cluster HC values were weighted with cluster sizes.",
                        "HC-átlag kiszámításánál a klaszterátlagokat a klaszterek nagyságával súlyoztuk."));
}

// Cases of starting code 0 are placed by their nearest case of a non-zero code.
void ClassifyNewCases(AnalysisRun& run, const PatternSet& set,
                      const std::vector<CaseValues>& cases, const std::vector<double>& codes, bool save,
                      const std::string& saveName, double threshold, int K, int& savedColumn) {
  ReportWriter& r = run.report;
  r.BlankLine();
  r.Line(run.T("There is at least one case with a zero starting cluster code value.",
               "A kezdeti klaszterkód változó értéke legalább egy esetre nulla."));
  r.Line(run.T("For this reason instead of performing a K-means cluster analysis",
               "Emiatt a k-közép klaszterelemzés helyett megnézzük, hogy az ilyen esetek"));
  r.Line(run.T("the program looks for each case of this type the nearest cluster to it.",
               "a kezdeti klaszterstruktúrában rendre mely klaszterhez vannak a legközelebb."));
  r.Line(run.T("Distance from a cluster: distance from the nearest neighbor in that cluster.",
               "Klasztertől való távolság: a legközelebbi klaszterbeli elemtől való távolság."));
  if (save) {
    r.Line(fmt::format("{}{}", run.T("Threshold of being saved as a new member of a cluster in the starting cluster structure: ",
                                     "A kezdeti klaszterstruktúrába új tagként való bekerülés küszöbe: "),
                       Fixed(threshold, 4)));
  }
  r.Line(run.T("Listed are cases with 0 starting cluster code with the index of their nearest neighbor (NN_ind),",
               "Most kilistázzuk a 0 kódú esetek sorszámát (EsetInd), legközelebbi szomszédjuk sorszámát (LSz_ind),"));
  r.Line(run.T("the distance from it (DisMin), and the cluster code of the nearest neighbor (CL_code)",
               "az ettől való távolságot (MinTáv) és a legközelebbi szomszéd klaszterkódját (KL_kód)"));
  r.BlankLine();
  r.BeginTable();
  r.FirstCell(run.T("CaseInd", "EsetInd"));
  r.Cell(run.T("NN_ind", "LSz_ind"));
  r.Cell(run.T("DisMin", "MinTáv"));
  r.Cell(run.T("CLcode", "KLkód"));
  r.EndRow();
  const int N = static_cast<int>(cases.size());
  std::vector<double> savedCode(N, -1);
  int within = 0;
  for (int i = 0; i < N; ++i) {
    if (std::fabs(codes[i]) >= kPatternZero) {
      savedCode[i] = codes[i];
      continue;
    }
    const double* xi = set.Pattern(set.patternOfCase[i]);
    int nearest = -1;
    double best = 0;
    for (int j = 0; j < N; ++j) {
      if (std::fabs(codes[j]) < kPatternZero) continue;
      const double d = Distance(xi, set.Pattern(set.patternOfCase[j]), set.weight, DistanceType::Ased);
      if (nearest < 0 || d < best) {
        best = d;
        nearest = j;
      }
    }
    if (nearest < 0) continue;
    r.FirstCell(std::to_string(cases[i].row));
    r.NumberCell(std::to_string(cases[nearest].row));
    r.NumberCell(Fixed(best, 4));
    r.NumberCell(PatternValueText(codes[nearest], 10, 0, run.ws.language));
    r.EndRow();
    if (best <= threshold) {
      savedCode[i] = codes[nearest];
      ++within;
    }
  }
  r.EndTable();
  if (!save) return;
  r.BlankLine();
  if (within == 0) {
    r.Line(run.T("The cluster code as a new variable will not be saved because the distance",
                 "A klaszterkód változót nem mentjük el, mert az összes besorolandó eset messzebb"));
    r.Line(run.T("of all new cases from their nearest neighbor exceed the specified threshold value.",
                 "esik a legközelebbi klasztertől, mint a kijelölt küszöbérték."));
    return;
  }
  r.Line(run.T("The saved cluster code variable includes the cluster code of those cases from above for which",
               "Az elmentett klaszterkód változó a fenti esetek közül csak azokat tartalmazza, amelyeknél"));
  r.Line(fmt::format("{}{}).", run.T("the distance from the nearest neighbor (DisMin) does not exceed the specified threshold value (",
                                     "a legközelebbi klasztertől való távolság (MinTáv) kisebb, mint a kijelölt küszöbérték ("),
                     Fixed(threshold, 4)));
  Workspace& ws = run.ws;
  if (savedColumn == 0) {
    savedColumn =
        NewClusterCodeVariable(run, saveName, fmt::format("{}{}", run.T("KMeans_Cluster_", "Klaszter kódváltozó_"), K));
    if (savedColumn == 0) return;
  }
  for (int i = 0; i < N; ++i) {
    ws.data.SetCell(savedColumn, cases[i].row, savedCode[i] < 0 ? "" : PatternValueText(savedCode[i], 10, 0, Language::English));
  }
}

}  // namespace

void Relocation(AnalysisRun& run) {
  ReportWriter& r = run.report;
  const AnalysisRequest& q = run.request;
  const PatternVariables vars = ReadPatternVariables(run);
  const bool standardize = q.Get(param::kStandardize);
  const int maxIterations = q.Get(param::kMaxIterations);
  const double tolerance = std::clamp(q.Get(param::kTolerance), 0.0001, 0.1);
  const bool save = q.Get(param::kSaveKMeans);
  const std::string saveName(q.Get(param::kKMeansName));
  const double threshold = q.Get(param::kSavingThreshold);
  const int startPosition = run.index.grouping;
  const std::string startName = startPosition > 0 ? q.shortNames[run.index.columns[startPosition]] : "";
  int savedColumn = 0;
  run.ForEachGroup([&] {
    std::vector<double> startCodes;
    std::vector<char> startMissing;
    std::vector<CaseValues> all = ReadCompleteCases(run, vars.V(), startPosition, &startCodes, &startMissing);
    WritePatternGroupHead(run, static_cast<int>(run.GroupRows().size()));
    // A case without a starting code takes no part.
    std::vector<CaseValues> cases;
    std::vector<double> codes;
    for (std::size_t i = 0; i < all.size(); ++i) {
      if (startPosition > 0 && startMissing[i]) continue;
      cases.push_back(all[i]);
      codes.push_back(startPosition > 0 ? startCodes[i] : 0);
    }
    std::map<double, int> distinct;
    bool zero = false;
    if (startPosition > 0) {
      for (double code : codes) {
        if (code < -kPatternZero) {
          r.BlankLine();
          r.Line(run.T("There is at least one case with a negative starting cluster code value.",
                       "A kezdeti klaszterkód változó értéke legalább egy esetre negatív."));
          r.Line(run.T("For this reason no analysis will be performed.", "Emiatt nem végzünk semmilyen elemzést."));
          return;
        }
        if (std::fabs(code) < kPatternZero) {
          zero = true;
        } else {
          distinct.emplace(code, 0);
        }
      }
      if (static_cast<int>(distinct.size()) > kMaxStartCodes) {
        r.BlankLine();
        r.Line(fmt::format("{}{}{}", run.T("The clustering variable has more than ", "A kijelölt klaszterváltozónak több mint "),
                           kMaxStartCodes, run.T(" different values.", " értéke van.")));
        r.Line(run.T("For this reason relocation analysis cannot be performed.", "Emiatt a relokációs elemzés nem végezhető el."));
        return;
      }
    }
    r.BlankLine();
    std::optional<PatternSet> prepared = PreparePatterns(run, vars, cases, DistanceType::Ased, standardize);
    if (!prepared) return;
    const PatternSet& set = *prepared;
    r.BlankLine();
    WriteQualityLegend(r, run.ws.language, true);
    if (startPosition > 0) {
      r.BlankLine();
      r.Line(fmt::format("{}{}", run.T("Starting clustering variable: ", "A kezdő osztályozás klaszterváltozója: "), startName));
    }
    if (zero) {
      ClassifyNewCases(run, set, cases, codes, save, saveName, threshold, static_cast<int>(distinct.size()), savedColumn);
      return;
    }
    const DistanceSummary distances = SummarizeDistances(set, DistanceType::Ased);
    const double totalEss = TotalSumOfSquares(set);
    RelocationStart start;
    if (startPosition > 0) {
      // The codes in ascending order are the clusters; a pattern takes the code of its first case.
      int next = 0;
      for (auto& [code, place] : distinct) place = next++;
      start.K = next;
      start.labels.assign(set.D, -1);
      for (std::size_t i = 0; i < cases.size(); ++i) {
        int& label = start.labels[set.patternOfCase[i]];
        if (label < 0) label = distinct[codes[i]];
      }
      start.fromVariable = true;
      const Partition partition = PartitionFromLabels(set, start.labels, start.K);
      start.ssCluster = WithinSumOfSquares(partition);
      r.BlankLine();
      r.Line(run.T("CLUSTER STATISTICS OF THE START CLASSSIFICATION", "KLASZTERSTATISZTIKÁK A KEZDŐ OSZTÁLYOZÁSRA"));
      const QualityRecord quality = Quality(set, partition, distances, totalEss, DistanceType::Ased, HcRule::EqualVariables);
      WriteQualityLine(run, set, quality, true);
      WriteQualityFootnote(run);
    } else {
      start.K = std::min(q.Get(param::kClusters), set.D);
      Agglomeration tree(set, LinkageMethod::Ward, DistanceType::Ased, 0, set.D > kDoubleMatrixPatterns);
      while (tree.K() > start.K) tree.Fuse();
      start.labels = tree.Labels();
      start.ssCluster = tree.SsCluster();
      const Partition partition = tree.Current();
      r.BlankLine();
      r.Line(fmt::format("{}{}{}", run.T("RESULTS OF HIERARCHICAL CLUSTER ANALYSIS with ", "HIERARCHIKUS KLASZTERELEMZÉS EREDMÉNYE "),
                         start.K, run.T(" clusters (Ward's method)", " klaszterrel (Ward-módszer)")));
      r.Line(fmt::format("{}{}", run.T("Total Error Sum of Squares (Total ESS) = ", "Teljes hiba négyzetes összeg = "), Fixed(totalEss, 3)));
      r.Line(fmt::format("{}{}", run.T("Within cluster sum of squares: SScluster = ", "Klaszteren belüli négyzetösszeg: SSklaszter = "),
                         Fixed(start.ssCluster, 3)));
      const QualityRecord quality = Quality(set, partition, distances, totalEss, DistanceType::Ased, HcRule::EqualVariables);
      WriteQualityLine(run, set, quality, true);
      WriteQualityFootnote(run);
    }
    std::vector<int> labels = start.labels;
    int K = start.K;
    if (maxIterations == 0) {
      r.BlankLine();
      r.Line(run.T("No relocation is performed since the number of iterations is set to 0",
                   "Relokációt nem végzünk, mert az iterációk száma 0-ra van beállítva."));
    } else {
      labels = RelocateAndReport(run, vars, set, distances, start, maxIterations, tolerance);
      K = *std::max_element(labels.begin(), labels.end()) + 1;
    }
    if (save) {
      std::vector<int> codes1(labels);
      for (int& c : codes1) ++c;
      savedColumn = SaveClusterCodes(run, set, codes1, saveName,
                                     fmt::format("{}{}", run.T("KMeans_Cluster_", "Klaszter kódváltozó_"), K), savedColumn);
    }
  });
}

}  // namespace tarvika
