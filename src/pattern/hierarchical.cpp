#include "pattern/hierarchical.h"

#include <algorithm>
#include <fmt/format.h>

#include "frame/analysis_run.h"
#include "frame/number_text.h"
#include "workspace/workspace.h"
#include "frame/parameter_names.h"
#include "pattern/agglomeration.h"
#include "pattern/cluster_report.h"
#include "pattern/pattern_head.h"
#include "pattern/pattern_text.h"
#include "pattern/relocation.h"

namespace tarvika {
namespace {

constexpr int kQualityClusters = 50;

struct MethodName {
  std::string_view choice, english, hungarian;
};
constexpr MethodName kMethods[] = {
    {"Average", "Average Linkage between Groups", "Átlagos távolság módszere"},
    {"Single", "Single Linkage (Nearest neighbor)", "Minimális távolság (Legközelebbi szomszéd) módszere"},
    {"Complete", "Complete Linkage (Furthest neighbor)", "Maximális távolság (Legtávolabbi szomszéd) módszere"},
    {"Centroid", "Centroid", "Centroid-módszer"},
    {"Median", "Median", "Medián-módszer"},
    {"Ward", "Ward", "Ward-féle eljárás"},
    {"Beta-flexible", "Beta-flexible", "Béta-flexibilis módszer"},
};

// The beta value: below -1 it is turned into -beta - 1, then held to -1..1.
double BetaValue(double typed) {
  double beta = typed < -1 ? -typed - 1 : typed;
  return std::clamp(beta, -1.0, 1.0);
}

void WriteStepHead(AnalysisRun& run, bool standardized) {
  ReportWriter& r = run.report;
  r.BlankLine();
  r.BeginTable();
  r.FirstCell(run.T("Step", "Lépés"));
  for (std::string_view head : {run.T("CL#", "KL#"), run.T("ESSplus", "ESSnöv."), std::string_view("EESS%"),
                                run.T("Pointbis", "Pontbisz"), std::string_view("XBmod"), run.T("SilCoef", "Sil.eh."),
                                standardized ? run.T("HCmean", "HCátlag") : run.T("HCmeanS", "HCátlagS"),
                                std::string_view(" min_max  "), run.T("Clusters to fuse", "Egyesítendő klaszterek")}) {
    r.Cell(head);
  }
  r.EndRow();
}

struct Settings {
  LinkageMethod method = LinkageMethod::Ward;
  DistanceType type = DistanceType::Ased;
  bool standardize = true;
  double beta = -0.2;
  int from = 1, to = 2;
  bool save = false;
  std::string saveName;
  bool relocation = false;
  int maxIterations = 25;
  double tolerance = 0.0001;
};

Settings ReadSettings(const AnalysisRun& run) {
  const AnalysisRequest& q = run.request;
  Settings s;
  const std::string_view method = q.Get(param::kClusterMethod);
  for (int i = 0; i < 7; ++i) {
    if (kMethods[i].choice == method) s.method = static_cast<LinkageMethod>(i + 1);
  }
  s.type = q.Get(param::kDistance) == "Pearson" ? DistanceType::Pearson : DistanceType::Ased;
  s.standardize = q.Get(param::kStandardize);
  s.beta = BetaValue(q.Get(param::kBeta));
  s.to = std::max(q.Get(param::kReportTo), 2);
  s.from = q.Get(param::kReportFrom);
  if (s.from == 0) s.from = s.to;
  s.save = q.Get(param::kSaveCluster);
  s.saveName = std::string(q.Get(param::kClusterName));
  s.relocation = q.Get(param::kRelocationAfter);
  s.maxIterations = q.Get(param::kMaxIterations);
  s.tolerance = std::clamp(q.Get(param::kTolerance), 0.0001, 0.01);
  return s;
}

}  // namespace

void HierarchicalCluster(AnalysisRun& run) {
  ReportWriter& r = run.report;
  const Settings s = ReadSettings(run);
  const PatternVariables vars = ReadPatternVariables(run);
  int savedColumn = 0;
  run.ForEachGroup([&] {
    const std::vector<CaseValues> cases = ReadCompleteCases(run, vars.V(), 0, nullptr, nullptr);
    WritePatternGroupHead(run, static_cast<int>(run.GroupRows().size()));
    r.BlankLine();
    const MethodName& name = kMethods[static_cast<int>(s.method) - 1];
    std::string methodLine = fmt::format("{}{}", run.T("Method of hierarchical cluster analysis (type of cluster fusion): ",
                                                       "A hierarchikus klaszterelemzés során a klaszteregyesítés módszere: "),
                                         run.T(name.english, name.hungarian));
    if (s.method == LinkageMethod::BetaFlexible) methodLine += fmt::format("{}{}", run.T(", Beta value = ", ", Béta-érték = "), Fixed(s.beta, 2));
    r.Line(methodLine);
    DistanceType type = s.type;
    if (static_cast<int>(s.method) >= 4 && type == DistanceType::Pearson) {
      r.Line(run.T("This method cannot be run with the distance type chosen.",
                   "Ehhez a módszerhez nem illik a kiválasztott távolságmérték."));
      type = DistanceType::Ased;
    }
    std::optional<PatternSet> prepared = PreparePatterns(run, vars, cases, type, s.standardize);
    if (!prepared) return;
    const PatternSet& set = *prepared;
    r.BlankLine();
    WriteQualityLegend(r, run.ws.language, false);

    const int D = set.D;
    const int to = std::min(s.to, D);
    const int from = std::min(s.from, to);
    const int saveLevel = std::max(from, 2);
    const double totalEss = TotalSumOfSquares(set);
    Agglomeration tree(set, s.method, type, s.beta, D > kDoubleMatrixPatterns, [&](int done, int total) {
      run.ShowProgress(fmt::format("{}{} / {}", run.T("Distances: ", "Távolságok: "), done, total));
    });
    const DistanceSummary distances = tree.Summary();
    WriteStepHead(run, set.standardized);
    double essPlus = 0, ssAtFrom = 0;
    std::vector<Fusion> fusions;
    std::vector<int> labelsAtFrom;
    for (int k = D; k >= std::max(from, 1); --k) {
      const int step = D - k;
      if (step % 50 == 0 && step > 0) run.ShowProgress(fmt::format("{}{}", run.T("Step: ", "Lépés: "), step));
      const double ss = tree.SsCluster();
      const double eess = EessPercent(totalEss, ss);
      const bool quality = k > 1 && k <= kQualityClusters;
      QualityRecord q;
      Partition partition;
      if (quality || k <= to) {
        partition = tree.Current();
        q = Quality(set, partition, distances, totalEss, type, HcRule::WeightedPairs);
      }
      if (k <= to) {
        r.EndTable();
        ClusterBlock block;
        block.meansTables = k <= from;
        block.type = type;
        block.totalEss = totalEss;
        block.ssCluster = ss;
        WriteClusterStatistics(run, vars, set, partition, q, block);
      }
      if (k == saveLevel && s.save) {
        const std::string longName =
            fmt::format("{}{}", run.T("Hierarchical_Cluster_", "Hierarchikus klaszter kódváltozó_"), from);
        std::vector<int> codes = tree.Labels();
        for (int& c : codes) ++c;
        savedColumn = SaveClusterCodes(run, set, codes, s.saveName, longName, savedColumn);
      }
      if (k == from && from == 1) {
        r.EndTable();
        r.BlankLine();
        r.Line("Silhouette Coefficient = 1,\tPoint-biserial correlation = 0");
        r.BeginTable();
      }
      if (k == from && from > 1) {
        ssAtFrom = ss;
        labelsAtFrom = tree.Labels();
      }
      if (k <= to) WriteStepHead(run, set.standardized);
      // The step's row: the growth that led here, the figures of these clusters, the pair
      // to fuse next.
      r.FirstCell(fmt::format("i={}", step));
      r.NumberCell(std::to_string(k));
      r.NumberCell(Fixed(essPlus, 3));
      r.NumberCell(Fixed(eess, 2));
      if (k > 1) {
        const double xb = XieBeniMod(set, tree.ClosestMeans(), ss);
        r.NumberCell(quality ? Fixed(q.pointBiserial, 3) : "");
        r.NumberCell(Fixed(xb, 3));
        r.NumberCell(quality ? Fixed(q.silhouette, 3) : "");
        r.NumberCell(quality ? Fixed(HcShown(set, q.hcMean), 3) : "");
        r.NumberCell(quality ? Fixed(HcShown(set, q.hcMin), 2) + "_" + Fixed(HcShown(set, q.hcMax), 2) : "");
        const auto [a, b] = tree.NextPair();
        r.Cell(fmt::format("{} ({})", set.firstRow[tree.FirstPatternAt(a)], tree.SizeAt(a)));
        r.Cell(fmt::format("{} ({})", set.firstRow[tree.FirstPatternAt(b)], tree.SizeAt(b)));
      }
      r.EndRow();
      if (k == from) break;
      essPlus = tree.Fuse();
      fusions.push_back(tree.LastFusion());
    }
    r.EndTable();
    if (r.Html()) r.Figure(SvgDendrogram(fusions, set.firstRow));
    if (s.relocation && from >= 2 && s.to < 25) {
      if (type != DistanceType::Ased) {
        r.BlankLine();
        r.Line(run.T("Relocation cannot be performed with this distance type.",
                     "Ezzel a távolságmértékkel nem lehet relokációt végrehajtani."));
        return;
      }
      RelocationStart start;
      start.labels = labelsAtFrom;
      start.K = from;
      start.ssCluster = ssAtFrom;
      start.hierarchical = true;
      RelocateAndReport(run, vars, set, distances, start, s.maxIterations, s.tolerance);
    }
  });
}

}  // namespace tarvika
