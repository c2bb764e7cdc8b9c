#pragma once
// The twelve random variable generators: their list entries, parameters with initial
// values, default short names, long names and the draws. A generated value is held to four
// decimals. New variables go to the end of the variable list.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "lang/language.h"
#include "transform/lambda_table.h"
#include "transform/random_source.h"

namespace tarvika {

class Workspace;

struct GeneratorParameter {
  std::string_view key;    // the name of --set, e.g. "Mean", "Binom_n"
  std::string_view label;  // the panel's label, e.g. "Mean:"
  std::string_view hungarianLabel;
  double initial = 0;
};

struct GeneratorInfo {
  int code = 0;            // 451 to 462: the list position plus 451
  std::string_view word;   // "normal", "bivariate-normal", ...
  std::string_view entry;  // "Univariate normal"
  std::string_view hungarianEntry;
  std::vector<GeneratorParameter> parameters;
  std::vector<std::string_view> names;          // default short names, one per variable
  std::vector<std::string_view> hungarianNames;
};

const std::vector<GeneratorInfo>& Generators();
const GeneratorInfo* FindGenerator(std::string_view word);

// Whether the values (in the order of info.parameters) make sense for the generator: "" or
// what is wrong, in the language.
std::string CheckGeneratorValues(const GeneratorInfo& info, const std::vector<double>& values, Language lang);

// The lambda generator's choice: the sign of the skewness kept aside, |skewness| at most 2,
// and a kurtosis above 15.8 (below 1.75) setting the skewness, not the kurtosis, to 15.8
// (1.75); then the nearest row of the table.
struct LambdaChoice {
  double sign = 1;
  const LambdaRow* row = nullptr;
};
LambdaChoice ChooseLambdaRow(const std::vector<LambdaRow>& table, double skewness, double kurtosis);

// The made variables before they enter the workspace.
struct GeneratedVariables {
  std::vector<std::vector<double>> columns;  // one or two, held to four decimals
  std::vector<std::string> longNames;
  std::vector<std::string> types;
  std::string groupLabels;  // the discrete uniform's "k=Valuek;/" list, else empty
};

// Draws one value (or pair) per case. lambdaTable is needed by the lambda generator only.
GeneratedVariables Generate(const GeneratorInfo& info, const std::vector<double>& values, int cases, RandomSource& source,
                            const std::vector<LambdaRow>* lambdaTable, Language lang, char separator);

// The short name made unique: the plain name when no variable has it (without regard to
// case), else name + number, the number rising from 1 (the name cut so that both fit in 8
// characters).
std::string UniqueRandomName(const Workspace& ws, std::string_view name);

// The run: checks, draws and adds the variables at the end of the list, with the names given
// (empty: the generator's default names, made unique). Tells the end message; false after
// telling a refusal. The lambda generator reads "lambda.txt" from the table folder and lets
// MissingTableFile through. With toldSeed the end message also tells the seed the source
// started from, so that the person can repeat the run.
bool GenerateColumn(Workspace& ws, const GeneratorInfo& info, const std::vector<double>& values,
                    const std::vector<std::string>& names, RandomSource& source,
                    std::optional<std::uint32_t> toldSeed = std::nullopt);

// "Seed: " / "Kezdőérték: ", the words before a seed told.
std::string_view SeedWords(Language lang);

}  // namespace tarvika
