// tarvika-cli random: a new random variable (or two) from one of the twelve generators.
// The seed is --seed, or the clock's; it is printed so that a run can be repeated.

#include <fmt/format.h>

#include <iostream>
#include <memory>

#include "cli_context.h"
#include "edit_project.h"
#include "lang/utf8.h"
#include "numeric/stat_tables.h"
#include "transform/random_generators.h"

namespace tarvika::cli {
namespace {

struct RandomOptions {
  EditOptions edit;
  std::string generator;
  std::vector<std::string> set;
  std::vector<std::string> names;
  std::optional<std::uint32_t> seed;
};

// The parameters: the initial values with the settings over them.
std::optional<std::vector<double>> Values(Workspace& ws, const GeneratorInfo& info, const std::vector<std::string>& set) {
  std::vector<double> values;
  for (const GeneratorParameter& p : info.parameters) values.push_back(p.initial);
  for (const std::string& setting : set) {
    const std::size_t eq = setting.find('=');
    std::size_t i = 0;
    while (i < info.parameters.size() && (eq == std::string::npos ||
                                          !EqualIgnoringCase(info.parameters[i].key, setting.substr(0, eq)))) {
      ++i;
    }
    if (i == info.parameters.size()) {
      std::string keys;
      for (const GeneratorParameter& p : info.parameters) keys += (keys.empty() ? "" : ", ") + std::string(p.key);
      ws.user.Tell(fmt::format("{}{}{}{}", ws.Text("Not a parameter of this generator: ", "Nem paramétere ennek a generátornak: "),
                               setting, ws.Text(". Its parameters: ", ". Paraméterei: "), keys));
      return std::nullopt;
    }
    auto value = ParameterNumber(ws, info.parameters[i].key, setting.substr(eq + 1));
    if (!value) return std::nullopt;
    values[i] = *value;
  }
  return values;
}

int Random(CliContext& context, const RandomOptions& o) {
  const GeneratorInfo& info = *FindGenerator(o.generator);
  const std::uint32_t seed = o.seed.value_or(SeedFromClock());
  bool tablesMissing = false;
  const int status = EditProject(context, o.edit, [&](Workspace& ws) {
    auto values = Values(ws, info, o.set);
    if (!values) return false;
    RandomSource source(seed);
    try {
      if (!GenerateColumn(ws, info, *values, o.names, source)) return false;
    } catch (const MissingTableFile& missing) {
      ws.user.Tell(MissingTableMessage(missing.name(), ws.language));
      tablesMissing = true;
      return false;
    }
    std::cerr << SeedWords(ws.language) << seed << '\n';
    return true;
  });
  return tablesMissing ? kProgramError : status;
}

}  // namespace

void RegisterRandomCommand(CLI::App& app, CliContext& context) {
  auto o = std::make_shared<RandomOptions>();
  auto* cmd = app.add_subcommand("random", "Generate a new random variable");
  AddEditOptions(cmd, o->edit);
  std::vector<std::string> words;
  for (const GeneratorInfo& info : Generators()) words.emplace_back(info.word);
  cmd->add_option("--generator", o->generator, "The generator")->required()->check(CLI::IsMember(words));
  cmd->add_option("--set", o->set, "A parameter NAME=VALUE, e.g. Mean=100 or SD=15 (others keep their initial values)");
  cmd->add_option("--name", o->names, "The short name of the new variable (two for bivariate-normal and correlation)")
      ->delimiter(',');
  cmd->add_option("--seed", o->seed, "The seed, a whole number from 0 to 4294967295 (default: from the clock)");
  cmd->callback([&context, o] { context.exitCode = Random(context, *o); });
}

}  // namespace tarvika::cli
