#pragma once
// Help content under the language folder of the session: "language/angol" or
// "language/magyar", each with a "help" folder.

#include <map>
#include <string>

#include "lang/language.h"

namespace tarvika {

// "help/alaps.inf": one explanation per command of the single-sample dialog, as lines
// "code=explanation". Empty when the file is missing.
std::map<int, std::string> LoadCommandHints(const std::string& programFolder, Language lang);

}  // namespace tarvika
