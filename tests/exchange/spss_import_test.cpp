// SPSS data files into the workspace, checked against what R's haven reads from the same
// file (reference/make_labelled_sav.R), and the refusals of missing and damaged files.

#include <gtest/gtest.h>

#include <readstat.h>

#include <cstdio>
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

class SpssImport : public ImportTest {
 protected:
  // The workspace holds what haven read into reference/<prefix>_*.csv. A portable file
  // has names of at most 8 characters, so its long names are the labels alone.
  void ExpectHavensView(const std::string& prefix, bool portable) const {
    const ReferenceCsv cells(prefix + "_cells.csv", "exchange");
    const ReferenceCsv decl(prefix + "_declarations.csv", "exchange");
    ASSERT_EQ(ws.NumberOfVariables(), static_cast<int>(decl.size()));
    ASSERT_EQ(ws.NumberOfCases(), static_cast<int>(cells.size()));
    for (int v = 1; v <= ws.NumberOfVariables(); ++v) {
      SCOPED_TRACE(v);
      const std::string name = decl.Text(v - 1, "name"), label = decl.Text(v - 1, "label");
      const bool cut = !portable && name.size() > 8;
      EXPECT_EQ(Decl(kLongName, v), cut ? name + (label.empty() ? "" : " " + label) : label);
      EXPECT_EQ(Decl(kGroupLabels, v), LabelsOf(decl.Text(v - 1, "labels")));
      EXPECT_EQ(Decl(kGroupType, v), decl.Text(v - 1, "labels").empty() ? "none" : "codes");
      EXPECT_EQ(Decl(kMissing, v), MissingOf(decl.Text(v - 1, "na_values"), decl.Text(v - 1, "na_range")));
      const std::string kind = decl.Text(v - 1, "type");
      EXPECT_EQ(Decl(kType, v).rfind(kind == "numeric" ? "num=" : kind == "date" ? "date=" : "string=", 0), 0u);
      for (int r = 1; r <= ws.NumberOfCases(); ++r) {
        const std::string expected = cells.Text(r - 1, name);
        if (kind != "numeric" || expected.empty()) {
          EXPECT_EQ(Cell(v, r), expected) << "case " << r;
        } else {
          EXPECT_DOUBLE_EQ(*ParseLocalNumber(Cell(v, r), '.'), std::stod(expected)) << "case " << r;
        }
      }
    }
  }
};

TEST_F(SpssImport, HavensCellsAndDeclarationsArrive) {
  ASSERT_TRUE(Import(kReference + "labelled.sav")) << Told();
  ExpectHavensView("labelled", false);
  EXPECT_EQ(Names(), (std::vector<std::string>{"id", "sex", "satis***", "satis~00", "town", "weight", "born"}));
  EXPECT_EQ(Decl(kType, 3), "num=-2_95;");
  EXPECT_EQ(Decl(kType, 5), "string=22;");
  EXPECT_EQ(Told(),
            "WARNING! If a short variable name ends with ***, it indicates that the original SPSS name is longer than "
            "8 characters. The SPSS name stands then in the beginning of the long variable name.\r\n"
            "2 variables at least one group label is longer than 12 characters.\n");
}

// The same data written by PSPP (reference/make_pspp_files.sps) as a data file and as a
// portable file; the portable file's names are cut to 8 characters by its format.
TEST_F(SpssImport, FilesOfAnotherWriter) {
  ASSERT_TRUE(Import(kReference + "pspp.sav")) << Told();
  ExpectHavensView("pspp", false);
  EXPECT_EQ(Names(), (std::vector<std::string>{"respo***", "wellb***", "class", "name", "visit"}));
  ASSERT_TRUE(Import(kReference + "pspp.por")) << Told();
  ExpectHavensView("pspp", true);
  EXPECT_EQ(Names(), (std::vector<std::string>{"RESPONDE", "WELLBEIN", "CLASS", "NAME", "VISIT"}));
  EXPECT_EQ(Decl(kType, 4), "string=9;");
}

