#pragma once
// Reads the reference values that the R scripts in tests/<folder>/reference/ wrote as CSV:
// a header line, then rows of comma-separated fields; R quotes texts, none of which holds a
// comma.

#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace tarvika::test {

class ReferenceCsv {
 public:
  explicit ReferenceCsv(std::string_view name, std::string_view folder = "numeric") {
    const std::string path =
        std::string(TARVIKA_TEST_DATA) + "/" + std::string(folder) + "/reference/" + std::string(name);
    std::ifstream in(path);
    if (!in) throw std::runtime_error("cannot read " + path);
    std::string line;
    std::getline(in, line);
    header_ = Fields(line);
    while (std::getline(in, line)) rows_.push_back(Fields(line));
  }
  size_t size() const { return rows_.size(); }
  double Number(size_t row, std::string_view column) const { return std::stod(Text(row, column)); }
  const std::string& Text(size_t row, std::string_view column) const {
    for (size_t i = 0; i < header_.size(); ++i) {
      if (header_[i] == column) return rows_.at(row).at(i);
    }
    throw std::runtime_error("no column " + std::string(column));
  }

 private:
  static std::vector<std::string> Fields(const std::string& line) {
    std::vector<std::string> fields;
    std::stringstream stream(line);
    for (std::string field; std::getline(stream, field, ',');) {
      if (field.size() >= 2 && field.front() == '"') field = field.substr(1, field.size() - 2);
      fields.push_back(field);
    }
    return fields;
  }
  std::vector<std::string> header_;
  std::vector<std::vector<std::string>> rows_;
};

// "1.5 1.5 3" -> {1.5, 1.5, 3}
inline std::vector<double> Numbers(const std::string& text) {
  std::stringstream stream(text);
  std::vector<double> values;
  for (double value; stream >> value;) values.push_back(value);
  return values;
}

}  // namespace tarvika::test
