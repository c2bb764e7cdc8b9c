#pragma once
// The session language and the choice of a message's form by it.

#include <string_view>

namespace tarvika {

enum class Language { Hungarian, English };

// Every user-visible text exists in both languages; the session flag picks one.
constexpr std::string_view Pick(Language lang, std::string_view english, std::string_view hungarian) {
  return lang == Language::English ? english : hungarian;
}

}  // namespace tarvika
