#include "reference_csv.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

namespace tarvika::test {

namespace {
// Fields are separated by commas; R quotes texts, none of which holds a comma.
std::vector<std::string> Fields(const std::string& line) {
  std::vector<std::string> fields;
  std::stringstream stream(line);
  std::string field;
  while (std::getline(stream, field, ',')) {
    if (field.size() >= 2 && field.front() == '"') field = field.substr(1, field.size() - 2);
    fields.push_back(field);
  }
  return fields;
}
}  // namespace

ReferenceCsv::ReferenceCsv(std::string_view name) {
  const std::string path = std::string(TARVIKA_TEST_DATA) + "/numeric/reference/" + std::string(name);
  std::ifstream in(path);
  if (!in) throw std::runtime_error("cannot read " + path);
  std::string line;
  std::getline(in, line);
  header_ = Fields(line);
  while (std::getline(in, line)) {
    if (!line.empty()) rows_.push_back(Fields(line));
  }
}

size_t ReferenceCsv::Column(std::string_view name) const {
  for (size_t i = 0; i < header_.size(); ++i) {
    if (header_[i] == name) return i;
  }
  throw std::runtime_error("no column " + std::string(name));
}

double ReferenceCsv::Number(size_t row, std::string_view column) const {
  return std::stod(Text(row, column));
}

const std::string& ReferenceCsv::Text(size_t row, std::string_view column) const {
  return rows_.at(row).at(Column(column));
}

std::vector<double> Numbers(const std::string& text) {
  std::vector<double> values;
  std::stringstream stream(text);
  double value = 0;
  while (stream >> value) values.push_back(value);
  return values;
}

}  // namespace tarvika::test
