#pragma once
// Settings of an analysis dialog written as the command line's --set takes them.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "frame/analysis_dialogs.h"

namespace tarvika::testing {

// Applies each setting, "name=value" or "name:variable=value" (a per-variable parameter);
// a refused one fails the test with the dialog's message.
inline void ApplySettings(AnalysisDialog& dialog, const std::vector<std::string>& settings) {
  for (const std::string& s : settings) {
    const std::size_t eq = s.find('='), colon = s.find(':');
    std::string error;
    const bool ok = colon == std::string::npos || colon > eq
                        ? dialog.Set(s.substr(0, eq), s.substr(eq + 1), Language::English, &error)
                        : dialog.SetFor(s.substr(0, colon), s.substr(colon + 1, eq - colon - 1), s.substr(eq + 1),
                                        Language::English, &error);
    EXPECT_TRUE(ok) << s << ": " << error;
  }
}

}  // namespace tarvika::testing
