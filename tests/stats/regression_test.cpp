// The multiple regression and the scale reliability against R (reference/regression.R):
// lm/summary.lm for the coefficients and the fit of the final model, add1/drop1 F tests for
// the stepwise path, psych::alpha with keys for the items.

#include "stats/regression.h"
#include "stats/reliability.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <sstream>
#include <string>
#include <vector>

#include "support/reference_csv.h"

namespace tarvika {
namespace {

using test::Numbers;
using test::ReferenceCsv;

// The cases of a data set, the independents first and the dependent last.
std::vector<std::vector<double>> Rows(const std::string& name) {
  const ReferenceCsv data("regression_data.csv", "stats");
  for (size_t i = 0; i < data.size(); ++i) {
    if (data.Text(i, "name") != name) continue;
    std::vector<std::vector<double>> columns;
    std::stringstream stream(data.Text(i, "columns"));
    for (std::string column; std::getline(stream, column, ';');) columns.push_back(Numbers(column));
    std::rotate(columns.begin(), columns.begin() + 1, columns.end());  // y last
    std::vector<std::vector<double>> rows(columns.front().size());
    for (size_t r = 0; r < rows.size(); ++r) {
      for (const auto& c : columns) rows[r].push_back(c[r]);
    }
    return rows;
  }
  ADD_FAILURE() << "no data set " << name;
  return {};
}

TEST(MultipleRegression, TheFinalModelAgreesWithLm) {
  const ReferenceCsv reference("regression.csv", "stats");
  for (const char* name : {"survey", "mtcars", "removal", "collinear", "smallest"}) {
    for (const char* mode : {"forced", "stepwise"}) {
      std::vector<size_t> terms;
      for (size_t i = 0; i < reference.size(); ++i) {
        if (reference.Text(i, "name") == name && reference.Text(i, "mode") == mode) terms.push_back(i);
      }
      if (terms.empty()) continue;
      SCOPED_TRACE(std::string(name) + " " + mode);
      const MultipleRegression fit = FitRegression(Rows(name), std::string(mode) == "forced", 3.84);
      ASSERT_EQ(fit.failure, RegressionFailure::None);
      const size_t first = terms.front();
      EXPECT_NEAR(fit.rsq, reference.Number(first, "rsq"), 1e-10);
      EXPECT_NEAR(fit.adjustedRsq, reference.Number(first, "adj"), 1e-10);
      EXPECT_NEAR(fit.errorVariance, reference.Number(first, "sigma2"), 1e-8);
      EXPECT_NEAR(fit.f, reference.Number(first, "f"), 1e-7 * reference.Number(first, "f"));
      EXPECT_NEAR(fit.p.p, reference.Number(first, "fp"), 1e-7);
      EXPECT_NEAR(fit.intercept, reference.Number(first, "b"), 1e-8);
      ASSERT_EQ(fit.coefficients.size(), terms.size() - 1);
      for (size_t t = 1; t < terms.size(); ++t) {
        const size_t row = terms[t];
        const int variable = std::stoi(reference.Text(row, "term").substr(1)) - 1;
        const auto c = std::find_if(fit.coefficients.begin(), fit.coefficients.end(),
                                    [&](const RegressionCoefficient& k) { return k.variable == variable; });
        ASSERT_NE(c, fit.coefficients.end()) << reference.Text(row, "term");
        EXPECT_NEAR(c->b, reference.Number(row, "b"), 1e-9 * std::max(1.0, std::fabs(c->b)));
        EXPECT_NEAR(c->seB, reference.Number(row, "se"), 1e-9);
        EXPECT_NEAR(c->beta, reference.Number(row, "beta"), 1e-9);
        EXPECT_NEAR(c->t, reference.Number(row, "t"), 1e-8);
        EXPECT_NEAR(c->p.p, reference.Number(row, "p"), 1e-7);
      }
    }
  }
}

TEST(MultipleRegression, StepwiseFollowsThePathOfAdd1AndDrop1) {
  const ReferenceCsv reference("regression.csv", "stats");
  for (const char* name : {"survey", "mtcars", "removal"}) {
    SCOPED_TRACE(name);
    std::string path;
    for (size_t i = 0; i < reference.size(); ++i) {
      if (reference.Text(i, "name") == name && reference.Text(i, "mode") == "stepwise") path = reference.Text(i, "path");
    }
    const MultipleRegression fit = FitRegression(Rows(name), false, 3.84);
    std::stringstream stream(path);
    size_t step = 0;
    for (std::string entry; stream >> entry; ++step) {
      ASSERT_LT(step, fit.steps.size()) << entry;
      if (entry.front() == '-') {  // a removal: drop1's F fell to 3.84
        EXPECT_EQ(fit.steps[step].variable, std::stoi(entry.substr(2)) - 1);
        EXPECT_FALSE(fit.steps[step].entered);
        EXPECT_LE(fit.steps[step].f, 3.84);
        continue;
      }
      const size_t colon = entry.find(':');
      EXPECT_EQ(fit.steps[step].variable, std::stoi(entry.substr(2, colon - 2)) - 1);
      EXPECT_TRUE(fit.steps[step].entered);
      EXPECT_NEAR(fit.steps[step].f, std::stod(entry.substr(colon + 1)), 1e-5);
      EXPECT_NEAR(fit.steps[step].p.p, std::stod(entry.substr(entry.find(':', colon + 1) + 1)), 1e-7);
    }
    EXPECT_EQ(fit.steps.size(), step);
  }
}

TEST(MultipleRegression, CornersThatRefuseOrLeaveVariablesOut) {
  // x3 = x1 + x2 stays out for its tolerance; the rest is lm's model without it (above).
  EXPECT_EQ(FitRegression(Rows("collinear"), true, 3.84).lowTolerance, std::vector<int>{2});
  std::vector<std::vector<double>> rows = Rows("smallest");
  rows.pop_back();  // N = V + 1
  EXPECT_EQ(FitRegression(rows, true, 3.84).failure, RegressionFailure::TooFewCases);
  // A constant independent is dropped.
  const MultipleRegression all = FitRegression(Rows("smallest"), true, 3.84);
  rows = Rows("smallest");
  for (auto& row : rows) row[1] = 7;
  const MultipleRegression fit = FitRegression(rows, true, 3.84);
  EXPECT_EQ(fit.constant, std::vector<int>{1});
  EXPECT_EQ(fit.coefficients.size(), 2u);
  EXPECT_EQ(all.coefficients.size(), 3u);
  for (auto& row : rows) row.back() = 4;
  EXPECT_EQ(FitRegression(rows, true, 3.84).failure, RegressionFailure::ConstantDependent);
}

TEST(ScaleReliability, AgreesWithPsychAlphaWithKeys) {
  const ReferenceCsv items("reliability_items.csv", "stats");
  const ReferenceCsv reference("reliability.csv", "stats");
  const std::vector<std::string> names = {"A", "B", "C", "D"};
  for (const auto& [set, chosen] : {std::pair{"four", std::vector<int>{0, 1, 2, 3}}, std::pair{"two", std::vector<int>{0, 3}}}) {
    SCOPED_TRACE(set);
    std::vector<std::vector<double>> rows;
    for (size_t r = 0; r < items.size(); ++r) {
      std::vector<double> row;
      for (int i : chosen) row.push_back(items.Number(r, names[i]));
      rows.push_back(row);
    }
    std::vector<bool> negative;
    for (int i : chosen) negative.push_back(names[i] == "D");
    const Reliability rel = ScaleReliability(rows, negative, 6);
    size_t item = 0;
    for (size_t i = 0; i < reference.size(); ++i) {
      if (reference.Text(i, "name") != set) continue;
      EXPECT_NEAR(rel.alpha, reference.Number(i, "alpha"), 1e-10);
      EXPECT_NEAR(rel.scaleMean, reference.Number(i, "scale_mean"), 1e-10);
      EXPECT_NEAR(rel.scaleSd, reference.Number(i, "scale_sd"), 1e-10);
      EXPECT_NEAR(rel.items[item].rIT, reference.Number(i, "raw_r"), 1e-10);
      EXPECT_NEAR(rel.items[item].rIR, reference.Number(i, "r_drop"), 1e-10);
      if (chosen.size() > 2) {
        EXPECT_NEAR(rel.items[item].alphaIfOmitted, reference.Number(i, "alpha_drop"), 1e-10);
      }
      ++item;
    }
    EXPECT_EQ(item, chosen.size());
  }
  // A constant item has no correlation with the scale.
  std::vector<std::vector<double>> rows = {{1, 3, 2}, {2, 3, 4}, {4, 3, 5}, {5, 3, 5}};
  const Reliability constant = ScaleReliability(rows, {false, false, false}, 6);
  EXPECT_EQ(constant.items[1].rIT, 0);
  EXPECT_EQ(constant.items[1].sd, 0);
}

}  // namespace
}  // namespace tarvika
