#pragma once
// Formula variables: a function of each cell of a variable (univariate, with the constant
// c), or of the cells of X and Y in a case (bivariate). A missing cell, and a cell where the
// function has no value, give a missing (empty) result; a same-variable target keeps its
// old cell there.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "lang/language.h"
#include "transform/new_targets.h"

namespace tarvika {

class Workspace;

// In the order of the function list.
enum class Univariate { Sign, Abs, Square, SquareRoot, Ln, AddC, MulC, DivC, Round };
enum class Bivariate { Add, Subtract, Multiply, Divide };

// "sign", "abs", "square", "sqrt", "ln", "add", "mul", "div", "round".
std::optional<Univariate> UnivariateOf(std::string_view word);
// "x+y", "x-y", "x*y", "x/y".
std::optional<Bivariate> BivariateOf(std::string_view word);

// The list entry, "Sign(X)" / "Signum(X)".
std::string_view UnivariateEntry(Univariate f, Language lang);

// The constant as the function uses it: Ln takes 1 for a c within 1e-8 of 0.
double EffectiveConstant(Univariate f, double c);

// The value of the function, nullopt where it has none (root of a negative, logarithm of a
// non-positive, division by a c or a y within 1e-8 of 0, a result that is not finite).
// Round: round(10^c (x + 1e-9)) / 10^c, so that exact halves go up.
std::optional<double> UnivariateValue(Univariate f, double x, double c);
std::optional<double> BivariateValue(Bivariate f, double x, double y);

// The text of the long name: "sign(" name ")", "ln(" name "+" c ")", "(" name ")*" c, ...;
// bivariate "(" x ")+(" y ")".
std::string UnivariateLongName(Univariate f, std::string_view name, double c, char separator);
std::string BivariateLongName(Bivariate f, std::string_view x, std::string_view y);

// The type text of the result: "num=-1_1;" for the sign, the source's range moved along for
// X + c, cX and X/c when the source's type has one, else "num=0_0;".
std::string UnivariateType(Univariate f, double c, std::string_view sourceType, char separator);

// The runs over all cases; targets[i] belongs to sources[i]. False (after telling the
// person, nothing changed) when a check fails.
bool ApplyUnivariate(Workspace& ws, Univariate f, double c, const std::vector<int>& sources,
                     const std::vector<NewTarget>& targets);
bool ApplyBivariate(Workspace& ws, Bivariate f, const std::vector<int>& xs, int y, const std::vector<NewTarget>& targets);

}  // namespace tarvika
