#pragma once
// Reads the reference values that tests/numeric/reference/*.R wrote as CSV.

#include <string>
#include <string_view>
#include <vector>

namespace tarvika::test {

class ReferenceCsv {
 public:
  // The file of that name in tests/numeric/reference.
  explicit ReferenceCsv(std::string_view name);
  size_t size() const { return rows_.size(); }
  double Number(size_t row, std::string_view column) const;
  const std::string& Text(size_t row, std::string_view column) const;

 private:
  size_t Column(std::string_view name) const;
  std::vector<std::string> header_;
  std::vector<std::vector<std::string>> rows_;
};

// "1.5 1.5 3" -> {1.5, 1.5, 3}
std::vector<double> Numbers(const std::string& text);

}  // namespace tarvika::test
