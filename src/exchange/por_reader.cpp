// The SPSS portable file, read by its published format: lines of 80 characters (shorter
// ones padded with blanks, line ends ignored), 200 bytes of vanity text, a table of 256
// characters, "SPSSPORT", then records that each begin with a tag character. Numbers are
// written in base 30 (digits 0-9 and A-T) with an optional fraction and exponent and end
// in "/"; "*." is a system-missing value; a string is its length as a number, then its
// characters.

#include <fmt/format.h>

#include <cmath>
#include <fstream>
#include <map>
#include <sstream>
#include <vector>

#include "exchange/spss_import.h"
#include "exchange/spss_values.h"
#include "exchange/text_import.h"
#include "lang/cp1250.h"
#include "workspace/workspace.h"

namespace tarvika {

namespace {

constexpr std::size_t kLineLength = 80;
constexpr std::size_t kVanity = 200;
constexpr std::size_t kCharacterTable = 256;

struct Damaged {};

// The records of the file after its header, as one run of characters.
class PorText {
 public:
  explicit PorText(std::string text) : text_(std::move(text)) {}

  bool AtEnd() const { return at_ >= text_.size(); }
  char Peek() const { return AtEnd() ? 'Z' : text_[at_]; }
  char Next() {
    if (AtEnd()) throw Damaged{};
    return text_[at_++];
  }

  // A base-30 number; nullopt for a system-missing value ("*.").
  std::optional<double> Number() {
    while (Peek() == ' ') ++at_;
    if (Peek() == '*') {
      at_ += 2;
      return std::nullopt;
    }
    bool negative = false;
    if (Peek() == '-') {
      negative = true;
      ++at_;
    }
    double value = 0, scale = 0;  // scale: the weight of the next fraction digit, 0 before "."
    bool digits = false;
    for (;;) {
      const char c = Next();
      const int d = Digit(c);
      if (d >= 0) {
        digits = true;
        if (scale == 0) {
          value = value * 30 + d;
        } else {
          value += d * scale;
          scale /= 30;
        }
      } else if (c == '.' && scale == 0) {
        scale = 1.0 / 30;
      } else if (c == '+' || c == '-') {
        const double exponent = Whole();
        value *= std::pow(30.0, c == '-' ? -exponent : exponent);
        break;
      } else if (c == '/' && digits) {
        break;
      } else {
        throw Damaged{};
      }
    }
    return negative ? -value : value;
  }

  int Integer() {
    const std::optional<double> v = Number();
    if (!v || *v < 0 || *v > 1e9 || *v != std::floor(*v)) throw Damaged{};
    return static_cast<int>(*v);
  }

  std::string String() {
    const int n = Integer();
    if (at_ + static_cast<std::size_t>(n) > text_.size()) throw Damaged{};
    std::string s = text_.substr(at_, static_cast<std::size_t>(n));
    at_ += static_cast<std::size_t>(n);
    return s;
  }

 private:
  static int Digit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'T') return c - 'A' + 10;
    return -1;
  }
  // The digits of an exponent, up to its "/".
  double Whole() {
    double v = 0;
    for (char c; (c = Next()) != '/';) {
      const int d = Digit(c);
      if (d < 0) throw Damaged{};
      v = v * 30 + d;
    }
    return v;
  }

  std::string text_;
  std::size_t at_ = 0;
};

// The file's characters without line ends, each line padded to 80.
std::string Unfolded(const std::string& bytes) {
  std::string text;
  text.reserve(bytes.size());
  std::size_t line = 0;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const char c = bytes[i];
    if (c == '\r' || c == '\n') {
      if (c == '\r' && i + 1 < bytes.size() && bytes[i + 1] == '\n') ++i;
      if (line < kLineLength) text.append(kLineLength - line, ' ');
      line = 0;
      continue;
    }
    text.push_back(c);
    ++line;
  }
  return text;
}

// Text of the file: UTF-8 as it is, other bytes as Windows-1250, trailing blanks cut.
std::string TextOf(std::string s) {
  while (!s.empty() && s.back() == ' ') s.pop_back();
  return IsValidUtf8(s) ? s : Cp1250ToUtf8(s);
}

// SPSS print format codes of dates and of dates with times.
DateKind DateKindOfCode(int code) {
  switch (code) {
    case 20: case 23: case 24: case 38: case 39:
      return DateKind::Date;
    case 22:
      return DateKind::DateTime;
    default:
      return DateKind::None;
  }
}

struct PorVariable {
  std::string name, label;
  bool isString = false;
  DateKind date = DateKind::None;
  SpssMissing missing;
};

}  // namespace

