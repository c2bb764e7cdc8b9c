#include "transform/formula.h"

#include <cmath>
#include <fmt/format.h>

#include "numeric/tolerance.h"
#include "workspace/numbers.h"
#include "workspace/workspace.h"

namespace tarvika {
namespace {

struct UnivariateName {
  std::string_view word, english, hungarian;
};
constexpr UnivariateName kUnivariate[] = {
    {"sign", "Sign(X)", "Signum(X)"},
    {"abs", "Abs(X)", "Abs(X)"},
    {"square", "Square(X)", "X-négyzet"},
    {"sqrt", "Sqare_root(X)", "Négyzetgyök(X)"},
    {"ln", "Ln(X+c)", "Ln(X+c)"},
    {"add", "X + c", "X + c"},
    {"mul", "cX", "cX"},
    {"div", "X/c", "X/c"},
    {"round", "Round  (to c decimals)", "Kerekít (c tizedesre)"},
};
constexpr std::string_view kBivariateWords[] = {"x+y", "x-y", "x*y", "x/y"};
constexpr std::string_view kBivariateSigns[] = {"+", "-", "*", "/"};

std::optional<double> Finite(double v) {
  if (!std::isfinite(v)) return std::nullopt;
  return v;
}

bool NotEnoughSelected(Workspace& ws, std::size_t sources, std::size_t targets) {
  if (sources == 0) {
    ws.user.Tell(ws.Text("Select at least one variable.", "Válasszon ki legalább egy változót!"));
    return true;
  }
  if (targets != sources) {
    ws.user.Tell(ws.Text("You have to give a name to each new variable", "Minden új változónak adjon nevet!"));
    return true;
  }
  return false;
}

}  // namespace

std::optional<Univariate> UnivariateOf(std::string_view word) {
  for (std::size_t i = 0; i < std::size(kUnivariate); ++i) {
    if (kUnivariate[i].word == word) return static_cast<Univariate>(i);
  }
  return std::nullopt;
}

std::optional<Bivariate> BivariateOf(std::string_view word) {
  for (std::size_t i = 0; i < std::size(kBivariateWords); ++i) {
    if (kBivariateWords[i] == word) return static_cast<Bivariate>(i);
  }
  return std::nullopt;
}

std::string_view UnivariateEntry(Univariate f, Language lang) {
  const UnivariateName& n = kUnivariate[static_cast<int>(f)];
  return Pick(lang, n.english, n.hungarian);
}

double EffectiveConstant(Univariate f, double c) {
  return f == Univariate::Ln && std::fabs(c) <= kZeroTolerance ? 1.0 : c;
}

std::optional<double> UnivariateValue(Univariate f, double x, double c) {
  switch (f) {
    case Univariate::Sign:
      return x > kZeroTolerance ? 1.0 : x < -kZeroTolerance ? -1.0 : 0.0;
    case Univariate::Abs:
      return std::fabs(x);
    case Univariate::Square:
      return Finite(x * x);
    case Univariate::SquareRoot:
      if (x < 0) return std::nullopt;
      return std::sqrt(x);
    case Univariate::Ln: {
      const double sum = x + EffectiveConstant(f, c);
      if (sum <= 0) return std::nullopt;
      return std::log(sum);
    }
    case Univariate::AddC:
      return Finite(x + c);
    case Univariate::MulC:
      return Finite(x * c);
    case Univariate::DivC:
      if (std::fabs(c) < kZeroTolerance) return std::nullopt;
      return Finite(x / c);
    case Univariate::Round: {
      const double scale = std::pow(10.0, c);
      return Finite(std::round(scale * (x + 1e-9)) / scale);
    }
  }
  return std::nullopt;
}

std::optional<double> BivariateValue(Bivariate f, double x, double y) {
  switch (f) {
    case Bivariate::Add:
      return Finite(x + y);
    case Bivariate::Subtract:
      return Finite(x - y);
    case Bivariate::Multiply:
      return Finite(x * y);
    case Bivariate::Divide:
      if (std::fabs(y) < kZeroTolerance) return std::nullopt;
      return Finite(x / y);
  }
  return std::nullopt;
}

std::string UnivariateLongName(Univariate f, std::string_view name, double c, char separator) {
  const std::string k = FormatGeneral(EffectiveConstant(f, c), separator);
  switch (f) {
    case Univariate::Sign:
      return fmt::format("sign({})", name);
    case Univariate::Abs:
      return fmt::format("abs({})", name);
    case Univariate::Square:
      return fmt::format("square({})", name);
    case Univariate::SquareRoot:
      return fmt::format("sqare_root({})", name);
    case Univariate::Ln:
      return fmt::format("ln({}+{})", name, k);
    case Univariate::AddC:
      return fmt::format("({})+{}", name, k);
    case Univariate::MulC:
      return fmt::format("({})*{}", name, k);
    case Univariate::DivC:
      return fmt::format("({})/{}", name, k);
    case Univariate::Round:
      return fmt::format("Round({}):{}", name, k);
  }
  return std::string(name);
}

std::string BivariateLongName(Bivariate f, std::string_view x, std::string_view y) {
  return fmt::format("({}){}({})", x, kBivariateSigns[static_cast<int>(f)], y);
}

std::string UnivariateType(Univariate f, double c, std::string_view sourceType, char separator) {
  if (f == Univariate::Sign) return "num=-1_1;";
  const auto range = TypeRange(sourceType, separator);
  if (!range) return "num=0_0;";
  auto [lo, hi] = *range;
  switch (f) {
    case Univariate::AddC:
      return RangeType(lo + c, hi + c, separator);
    case Univariate::MulC:
    case Univariate::DivC: {
      if (std::fabs(c) < kZeroTolerance) break;
      const double a = f == Univariate::MulC ? lo * c : lo / c;
      const double b = f == Univariate::MulC ? hi * c : hi / c;
      return RangeType(std::min(a, b), std::max(a, b), separator);
    }
    default:
      break;
  }
  return "num=0_0;";
}

bool ApplyUnivariate(Workspace& ws, Univariate f, double c, const std::vector<int>& sources,
                     const std::vector<NewTarget>& targets) {
  if (NotEnoughSelected(ws, sources.size(), targets.size()) || !CheckTargets(ws, targets)) return false;
  const int cases = ws.NumberOfCases();
  const char separator = ws.decimalSeparator;
  const CellReader reader(ws, sources);
  std::vector<std::vector<std::string>> cells(sources.size(), std::vector<std::string>(cases));
  std::vector<std::string> types, longNames;
  for (std::size_t i = 0; i < sources.size(); ++i) {
    for (int r = 1; r <= cases; ++r) {
      double x = 0;
      if (!reader.Read(r, static_cast<int>(i), x)) continue;
      if (auto value = UnivariateValue(f, x, c)) cells[i][r - 1] = FormatGeneral(*value, separator);
    }
    const std::string_view name = ws.vars.GetCell(kShortName, sources[i]);
    types.push_back(UnivariateType(f, c, ws.vars.GetCell(kType, sources[i]), separator));
    longNames.push_back(UnivariateLongName(f, name, c, separator));
  }
  WriteTargets(ws, sources, targets, cells, types, longNames);
  return true;
}

bool ApplyBivariate(Workspace& ws, Bivariate f, const std::vector<int>& xs, int y, const std::vector<NewTarget>& targets) {
  if (xs.empty()) {
    ws.user.Tell(ws.Text("Select at least one X variable.", "Válasszon ki legalább egy X változót!"));
    return false;
  }
  if (y < 1) {
    ws.user.Tell(ws.Text("Select Y variable.", "Válasszon Y változót!"));
    return false;
  }
  if (NotEnoughSelected(ws, xs.size(), targets.size()) || !CheckTargets(ws, targets)) return false;
  const int cases = ws.NumberOfCases();
  const char separator = ws.decimalSeparator;
  std::vector<int> read = xs;
  read.push_back(y);
  const CellReader reader(ws, read);
  const int yAt = static_cast<int>(xs.size());
  std::vector<std::vector<std::string>> cells(xs.size(), std::vector<std::string>(cases));
  for (int r = 1; r <= cases; ++r) {
    double yValue = 0;
    if (!reader.Read(r, yAt, yValue)) continue;
    for (std::size_t i = 0; i < xs.size(); ++i) {
      double x = 0;
      if (!reader.Read(r, static_cast<int>(i), x)) continue;
      if (auto value = BivariateValue(f, x, yValue)) cells[i][r - 1] = FormatGeneral(*value, separator);
    }
  }
  std::vector<std::string> types(xs.size(), "num=0_0;"), longNames;
  for (int x : xs) longNames.push_back(BivariateLongName(f, ws.vars.GetCell(kShortName, x), ws.vars.GetCell(kShortName, y)));
  WriteTargets(ws, xs, targets, cells, types, longNames);
  return true;
}

}  // namespace tarvika