// A portable file written by ReadStat's own writer: two numeric variables (labels, a missing
// code and a missing range) and a string one.
void WritePortable(const std::string& path) {
  std::FILE* out = std::fopen(path.c_str(), "wb");
  readstat_writer_t* w = readstat_writer_init();
  readstat_set_data_writer(w, [](const void* data, size_t len, void* ctx) -> ssize_t {
    return static_cast<ssize_t>(std::fwrite(data, 1, len, static_cast<std::FILE*>(ctx)));
  });
  readstat_label_set_t* labels = readstat_add_label_set(w, READSTAT_TYPE_DOUBLE, "grade");
  readstat_label_double_value(labels, 1, "low; or/worse");
  readstat_label_double_value(labels, 2, "high");
  readstat_variable_t* grade = readstat_add_variable(w, "GRADE", READSTAT_TYPE_DOUBLE, 0);
  readstat_variable_set_label(grade, "Grade of the pupil");
  readstat_variable_set_label_set(grade, labels);
  readstat_variable_add_missing_double_value(grade, 9);
  readstat_variable_t* age = readstat_add_variable(w, "AGE", READSTAT_TYPE_DOUBLE, 0);
  readstat_variable_add_missing_double_range(age, 900, 999);
  readstat_variable_t* town = readstat_add_variable(w, "TOWN", READSTAT_TYPE_STRING, 8);
  ASSERT_EQ(readstat_begin_writing_por(w, out, 3), READSTAT_OK);
  const double grades[] = {1, 2, 9}, ages[] = {14.5, 999, 16};
  const char* towns[] = {"Pecs", "", "Eger"};
  for (int r = 0; r < 3; ++r) {
    readstat_begin_row(w);
    readstat_insert_double_value(w, grade, grades[r]);
    readstat_insert_double_value(w, age, ages[r]);
    readstat_insert_string_value(w, town, towns[r]);
    readstat_end_row(w);
  }
  ASSERT_EQ(readstat_end_writing(w), READSTAT_OK);
  readstat_writer_free(w);
  std::fclose(out);
}

TEST_F(SpssImport, PortableFile) {
  const std::string path = (folder.path() / "pupils.por").string();
  WritePortable(path);
  ASSERT_TRUE(Import(path)) << Told();
  EXPECT_EQ(Names(), (std::vector<std::string>{"GRADE", "AGE", "TOWN"}));
  ASSERT_EQ(ws.NumberOfCases(), 3);
  EXPECT_EQ(Cell(1, 3), "9");
  EXPECT_EQ(Cell(2, 1), "14.5");
  EXPECT_EQ(Cell(3, 2), "");
  EXPECT_EQ(Decl(kLongName, 1), "Grade of the pupil");
  EXPECT_EQ(Decl(kGroupLabels, 1), "1=low, or,worse;/2=high;/");
  EXPECT_EQ(Decl(kMissing, 1), "9");
  EXPECT_EQ(Decl(kMissing, 2), "900_999");
  EXPECT_EQ(Decl(kType, 3), "string=4;");
  EXPECT_EQ(Told(), "The SPSS portable file has been successfully loaded.\n"
                    "1 variables at least one group label is longer than 12 characters.\n");
}

// A data file of more variables than a workspace holds loads the first ones after telling so.
TEST_F(SpssImport, VariablesBeyondTheLimitAreLeftOut) {
  const std::string path = (folder.path() / "wide.sav").string();
  std::FILE* out = std::fopen(path.c_str(), "wb");
  readstat_writer_t* w = readstat_writer_init();
  readstat_set_data_writer(w, [](const void* data, size_t len, void* ctx) -> ssize_t {
    return static_cast<ssize_t>(std::fwrite(data, 1, len, static_cast<std::FILE*>(ctx)));
  });
  std::vector<readstat_variable_t*> vars;
  for (int v = 1; v <= 1001; ++v) vars.push_back(readstat_add_variable(w, ("v" + std::to_string(v)).c_str(), READSTAT_TYPE_DOUBLE, 0));
  ASSERT_EQ(readstat_begin_writing_sav(w, out, 1), READSTAT_OK);
  readstat_begin_row(w);
  for (int v = 1; v <= 1001; ++v) readstat_insert_double_value(w, vars[v - 1], v);
  readstat_end_row(w);
  ASSERT_EQ(readstat_end_writing(w), READSTAT_OK);
  readstat_writer_free(w);
  std::fclose(out);

  ASSERT_TRUE(Import(path)) << Told();
  EXPECT_EQ(Told(), "Number of variables: 1001 > 1000. Only the first 1000 variables will be loaded.\n");
  ASSERT_EQ(ws.NumberOfVariables(), 1000);
  EXPECT_EQ(Decl(kShortName, 1000), "v1000");
  EXPECT_EQ(Cell(1000, 1), "1000");
}

TEST_F(SpssImport, MissingForeignAndDamagedFilesAreRefused) {
  ASSERT_TRUE(Import(Write("keep.csv", "a\n1\n")));
  const std::string whole = ReadFile(kReference + "labelled.sav");
  const std::string portable = ReadFile(kReference + "pspp.por");
  const std::pair<std::string, std::string> cases[] = {
      {(folder.path() / "absent.sav").string(), "File specified to load does not exist."},
      {Write("text.sav", "a,b\n1,2\n"), "The file is damaged or not a valid SPSS sav file."},
      {Write("cut.sav", whole.substr(0, whole.size() / 2)), "An error occurred during reading the data file."},
      {Write("text.por", "a,b\n1,2\n"), "The file is damaged or not a valid SPSS portable file."},
      {Write("cut.por", portable.substr(0, portable.size() / 2)), "The file is damaged or not a valid SPSS portable file."},
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
