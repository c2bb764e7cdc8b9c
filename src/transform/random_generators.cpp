#include "transform/random_generators.h"

#include <fmt/format.h>

#include <algorithm>
#include <boost/math/distributions/binomial.hpp>
#include <cmath>
#include <functional>
#include <memory>
#include <tuple>

#include "lang/utf8.h"
#include "numeric/stat_tables.h"
#include "transform/new_targets.h"
#include "workspace/declarations.h"
#include "workspace/new_variable.h"
#include "workspace/numbers.h"
#include "workspace/workspace.h"

namespace tarvika {
namespace {

constexpr int kNormal = 451, kBivariateNormal = 452, kDiscreteUniform = 453, kUniform = 454, kBinomial = 455,
              kPoisson = 456, kLambda = 457, kStudentT = 458, kFisherF = 459, kChiSquare = 460, kCorrelation = 461,
              kMixedNormal = 462;

// The largest parameters that still draw a million cases in reasonable time.
constexpr double kMaxPoissonMean = 10000;
constexpr double kMaxSampleSize = 10000;
constexpr double kMaxBinomialN = 1e9;
// Discrete uniform ranges up to this many codes are labelled, as the workspace's groups are.
constexpr double kMaxLabelledCodes = 100;

double HeldToFourDecimals(double x) { return std::round(x * 10000) / 10000; }

bool Whole(double x) { return std::fabs(x - std::round(x)) < 1e-8; }

double ChiSquareDraw(RandomSource& s, double df) {
  if (df > 60) {
    const double z = s.NormalPair().first;
    return (z + std::sqrt(2 * df - 1)) * (z + std::sqrt(2 * df - 1)) / 2;
  }
  const int k = static_cast<int>(std::lround(df));
  double sum = 0;
  for (int i = 0; i < k / 2; ++i) {
    auto [a, b] = s.NormalPair();
    sum += a * a + b * b;
  }
  if (k % 2 == 1) {
    const double z = s.NormalPair().first;
    sum += z * z;
  }
  return sum;
}

double StudentTDraw(RandomSource& s, double df) {
  if (df > 60) return s.NormalPair().first;
  if (std::lround(df) == 1) {
    auto [z1, z2] = s.NormalPair();
    return z1 / std::max(std::fabs(z2), 1e-8);
  }
  const double z = s.NormalPair().first;
  return z / std::sqrt((ChiSquareDraw(s, df) + 1e-8) / df);
}

// The binomial draws of one run. The probabilities of the exact branch are computed once,
// as far as the draws have reached, and kept.
class BinomialDrawer {
 public:
  BinomialDrawer(double n, double p) : n_(static_cast<int>(std::lround(n))), p_(p), q_(std::min(p, 1 - p)) {}

  double Draw(RandomSource& s) {
    const double variance = n_ * p_ * (1 - p_);
    if (n_ > 100 && variance > 9) {
      const double z = s.NormalPair().first;
      // Never above n either, which the approximation could reach in its far tail.
      return std::min<double>(n_, std::round(std::max(0.0, z * std::sqrt(variance) + n_ * p_)));
    }
    const double u = s.Uniform();
    int k = 0;
    while (Cumulative(k) < u && Cumulative(k) <= 0.99999999 && k < n_) ++k;
    return p_ > 0.5 ? n_ - k : k;
  }

 private:
  // P(K <= k) for p' = min(p, 1 - p).
  double Cumulative(int k) {
    while (static_cast<int>(cumulative_.size()) <= k) {
      const int next = static_cast<int>(cumulative_.size());
      cumulative_.push_back((next == 0 ? 0 : cumulative_.back()) + Probability(next));
    }
    return cumulative_[k];
  }
  double Probability(int k) const {
    if (q_ < 1e-8) return k == 0 ? 1 : 0;
    return boost::math::pdf(boost::math::binomial_distribution<double>(n_, q_), k);
  }