SpssReadNotes ReadPorFile(Workspace& ws, const std::string& path, ImportTable& table) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream bytes;
  bytes << in.rdbuf();
  const std::string all = Unfolded(bytes.str());
  SpssReadNotes notes;
  try {
    const std::size_t magic = kVanity + kCharacterTable;
    if (all.size() < magic + 8 || all.compare(magic, 8, "SPSSPORT") != 0) throw Damaged{};
    // The table gives each portable character its byte in the file: a file in another
    // character set than ASCII would place its digits elsewhere.
    if (all.compare(kVanity + 64, 10, "0123456789") != 0) throw Damaged{};
    PorText text(all.substr(magic + 8));
    if (text.Next() != 'A') throw Damaged{};
    text.String();  // date
    text.String();  // time
    std::vector<PorVariable> vars;
    std::map<int, std::vector<ValueLabel>> labels;
    auto last = [&]() -> PorVariable& {
      if (vars.empty()) throw Damaged{};
      return vars.back();
    };
    auto value = [&](const PorVariable& v) -> std::optional<double> {
      if (v.isString) {
        text.String();
        return std::nullopt;
      }
      return text.Number();
    };
    for (bool data = false; !data;) {
      const char tag = text.Next();
      switch (tag) {
        case '1': case '2': case '3':
          text.String();  // product, author, subproduct
          break;
        case '4':
          vars.reserve(static_cast<std::size_t>(text.Integer()));
          break;
        case '5':
          text.Integer();  // precision
          break;
        case '6':
          text.String();  // weight variable
          break;
        case '7': {
          PorVariable v;
          v.isString = text.Integer() > 0;
          v.name = TextOf(text.String());
          const int printType = text.Integer();
          text.Integer();
          text.Integer();
          for (int k = 0; k < 3; ++k) text.Integer();  // write format
          v.date = v.isString ? DateKind::None : DateKindOfCode(printType);
          vars.push_back(std::move(v));
          break;
        }
        case '8': {
          PorVariable& v = last();
          if (auto x = value(v)) v.missing.codes.push_back(*x);
          break;
        }
        case '9': case 'A': {
          PorVariable& v = last();
          if (auto x = value(v)) v.missing.range = tag == '9' ? std::pair{-1e300, *x} : std::pair{*x, 1e300};
          break;
        }
        case 'B': {
          PorVariable& v = last();
          auto lo = value(v);
          auto hi = value(v);
          if (lo && hi) v.missing.range = std::pair{*lo, *hi};
          break;
        }
        case 'C':
          last().label = TextOf(text.String());
          break;
        case 'D': {
          std::vector<int> targets;
          for (int n = text.Integer(); n > 0; --n) {
            const std::string name = TextOf(text.String());
            for (std::size_t k = 0; k < vars.size(); ++k) {
              if (vars[k].name == name) targets.push_back(static_cast<int>(k));
            }
          }
          const bool strings = !targets.empty() && vars[targets.front()].isString;
          for (int n = text.Integer(); n > 0; --n) {
            std::optional<double> x;
            if (strings) {
              text.String();
            } else {
              x = text.Number();
            }
            const std::string label = TextOf(text.String());
            for (int k : targets) {
              if (x) labels[k].push_back({*x, label});
            }
          }
          break;
        }
        case 'E':
          for (int n = text.Integer(); n > 0; --n) text.String();  // documents
          break;
        case 'F':
          data = true;
          break;
        default:
          throw Damaged{};
      }
    }
    if (vars.empty()) throw Damaged{};
    if (static_cast<int>(vars.size()) > kMaxVariables) {
      ws.user.Tell(VariablesCutMessage(ws, static_cast<long long>(vars.size())));
    }
    const int n = std::min(static_cast<int>(vars.size()), kMaxVariables);
    for (int k = 0; k < n; ++k) {
      PorVariable& v = vars[static_cast<std::size_t>(k)];
      ImportedVariable& decl = table.Variable(k);
      notes.namesCut = NameVariable(decl, v.name, v.label) || notes.namesCut;
      if (v.isString) {
        table.DeclareString(k);
        continue;
      }
      // An open range ("LO THRU x", "x THRU HI") keeps the widest value a declaration holds.
      if (v.missing.range) {
        v.missing.range->first = std::max(v.missing.range->first, -1e15);
        v.missing.range->second = std::min(v.missing.range->second, 1e15);
      }
      decl.missing = v.missing.Declaration(ws.decimalSeparator);
      if (v.date != DateKind::None) table.DeclareDate(k);
      if (auto l = labels.find(k); l != labels.end()) {
        bool longLabel = false;
        decl.groupLabels = GroupLabels(l->second, ws.decimalSeparator, longLabel);
        notes.longLabelVariables += longLabel;
      }
    }
    int cases = 0;
    for (; text.Peek() != 'Z' && cases < kMaxCases; ++cases) {
      if (cases % 1000 == 0) ws.ShowProgress(fmt::format("{}{}", ws.Text("Reading cases: ", "Esetek olvasása: "), cases));
      for (std::size_t k = 0; k < vars.size(); ++k) {
        const PorVariable& v = vars[k];
        const int c = static_cast<int>(k);
        if (v.isString) {
          std::string s = TextOf(text.String());
          if (c < n) table.SetString(c, cases, s);
        } else if (auto x = text.Number(); x && c < n) {
          if (v.date != DateKind::None) {
            table.SetString(c, cases, DateText(*x, v.date));
          } else {
            table.SetNumber(c, cases, *x);
          }
        }
      }
    }
    if (cases == kMaxCases && text.Peek() != 'Z') ws.user.Tell(CasesCutMessage(ws, 0));
    table.EnsureColumns(n);
    notes.cases = cases;
  } catch (const Damaged&) {
    throw ImportError{std::string(ws.Text("The file is damaged or not a valid SPSS portable file.",
                                          "A megadott fájl sérült, vagy nem valódi SPSS portable fájl."))};
  }
  return notes;
}

}  // namespace tarvika
