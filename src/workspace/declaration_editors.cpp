#include "workspace/declaration_editors.h"

#include <algorithm>
#include <fmt/format.h>

#include "workspace/declarations.h"
#include "workspace/numbers.h"
#include "workspace/project_file.h"
#include "workspace/user_channel.h"
#include "workspace/workspace.h"

namespace tarvika {
namespace {

bool Blank(std::string_view s) { return s.find_first_not_of(' ') == std::string_view::npos; }

std::string Trimmed(std::string_view s) {
  std::size_t b = s.find_first_not_of(' ');
  if (b == std::string_view::npos) return "";
  std::size_t e = s.find_last_not_of(' ');
  return std::string(s.substr(b, e - b + 1));
}

void TellNonNumeric(UserChannel& user, Language lang) {
  user.Tell(Pick(lang, "Error: nonnumeric value.", "Hiba: nem numerikus adat!"));
}

// False after telling, when text holds a ";", which would end the value in the project file.
bool FreeOfSemicolon(UserChannel& user, Language lang, std::string_view text, std::string_view english,
                     std::string_view hungarian) {
  if (text.find(';') == std::string_view::npos) return true;
  user.Tell(Pick(lang, fmt::format("{} cannot contain \";\".", english),
                 fmt::format("{} nem tartalmazhat \";\" karaktert.", hungarian)));
  return false;
}

}  // namespace

std::optional<std::string> MissingEditor::Build(UserChannel& user, Language lang, char separator) const {
  auto number = [&](std::string_view text) { return ParseFourDecimals(text, separator); };
  if (mode == MissingMode::Discrete) {
    std::string out;
    for (const std::string& v : values) {
      if (Blank(v)) continue;
      auto x = number(v);
      if (!x) {
        TellNonNumeric(user, lang);
        return std::nullopt;
      }
      if (!out.empty()) out += "/";
      out += FormatGeneral(*x, separator);
    }
    return out;
  }
  if (Blank(low) || Blank(high)) {
    user.Tell(Pick(lang, "Low or high value missing.\r\nComplete or delete please.",
                   "Az alsó vagy a felső érték hiányzik.\r\nEgészítse ki vagy törölje!"));
    return std::nullopt;
  }
  auto lo = number(low), hi = number(high);
  if (!lo || !hi) {
    TellNonNumeric(user, lang);
    return std::nullopt;
  }
  if (*hi <= *lo) {
    user.Tell(Pick(lang, "High value must be greater then low value.",
                   "A felső értéknek nagyobbnak kell lennie az alsónál!"));
    return std::nullopt;
  }
  std::string out = FormatGeneral(*lo, separator) + "_" + FormatGeneral(*hi, separator);
  if (mode == MissingMode::RangeAndValue) {
    auto c = number(values[2]);
    if (!c) {
      TellNonNumeric(user, lang);
      return std::nullopt;
    }
    if (*c >= *lo && *c <= *hi) {
      user.Tell(Pick(lang, "Error: the entered discrete value is within the specified range.",
                     "Hiba: a megadott érték benne van a kijelölt tartományban."));
      return std::nullopt;
    }
    out += "/" + FormatGeneral(*c, separator);
  }
  return out;
}

LabelEditor::LabelEditor(bool intervals, std::string_view labels, char separator)
    : intervals_(intervals), separator_(separator) {
  if (auto parsed = ParseLabelText(labels, intervals, separator)) {
    for (const LabelEntry& e : *parsed) {
      entries_.push_back({FormatGeneral(e.lo, separator), intervals ? FormatGeneral(e.hi, separator) : "", e.label});
    }
  }
}

bool LabelEditor::Check(UserChannel& user, Language lang, const Entry& entry, int replacing) const {
  auto tell = [&](std::string_view en, std::string_view hu) {
    user.Tell(Pick(lang, en, hu));
    return false;
  };
  if (!FreeOfSemicolon(user, lang, entry.label, "A group label", "A csoportnév")) return false;
  if (!intervals_) {
    if (Blank(entry.low)) return tell("Value missing.", "Érték hiányzik!");
    if (Blank(entry.label)) return tell("Label missing.", "Cimke hiányzik!");
    auto code = ParseFourDecimals(entry.low, separator_);
    if (!code) return tell("Wrong value.", "Hibás érték az adatmezők egyikében!");
    for (int i = 0; i < static_cast<int>(entries_.size()); ++i) {
      if (i == replacing || ParseFourDecimals(entries_[i].low, separator_) != code) continue;
      if (replacing >= 0) return tell("Code values must be different.", "A kódértékeknek különbözőeknek kell lenniük!");
      user.Tell(std::string(Pick(lang, "Duplicated code value: ", "Ez a kód már szerepel a listán: ")) + Trimmed(entry.low));
      return false;
    }
    return true;
  }
  if (Blank(entry.low)) return tell("Error: Lower limit is missing!", "A csoportdefinícióból hiányzik az alsó határérték!");
  if (Blank(entry.high)) return tell("Error: Upper limit is missing!", "A csoportdefinícióból hiányzik a felső határérték!");
  if (Blank(entry.label)) return tell("Error: Group name is missing!", "A csoportdefinícióból hiányzik a csoportnév!");
  auto lo = ParseFourDecimals(entry.low, separator_), hi = ParseFourDecimals(entry.high, separator_);
  if (!lo || !hi) return tell("Wrong value.", "Hibás érték az adatmezők egyikében!");
  if (*hi <= *lo) {
    return tell("Right side of ntervall must be greater then the left side.",
                "Az intervallum végértékének nagyobbnak kell lennie, mint a kezdőérték!");
  }
  for (int i = 0; i < static_cast<int>(entries_.size()); ++i) {
    if (i == replacing) continue;
    double elo = *ParseFourDecimals(entries_[i].low, separator_);
    double ehi = *ParseFourDecimals(entries_[i].high, separator_);
    if (elo == *lo && ehi == *hi) {
      user.Tell(fmt::format("{}{}{}", Pick(lang, "Duplicated intervall on the list (item ", "Ez az intervallum már szerepel a listán! ("),
                            i + 1, Pick(lang, ")", ". elem)")));
      return false;
    }
    if (elo == *lo) return tell("Intervalls with same beginning value.", "Intervallumok azonos kezdőértékkel!");
    // Touching intervals (one's end is the next one's start) are allowed.
    if (*lo < ehi && elo < *hi) {
      if (*lo < elo) {
        user.Tell(std::string(Pick(lang, "Overlapped with next interval: ", "Átfedésben a következő intervallummal: ")) +
                  entries_[i].low + "_" + entries_[i].high);
        return false;
      }
      return tell("Intervalls overlapped.", "Átlapolt intervallumok!");
    }
  }
  return true;
}

bool LabelEditor::Add(UserChannel& user, Language lang, const Entry& entry) {
  if (!Check(user, lang, entry, -1)) return false;
  entries_.push_back({Trimmed(entry.low), intervals_ ? Trimmed(entry.high) : "", entry.label});
  return true;
}

bool LabelEditor::Change(UserChannel& user, Language lang, int index, const Entry& entry) {
  if (index < 0 || index >= static_cast<int>(entries_.size()) || !Check(user, lang, entry, index)) return false;
  entries_[index] = {Trimmed(entry.low), intervals_ ? Trimmed(entry.high) : "", entry.label};
  return true;
}

void LabelEditor::Remove(int index) {
  if (index >= 0 && index < static_cast<int>(entries_.size())) entries_.erase(entries_.begin() + index);
}

bool LabelEditor::ConfirmExit(UserChannel& user, Language lang, bool pendingInput) const {
  if (!pendingInput) return true;
  return user.AskYesNoCancel(Pick(lang, "Any pending Add or Change operations will be lost.\r\nDo you want to exit however?",
                                  "Ha így lép ki, minden függőben lévő művelet törlődik. Mégis kilép?")) == Answer::Yes;
}

std::string LabelEditor::Text() const {
  std::vector<Entry> ordered = entries_;
  if (intervals_) {
    std::stable_sort(ordered.begin(), ordered.end(), [this](const Entry& a, const Entry& b) {
      return *ParseFourDecimals(a.low, separator_) < *ParseFourDecimals(b.low, separator_);
    });
  }
  std::string out;
  for (const Entry& e : ordered) out += e.low + (intervals_ ? "_" + e.high : "") + "=" + e.label + ";/";
  return out;
}

TypeEditor TypeEditor::FromType(std::string_view type) {
  TypeEditor t;
  std::size_t eq = type.find('=');
  t.kind = std::string(type.substr(0, eq));
  std::string_view value = eq == std::string_view::npos ? std::string_view() : type.substr(eq + 1);
  if (!value.empty() && value.back() == ';') value.remove_suffix(1);
  std::size_t cut = value.find('_');
  if (t.kind == "num" && value != "0_0" && cut != std::string_view::npos) {
    t.minimum = std::string(value.substr(0, cut));
    t.maximum = std::string(value.substr(cut + 1));
  }
  if (t.kind == "string") t.length = static_cast<int>(ParseWholeNumber(value).value_or(0));
  return t;
}

std::optional<std::string> TypeEditor::Build(UserChannel& user, Language lang, char separator) const {
  if (kind == "string") return fmt::format("string={};", std::max(length, 0));
  if (kind == "date" || kind == "link") return kind + "=;";
  if (Blank(minimum) && Blank(maximum)) return "num=0_0;";
  auto lo = ParseEitherSeparator(minimum, separator), hi = ParseEitherSeparator(maximum, separator);
  if (!lo || !hi) {
    TellNonNumeric(user, lang);
    return std::nullopt;
  }
  if (*hi <= *lo) {
    user.Tell(Pick(lang, "Maximal value must be greater then minimal value.",
                   "A maximális értéknek nagyobbnak kell lennie a minimálisnál!"));
    return std::nullopt;
  }
  return "num=" + FormatGeneral(*lo, separator) + "_" + FormatGeneral(*hi, separator) + ";";
}

bool ChangeGroupType(Workspace& ws, int row, std::string_view newWord) {
  GroupKind kind = GroupKindOf(newWord);
  if (kind == GroupKind::Unknown || row < 0 || row >= ws.vars.RowCount()) return false;
  std::string labels(ws.vars.GetCell(kGroupLabels, row));
  if (kind == GroupKind::Codes && !labels.empty()) {
    // Interval labels have "_" in their value part.
    std::string unfit;
    std::size_t start = 0;
    while (start < labels.size()) {
      std::size_t end = labels.find('/', start);
      if (end == std::string::npos) end = labels.size();
      std::string_view item = std::string_view(labels).substr(start, end - start);
      if (item.substr(0, item.find('=')).find('_') != std::string_view::npos) unfit += std::string(item) + "\r\n";
      start = end + 1;
    }
    if (!unfit.empty()) {
      std::string question = std::string(ws.Text("Value labels below are not OK for a coded variable:\r\n",
                                                 "Az alábbi értékcimkék nem megfelelőek egy kódolt változó esetén:\r\n")) +
                             unfit + std::string(ws.Text("Do you want to delete this list?", "Akarja törölni a listát?"));
      if (ws.user.AskYesNoCancel(question) != Answer::Yes) {
        ws.user.Tell(ws.Text("The changes are cancelled.", "A változtatást félbeszakítottuk."));
        return false;
      }
      ws.vars.SetCell(kGroupLabels, row, "");
    }
  }
  if (row == 0 && kind == GroupKind::None && !labels.empty()) {
    if (ws.user.AskYesNoCancel(ws.Text("Default variable has redundant value labels.\r\nDo you want to delete it?",
                                       "Az alapértelmezett változónak felesleges értékcimkéi vannak.\r\nTörli őket?")) ==
        Answer::Yes) {
      ws.vars.SetCell(kGroupLabels, 0, "");
    }
  }
  ws.vars.SetCell(kGroupType, row, GroupTypeWord(kind, ws.language));
  if (row > 0) ws.dataChanged = true;
  return true;
}

bool CheckDeclarationText(Workspace& ws, int column, std::string_view text) {
  switch (column) {
    case kShortName:
      return FreeOfSemicolon(ws.user, ws.language, text, "A short name", "A rövid név");
    case kLongName:
      return FreeOfSemicolon(ws.user, ws.language, text, "A long name", "A hosszú név");
    case kHelp:
      return FreeOfSemicolon(ws.user, ws.language, text, "A help text", "A súgószöveg");
    default:
      return true;
  }
}

void RefuseTypedGroupType(Workspace& ws) {
  ws.user.Tell(ws.Text("Use the drop-down list to write in.", "Használja a leomló listát a beírásra!"));
}

bool ChangeDefaultVariable(Workspace& ws, const TypeEditor& type, std::string_view groupType, std::string_view labels) {
  auto typeText = type.Build(ws.user, ws.language, ws.decimalSeparator);
  if (!typeText) return false;
  GroupKind kind = GroupKindOf(groupType);
  if (kind == GroupKind::Unknown) {
    RefuseTypedGroupType(ws);
    return false;
  }
  std::string oldLabels(ws.vars.GetCell(kGroupLabels, 0)), oldGroupType(ws.vars.GetCell(kGroupType, 0));
  ws.vars.SetCell(kGroupLabels, 0, labels);
  // Interval labels given for codes are offered for deletion first; what is left must parse.
  if (!ChangeGroupType(ws, 0, groupType)) {
    ws.vars.SetCell(kGroupLabels, 0, oldLabels);
    return false;
  }
  // Copies: the cells are written again from these texts.
  std::string newLabels(ws.vars.GetCell(kGroupLabels, 0)), newGroupType(ws.vars.GetCell(kGroupType, 0));
  if (kind != GroupKind::None && !newLabels.empty() &&
      !ParseLabelText(newLabels, kind == GroupKind::Intervals, ws.decimalSeparator)) {
    ws.vars.SetCell(kGroupLabels, 0, oldLabels);
    ws.vars.SetCell(kGroupType, 0, oldGroupType);
    ws.user.Tell(ws.Text("Wrong value.", "Hibás érték az adatmezők egyikében!"));
    return false;
  }
  return SaveDefaultVariable(ws, *typeText, newLabels, newGroupType);
}

}  // namespace tarvika
