#include "numeric/stat_tables.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <iterator>

#include "numeric/real48.h"

namespace tarvika {

namespace {

std::string Lower(std::string_view text) {
  std::string result(text);
  for (char& ch : result) ch = static_cast<char>(std::tolower(static_cast<unsigned char>(ch)));
  return result;
}

std::vector<std::uint8_t> ReadBytes(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// The fixed-size records of a typed file; records the file lacks stay zero (a malformed
// file is not detected).
template <size_t RecordSize>
std::vector<std::array<std::uint8_t, RecordSize>> ReadRecords(const std::filesystem::path& path,
                                                              size_t count) {
  const std::vector<std::uint8_t> bytes = ReadBytes(path);
  std::vector<std::array<std::uint8_t, RecordSize>> records(count);
  for (size_t i = 0; i < count && (i + 1) * RecordSize <= bytes.size(); ++i) {
    std::copy_n(bytes.begin() + static_cast<std::ptrdiff_t>(i * RecordSize), RecordSize, records[i].begin());
  }
  return records;
}

std::vector<double> ReadReals(const std::filesystem::path& path, size_t count) {
  std::vector<double> values;
  for (const Real48& record : ReadRecords<6>(path, count)) values.push_back(DecodeReal48(record));
  return values;
}

CriticalCountTable LoadCountTable(const std::filesystem::path& folder, std::string_view name, int firstN,
                                  int lastN) {
  CriticalCountTable table;
  table.firstN = firstN;
  table.rows = ReadRecords<3>(RequireTableFile(folder, name), lastN - firstN + 1);
  return table;
}

// The table's integers are critical values times 100. Dividing (rather than multiplying by
// 0.01) gives the double nearest the printed value, so that an F typed as 10.13 meets 1013.
double Scaled(double hundredths) {
  return hundredths / 100;
}

}  // namespace

std::filesystem::path TableFolder(const std::filesystem::path& programFolder) {
  return programFolder / "stattab";
}

MissingTableFile::MissingTableFile(std::string name)
    : std::runtime_error("File " + name + " is missing. Program stops."), name_(std::move(name)) {}

std::string MissingTableMessage(std::string_view name, Language language) {
  if (language == Language::English) {
    return "File " + std::string(name) + " is missing. Program stops.\nReinstall Tarvika";
  }
  return "Hiányzik a következő fájl, ami nélkül a program nem fut: " + std::string(name) +
         ".\nInstallálja újra a Tarvikaot!";
}

std::filesystem::path RequireTableFile(const std::filesystem::path& folder, std::string_view name) {
  std::error_code error;
  const std::filesystem::path exact = folder / std::string(name);
  if (std::filesystem::is_regular_file(exact, error)) return exact;
  const std::string wanted = Lower(name);
  for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
    if (entry.is_regular_file(error) && Lower(entry.path().filename().string()) == wanted)
      return entry.path();
  }
  throw MissingTableFile(std::string(name));
}

FTable LoadFTable(const std::filesystem::path& folder) {
  std::ifstream in(RequireTableFile(folder, kFTableFile));
  FTable table;
  for (FTable::Row& row : table.rows) {
    in >> row.df >> row.critical[0] >> row.critical[1] >> row.critical[2];
  }
  return table;
}

FTabResult FTabLookup(const FTable& table, int numeratorDF, int denominatorDF, double f) {
  FTabResult result;
  const int m = denominatorDF;
  std::array<double, 3> critical{};
  const FTable::Row& last = table.RowIndex(32);
  if (m < 3) {
    if (numeratorDF > 1) return result;  // the fixed rows are for numerator df 1 only
    const FTable::Row& fixed = m <= 1 ? kFTableRowDf1 : kFTableRowDf2;
    for (int i = 0; i < 3; ++i) critical[i] = Scaled(fixed.critical[i]);
  } else if (m <= 26) {
    for (int i = 0; i < 3; ++i) critical[i] = Scaled(table.RowIndex(m).critical[i]);
  } else if (m < last.df) {
    int upper = 27;  // the first row from index 27 whose df is above m
    while (upper < 32 && table.RowIndex(upper).df <= m) ++upper;
    const FTable::Row& high = table.RowIndex(upper);
    const FTable::Row& low = table.RowIndex(upper - 1);
    for (int i = 0; i < 3; ++i) {
      if (high.df <= m || high.df == low.df) {
        critical[i] = Scaled(high.critical[i]);
      } else {
        const double share = static_cast<double>(m - low.df) / (high.df - low.df);
        critical[i] = Scaled(low.critical[i] + share * (high.critical[i] - low.critical[i]));
      }
    }
  } else {
    // Critical values of F are nearly linear in 1/df, and the last row is computed at its
    // df, so the values beyond it approach the limit rather than stay at the last row.
    const double share = static_cast<double>(last.df) / m;
    for (int i = 0; i < 3; ++i) {
      critical[i] = Scaled(kFTableLimit[i] + share * (last.critical[i] - kFTableLimit[i]));
    }
  }
  result.CriticalF90 = critical[0];
  result.CriticalF95 = critical[1];
  result.CriticalF99 = critical[2];
  if (f >= critical[0]) result.marker = "+ ";
  if (f >= critical[1]) result.marker = "* ";
  if (f >= critical[2]) result.marker = "**";
  return result;
}

CriticalCountTable LoadWilcoxonTable(const std::filesystem::path& folder) {
  return LoadCountTable(folder, kWilcoxonTableFile, kWilcoxonFirstN, kWilcoxonLastN);
}

CriticalCountTable LoadSignTable(const std::filesystem::path& folder) {
  return LoadCountTable(folder, kSignTableFile, kSignFirstN, kSignLastN);
}

std::array<double, kCriticalTableSize> LoadCriticalTable(const std::filesystem::path& folder) {
  const std::vector<double> values =
      ReadReals(RequireTableFile(folder, kCriticalTableFile), kCriticalTableSize);
  std::array<double, kCriticalTableSize> table{};
  std::copy(values.begin(), values.end(), table.begin());
  return table;
}

FMatrix LoadFMatrix(const std::filesystem::path& folder) {
  FMatrix matrix;
  const size_t columns = kFMatrixColumnDf.size();
  const std::vector<double> values =
      ReadReals(RequireTableFile(folder, kFMatrixFile), kFTableRowDf.size() * columns);
  for (size_t i = 0; i < values.size(); ++i) matrix.value[i / columns][i % columns] = values[i];
  return matrix;
}

StudentizedRangeTable LoadStudentizedRangeTable(const std::filesystem::path& folder) {
  // The file is known as "TSTAB.TXT" in the message of a missing file; the lookup ignores case.
  std::ifstream in(RequireTableFile(folder, "TSTAB.TXT"));
  StudentizedRangeTable table;
  for (StudentizedRangeTable::Row& row : table.rows) {
    in >> row.df;
    for (auto& level : row.critical) {
      for (int& value : level) in >> value;
    }
  }
  return table;
}

std::array<double, 3> StudentizedRangeCritical(const StudentizedRangeTable& table, int k, int df) {
  std::array<double, 3> critical{};
  if (df < 3 || k < 2) return critical;
  const size_t column = static_cast<size_t>(std::min(k, kStudentizedRangeMaxK) - 2);
  const auto& rows = table.rows;
  const auto& last = rows.back();
  if (df <= 20) {
    for (size_t i = 0; i < 3; ++i) critical[i] = Scaled(rows[static_cast<size_t>(df - 3)].critical[i][column]);
  } else if (df >= last.df) {
    // As with F: critical q are nearly linear in 1/df, and the last row is computed at its
    // df, so the values beyond it approach the limit rather than stay at the last row.
    const double share = static_cast<double>(last.df) / df;
    for (size_t i = 0; i < 3; ++i) {
      const double limit = kStudentizedRangeLimit[i][column];
      critical[i] = Scaled(limit + share * (last.critical[i][column] - limit));
    }
  } else {
    size_t upper = 18;  // the first row after df 20 whose df is above df
    while (upper + 1 < rows.size() && rows[upper].df <= df) ++upper;
    const auto& high = rows[upper];
    const auto& low = rows[upper - 1];
    const double share = high.df > low.df ? static_cast<double>(df - low.df) / (high.df - low.df) : 1.0;
    for (size_t i = 0; i < 3; ++i) {
      const double lowValue = low.critical[i][column];
      critical[i] = Scaled(lowValue + share * (high.critical[i][column] - lowValue));
    }
  }
  return critical;
}

std::string_view QMark(const StudentizedRangeTable& table, int k, int df, double q) {
  if (q < 2.33 || df < 3 || k < 2) return "  ";
  const std::array<double, 3> critical = StudentizedRangeCritical(table, k, df);
  if (q >= critical[2]) return "**";
  if (q >= critical[1]) return "* ";
  if (q >= critical[0]) return "+ ";
  return "  ";
}

double CriticalFAt(const FTable& table, int denominatorDF, int confidencePercent) {
  FTabResult f = FTabLookup(table, 1, denominatorDF, 0);
  switch (confidencePercent) {
    case 90: return f.CriticalF90;
    case 99: return f.CriticalF99;
    default: return f.CriticalF95;
  }
}

}  // namespace tarvika
