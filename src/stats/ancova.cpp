#include "stats/ancova.h"

#include <cmath>

#include "numeric/tolerance.h"

namespace tarvika {

namespace {

constexpr double kTiny = kZeroTolerance;

double Mean(const std::vector<double>& v) {
  double s = 0;
  for (double x : v) s += x;
  return v.empty() ? 0 : s / static_cast<double>(v.size());
}

// Sums of cross products about the given means.
double CrossSum(const std::vector<double>& a, double ma, const std::vector<double>& b, double mb) {
  double s = 0;
  for (std::size_t i = 0; i < a.size(); ++i) s += (a[i] - ma) * (b[i] - mb);
  return s;
}

}  // namespace

double PearsonR(std::span<const double> a, std::span<const double> b) {
  const std::vector<double> va(a.begin(), a.end()), vb(b.begin(), b.end());
  const double ma = Mean(va), mb = Mean(vb);
  const double product = CrossSum(va, ma, va, ma) * CrossSum(vb, mb, vb, mb);
  return product > kTiny ? CrossSum(va, ma, vb, mb) / std::sqrt(product) : 0;
}

double PartialCorrelation(double rxc, double rxg, double rcg) {
  const double product = (1 - rxg * rxg) * (1 - rcg * rcg);
  return product > kTiny ? (rxc - rxg * rcg) / std::sqrt(product) : 1;
}

AncovaResult Ancova(std::span<const AncovaGroupData> groups) {
  AncovaResult r;
  for (std::size_t j = 0; j < groups.size(); ++j) {
    if (groups[j].x.size() >= 3) r.used.push_back(static_cast<int>(j));
  }
  const int k = static_cast<int>(r.used.size());
  if (k < 2) return r;
  r.done = true;
  // Within and total sums of squares and products, as sums (not per case).
  double sumX = 0, sumC = 0;
  double wxx = 0, wcc = 0, wxc = 0;
  for (int j : r.used) {
    const AncovaGroupData& g = groups[j];
    AncovaGroupResult out;
    out.n = static_cast<int>(g.x.size());
    out.meanX = Mean(g.x);
    out.meanC = Mean(g.c);
    const double sxx = CrossSum(g.x, out.meanX, g.x, out.meanX);
    const double scc = CrossSum(g.c, out.meanC, g.c, out.meanC);
    const double sxc = CrossSum(g.x, out.meanX, g.c, out.meanC);
    out.sdX = std::sqrt(sxx / (out.n - 1));
    const double product = sxx * scc / (static_cast<double>(out.n) * out.n);
    out.r = product > kTiny ? sxc / std::sqrt(sxx * scc) : 0;
    out.rP = CorrelationP2(out.r, out.n - 2);
    wxx += sxx;
    wcc += scc;
    wxc += sxc;
    sumX += out.meanX * out.n;
    sumC += out.meanC * out.n;
    r.total += out.n;
    r.groups.push_back(out);
  }
  const double N = r.total;
  const double grandX = sumX / N, grandC = sumC / N;
  double txx = 0, tcc = 0, txc = 0;
  for (int j : r.used) {
    txx += CrossSum(groups[j].x, grandX, groups[j].x, grandX);
    tcc += CrossSum(groups[j].c, grandC, groups[j].c, grandC);
    txc += CrossSum(groups[j].x, grandX, groups[j].c, grandC);
  }
  // The rules of the analysis judge the sums per case.
  const bool slope = wcc / N > kTiny;
  for (AncovaGroupResult& g : r.groups) {
    g.adjustedMean = slope ? g.meanX - (g.meanC - grandC) * wxc / wcc : g.meanX;
  }
  const double totalProduct = txx * tcc;
  r.r = totalProduct > 0 ? txc / std::sqrt(totalProduct) : 0;
  r.rP = CorrelationP2(r.r, r.total - 2);

  // Equality of the within-group correlations by Fisher's z.
  double meanR = 0;
  for (const AncovaGroupResult& g : r.groups) meanR += g.r / k;
  double spread = 0;
  for (const AncovaGroupResult& g : r.groups) spread += (g.r - meanR) * (g.r - meanR);
  if (spread > kTiny) {
    double zz = 0, z1 = 0;
    for (const AncovaGroupResult& g : r.groups) {
      const double z = std::fabs(g.r) >= 0.99999999 ? 99999999 : 0.5 * std::log((1 + g.r) / (1 - g.r));
      zz += (g.n - 3) * z * z;
      z1 += (g.n - 3) * z;
    }
    const double weight = r.total - 3.0 * k;
    r.chiSquare = weight > 0 ? zz - z1 * z1 / weight : 0;
  }
  r.chiSquareP = ChiSquareP(r.chiSquare, k - 1);

  r.df1 = k - 1;
  r.df2 = r.total - k - 1;
  const double E = (slope ? wxx - wxc * wxc / wcc : wxx) / N;
  const double T = (tcc / N > kTiny ? txx - txc * txc / tcc : txx) / N;
  r.adjustedWithin = E;
  r.partialEtaSquared = T > kTiny ? (T - E) / T : 0;
  r.omegaSquared = ((T - E) - r.df1 * E / r.df2) / (txx / N + E / r.df2);
  if (r.omegaSquared < kTiny) r.omegaSquared = 0;
  if (E > kTiny) {
    r.F = (T / E - 1) * r.df2 / r.df1;
  } else {
    r.F = std::fabs(T - E) < kTiny ? 0 : 99;
  }
  r.p = FProb(r.F, r.df1, r.df2);
  if (k == 2) {
    const double diff = r.groups[0].adjustedMean - r.groups[1].adjustedMean;
    if (E > kTiny) {
      r.cohenD = diff / std::sqrt(N * E / r.df2);
    } else {
      r.cohenD = std::fabs(diff) > kTiny ? 99 : 0;
    }
  }
  return r;
}

}  // namespace tarvika
