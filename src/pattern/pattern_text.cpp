#include "pattern/pattern_text.h"

#include <cmath>
#include <fmt/format.h>

#include "frame/analysis_run.h"
#include "workspace/workspace.h"
#include "frame/data_feed.h"
#include "frame/number_text.h"
#include "lang/utf8.h"

namespace tarvika {

std::string PatternValueText(double value, int width, int form, Language lang) {
  constexpr double kZero = 0.00000001;
  if (std::fabs(value) < kZero) value = 0;
  if (std::fabs(value - std::trunc(value)) <= 0.00001) value = std::floor(value + 0.1);
  if (width > 2 && std::fabs(value) >= std::pow(10.0, width)) return std::string(Pick(lang, "TooBig", "TúlNagy"));
  if (form >= 1 && form <= 7) return Fixed(value, form);
  const double a = std::fabs(value);
  if (form < 8 && (value == std::trunc(value) || std::fabs(value - 1) < kZero)) return Fixed(value, 0);
  const int decimals = a >= 1000000 ? 0 : a >= 1000 ? 1 : a >= 10 ? 2 : a >= 0.1 ? 3 : 4;
  return Fixed(value, decimals);
}

std::string PatternMark(double z, Language lang) {
  const double a = std::fabs(z);
  if (a <= 0.435 || a >= 100) return ".";
  std::string text(z >= 0 ? Pick(lang, "H", "M") : Pick(lang, "L", "A"));
  if (a <= 0.674) return "(" + text + ")";
  for (double bound : {1.0, 1.405, 1.645, 2.045}) {
    if (a > bound) text += "+";
  }
  return text;
}

std::string HeadingName(std::string_view shortName) {
  return Utf8Length(shortName) > 5 ? LowerTail(shortName) : std::string(shortName);
}

void WritePatternGroupHead(AnalysisRun& run, int casesInGroup) {
  ReportWriter& r = run.report;
  r.BlankLine();
  if (run.Conditional() > 0) {
    r.Line(fmt::format("{}{}{}{}", run.T("GROUP INDEX: ", "CSOPORTINDEX: "), run.Group(),
                       run.T(".  Group name: ", ".  Csoportnév: "), run.Groups().distinctNames[run.Group()]));
  }
  r.Line(fmt::format("{}{:5}", run.T("Total number of cases read: ", "A beolvasott összes eset száma: "),
                     run.ws.NumberOfCases()));
  if (run.Conditional() > 0) {
    r.Line(fmt::format("{}{:5}", run.T("Cases in current group: ", "Az aktuális csoport elemszáma:   "), casesInGroup));
  }
}

void WriteMarkLegend(ReportWriter& r, Language lang) {
  r.Line(Pick(lang, "Notations:", "Jelölések:"));
  r.Line("Simple appearance:  0.675 <= |z| <= 1.000  (p: 16-25%)");
  r.Line("( ):  0.44 <= |z| <= 0.674  (p: 25-33%)");
  r.Line("+:  1.001 <= |z| <= 1.404  (p: 8-16%)");
  r.Line("++:  1.405 <= |z| <= 1.644  (p: 5-8%)");
  r.Line("+++:  1.645 <= |z| <= 2.044  (p: 2-5%)");
  r.Line("++++:  2.045 <= |z| (p: 0-2%)");
}

void WriteQualityLegend(ReportWriter& r, Language lang, bool relocation) {
  if (lang == Language::English) {
    r.Line("EESS% = Explained Error Sum of Squares proportion");
    r.Line("  - multivariate eta-square or multivariate explained variance proportion");
    r.Line("Pointbis = Point-biserial correlation coefficient (PB)");
    r.Line("  - PB measures the extent to which average within cluster distances of cases");
    r.Line("  - are smaller than between cluster distances of cases");
    if (relocation) {
      r.Line("CLdelta = Cluster delta coefficient, like Cohen delta, is a standardized difference");
      r.Line("    of the average within cluster and between cluster distances of cases.");
    }
    r.Line("XBmod = Modified Xie-Beni index of clustering adequacy");
    r.Line("  - XBmod measures the extent to which the average distance of cases from own ");
    r.Line("  - cluster center is smaller than the distance of the two nearest clusters");
    if (relocation) {
      r.Line("GDI24 = Generalized Dunn index of clustering adequacy with indices 2 and 4");
      r.Line("  - GDI24 measures the extent to which the distance of the two closest clusters is larger");
      r.Line("    than the average pairwise distance in the most heterogeneous cluster.");
    }
    r.Line("SilCoef = Silhouette Coefficient (SC)");
    r.Line("  - SC measures the extent to which cases are closer to their own cluster centers");
    r.Line("  - than to the nearest foreign (outer) cluster center");
    r.Line("HCmean = Weighted Mean of Cluster Homogeneity Coefficients (weights are cluster sizes)");
    return;
  }
  r.Line("EESS% = Megmagyarázott hibaszázalék (Explained Error Sum of Squares %)");
  r.Line("  - Többdimenziós eta-négyzet (megmagyarázott varianciaarány)");
  r.Line("Pontbisz = Pontbiszeriális korrelációs együttható (PB)");
  r.Line("  - Korrelációs együttható az azonos/különböző klaszterbe tartozás");
  r.Line("  - és az esetek távolsága között az esetekből képzett összes pár mintájában.");
  if (relocation) {
    r.Line("CLdelta = Klaszter delta együttható, mely az azonos és a különböző klaszterekbe");
    r.Line("    tartozó esetek közti távolságátlagok eltérésének a Cohen-deltához hasonló indexe.");
  }
  r.Line("XBmod = Módosított Xie-Beni klaszter adekvációs index");
  r.Line("  - XBmod azt méri, hogy az esetek átlagos távolsága a saját klasztercentrumtól");
  r.Line("  - mennyivel kisebb, mint a két legközelebbi klaszter távolsága.");
  if (relocation) {
    r.Line("GDI24 = A (2,4) indexű általánosított Dunn-féle klaszter adekvációs index");
    r.Line("  - GDI24 azt méri, hogy a két legközelebbi klaszter távolsága mennyivel nagyobb,");
    r.Line("    mint a páronkénti távolságok átlaga a legheterogénebb klaszterben.");
  }
  r.Line("Sil.eh. = Silhouette együttható (SC)");
  r.Line("  - SC azt méri, hogy az esetek mennyivel vannak közelebb saját klasztercentrumukhoz,");
  r.Line("  - a legközelebbi idegen klaszter centrumához.");
  r.Line("HCátlag = Klaszter homogenitási együtthatók klasztermérettel súlyozott átlaga");
}

}  // namespace tarvika
