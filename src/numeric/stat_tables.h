#pragma once
// The statistical table files of the table folder ("stattab" in the program folder). The
// program only reads them; a run that needs a missing one stops with a message.

#include <array>
#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "lang/language.h"

namespace tarvika {

// ---- The files and their row and column lists ----------------------------------------------

inline constexpr std::string_view kFTableFile = "FTAB.TXT";             // text
inline constexpr std::string_view kFMatrixFile = "ftab.mst";            // 6-byte reals
inline constexpr std::string_view kCriticalTableFile = "CTABW.MST";     // 6-byte reals
inline constexpr std::string_view kWilcoxonTableFile = "WILC.MST";      // 3-byte records
inline constexpr std::string_view kSignTableFile = "SIGN.MST";          // 3-byte records
inline constexpr std::string_view kStudentizedRangeFile = "tstab.txt";  // text (told as "TSTAB.TXT")
inline constexpr std::array<std::string_view, 6> kTableFiles = {
    kFTableFile, kFMatrixFile, kCriticalTableFile, kWilcoxonTableFile, kSignTableFile, kStudentizedRangeFile};

// Denominator df of the rows of "FTAB.TXT" and of "ftab.mst" (255 stands for 255 and more).
inline constexpr std::array<int, 30> kFTableRowDf = {3,  4,  5,  6,  7,  8,  9,  10, 11,  12,
                                                     13, 14, 15, 16, 17, 18, 19, 20, 21,  22,
                                                     23, 24, 25, 26, 28, 30, 40, 60, 120, 255};
// Numerator df of the columns of "ftab.mst".
inline constexpr std::array<int, 16> kFMatrixColumnDf = {1, 2,  3,  4,  5,  6,  7,   8,
                                                         9, 10, 15, 20, 30, 60, 120, 255};
// Error df of the rows of "tstab.txt"; its columns are k = 2 to 20.
inline constexpr std::array<int, 24> kStudentizedRangeDf = {3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13,  14,
                                                            15, 16, 17, 18, 19, 20, 24, 30, 40, 60, 120, 255};
inline constexpr int kStudentizedRangeMaxK = 20;

// The first and last n of the rows of "WILC.MST" and "SIGN.MST".
inline constexpr int kWilcoxonFirstN = 5, kWilcoxonLastN = 25;
inline constexpr int kSignFirstN = 6, kSignLastN = 50;
inline constexpr int kCriticalTableSize = 40;

// ---- Missing files -------------------------------------------------------------------------

std::filesystem::path TableFolder(const std::filesystem::path& programFolder);

// Thrown when a table file is not in the table folder. The program shows
// MissingTableMessage and stops.
class MissingTableFile : public std::runtime_error {
 public:
  explicit MissingTableFile(std::string name);
  const std::string& name() const { return name_; }

