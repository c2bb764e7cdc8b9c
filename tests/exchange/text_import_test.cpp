// Delimited text into the workspace: quoting, line ends, delimiters, names, types and the
// refusals that leave the workspace as it was.

#include <gtest/gtest.h>

#include "exchange/text_import.h"
#include "import_fixture.h"
#include "support/cli_runner.h"

namespace tarvika::test {
namespace {

using TextImport = ImportTest;

TEST_F(TextImport, QuotedFieldsEmptyFieldsStarsAndTypes) {
  const std::string path = Write("survey.csv",
                                 "id,name,score,,score,Score,stars\r\n"
                                 "1,\"Smith, J\",3.5,x,7,1,***\r\n"
                                 "2,\"He said \"\"hi\"\"\nand left\",*,,8,2,*\r\n"
                                 "007, plain ,-2.25,,9,3\r\n"
                                 "\r\n\r\n");
  ASSERT_TRUE(Import(path)) << Told();
  ASSERT_EQ(ws.NumberOfCases(), 3);
  ASSERT_EQ(ws.NumberOfVariables(), 7);
  // Duplicates, also those that differ only in case, are renamed; an empty name is made.
  EXPECT_EQ(Names(), (std::vector<std::string>{"id", "name", "score", "Var001", "score~00", "Score~01", "stars"}));
  EXPECT_EQ(Cell(2, 1), "Smith, J");
  EXPECT_EQ(Cell(2, 2), "He said \"hi\" and left");  // a cell holds no line end
  EXPECT_EQ(Cell(2, 3), "plain");
  EXPECT_EQ(Cell(3, 2), "");  // "*" only is no datum
  EXPECT_EQ(Cell(1, 3), "7");  // a numeric column is held in the tables' form
  EXPECT_EQ(Cell(4, 1), "x");
  EXPECT_EQ(Decl(kType, 1), "num=1_7;");
  EXPECT_EQ(Decl(kType, 2), "string=21;");
  EXPECT_EQ(Decl(kType, 3), "num=-3_4;");  // the range holds -2.25 and 3.5
  EXPECT_EQ(Decl(kType, 4), "string=1;");
  EXPECT_EQ(Decl(kType, 7), "num=0_0;");  // only stars: an empty numeric column
  EXPECT_EQ(Decl(kIndex, 1), "1.");
  EXPECT_EQ(Decl(kGroupType, 1), "none");
  EXPECT_EQ(Cell(0, 3), "3");
  EXPECT_EQ(Cell(5, 0), "score~00");
}

TEST_F(TextImport, LineEndsAreReadAlikeAndTheFileIsNotChanged) {
  const std::string lf = "a\tb\n1\t2\n3\t4\n";
  std::string cr = lf, crlf;
  for (char& c : cr) c = c == '\n' ? '\r' : c;
  for (char c : lf) crlf += c == '\n' ? std::string("\r\n") : std::string(1, c);
  for (const std::string& bytes : {lf, cr, crlf}) {
    const std::string path = Write("t.txt", bytes);
    ASSERT_TRUE(Import(path)) << Told();
    EXPECT_EQ(ws.NumberOfCases(), 2);
    EXPECT_EQ(Names(), (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(Cell(2, 2), "4");
    EXPECT_EQ(ReadFile(path), bytes);
  }
}

TEST_F(TextImport, DelimiterPresetHeaderlessAndRaggedLines) {
  EXPECT_EQ(PresetDelimiter("a;b;c,d\n1,2,3,4"), ';');
  EXPECT_EQ(PresetDelimiter("\"x;y;z\",b,c\n"), ',');  // quoted delimiters don't count
  EXPECT_EQ(PresetDelimiter("a\tb\tc\td,e,f,g\n"), std::nullopt);

  // Semicolons with decimal commas, no header; a longer line widens the table.
  const std::string path = Write("s.csv", "1,5;2;8\n3;4;x;9\n");
  ImportOptions options;
  options.headerRow = false;
  ASSERT_TRUE(Import(path, options)) << Told();
  EXPECT_EQ(Names(), (std::vector<std::string>{"var1", "var2", "var3", "var4"}));
  EXPECT_EQ(Cell(1, 1), "1.5");
  EXPECT_EQ(Decl(kType, 1), "num=1_3;");
  EXPECT_EQ(Cell(4, 1), "");
  EXPECT_EQ(Decl(kType, 3), "string=1;");
  EXPECT_EQ(Decl(kType, 4), "num=0_0;");

  // A header shorter than the data: the added columns are named.
  ASSERT_TRUE(Import(Write("h.txt", "a\n1\t2\t3\n")));
  EXPECT_EQ(Names(), (std::vector<std::string>{"a", "Var001", "Var002"}));
  // Long names keep their full text as long name.
  ASSERT_TRUE(Import(Write("l.csv", "participant_age,participant_sex\n30,1\n")));
  EXPECT_EQ(Names(), (std::vector<std::string>{"particip", "parti~00"}));
  EXPECT_EQ(Decl(kLongName, 2), "participant_sex");
}

TEST_F(TextImport, EncodingsSixteenBitWindows1250AndUtf8) {
  // "név\n1\n" in UTF-16LE with its mark.
  const std::string utf16("\xFF\xFEn\0\xE9\0v\0\n\0" "1\0\n\0", 14);
  ASSERT_TRUE(Import(Write("u.txt", utf16))) << Told();
  EXPECT_EQ(Names(), (std::vector<std::string>{"név"}));
  EXPECT_NE(Told().find("This is a unicode text file."), std::string::npos);
  ASSERT_TRUE(Import(Write("w.txt", "\xF5r\n1\n")));  // Windows-1250 "ő"
  EXPECT_EQ(Names(), (std::vector<std::string>{"őr"}));
  ASSERT_TRUE(Import(Write("b.csv", "\xEF\xBB\xBFk\xC3\xB3" "d\nalma\n")));
  EXPECT_EQ(Names(), (std::vector<std::string>{"kód"}));
  EXPECT_EQ(Decl(kType, 1), "string=4;");
}

TEST_F(TextImport, RefusalsLeaveTheWorkspaceAsItWas) {
  ASSERT_TRUE(Import(Write("ok.csv", "a,b\n1,2\n")));
  for (const std::string& bytes : {std::string("a,b\n1,\"2\n3,4\n"), std::string(""), std::string("a,b\n\n")}) {
    user.told.clear();
    EXPECT_FALSE(Import(Write("bad.csv", bytes)));
    EXPECT_EQ(Told().rfind("Unsuccessful data input.", 0), 0u) << Told();
    EXPECT_EQ(Names(), (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(Cell(2, 1), "2");
  }
  EXPECT_FALSE(Import((folder.path() / "absent.csv").string()));
  EXPECT_FALSE(Import(Write("x.dat", "a\n1\n")));
}

class TextImportComma : public ImportTest {
 protected:
  TextImportComma() : ImportTest(',') {}
};

TEST_F(TextImportComma, NumbersTakeTheMachineSeparator) {
  ASSERT_TRUE(Import(Write("d.txt", "x\ty\n1.25\t1e3\n-0.5\t2\n")));
  EXPECT_EQ(Cell(1, 1), "1,25");
  EXPECT_EQ(Cell(1, 2), "-0,5");
  EXPECT_EQ(Cell(2, 1), "1000");
  EXPECT_EQ(Decl(kType, 1), "num=-1_2;");
}

}  // namespace
}  // namespace tarvika::test
