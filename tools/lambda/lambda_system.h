#pragma once
// The Ramberg-Schmeiser generalized lambda distribution, Q(u) = lambda1 + (u^lambda3 -
// (1-u)^lambda4)/lambda2, and the table "lambda.txt" of the lambdas that give it mean 0,
// variance 1 and a chosen skewness and kurtosis.

#include <array>
#include <optional>
#include <string>

namespace tarvika::lambda {

struct Shape {
  double skewness = 0;
  double kurtosis = 0;  // not the excess: 3 for the normal
};

// The skewness and kurtosis of the distribution of lambda3 and lambda4 (both above -1/4, of
// the same sign, neither 0), lambda2 taken of their sign.
Shape ShapeOf(double lambda3, double lambda4);

// lambda1 to lambda4 of the distribution with mean 0, variance 1 and the shape; nullopt when
// no pair of lambdas of one sign reaches it within 1e-9.
std::optional<std::array<double, 4>> SolveLambdas(Shape target);

// The skewness and kurtosis of the 72 rows: skewness 0 to 2 by 0.25, each with 8 kurtosis
// values from the lowest the distribution reaches at that skewness up to 15.8.
std::array<Shape, 72> TableShapes();

// One line of "lambda.txt", with its line end: skewness, kurtosis, lambda1 to lambda4.
std::string LambdaTableLine(Shape shape);

// The text of "lambda.txt": the line of each shape of TableShapes.
std::string LambdaTableText();

}  // namespace tarvika::lambda