  int n_;
  double p_, q_;
  std::vector<double> cumulative_;
};

// Inversion from 0 up. A mean above 500, where exp(-mean) comes near the smallest double,
// is drawn as the sum of Poisson draws of equal means up to 500, which is exact.
double PoissonDraw(RandomSource& s, double mean) {
  const int pieces = static_cast<int>(std::ceil(mean / 500));
  const double part = pieces > 1 ? mean / pieces : mean;
  double total = 0;
  for (int i = 0; i < std::max(pieces, 1); ++i) {
    double p = std::exp(-part), c = p;
    const double u = s.Uniform();
    int k = 0;
    while (u > c && c <= 0.9999999) {
      ++k;
      p = part * p / k;
      c += p;
    }
    total += k;
  }
  return total;
}

std::pair<double, double> CorrelatedPair(RandomSource& s, double rho) {
  auto [z1, z2] = s.NormalPair();
  const double root = std::fabs(rho) >= 0.99999999 ? 0 : std::sqrt(1 - rho * rho);
  return {z1, rho * z1 + root * z2};
}

// The sample correlation of n pairs of correlation rho, and its Fisher Z.
std::pair<double, double> CorrelationDraw(RandomSource& s, int n, double rho) {
  if (std::fabs(rho) > 0.99999999) return {rho, 999999 * rho};
  double mx = 0, my = 0, sxx = 0, syy = 0, sxy = 0;
  for (int i = 1; i <= n; ++i) {  // running means and sums of products
    auto [x, y] = CorrelatedPair(s, rho);
    const double dx = x - mx, dy = y - my;
    mx += dx / i;
    my += dy / i;
    sxx += dx * (x - mx);
    syy += dy * (y - my);
    sxy += dx * (y - my);
  }
  const double product = sxx * syy;
  const double r = product < 1e-8 ? 0 : std::clamp(sxy / std::sqrt(product), -1.0, 1.0);
  // r of two pairs is always +-1, whose Z has no value: it is written as rho's is.
  const double z = std::fabs(r) > 0.99999999 ? 999999 * r : 0.5 * std::log((1 + r) / (1 - r));
  return {r, z};
}

std::string Range(double lo, double hi, char separator) {
  return lo < hi ? RangeType(lo, hi, separator) : std::string("num=0_0;");
}

}  // namespace

const std::vector<GeneratorInfo>& Generators() {
  static const std::vector<GeneratorInfo> list = {
      {kNormal,
       "normal",
       "Univariate normal",
       "Egyváltozós normális",
       {{"Mean", "Mean:", "Átlag:", 100}, {"SD", "SD:", "Szórás:", 15}},
       {"RanNorm"},
       {"RanNorm"}},
      {kBivariateNormal,
       "bivariate-normal",
       "Bivariate normal",
       "Kétváltozós normális",
       {{"Mean_1", "Mean_1:", "Átlag_1:", 100},
        {"SD_1", "SD_1:", "Szórás_1:", 15},
        {"Mean_2", "Mean_2:", "Átlag_2:", 100},
        {"SD_2", "SD_2:", "Szórás_2:", 15},
        {"Correl", "Correl:", "Korrel:", 0.6}},
       {"RNorm1", "RNorm2"},
       {"RNorm1", "RNorm2"}},
      {kDiscreteUniform,
       "uniform-discrete",
       "Uniform (discrete)",
       "Egyenletes (diszkrét)",
       {{"Minimum", "Minimum:", "Minimum:", 0}, {"Maximum", "Maximum:", "Maximum:", 1}},
       {"RanUnD"},
       {"RanUnD"}},
      {kUniform,
       "uniform",
       "Uniform (continuous)",
       "Egyenletes (folytonos)",
       {{"Minimum", "Minimum:", "Minimum:", 0}, {"Maximum", "Maximum:", "Maximum:", 1}},
       {"RanUnC"},
       {"RanUnC"}},
      {kBinomial,
       "binomial",
       "Binomial",
       "Binomiális",
       {{"Binom_n", "Binom_n:", "Binom_n:", 10}, {"Binom_p", "Binom_p:", "Binom_p:", 0.5}},
       {"RanBin"},
       {"RanBin"}},
      {kPoisson,
       "poisson",
       "Poisson",
       "Poisson",
       {{"Lambda", "Lambda:", "Lambda:", 1}},
       {"Poiss"},
       {"Poiss"}},
      {kLambda,
       "lambda",
       "Lambda",
       "Lambda",
       {{"Skewness", "Skewness:", "Ferdeség:", 0}, {"Kurtosis", "Kurtosis:", "Csúcsosság:", 3}},
       {"Lambda"},
       {"Lambda"}},
      {kStudentT, "t", "Student t", "Student t", {{"df", "df:", "Szab.fok:", 10}}, {"Ran_t"}, {"Ran_t"}},
      {kFisherF,
       "f",
       "Fisher F",
       "Fisher F",
       {{"df_1", "df_1:", "Szab.fok_1:", 1}, {"df_2", "df_2:", "Szab.fok_2:", 10}},
       {"Ran_F"},
       {"Ran_F"}},
      {kChiSquare,
       "chi-square",
       "Chi-square",
       "Khi-négyzet",
       {{"df", "df:", "Szab.fok:", 1}},
       {"RanChi"},
       {"RanKhi"}},
      {kCorrelation,
       "correlation",
       "r and Z(r)",
       "r és Z(r)",
       {{"Sample_size", "Sample size:", "Mintanagyság:", 10},
        {"Correlation", "Correlation:", "Korreláció:", 0.8}},
       {"RanCorr", "RanZ(r)"},
       {"RCorr", "RanZ(r)"}},
      // The label of the first SD says "2": the panel reads so.
      {kMixedNormal,
       "mixed-normal",
       "Mixed normal",
       "Kevert normális",
       {{"Mean_1", "Mean of distribution 1", "Az 1. eloszlás átlaga", 100},
        {"Mean_2", "Mean of distribution 2", "A 2. eloszlás átlaga", 100},
        {"SD_1", "SD of distribution 2", "A 2. eloszlás szórása", 15},
        {"SD_2", "SD of distribution 2", "A 2. eloszlás szórása", 45},
        {"Probability_1", "Probability of distribution 1", "Az 1. eloszlás valószínűsége", 0.9}},
       {"MixNor"},
       {"MixNor"}},
  };
  return list;
}

const GeneratorInfo* FindGenerator(std::string_view word) {
  for (const GeneratorInfo& info : Generators()) {
    if (info.word == word) return &info;
  }
  return nullptr;
}

std::string CheckGeneratorValues(const GeneratorInfo& info, const std::vector<double>& values, Language lang) {
  auto fault = [&](std::size_t i, std::string_view english, std::string_view hungarian) {
    return fmt::format("{} {}", info.parameters[i].key, Pick(lang, english, hungarian));
  };
  for (std::size_t i = 0; i < info.parameters.size(); ++i) {
    const std::string_view key = info.parameters[i].key;
    const double x = values.at(i);
    if (key.starts_with("SD") && x < 0) return fault(i, "must not be negative.", "nem lehet negatív.");
    if ((key == "Correl" || key == "Correlation") && std::fabs(x) > 1) {
      return fault(i, "must lie from -1 to 1.", "értéke -1 és 1 között legyen.");
    }
    if ((key == "Binom_p" || key == "Probability_1") && (x < 0 || x > 1)) {
      return fault(i, "must lie from 0 to 1.", "értéke 0 és 1 között legyen.");
    }
    if (key == "Binom_n" && (!Whole(x) || x < 0 || x > kMaxBinomialN)) {
      return fault(i, "must be a whole number from 0 to 1000000000.", "egész szám legyen 0 és 1000000000 között.");
    }
    if (key == "Lambda" && (x < 0 || x > kMaxPoissonMean)) {
      return fault(i, "must lie from 0 to 10000.", "értéke 0 és 10000 között legyen.");
    }
    if (key.starts_with("df") && (!Whole(x) || x < 1)) {
      return fault(i, "must be a whole number from 1 on.", "legalább 1 értékű egész szám legyen.");
    }
    if (key == "Sample_size" && (!Whole(x) || x < 2 || x > kMaxSampleSize)) {
      return fault(i, "must be a whole number from 2 to 10000.", "egész szám legyen 2 és 10000 között.");
    }
  }
  if (info.code == kDiscreteUniform || info.code == kUniform) {
    const double lo = info.code == kDiscreteUniform ? std::ceil(values[0] - 1e-8) : values[0];
    const double hi = info.code == kDiscreteUniform ? std::floor(values[1] + 1e-8) : values[1];
    if (lo > hi || hi - lo >= 4294967295.0) {
      return std::string(Pick(lang, "The range from Minimum to Maximum holds no value to draw.",
                              "A Minimum és Maximum közötti tartományból nincs mit húzni."));
    }
  }
  return "";
}

LambdaChoice ChooseLambdaRow(const std::vector<LambdaRow>& table, double skewness, double kurtosis) {
  LambdaChoice choice;
  choice.sign = skewness < 0 ? -1 : 1;
  double s = std::min(std::fabs(skewness), 2.0);
  // The kurtosis limits set the skewness: so the generator has always behaved.
  if (kurtosis > 15.8) s = 15.8;
  if (kurtosis < 1.75) s = 1.75;
  choice.row = &NearestLambdaRow(table, s, kurtosis);
  return choice;
}

GeneratedVariables Generate(const GeneratorInfo& info, const std::vector<double>& v, int cases, RandomSource& s,
                            const std::vector<LambdaRow>* lambdaTable, Language lang, char separator) {
  GeneratedVariables out;
  const std::size_t count = info.names.size();
  out.columns.assign(count, std::vector<double>(cases));
  out.types.assign(count, "num=0_0;");
  auto n = [separator](double x) { return FormatGeneral(x, separator); };
  const bool english = lang == Language::English;
  std::function<void(double*)> draw;
  switch (info.code) {
    case kNormal:
      draw = [&](double* x) { x[0] = v[0] + v[1] * s.NormalPair().first; };
      out.longNames = {english ? fmt::format("Random Normal with mean: {} and SD: {}", n(v[0]), n(v[1]))
                               : fmt::format("Random normális, átlag: {}; szórás: {}", n(v[0]), n(v[1]))};
      break;
    case kBivariateNormal:
      draw = [&](double* x) {
        auto [z1, y] = CorrelatedPair(s, v[4]);
        x[0] = v[0] + v[1] * z1;
        x[1] = v[2] + v[3] * y;
      };
      for (int k : {0, 1}) {
        out.longNames.push_back(
            english ? fmt::format("Random Bivariate Normal {} with mean: {}, SD: {} and correlation: {}", k + 1,
                                  n(v[2 * k]), n(v[2 * k + 1]), n(v[4]))
                    : fmt::format("Random kétváltozós normális {}, átlag: {}; szórás: {}; korreláció: {}", k + 1,
                                  n(v[2 * k]), n(v[2 * k + 1]), n(v[4])));
      }
      break;
    case kDiscreteUniform: {
      const double lo = std::ceil(v[0] - 1e-8), hi = std::floor(v[1] + 1e-8);
      const auto range = static_cast<std::uint32_t>(hi - lo + 1);
      draw = [&s, lo, range](double* x) { x[0] = lo + s.Integer(range); };
      out.longNames = {english ? fmt::format("Random Discrete Uniform with range {} to {}", n(v[0]), n(v[1]))
                               : fmt::format("Random diszkrét egyenletes, alsó határ: {}, felső határ: {}", n(v[0]),
                                             n(v[1]))};
      out.types[0] = Range(lo, hi, separator);
      if (hi - lo + 1 <= kMaxLabelledCodes) {
        for (double k = lo; k <= hi; ++k) out.groupLabels += fmt::format("{0}={1}{0};/", n(k), english ? "Value" : "Kód");
      }
      break;
    }
    case kUniform:
      draw = [&](double* x) { x[0] = (v[1] - v[0]) * s.Uniform() + v[0]; };
      out.longNames = {english ? fmt::format("Continuous Discrete Uniform with range {} to {}", n(v[0]), n(v[1]))
                               : fmt::format("Random folytonos egyenletes, alsó határ: {}, felső határ: {}", n(v[0]),
                                             n(v[1]))};
      out.types[0] = Range(v[0], v[1], separator);
      break;
    case kBinomial:
      draw = [&s, binomial = std::make_shared<BinomialDrawer>(v[0], v[1])](double* x) { x[0] = binomial->Draw(s); };
      out.longNames = {english ? fmt::format("Random Binomial with n = {} and p = {}", n(v[0]), n(v[1]))
                               : fmt::format("Random binomiális: n = {}; p = {}", n(v[0]), n(v[1]))};
      out.types[0] = Range(0, v[0], separator);
      break;
    case kPoisson:
      draw = [&](double* x) { x[0] = PoissonDraw(s, v[0]); };
      out.longNames = {english ? fmt::format("Random Poisson with mean = {}", n(v[0]))
                               : fmt::format("Random Poisson, átlag = {}", n(v[0]))};
      out.types[0] = Range(0, std::round(v[0] + 10 * std::sqrt(v[0])), separator);
      break;
    case kLambda: {
      const LambdaChoice choice = ChooseLambdaRow(*lambdaTable, v[0], v[1]);
      const LambdaRow row = *choice.row;
      const double sign = choice.sign;
      draw = [&s, row, sign](double* x) { x[0] = sign * LambdaQuantile(row, s.Uniform()); };
      const double skewness = sign * row.skewness;
      out.longNames = {english ? fmt::format("Random Lambda variable with Skewness = {} and Kurtosis = {}", n(skewness),
                                             n(row.kurtosis))
                               : fmt::format("Random Lambda változó, Ferdeség = {}; Csúcsosság = {}", n(skewness),
                                             n(row.kurtosis))};
      break;
    }
    case kStudentT:
      draw = [&](double* x) { x[0] = StudentTDraw(s, v[0]); };
      out.longNames = {english ? fmt::format("Random t with df = {}", n(v[0]))
                               : fmt::format("Random t, szab.fok = {}", n(v[0]))};
      break;
    case kFisherF:
      draw = [&](double* x) {
        const double chi1 = ChiSquareDraw(s, v[0]);
        x[0] = chi1 * v[1] / ((ChiSquareDraw(s, v[1]) + 1e-8) * v[0]);
      };
      out.longNames = {english ? fmt::format("Random F with df1 = {} and df2 = {}", n(v[0]), n(v[1]))
                               : fmt::format("Random F, szab.fok1 = {}, szab.fok2 = {}", n(v[0]), n(v[1]))};
      break;
    case kChiSquare:
      draw = [&](double* x) { x[0] = ChiSquareDraw(s, v[0]); };
      out.longNames = {english ? fmt::format("Random chi-square with df = {}", n(v[0]))
                               : fmt::format("Random khi-négyzet, szab.fok = {}", n(v[0]))};
      break;
    case kCorrelation: {
      const int size = static_cast<int>(std::lround(v[0]));
      draw = [&s, size, &v](double* x) { std::tie(x[0], x[1]) = CorrelationDraw(s, size, v[1]); };
      const std::string text = english ? fmt::format("Random Correlation with n = {} and rho = {}", n(v[0]), n(v[1]))
                                       : fmt::format("Random korreláció, n = {}, rho = {}", n(v[0]), n(v[1]));
      out.longNames = {text, "Z(r): " + text};
      out.types[0] = "num=-1_1;";
      break;
    }
    case kMixedNormal:
      draw = [&](double* x) {
        const bool first = s.Uniform() < v[4];
        const double z = s.NormalPair().first;
        x[0] = first ? v[0] + v[2] * z : v[1] + v[3] * z;
      };
      out.longNames = {english ? "Random Mixed Normal" : "Random kevert normális"};
      break;
  }
  double x[2] = {0, 0};
  for (int r = 0; r < cases; ++r) {
    draw(x);
    for (std::size_t k = 0; k < count; ++k) out.columns[k][r] = HeldToFourDecimals(x[k]);
  }
  return out;
}

std::string UniqueRandomName(const Workspace& ws, std::string_view name) {
  if (!ShortNameInUse(ws, name)) return std::string(name);
  for (int number = 1;; ++number) {
    const std::string digits = std::to_string(number);
    std::string candidate = std::string(Utf8Prefix(name, kShortNameLength - digits.size())) + digits;
    if (!ShortNameInUse(ws, candidate)) return candidate;
  }
}

bool GenerateColumn(Workspace& ws, const GeneratorInfo& info, const std::vector<double>& values,
                    const std::vector<std::string>& names, RandomSource& source,
                    std::optional<std::uint32_t> toldSeed) {
  const std::size_t count = info.names.size();
  if (const std::string fault = CheckGeneratorValues(info, values, ws.language); !fault.empty()) {
    ws.user.Tell(fault);
    return false;
  }
  if (names.size() > count) {
    ws.user.Tell(ws.Text("More names than the generator makes variables.", "Több név van, mint ahány változót a generátor készít."));
    return false;
  }
  std::vector<NewTarget> given;
  for (const std::string& name : names) given.push_back({name, "", Placement::End});
  if (!RoomForVariables(ws, static_cast<int>(count))) {
    ws.user.Tell(VariableLimitMessage(ws));
    return false;
  }
  if (!CheckTargets(ws, given)) return false;
  std::vector<LambdaRow> lambdaTable;
  if (info.code == kLambda) {
    auto table = LoadLambdaTable(TableFolder(ws.programFolder));
    if (!table) {
      ws.user.Tell(ws.Text("The file Lambda.TXT does not hold 72 rows of six numbers.\nReinstall Tarvika",
                           "A Lambda.TXT fájl nem 72, egyenként hat számból álló sort tartalmaz.\nInstallálja újra a Tarvikaot!"));
      return false;
    }
    lambdaTable = std::move(*table);
  }
  const GeneratedVariables made =
      Generate(info, values, ws.NumberOfCases(), source, &lambdaTable, ws.language, ws.decimalSeparator);
  for (std::size_t k = 0; k < count; ++k) {
    std::vector<std::string> cells;
    cells.reserve(made.columns[k].size());
    for (double x : made.columns[k]) cells.push_back(FormatGeneral(x, ws.decimalSeparator));
    const std::string name =
        k < names.size() ? names[k]
                         : UniqueRandomName(ws, ws.language == Language::English ? info.names[k] : info.hungarianNames[k]);
    const int v = NewVariable(ws, name, made.longNames[k], cells, 0, made.types[k]);
    if (!made.groupLabels.empty()) {
      ws.vars.SetCell(kGroupLabels, v, made.groupLabels);
      ws.vars.SetCell(kGroupType, v, GroupTypeWord(GroupKind::Codes, ws.language));
    }
  }
  std::string message(count == 1 ? ws.Text("The new random variable has been successfully created.",
                                             "A random változót sikeresen létrehoztuk.")
                                   : ws.Text("Two new random variables have been successfully created.",
                                             "A két random változót sikeresen létrehoztuk."));
  if (toldSeed) message += fmt::format(" {}{}", SeedWords(ws.language), *toldSeed);
  ws.user.TellAs(MessageKind::Information, message);
  return true;
}

std::string_view SeedWords(Language lang) { return Pick(lang, "Seed: ", "Kezdőérték: "); }

}  // namespace tarvika
