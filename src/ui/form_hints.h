#pragma once
// The little a form needs beyond the command table and the parameter catalogue: the
// captions and capacities of a dialog's variable lists, which commands show which list,
// and the few parameters whose control is not the plain one of their kind. A dialog kind
// without an entry gets a selected and a conditional list.

#include <algorithm>
#include <string_view>
#include <vector>

#include "frame/dialog_parameters.h"

namespace tarvika {

// The lists of the dialog, each a vector of AnalysisDialog.
enum class ListRole { Selected, Y, Grouping, Covariate, Conditional };

struct ListHint {
  ListRole role;
  std::string_view english, hungarian;
  int capacity = 0;           // 0: any number of names
  std::vector<int> commands;  // the commands that read the list; empty: all
  int captionTag = 0;         // a line of the language files that captions it, if any

  // Whether the command reads the list (else the form hides it and gives its names back).
  bool ReadBy(int command) const {
    return commands.empty() || std::find(commands.begin(), commands.end(), command) != commands.end();
  }
};

// A list's caption or capacity for one command ("Case code variable" for the inter-rater run).
struct ListOverride {
  int command;
  ListRole role;
  std::string_view english, hungarian;
  int capacity = -1;  // -1: the list's own
};

struct FormHints {
  std::string_view titleEnglish, titleHungarian;
  int titleTag = 0;
  std::vector<ListHint> lists;
  std::vector<ListOverride> overrides;
};

const FormHints& HintsOf(DialogKind kind);

// A parameter that is asked only while a switch is on: its control is disabled otherwise.
std::string_view SwitchOf(std::string_view parameter);

}  // namespace tarvika
