#include "pattern/cluster_report.h"

#include <cmath>
#include <fmt/format.h>

#include "frame/analysis_run.h"
#include "frame/number_text.h"
#include "workspace/workspace.h"
#include "numeric/probability.h"
#include "pattern/pattern_text.h"

namespace tarvika {
namespace {

constexpr int kBlockColumns = 10;

void WriteVariableRows(AnalysisRun& run, const PatternVariables& vars, const PatternSet& set, const Cluster& c) {
  ReportWriter& r = run.report;
  const Language lang = run.ws.language;
  r.BeginTable();
  r.FirstCell(run.T("Variab: ", "Változó: "));
  for (const std::string& name : vars.headings) r.Cell(name);
  r.EndRow();
  auto row = [&](std::string_view head, auto value, int form) {
    r.FirstCell(head);
    for (int v = 0; v < set.V; ++v) r.NumberCell(PatternValueText(value(v), 10, form, lang));
    r.EndRow();
  };
  row(run.T("Mean: ", "Átlag: "), [&](int v) { return set.BackTransform(c.mean[v], v); }, 8);
  row(run.T("SD: ", "Szórás: "), [&](int v) {
    const double sd = std::sqrt(c.variance[v]);
    return set.standardized && set.sd[v] > kPatternZero ? sd * set.sd[v] : sd;
  }, 8);
  row("Min: ", [&](int v) { return set.BackTransform(c.min[v], v); }, 0);
  row("Max: ", [&](int v) { return set.BackTransform(c.max[v], v); }, 0);
  r.EndTable();
}

void WriteAnova(AnalysisRun& run, const PatternVariables& vars, const PatternSet& set, const Partition& partition) {
  ReportWriter& r = run.report;
  const int k = partition.K();
  r.BlankLine();
  r.BeginTitledTable(run.T("Comparison of cluster means by ANOVA and variance proportions of input variables explained "
                           "by the cluster code variable",
                           "Változónként klaszterátlagok összehasonlítása VA-val és a klaszterkód változó által "
                           "megmagyarázott varianciaarány"),
                     {"Index", run.T("Variable      ", "Változó      "), run.T("anova_F", "VA_F"), run.T("p-value", "p-érték"),
                      run.T("Eta-square", "Eta-négyzet")});
  for (int v = 0; v < set.V; ++v) {
    // On the variable's own scale, so that the sums are those of the data.
    const double scale = set.standardized && set.sd[v] > kPatternZero ? set.sd[v] : 1;
    double ssb = 0, ssw = 0, grand = 0;
    for (const Cluster& c : partition.clusters) {
      const double m = set.BackTransform(c.mean[v], v);
      ssb += c.size * m * m;
      grand += c.size * m;
      ssw += (c.size - 1) * c.variance[v] * scale * scale;
    }
    grand /= set.N;
    ssb -= set.N * grand * grand;
    ssb = std::max(ssb, 0.0);
    const double f = ssw <= kPatternZero ? 1000 : (set.N - k) * ssb / ((k - 1) * ssw);
    const double p = set.N > k ? FProb(f, k - 1, set.N - k).p : 1;
    const double eta = ssb + ssw <= kPatternZero ? 1 : ssb / (ssb + ssw);
    r.FirstCell(std::to_string(v + 1));
    r.Cell(vars.names[v]);
    r.NumberCell(Fixed(f, 2));
    r.NumberCell(Fixed(p, 4));
    r.NumberCell(Fixed(eta, 3));
    r.EndRow();
  }
  r.EndTable();
}

// One table of the clusters by the variables, in blocks of ten variables.
template <typename Cell, typename Extra>
void WriteClusterTable(AnalysisRun& run, const PatternVariables& vars, const Partition& partition,
                       std::string_view title, Cell cell, Extra extra, const std::vector<std::string>& extraHeads) {
  ReportWriter& r = run.report;
  r.BlankLine();
  r.Line(title);
  for (int from = 0; from < vars.V(); from += kBlockColumns) {
    const int to = std::min(vars.V(), from + kBlockColumns);
    const bool last = to == vars.V();
    r.BeginTable();
    r.FirstCell(run.T("Cluster", "Klaszter"));
    for (int v = from; v < to; ++v) r.Cell(vars.headings[v]);
    if (last) {
      r.Cell(run.T("CLsize", "KLgyak"));
      for (const std::string& head : extraHeads) r.Cell(head);
    }
    r.EndRow();
    for (int j = 0; j < partition.K(); ++j) {
      r.FirstCell(std::to_string(j + 1));
      for (int v = from; v < to; ++v) r.NumberCell(cell(j, v));
      if (last) {
        r.NumberCell(std::to_string(partition.clusters[j].size));
        extra(j);
      }
      r.EndRow();
    }
    r.EndTable();
  }
}

}  // namespace

void WriteQualityLine(AnalysisRun& run, const PatternSet& set, const QualityRecord& q, bool relocation) {
  ReportWriter& r = run.report;
  const bool s = set.standardized;
  r.BeginTable();
  r.FirstCell("EESS%");
  r.Cell(run.T("Pointbis", "Pontbisz"));
  if (relocation) r.Cell("CLdelta");
  r.Cell("XBmod");
  if (relocation) r.Cell("GDI24");
  r.Cell(run.T("SilCoef", "Sil.eh."));
  r.Cell(s ? run.T("HCmean", "HCátlag") : run.T("HCmeanS", "HCátlagS"));
  r.Cell(relocation ? (s ? "HC min_max" : "HCstan min_max") : " min_max  ");
  r.EndRow();
  r.FirstCell(Fixed(q.eessPercent, 2));
  r.NumberCell(Fixed(q.pointBiserial, 3));
  if (relocation) r.NumberCell(Fixed(q.clusterDelta, 3));
  r.NumberCell(Fixed(q.xieBeniMod, 3));
  if (relocation) r.NumberCell(Fixed(q.generalizedDunn, 3));
  r.NumberCell(Fixed(q.silhouette, 3));
  r.NumberCell(Fixed(HcShown(set, q.hcMean), 3));
  r.NumberCell(Fixed(HcShown(set, q.hcMin), 2) + "_" + Fixed(HcShown(set, q.hcMax), 2));
  r.EndRow();
  r.EndTable();
}

void WriteClusterStatistics(AnalysisRun& run, const PatternVariables& vars, const PatternSet& set,
                            const Partition& partition, const QualityRecord& quality, const ClusterBlock& block) {
  ReportWriter& r = run.report;
  const Language lang = run.ws.language;
  const int k = partition.K();
  const bool s = set.standardized;
  const PooledScale pooled = Pooled(set);
  r.BlankLine();
  r.Line("________________________________________________________________________________");
  std::string title = block.kmeans
                          ? fmt::format("{}{}{}", run.T("K-MEANS CLUSTER STATISTICS FOR ", "VÉGSŐ KLASZTERSTATISZTIKÁK "), k,
                                        run.T(" CLUSTERS", " KLASZTERRE"))
                          : fmt::format("{}{}{}", run.T("CLUSTER STATISTICS FOR ", "KLASZTERSTATISZTIKÁK "), k,
                                        run.T(" CLUSTERS", " KLASZTERRE"));
  r.Line((k > 9 ? "_" : "") + title);
  if (!block.kmeans) {
    r.Line(fmt::format("{}{}", run.T("Total ESS = ", "Teljes ESS = "), Fixed(block.totalEss, 3)));
    r.Line(fmt::format("{}{}", run.T("SScluster = ", "SSklaszter = "), Fixed(block.ssCluster, 3)));
    r.Line(fmt::format("{}{}", run.T("Explained ESS% = ", "Megmagy.ESS% = "),
                       Fixed(EessPercent(block.totalEss, block.ssCluster), 2)));
  }
  for (int j = 0; j < k; ++j) {
    const Cluster& c = partition.clusters[j];
    r.BlankLine();
    if (block.kmeans) {
      r.Line(fmt::format("CLUSTER {}\t\tSize={}", j + 1, c.size));
    } else {
      r.Line(fmt::format("{}{}\t{}{}\t\tSize={}\t{}{}", run.T("Cluster ", "Klaszter "), j + 1,
                         run.T("Cluster code: ", "Klaszterkód: "), set.firstRow[c.firstPattern], c.size,
                         s ? run.T("Homogeneity Coefficient: HC = ", "Homogenitási együttható: HC = ")
                           : run.T("Homogeneity Coefficient: HCstan = ", "Homogenitási együttható: HCstan = "),
                         Fixed(HcShown(set, quality.hc[j]), 2)));
    }
    WriteVariableRows(run, vars, set, c);
  }
  r.BlankLine();
  if (block.kmeans) {
    r.Line(run.T("The Homogeneity Coefficient is the average of the pairwise distances within a cluster.",
                 "A homogenitási együttható a klaszterbeli páronkénti távolságok átlaga."));
  } else {
    r.Line(fmt::format("{}{}", run.T("The Homogeneity Coefficient (HC) is the average of the",
                                     "A homogenitási együttható (HC) a klaszterbeli"),
                       block.type == DistanceType::Ased
                           ? run.T(" pairwise distances within a cluster.", " páronkénti távolságok átlaga.")
                           : run.T(" pairwise similarities within a cluster.", " páronkénti hasonlóság-értékek átlaga.")));
  }
  if (block.type == DistanceType::Ased && k > 1) {
    WriteAnova(run, vars, set, partition);
    r.BlankLine();
    WriteQualityLine(run, set, quality, block.kmeans);
  }
  if (block.meansTables) {
    WriteClusterTable(
        run, vars, partition, run.T("UNSTANDARDIZED MEANS", "NEM STANDARDIZÁLT ÁTLAGOK"),
        [&](int j, int v) { return PatternValueText(set.BackTransform(partition.clusters[j].mean[v], v), 10, 8, lang); },
        [](int) {}, {});
    // The standardized mean of a cluster: by the variable's mean and SD, or by Mt and SDt.
    auto z = [&](int j, int v) {
      const double m = set.BackTransform(partition.clusters[j].mean[v], v);
      if (s) return set.sd[v] > kPatternZero ? (m - set.mean[v]) / set.sd[v] : 0.0;
      return pooled.sdT > kPatternZero ? (m - pooled.mt) / pooled.sdT : 0.0;
    };
    WriteClusterTable(
        run, vars, partition,
        s ? run.T("STANDARDIZED MEANS", "STANDARDIZÁLT ÁTLAGOK")
          : run.T("Zt-STANDARDIZED MEANS (standardization based on Mt and SDt)",
                  "Zt-STANDARDIZÁLT ÁTLAGOK (standardizálás a változók összátlaga és együttes szórása alapján)"),
        [&](int j, int v) { return PatternValueText(z(j, v), 10, 8, lang); }, [](int) {}, {});
    std::vector<std::string> heads = {"HC"};
    if (!s) heads.push_back("HCstan");
    WriteClusterTable(
        run, vars, partition,
        s ? run.T("PATTERN OF STANDARDIZED MEANS (H = High, L = Low)", "STANDARDIZÁLT ÁTLAGOK MINTÁZATA (M = Magas, A = Alacsony)")
          : run.T("PATTERN OF Zt-STANDARDIZED MEANS (H = High, L = Low)",
                  "Zt-STANDARDIZÁLT ÁTLAGOK MINTÁZATA (M = Magas, A = Alacsony)"),
        [&](int j, int v) { return PatternMark(z(j, v), lang); },
        [&](int j) {
          r.NumberCell(Fixed(quality.hc[j], 2));
          if (!s) r.NumberCell(Fixed(HcShown(set, quality.hc[j]), 2));
        },
        heads);
  }
  r.BlankLine();
  if (k > 1) {
    r.Line(fmt::format("{}{}{}{}{}{})",
                       run.T("Weighted mean of cluster Homogeneity Coefficients: HCmean = ",
                             "Klaszter homogenitás együtthatók klasztermérettel súlyozott átlaga: HCátlag = "),
                       Fixed(quality.hcMean, 3), run.T(" (min = ", " (min = "), Fixed(quality.hcMin, 2), "; max = ",
                       Fixed(quality.hcMax, 2)));
    if (!s) {
      r.Line(fmt::format("{}{}{}{}{}{})", run.T("Standardized HC measures: HCmeanS = ", "Standardizált HC-mutatók: HCátlagS = "),
                         Fixed(HcShown(set, quality.hcMean), 3), " (min = ", Fixed(HcShown(set, quality.hcMin), 2), "; max = ",
                         Fixed(HcShown(set, quality.hcMax), 2)));
    }
  }
  if (block.meansTables) {
    r.BlankLine();
    WriteMarkLegend(r, lang);
  }
}

}  // namespace tarvika
