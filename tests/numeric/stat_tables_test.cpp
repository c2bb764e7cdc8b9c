// The table readers and the F table lookup.

#include "numeric/stat_tables.h"

#include <gtest/gtest.h>

#include <fstream>

#include "support/temp_folder.h"

namespace tarvika {
namespace {

const std::filesystem::path kShipped = std::filesystem::path(TARVIKA_SOURCE_DIR) / "data" / "stattab";

// An F table whose rows are easy to follow: row df d holds d, 2d, 3d (times 100).
FTable WriteAndLoadSimpleFTable(const std::filesystem::path& folder) {
  std::ofstream out(folder / "ftab.txt");  // lower case on disk, looked for as FTAB.TXT
  for (int df : kFTableRowDf) out << df << ' ' << df << ' ' << 2 * df << ' ' << 3 * df << '\n';
  out.close();
  return LoadFTable(folder);
}

TEST(StatTables, MissingFileStopsWithItsName) {
  test::TempFolder folder;
  try {
    LoadWilcoxonTable(folder.path());
    FAIL() << "no exception";
  } catch (const MissingTableFile& missing) {
    EXPECT_EQ(missing.name(), "WILC.MST");
  }
  EXPECT_THROW(RequireTableFile(folder.path() / "nowhere", "SIGN.MST"), MissingTableFile);
  EXPECT_EQ(MissingTableMessage("TSTAB.TXT", Language::English),
            "File TSTAB.TXT is missing. Program stops.\nReinstall Tarvika");
  EXPECT_EQ(
      MissingTableMessage("TSTAB.TXT", Language::Hungarian),
      "Hiányzik a következő fájl, ami nélkül a program nem fut: TSTAB.TXT.\nInstallálja újra a Tarvikaot!");
  EXPECT_EQ(TableFolder("/opt/tarvika"), std::filesystem::path("/opt/tarvika/stattab"));
}

TEST(StatTables, FTabLookupRowsInterpolationAndMarkers) {
  test::TempFolder folder;
  const FTable table = WriteAndLoadSimpleFTable(folder.path());

  // Denominator df 1 and 2 come from the two rows fixed in the program; a df below 1 takes
  // the row of df 1.
  EXPECT_EQ(FTabLookup(table, 1, 1, 161.44).marker, "+ ");
  EXPECT_EQ(FTabLookup(table, 1, 1, 161.45).marker, "* ");
  EXPECT_EQ(FTabLookup(table, 1, 1, 39.85).marker, " ");
  EXPECT_EQ(FTabLookup(table, 1, 1, 4052.18).marker, "**");
  const FTabResult two = FTabLookup(table, 1, 2, 0);
  EXPECT_EQ(two.CriticalF90, 8.53);
  EXPECT_EQ(two.CriticalF95, 18.51);
  EXPECT_EQ(two.CriticalF99, 98.5);
  EXPECT_EQ(FTabLookup(table, 1, 0, 0).CriticalF99, 4052.18);
  EXPECT_EQ(FTabLookup(table, 2, 1, 1e9).marker, " ");  // no fixed row for numerator df 2

  // Rows 3 to 26 are read directly, scaled by 1/100.
  const FTabResult ten = FTabLookup(table, 1, 10, 0.2);
  EXPECT_EQ(ten.CriticalF90, 0.1);
  EXPECT_EQ(ten.CriticalF95, 0.2);
  EXPECT_EQ(ten.CriticalF99, 0.3);
  EXPECT_EQ(ten.marker, "* ");  // at exactly the 5% value

  // Between rows: linear in df; df 27 lies halfway between the rows of df 26 and 28.
  EXPECT_DOUBLE_EQ(FTabLookup(table, 1, 27, 0).CriticalF95, 0.54);
  EXPECT_DOUBLE_EQ(FTabLookup(table, 1, 50, 0).CriticalF99, 1.5);
  EXPECT_DOUBLE_EQ(FTabLookup(table, 1, 254, 0).CriticalF90, 2.54);
  EXPECT_DOUBLE_EQ(FTabLookup(table, 1, 255, 0).CriticalF90, 2.55);
  // From the last row on: linear in 1/df toward the limit 2.71, 3.84, 6.63.
  EXPECT_DOUBLE_EQ(FTabLookup(table, 1, 510, 0).CriticalF95, (384 + 510) / 200.0);
  EXPECT_DOUBLE_EQ(FTabLookup(table, 1, 2550, 0).CriticalF99, (663 + 0.1 * (765 - 663)) / 100);
  EXPECT_NEAR(FTabLookup(table, 1, 1 << 30, 0).CriticalF90, 2.71, 1e-6);
}

TEST(StatTables, ShippedTablesReadAsDocumented) {
  // Published values of these tables, to the digits they are usually printed with.
  const FTable fTable = LoadFTable(kShipped);
  EXPECT_EQ(fTable.RowIndex(32).df, 255);
  const FTabResult ten = FTabLookup(fTable, 1, 10, 4.96);
  EXPECT_EQ(ten.CriticalF90, 3.29);
  EXPECT_EQ(ten.CriticalF95, 4.96);
  EXPECT_EQ(ten.CriticalF99, 10.04);
  EXPECT_EQ(ten.marker, "* ");

  const FMatrix fMatrix = LoadFMatrix(kShipped);
  EXPECT_NEAR(fMatrix.value[7][0], 4.965, 1e-3);    // df 10, numerator 1
  EXPECT_NEAR(fMatrix.value[25][11], 1.932, 1e-3);  // df 30, numerator 20

  const auto critical = LoadCriticalTable(kShipped);
  EXPECT_NEAR(critical[0], 2.706, 1e-3);    // df 1 at 0.10
  EXPECT_NEAR(critical[3], 10.828, 1e-3);   // df 1 at 0.001
  EXPECT_NEAR(critical[5], 5.991, 1e-3);    // df 2 at 0.05
  EXPECT_NEAR(critical[39], 29.588, 1e-3);  // df 10 at 0.001

  const CriticalCountTable wilcoxon = LoadWilcoxonTable(kShipped);
  EXPECT_TRUE(wilcoxon.Has(25) && !wilcoxon.Has(26) && !wilcoxon.Has(4));
  EXPECT_EQ(wilcoxon.Row(10), (CriticalCounts{10, 8, 3}));
  EXPECT_EQ(wilcoxon.Row(25), (CriticalCounts{100, 89, 68}));
  const CriticalCountTable sign = LoadSignTable(kShipped);
  EXPECT_EQ(sign.Row(20), (CriticalCounts{5, 5, 3}));
  EXPECT_EQ(sign.Row(50), (CriticalCounts{18, 17, 15}));
}

}  // namespace
}  // namespace tarvika
