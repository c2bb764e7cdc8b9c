#pragma once
// The p-values a report prints as "p = x" (in either language), for checks that every one
// of them is a probability.

#include <string>
#include <string_view>
#include <vector>

namespace tarvika::testing {

struct PrintedP {
  std::string text;  // as printed
  double value = 0;
  std::string line;  // the line it stands in, for the failure message
};

inline std::vector<PrintedP> PrintedPValues(std::string_view report) {
  std::vector<PrintedP> found;
  constexpr std::string_view kLabel = "p = ";
  for (std::size_t at = report.find(kLabel); at != std::string_view::npos; at = report.find(kLabel, at + 1)) {
    std::size_t end = at + kLabel.size();
    while (end < report.size() && std::string_view("0123456789.,-+eE").find(report[end]) != std::string_view::npos) ++end;
    PrintedP p;
    p.text = std::string(report.substr(at + kLabel.size(), end - at - kLabel.size()));
    std::string number = p.text;
    for (char& c : number) c = c == ',' ? '.' : c;
    p.value = number.empty() ? -1 : std::stod(number);
    const std::size_t lineStart = report.rfind('\n', at) == std::string_view::npos ? 0 : report.rfind('\n', at) + 1;
    p.line = std::string(report.substr(lineStart, report.find('\n', at) - lineStart));
    found.push_back(p);
  }
  return found;
}

}  // namespace tarvika::testing
