// SPSS data files into the workspace, checked against what R's haven reads from the same
// file (reference/make_labelled_sav.R), and the refusals of missing and damaged files.

#include <gtest/gtest.h>

#include <filesystem>

#include "import_fixture.h"
#include "support/cli_runner.h"
#include "support/reference_csv.h"
#include "workspace/numbers.h"

namespace tarvika::test {
namespace {

const std::string kReference = std::string(TARVIKA_TEST_DATA) + "/exchange/reference/";

std::vector<std::string> Split(const std::string& text, char by) {
  std::vector<std::string> parts;
  if (text.empty()) return parts;
  std::size_t from = 0;
  for (std::size_t at; (at = text.find(by, from)) != std::string::npos; from = at + 1) parts.push_back(text.substr(from, at - from));
  parts.push_back(text.substr(from));
  return parts;
}

// The declarations haven reports, in the workspace's mini-languages.
std::string LabelsOf(const std::string& haven) {
  std::string labels;
  for (std::string entry : Split(haven, '|')) {
    for (std::size_t i = entry.find('=') + 1; i < entry.size(); ++i) {
      if (entry[i] == ';' || entry[i] == '/') entry[i] = ',';
    }
    labels += entry + ";/";
  }
  return labels;
}
std::string MissingOf(const std::string& values, const std::string& range) {
  std::vector<std::string> codes = Split(values, '|'), bounds = Split(range, '|');
  std::string text = bounds.empty() ? "" : bounds[0] + "_" + bounds[1];
  for (const std::string& code : codes) text += (text.empty() ? "" : "/") + code;
  return text;
}

using SpssImport = ImportTest;

TEST_F(SpssImport, HavensCellsAndDeclarationsArrive) {
  ASSERT_TRUE(Import(kReference + "labelled.sav")) << Told();
  const ReferenceCsv cells("labelled_cells.csv", "exchange");
  const ReferenceCsv decl("labelled_declarations.csv", "exchange");
  ASSERT_EQ(ws.NumberOfVariables(), static_cast<int>(decl.size()));
  ASSERT_EQ(ws.NumberOfCases(), static_cast<int>(cells.size()));
  for (int v = 1; v <= ws.NumberOfVariables(); ++v) {
    SCOPED_TRACE(v);
    const std::string name = decl.Text(v - 1, "name"), label = decl.Text(v - 1, "label");
    const bool cut = name.size() > 8;
    EXPECT_EQ(Decl(kLongName, v), cut ? name + (label.empty() ? "" : " " + label) : label);
    EXPECT_EQ(Decl(kGroupLabels, v), LabelsOf(decl.Text(v - 1, "labels")));
    EXPECT_EQ(Decl(kGroupType, v), decl.Text(v - 1, "labels").empty() ? "none" : "codes");
    EXPECT_EQ(Decl(kMissing, v), MissingOf(decl.Text(v - 1, "na_values"), decl.Text(v - 1, "na_range")));
    const bool text = Decl(kType, v).rfind("string=", 0) == 0;
    for (int r = 1; r <= ws.NumberOfCases(); ++r) {
      const std::string expected = cells.Text(r - 1, name);
      if (text || expected.empty()) {
        EXPECT_EQ(Cell(v, r), expected) << "case " << r;
      } else {
        EXPECT_DOUBLE_EQ(*ParseLocalNumber(Cell(v, r), '.'), std::stod(expected)) << "case " << r;
      }
    }
  }
  EXPECT_EQ(Names(), (std::vector<std::string>{"id", "sex", "satis***", "satis~00", "town", "weight"}));
  EXPECT_EQ(Decl(kType, 3), "num=-2_95;");
  EXPECT_EQ(Decl(kType, 5), "string=22;");
  EXPECT_EQ(Told(),
            "WARNING! If a short variable name ends with ***, it indicates that the original SPSS name is longer than "
            "8 characters. The SPSS name stands then in the beginning of the long variable name.\r\n"
            "2 variables at least one group label is longer than 12 characters.\n");
}

TEST_F(SpssImport, MissingForeignAndDamagedFilesAreRefused) {
  ASSERT_TRUE(Import(Write("keep.csv", "a\n1\n")));
  const std::string whole = ReadFile(kReference + "labelled.sav");
  const std::pair<std::string, std::string> cases[] = {
      {(folder.path() / "absent.sav").string(), "File specified to load does not exist."},
      {Write("text.sav", "a,b\n1,2\n"), "The file is damaged or not a valid SPSS sav file."},
      {Write("cut.sav", whole.substr(0, whole.size() / 2)), "An error occurred during reading the data file."},
      {Write("text.por", "a,b\n1,2\n"), "The file is damaged or not a valid SPSS portable file."},
  };
  for (const auto& [path, message] : cases) {
    user.told.clear();
    EXPECT_FALSE(Import(path));
    EXPECT_NE(Told().find(message), std::string::npos) << Told();
    EXPECT_EQ(Names(), (std::vector<std::string>{"a"}));
  }
}

}  // namespace
}  // namespace tarvika::test