 private:
  std::string name_;
};

// "File FTAB.TXT is missing. Program stops." and "Reinstall Tarvika", in the language.
std::string MissingTableMessage(std::string_view name, Language language);

// The path of the named file in the folder. Case of letters does not matter: the files
// are known both as "FTAB.TXT" and "ftab.txt". Throws MissingTableFile.
std::filesystem::path RequireTableFile(const std::filesystem::path& folder, std::string_view name);

// ---- The tables ----------------------------------------------------------------------------

// "FTAB.TXT": critical F values for numerator df 1, times 100, at p = 0.10, 0.05, 0.01.
struct FTable {
  struct Row {
    int df = 0;
    std::array<int, 3> critical{};
  };
  std::array<Row, 30> rows;  // rows[i] is the file's row index i + 3
  const Row& RowIndex(int index) const { return rows[index - 3]; }
};
FTable LoadFTable(const std::filesystem::path& folder);

// The rows the file does not hold, fixed in the program in the file's form: denominator df 1
// and 2, and the limit as the denominator df grows without bound (F(1, inf) is the square
// of a normal deviate: 1.645^2, 1.960^2, 2.576^2).
inline constexpr FTable::Row kFTableRowDf1 = {1, {3986, 16145, 405218}};
inline constexpr FTable::Row kFTableRowDf2 = {2, {853, 1851, 9850}};
inline constexpr std::array<int, 3> kFTableLimit = {271, 384, 663};

// The three critical values for numerator df 1 and a denominator df, and the marker of F
// against them: " ", "+ " (p < 0.10), "* " (p < 0.05) or "**" (p < 0.01). Between the
// file's rows from df 26 to 255 the values are interpolated linearly in df; from df 255 on,
// linearly in 1/df between the row of 255 and the limit. A df below 1 takes the df-1 row;
// for df below 3 with a numerator df above 1 there are no values (all 0, marker " ").
struct FTabResult {
  double CriticalF90 = 0;
  double CriticalF95 = 0;
  double CriticalF99 = 0;
  std::string marker = " ";
};
FTabResult FTabLookup(const FTable& table, int numeratorDF, int denominatorDF, double f);
// The critical F for numerator df 1 and the denominator df at a confidence of 90, 95 or
// 99 percent (anything else reads as 95): the square of a two-sided t quantile.
double CriticalFAt(const FTable& table, int denominatorDF, int confidencePercent);

// "WILC.MST" and "SIGN.MST": per n, the two-sided critical values at 0.10, 0.05, 0.01 (the
// largest smaller rank sum, or smaller count, still significant), 0 where none exists.
using CriticalCounts = std::array<std::uint8_t, 3>;
struct CriticalCountTable {
  int firstN = 0;
  std::vector<CriticalCounts> rows;
  bool Has(int n) const { return n >= firstN && n < firstN + static_cast<int>(rows.size()); }
  const CriticalCounts& Row(int n) const { return rows.at(n - firstN); }
};
CriticalCountTable LoadWilcoxonTable(const std::filesystem::path& folder);
CriticalCountTable LoadSignTable(const std::filesystem::path& folder);

// "CTABW.MST": 40 values in file order.
std::array<double, kCriticalTableSize> LoadCriticalTable(const std::filesystem::path& folder);

// "tstab.txt": upper critical values of the studentized range q, times 100, for k = 2 to 20
// means at p = 0.10, 0.05 and 0.01, one row per error df of kStudentizedRangeDf.
struct StudentizedRangeTable {
  struct Row {
    int df = 0;
    std::array<std::array<int, kStudentizedRangeMaxK - 1>, 3> critical{};  // [level][k - 2]
  };
  std::array<Row, kStudentizedRangeDf.size()> rows;
};
// A missing file is reported as "TSTAB.TXT".
StudentizedRangeTable LoadStudentizedRangeTable(const std::filesystem::path& folder);

// The row the file does not hold, in the file's form: the critical q as the error df grows
// without bound (the range of k standard normal values), for k = 2 to 20 at p = 0.10,
// 0.05, 0.01.
inline constexpr std::array<std::array<int, kStudentizedRangeMaxK - 1>, 3> kStudentizedRangeLimit = {{
    {233, 290, 324, 348, 366, 381, 393, 404, 413, 421, 428, 435, 441, 447, 452, 457, 461, 465, 469},
    {277, 331, 363, 386, 403, 417, 429, 439, 447, 455, 462, 468, 474, 480, 485, 489, 493, 497, 501},
    {364, 412, 440, 460, 476, 488, 499, 508, 516, 523, 529, 535, 540, 545, 549, 554, 557, 561, 565},
}};

// The critical q at p = 0.10, 0.05, 0.01 for k means (k above 20 reads as 20) and an error
// df from 3 on: the row of df up to 20; between the file's rows from 20 to 255 linear in df;
// from 255 on linear in 1/df between the row of 255 and the limit. All 0 for df below 3 or
// k below 2.
std::array<double, 3> StudentizedRangeCritical(const StudentizedRangeTable& table, int k, int df);

// The two-character mark of a pairwise q: "**" (p < 0.01), "* " (p < 0.05), "+ " (p < 0.10)
// or two blanks. Blank without a look at the table for q below 2.33 (below the smallest
// value of the table), df below 3 or k below 2.
std::string_view QMark(const StudentizedRangeTable& table, int k, int df, double q);

// "ftab.mst": the critical F values at p = 0.05, value[row][column] for the row
// (denominator) and column (numerator) df lists above.
struct FMatrix {
  std::array<std::array<double, kFMatrixColumnDf.size()>, kFTableRowDf.size()> value{};
};
FMatrix LoadFMatrix(const std::filesystem::path& folder);

}  // namespace tarvika
