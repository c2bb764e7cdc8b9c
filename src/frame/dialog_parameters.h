#pragma once
// The parameters of the three classical analysis dialogs: each with its name (the field
// name of the request), its kind, default and bounds, and its caption. A dialog holds the
// values as the texts its controls show; the analyses read them from the request through
// the typed names of parameter_names.h. Which command reads which parameter is said by the
// command table (command_info.h).

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "lang/language.h"

namespace tarvika {

enum class DialogKind { SingleSample, Groups, Relations, Pattern };  // TKijelolForm, TK20Form, TK31Form, TVorelDesForm

enum class ParameterKind {
  Integer,     // a whole number within bounds
  Number,      // a number with decimals
  Toggle,      // " Yes " / " No "
  ThreeState,  // " Yes " / " No " / " If signif. "
  Flag,        // a check box: "on" / "off"
  Choice,      // one of a list of words
  Text,        // a name
};

struct ParameterDefinition {
  std::string_view name;
  ParameterKind kind;
  std::string_view defaultValue;
  int minimum = 0, maximum = 0;         // Integer
  std::vector<std::string_view> choices;  // Choice (English words; Hungarian ones are accepted too)
  std::string_view english, hungarian;  // caption
  bool perVariable = false;             // one value per selected variable
  int captionTag = 0;                   // the line of the language files that captions its control
};

// The toggle words as the controls show them and the analyses read them.
inline constexpr std::string_view kYes = " Yes ";
inline constexpr std::string_view kNo = " No ";
inline constexpr std::string_view kIfSignificant = " If signif. ";
// " Yes " 2, " If signif. " 1, anything else 0.
int ToggleValue(std::string_view word);

// The catalogue of each dialog (parameters_single_sample.cpp, parameters_groups.cpp,
// parameters_relations.cpp).
const std::vector<ParameterDefinition>& SingleSampleParameters();
const std::vector<ParameterDefinition>& GroupsParameters();
const std::vector<ParameterDefinition>& RelationsParameters();
const std::vector<ParameterDefinition>& PatternParameters();
const std::vector<ParameterDefinition>& DialogParameters(DialogKind dialog);
// The parameter of that name; the older spellings ("ScaleName", "ItemMin", ...) are
// accepted for their present names.
const ParameterDefinition* FindParameter(DialogKind dialog, std::string_view name);

// The stored form of a value given as text ("Yes", "no", "on", "90", ...); nullopt with a
// message when it is not acceptable.
std::optional<std::string> NormaliseParameterValue(const ParameterDefinition& param, std::string_view value, Language lang,
                                                   std::string* error);

// The scale words of the dialogs, in both languages.
std::string_view SingleScaleWord(int kind, Language lang);  // continuous, discrete, group.def.
std::string_view GroupsScaleWord(int kind, Language lang);  // interval, ordinal, nominal
// The same word in the other language ("folytonos" for "continuous"), or the word itself.
std::string TranslateScaleWord(std::string_view word, Language lang);

// The trimming rule: the text of "Trimming %" read as a whole number t gives the fraction
// t * 0.01; below 1 the fraction is 0.025 and trimming is off; above 25 it is 0.25.
struct Trimming {
  double fraction = 0.025;
  bool on = false;
};
Trimming TrimmingFromPercent(int percent);

}  // namespace tarvika
