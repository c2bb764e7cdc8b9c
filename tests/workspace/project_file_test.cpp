#include "workspace/project_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <random>
#include <set>
#include <string>
#include <vector>

#include "project_file_fixture.h"
#include "workspace/numbers.h"
#include "workspace/workspace.h"

namespace tarvika {
namespace {

TEST_F(ProjectFileTest, HeaderKeysLabelsAndLineEnds) {
  const std::string body =
      "<selvoran_for_windows>=1.0;\n<variables>=2;\n<cases>=1;\n<title>=x;\n#=1;\n<na&me>=score;\n"
      "<longname>=Final score;\n$num=1,5_9,5;\n<assign>=codes;\n<labels>=;\n1=a;\n=b;\n2,0=c;\n"
      "<help>=first\\second;\n<missing>=9/99;\n#=2;\n<name>=band;\n$num=0_0;\n<assign>=intervals;\n"
      "<labels>=;\n0,5_1.5=low;\n#=2;\n<datamatrix>=;\n3\t4\n";
  // The same file with each kind of line end loads alike.
  for (std::string_view end : {"\n", "\r\n", "\r"}) {
    std::string text;
    for (char c : body) text += c == '\n' ? std::string(end) : std::string(1, c);
    ASSERT_EQ(LoadProject(ws, Write("h.msw", text)), LoadResult::Loaded) << "line end " << end.size();
    EXPECT_EQ(Decl(kShortName, 1), "score");
    EXPECT_EQ(Cell(1, 0), "score");
    EXPECT_EQ(Decl(kLongName, 1), "Final score");
    EXPECT_EQ(Decl(kType, 1), "num=1.5_9.5;");
    EXPECT_EQ(Decl(kGroupType, 1), "codes");
    EXPECT_EQ(Decl(kGroupLabels, 1), "1=a,b;/2.0=c;/");
    EXPECT_EQ(Decl(kHelp, 1), "first\\second");
    EXPECT_EQ(Decl(kMissing, 1), "9/99");
    EXPECT_EQ(Decl(kGroupLabels, 2), "0.5_1.5=low;/");
    EXPECT_EQ(Decl(kIndex, 2), "2");
    EXPECT_EQ(Cell(1, 1), "3");
    EXPECT_EQ(Cell(2, 1), "4");
    EXPECT_EQ(Cell(0, 1), "1");
    EXPECT_TRUE(user.told.empty());
  }

  // A machine with a decimal comma turns every separator of the type line into a comma.
  Workspace comma(user, Language::English, ',');
  comma.programFolder = dir.string();
  ASSERT_EQ(LoadProject(comma, (dir / "h.msw").string()), LoadResult::Loaded);
  EXPECT_EQ(comma.vars.GetCell(kType, 1), "num=1,5_9,5;");
  EXPECT_EQ(comma.vars.GetCell(kGroupLabels, 2), "0,5_1,5=low;/");
}

TEST_F(ProjectFileTest, DataRowsRepeatCleanAndConvert) {
  std::string text = Header(4, 6);
  // The third variable is text: its cells are not cleaned.
  text.replace(text.find("$num", text.find("<name>=c")), 9, "$string=0;");
  text +=
      "1\t2\r\n"                  // short row: the cut field repeats, the last column takes the rest
      " \t \t \t \r\n"            // a single blank empties a field, in the last column it is cleaned
      " 12.\t007\t007\t1,50\r\n"  // numbers are cleaned, text is not
      "x\t\r\n"                   // "x" repeats into b and c; d gets what is left
      "abc\t-0\t\xf5r\xfcl \xd5\xdb\tz\r\n"  // no number stays as it is; Windows-1250 letters
      "5\t6\t7\t8\t9\t10\r\n"                // extra fields are dropped
      "99\t99\t99\t99\r\n";                  // rows beyond <cases> are not read
  ASSERT_EQ(LoadProject(ws, Write("d.msw", text)), LoadResult::Loaded);
  const std::vector<std::vector<std::string>> expected = {
      {"1", "1", "1", "2"},         {"", "", "", ""},     {"12", "7", "007", "1.5"}, {"x", "x", "x", ""},
      {"abc", "0", "őrül ŐŰ", "z"}, {"5", "6", "7", "8"},
  };
  for (int r = 1; r <= 6; ++r) {
    for (int c = 1; c <= 4; ++c) EXPECT_EQ(Cell(c, r), expected[r - 1][c - 1]) << "cell " << c << "," << r;
  }
  EXPECT_EQ(ws.NumberOfCases(), 6);

  // A single blank in a last column of text stays.
  std::string strings = Header(2, 1);
  strings.replace(strings.find("$num", strings.find("<name>=b")), 9, "$string=0;");
  ASSERT_EQ(LoadProject(ws, Write("s.msw", strings + "a\t \r\n")), LoadResult::Loaded);
  EXPECT_EQ(Cell(2, 1), " ");

  // A field carried into a numeric column is not cleaned again; a comma machine gets its
  // separator in the numeric columns only.
  Workspace comma(user, Language::English, ',');
  comma.programFolder = dir.string();
  std::string mixed = Header(3, 2);
  mixed.replace(mixed.find("$num"), 9, "$string=0;");
  ASSERT_EQ(LoadProject(comma, Write("c.msw", mixed + "007\t\r\na.b\t1.5\t2.50\r\n")), LoadResult::Loaded);
  EXPECT_EQ(comma.data.GetCell(1, 1), "007");
  EXPECT_EQ(comma.data.GetCell(2, 1), "007");
  EXPECT_EQ(comma.data.GetCell(3, 1), "");
  EXPECT_EQ(comma.data.GetCell(1, 2), "a.b");
  EXPECT_EQ(comma.data.GetCell(2, 2), "1,5");
  EXPECT_EQ(comma.data.GetCell(3, 2), "2,5");
}

TEST_F(ProjectFileTest, LinesAcrossBlockEdgesAndLongLines) {
  // The reader takes the file in blocks of 1 MB: put a line end exactly on the edge (CR LF
  // split by it, and a lone CR as the last byte of a block), and a line of 3 MB at the end.
  const int m = 100000;
  for (std::string_view end : {"\r\n", "\r"}) {
    std::string head = Header(2, m + 1);
    for (std::size_t p; (p = head.find("$num")) != std::string::npos;) head.replace(p, 9, "$string=0;");
    const std::size_t row = 13 + end.size();
    const std::size_t edge = (1u << 20) - 1;  // the last byte of the first block
    std::size_t pad = 0;
    while ((edge - 13 - (head.size() + 9 + pad)) % row != 0) ++pad;
    head.insert(head.find("<datamatrix>"), "<pad>=" + std::string(pad, 'x') + ";\r\n");
    std::string text = head;
    char buf[32];
    for (int r = 1; r <= m; ++r) {
      std::snprintf(buf, sizeof buf, "%06d\t%06d", r, m - r);
      text += buf;
      text += end;
    }
    text += "z\t" + std::string(3 << 20, 'y') + std::string(end);
    ASSERT_EQ(text[edge], '\r');
    ASSERT_EQ(LoadProject(ws, Write("edge.msw", text)), LoadResult::Loaded);
    bool same = true;
    for (int r = 1; r <= m && same; ++r) {
      std::snprintf(buf, sizeof buf, "%06d", r);
      same = Cell(1, r) == buf && Cell(2, r).size() == 6;
      EXPECT_TRUE(same) << "row " << r << ": " << Cell(1, r) << " " << Cell(2, r);
    }
    EXPECT_EQ(Cell(2, m + 1).size(), 3u << 20);
  }
}

TEST_F(ProjectFileTest, TwoThreadsLoadTheSameTablesAsOne) {
  // Batches of lines are cut by two threads, split before a row with a tab. Rows without a
  // tab (which repeat the field of the row before) stand at the middles and edges of the
  // batches, beside long texts, Windows-1250 letters, numbers to clean and short rows.
  const int m = 40000;
  std::string text = Header(4, m);
  text.replace(text.find("$num", text.find("<name>=b")), 9, "$string=0;");
  const std::set<int> tabless = {1, 2, 8190, 8191, 8192, 8193, 8194, 16384, 16385, 16386, 24576, 24577, 32768, 39999, 40000};
  std::mt19937 rng(11);
  for (int r = 1; r <= m; ++r) {
    if (tabless.count(r) != 0) {
      text += r % 2 ? "-0.570" : "7.10";
    } else if (r % 97 == 0) {
      text += "1.50\tx";  // a short row
    } else {
      text += std::to_string(rng() % 1000) + ".0" + std::to_string(rng() % 10) + "\t";
      text += rng() % 5 == 0 ? "hosszú \xf5r\xfcl sz\xf6veg " + std::to_string(r) : std::to_string(r);
      text += "\t-" + std::to_string(rng() % 100) + ",50\t00" + std::to_string(rng() % 10);
    }
    text += "\r\n";
  }
  const std::string path = Write("big.msw", text);
  std::string saved[2];
  for (int threads : {1, 2}) {
    ws.workThreads = threads;
    ASSERT_EQ(LoadProject(ws, path), LoadResult::Loaded);
    ASSERT_TRUE(SaveProject(ws, (dir / ("saved" + std::to_string(threads) + ".msw")).string()));
    saved[threads - 1] = ReadBytes(dir / ("saved" + std::to_string(threads) + ".msw"));
  }
  EXPECT_TRUE(saved[0] == saved[1]);  // not EXPECT_EQ: the files are megabytes
  EXPECT_EQ(Cell(1, 8192), "-0.57");  // the field carried into a tabless row's columns
  EXPECT_EQ(Cell(3, 8192), "-0.57");
  EXPECT_EQ(Cell(4, 8192), "7.1");
  // A file that ends inside its third batch: the same damage told, the same cells kept.
  std::size_t cut = 0;
  for (int line = 0; line < 20000 + 170; ++line) cut = text.find('\n', cut) + 1;
  const std::string shortPath = Write("short.msw", text.substr(0, cut));
  std::vector<std::string> told[2];
  for (int threads : {1, 2}) {
    ws.workThreads = threads;
    user.told.clear();
    EXPECT_EQ(LoadProject(ws, shortPath), LoadResult::Damaged);
    told[threads - 1] = user.told;
    EXPECT_EQ(Cell(2, 16386), "-0.57");
  }
  EXPECT_EQ(told[0], told[1]);
}

TEST_F(ProjectFileTest, CleanNumberShortcutAgreesWithCleanNumber) {
  // Every text the loader stores without parsing must be what CleanNumber would make of it.
  std::vector<std::string> texts = {"0",
                                    "-0",
                                    "5",
                                    "-5",
                                    "10",
                                    "007",
                                    "0.5",
                                    "0,5",
                                    "-0.25",
                                    "0.0001",
                                    "0.00001",
                                    "1.50",
                                    "12.",
                                    "1e5",
                                    "+3",
                                    " 3",
                                    "1.2.3",
                                    "9999999999999",
                                    "99999999999999",
                                    "0.12345678901",
                                    "0.123456789012",
                                    "123456.1234567",
                                    "1234567.1234567",
                                    "-",
                                    ".5",
                                    "5."};
  std::mt19937 rng(7);
  for (int k = 0; k < 20000; ++k) {
    std::string t;
    if (rng() % 4 == 0) t += '-';
    int intDigits = 1 + static_cast<int>(rng() % 15);
    for (int i = 0; i < intDigits; ++i) t += static_cast<char>('0' + (i == 0 && rng() % 3 ? 0 : rng() % 10));
    if (rng() % 3 != 0) {
      t += rng() % 2 ? '.' : ',';
      int frac = 1 + static_cast<int>(rng() % 12);
      for (int i = 0; i < frac; ++i) t += static_cast<char>('0' + rng() % 10);
    }
    texts.push_back(t);
  }
  int accepted = 0;
  std::string fast;
  for (const std::string& t : texts) {
    for (char sep : {'.', ','}) {
      if (CleanPlainDecimal(t, sep, fast)) {
        EXPECT_EQ(CleanNumber(t, sep), fast) << t;
      }
    }
    if (!IsCleanNumber(t)) continue;
    ++accepted;
    for (char sep : {'.', ','}) {
      std::string local = t;
      for (char& c : local) {
        if (c == '.' || c == ',') c = sep;
      }
      EXPECT_EQ(CleanNumber(t, sep), local) << t;
    }
  }
  EXPECT_GT(accepted, 2000);
  for (const char* t :
       {"-0", "007", "1.50", "12.", "+3", " 3", "1e5", "99999999999999", "0.00001", "-", ".5"}) {
    EXPECT_FALSE(IsCleanNumber(t)) << t;
  }
}

TEST_F(ProjectFileTest, SaveWritesTheExpectedBytesAndLoadsBack) {
  FillRoundTrip(ws);
  const std::string path = (dir / "trip.msw").string();
  ASSERT_TRUE(SaveProject(ws, path));
  EXPECT_EQ(ReadBytes(path), ReadBytes(fs::path(TARVIKA_TEST_DATA) / "workspace/data/roundtrip.msw"));
  EXPECT_EQ(user.told, std::vector<std::string>{"Saved: " + path});
  EXPECT_EQ(ws.title, "Tarvika: " + path);
  EXPECT_EQ(ReadBytes(dir / "last.mod"), path + "\r\n");

  ScriptedChannel user2;
  Workspace back(user2, Language::English, '.');
  back.programFolder = dir.string();
  ASSERT_EQ(LoadProject(back, path), LoadResult::Loaded);
  EXPECT_TRUE(user2.told.empty());
  ASSERT_EQ(back.NumberOfVariables(), 4);
  ASSERT_EQ(back.NumberOfCases(), 3);
  for (int r = 0; r <= 3; ++r) {
    for (int c = 1; c <= 4; ++c) EXPECT_EQ(back.data.GetCell(c, r), ws.data.GetCell(c, r)) << c << "," << r;
  }
  for (int col : {kShortName, kLongName, kGroupLabels, kMissing}) {
    for (int i = 1; i <= 4; ++i)
      EXPECT_EQ(back.vars.GetCell(col, i), ws.vars.GetCell(col, i)) << col << "," << i;
  }
  EXPECT_EQ(back.vars.GetCell(kType, 2), "num=0_0;");
  EXPECT_EQ(back.vars.GetCell(kGroupType, 1), "none");
  EXPECT_EQ(back.vars.GetCell(kGroupType, 2), "codes");
  EXPECT_EQ(back.vars.GetCell(kGroupType, 3), "intervals");
  EXPECT_EQ(back.vars.GetCell(kHelp, 1), "Első sor\\második sor");
  EXPECT_EQ(back.vars.GetCell(kRole, 1), "");
  EXPECT_EQ(back.suggestedOutputFile, (dir / "trip_imp.msw").string());
}

TEST_F(ProjectFileTest, CharactersOutsideTheCodePageAreNamed) {
  FillRoundTrip(ws);
  ws.data.SetCell(4, 2, "Жук");
  ws.vars.SetCell(kLongName, 1, "€ ok, ✓ not");
  const std::string path = (dir / "odd.msw").string();
  ASSERT_TRUE(SaveProject(ws, path));
  ASSERT_EQ(user.told.size(), 2u);
  EXPECT_EQ(user.told[0],
            "A project file cannot hold some characters of these cells; they were saved as \"?\":\r\n"
            "kor: <longname>\r\nmegj, case 2");
  ASSERT_EQ(LoadProject(ws, path), LoadResult::Loaded);
  EXPECT_EQ(Cell(4, 2), "???");
  EXPECT_EQ(Decl(kLongName, 1), "€ ok, ? not");
}

TEST_F(ProjectFileTest, DamagedFilesKeepWhatWasRead) {
  // Wrong first line or a binary file: told, the workspace untouched.
  FillRoundTrip(ws);
  ws.title = "Tarvika: before";
  const char kPng[] = "\x89PNG\r\n\x1a\n\0\0\0\rIHDR\xff\xfe";
  const std::string binary(kPng, sizeof kPng - 1);
  for (const std::string& bad :
       {std::string("<Tarvika>=2.0;\r\n<variables>=1;\r\n"), binary, std::string()}) {
    user.told.clear();
    EXPECT_EQ(LoadProject(ws, Write("bad.msw", bad)), LoadResult::NotAProject);
    EXPECT_EQ(user.told,
              std::vector<std::string>{
                  "This is an invalid Tarvika file: either the file name or the first line is incorrect."});
    EXPECT_EQ(ws.title, "Tarvika: before");
    EXPECT_EQ(Cell(4, 1), "Őszi űrlap, árvíztűrő");
  }
  EXPECT_FALSE(fs::exists(dir / "last.mod"));

  // Cut off in the data: the rows read stay, the rest is empty; the load goes on as usual,
  // but the project is untitled, so that the partial tables are not saved over the file.
  user.told.clear();
  const std::string cut = Write("cut.msw", Header(2, 4) + "1\t2\r\n3\t4\r\n");
  EXPECT_EQ(LoadProject(ws, cut), LoadResult::Damaged);
  const std::string untitled = "The project is untitled now: save it under a new name.";
  EXPECT_EQ(user.told, std::vector<std::string>{"Invalid or damaged Tarvika file\r\nRead: the declarations of 2 of 2 "
                                                "variables and 2 of 4 cases. " + untitled});
  EXPECT_EQ(ws.NumberOfCases(), 4);
  EXPECT_EQ(Cell(2, 2), "4");
  EXPECT_EQ(Cell(1, 3), "");
  EXPECT_EQ(Cell(0, 4), "4");
  EXPECT_EQ(Cell(2, 0), "b");
  EXPECT_EQ(ws.title, "Tarvika: ");
  EXPECT_EQ(ws.CurrentFileName(), "");
  EXPECT_EQ(ReadBytes(dir / "last.mod"), cut + "\r\n");
  const std::string cutBytes = ReadBytes(cut);
  user.told.clear();
  EXPECT_FALSE(SaveProject(ws, ws.CurrentFileName()));
  EXPECT_EQ(user.told, std::vector<std::string>{"The project has no file name yet: save it under a new name."});
  EXPECT_EQ(ReadBytes(cut), cutBytes);

  // A blank header line and a non-numeric count stop the header where they stand.
  std::string blank = Header(2, 1);
  blank.insert(blank.find("#=2;"), "\r\n");
  user.told.clear();
  EXPECT_EQ(LoadProject(ws, Write("blank.msw", blank + "1\t2\r\n")), LoadResult::Damaged);
  EXPECT_EQ(user.told, std::vector<std::string>{"Invalid or damaged Tarvika file\r\nRead: the declarations of 1 of 2 "
                                                "variables and 0 of 1 cases. " + untitled});
  EXPECT_EQ(Decl(kShortName, 1), "a");
  EXPECT_EQ(Decl(kShortName, 2), "var_1");  // a lost declaration gets a free name, no question
  EXPECT_EQ(Cell(2, 0), "var_1");
  EXPECT_TRUE(user.asked.empty());
  EXPECT_EQ(Cell(1, 1), "");

  std::string cases = Header(2, 1);
  cases.replace(cases.find("<cases>=1;"), 10, "<cases>=ten;");
  user.told.clear();
  EXPECT_EQ(LoadProject(ws, Write("cases.msw", cases + "1\t2\r\n")), LoadResult::Damaged);
  EXPECT_EQ(user.told, std::vector<std::string>{"Invalid or damaged Tarvika file\r\nRead: the declarations of 0 of 2 "
                                                "variables and 0 of ? cases. " + untitled});
  EXPECT_EQ(ws.NumberOfVariables(), 2);
  EXPECT_EQ(Decl(kShortName, 1), "var_1");
  EXPECT_EQ(Decl(kShortName, 2), "var_2");
  EXPECT_EQ(Cell(1, 1), "");

  // Hungarian session.
  ws.SetLanguage(Language::Hungarian);
  user.told.clear();
  EXPECT_EQ(LoadProject(ws, Write("h.msw", Header(1, 2).substr(0, 40))), LoadResult::Damaged);
  EXPECT_EQ(user.told, std::vector<std::string>{"Hibás vagy sérült Tarvika fájl!\r\nBeolvasva: ? változó közül 0 "
                                                "deklarációja és ? eset közül 0. A projekt most névtelen: mentse "
                                                "új néven."});
}

TEST_F(ProjectFileTest, SaveFailuresLeaveTheOldFileAndNoLitter) {
  FillRoundTrip(ws);
  Write("afile", "x");
  for (const fs::path& target : {dir / "no_such_folder" / "p.msw", dir / "afile" / "p.msw"}) {
    user.told.clear();
    EXPECT_FALSE(SaveProject(ws, target.string()));
    ASSERT_EQ(user.told.size(), 1u);
    EXPECT_EQ(user.told[0].rfind("The file cannot be written: " + target.string(), 0), 0u) << user.told[0];
  }
  // A folder in the target's place: the rename fails, the folder and its content stay.
  fs::create_directories(dir / "taken.msw");
  Write("taken.msw/old", "old");
  user.told.clear();
  EXPECT_FALSE(SaveProject(ws, (dir / "taken.msw").string()));
  EXPECT_EQ(ReadBytes(dir / "taken.msw" / "old"), "old");
  EXPECT_EQ(ReadBytes(dir / "afile"), "x");
  std::vector<std::string> left;
  for (const auto& e : fs::directory_iterator(dir)) left.push_back(e.path().filename().string());
  std::sort(left.begin(), left.end());
  EXPECT_EQ(left, (std::vector<std::string>{"afile", "taken.msw"}));
  EXPECT_FALSE(fs::exists(dir / "last.mod"));

  // A read-only target is written and can be written again.
  const std::string ro = Write("ro.msw", "old");
  ::chmod(ro.c_str(), 0444);
  EXPECT_TRUE(SaveProject(ws, ro));
  EXPECT_EQ(ReadBytes(ro), ReadBytes(fs::path(TARVIKA_TEST_DATA) / "workspace/data/roundtrip.msw"));
  EXPECT_NE(fs::status(ro).permissions() & fs::perms::owner_write, fs::perms::none);
}

TEST_F(ProjectFileTest, CompanionFilesAndProgress) {
  // default.var is made when missing and read into row 0.
  LoadDefaultVariable(ws);
  EXPECT_EQ(ReadBytes(dir / "default.var"), "num=0_0;\r\n\r\nnincs\r\n");
  EXPECT_EQ(Decl(kGroupType, 0), "nincs");
  ASSERT_TRUE(SaveDefaultVariable(ws, "string=8;", "1=ő;/", "kódokkal"));
  Workspace other(user, Language::English, '.');
  other.programFolder = dir.string();
  LoadDefaultVariable(other);
  EXPECT_EQ(other.vars.GetCell(kType, 0), "string=8;");
  EXPECT_EQ(other.vars.GetCell(kGroupLabels, 0), "1=ő;/");
  EXPECT_EQ(other.vars.GetCell(kGroupType, 0), "kódokkal");

  // Recent files: a load moves its path to the end without doubles, ignoring case; a save
  // adds its path at the end too and keeps doubles.
  std::string rows;
  for (int r = 1; r <= 2500; ++r) rows += std::to_string(r) + "\r\n";
  const std::string a = Write("a.msw", Header(1, 2500) + rows);
  const std::string upper = (dir / "A.MSW").string();
  ASSERT_TRUE(StoreRecentFiles(ws, {upper, "/x/y.msw", a}));
  progress.clear();
  ASSERT_EQ(LoadProject(ws, a), LoadResult::Loaded);
  EXPECT_EQ(LoadRecentFiles(ws), (std::vector<std::string>{"/x/y.msw", a}));
  EXPECT_EQ(Cell(1, 2500), "2500");
  EXPECT_EQ(progress, (std::vector<std::string>{". . . loading (2500 case)", "Loading cases: 1000 / 2500",
                                                "Loading cases: 2000 / 2500", ""}));
  progress.clear();
  const std::string b = (dir / "b.txt").string();
  ASSERT_TRUE(SaveProject(ws, b));
  ASSERT_TRUE(SaveProject(ws, b));
  EXPECT_EQ(LoadRecentFiles(ws), (std::vector<std::string>{"/x/y.msw", a, b, b}));
  EXPECT_EQ(RecentFilesToShow(ws).front(), b);  // the file just saved is the newest
  EXPECT_EQ(progress, (std::vector<std::string>{"Writing cases: 1000", "Writing cases: 2000",
                                                "Writing cases: 2500", "", "Writing cases: 1000",
                                                "Writing cases: 2000", "Writing cases: 2500", ""}));
  // A load of a file with another extension lists it as ".msw".
  ASSERT_EQ(LoadProject(ws, b), LoadResult::Loaded);
  EXPECT_EQ(LoadRecentFiles(ws).back(), (dir / "b.msw").string());
  // The window of recent files: newest first, each once ignoring case, only existing files.
  const std::string bMsw = Write("b.msw", "");
  Write("A.MSW", "");
  ASSERT_TRUE(StoreRecentFiles(ws, {upper, "/x/y.msw", b, bMsw, a, b}));
  EXPECT_EQ(RecentFilesToShow(ws), (std::vector<std::string>{b, a, bMsw}));
  EXPECT_EQ(ws.suggestedOutputFile, (dir / "b_imp.txt").string());
  EXPECT_EQ(SuggestedOutputFile("/d.x/name"), "/d.x/name_imp");
}

TEST_F(ProjectFileTest, MergeSourceReadsAStreamOfFields) {
  FillRoundTrip(ws);
  std::string text = Header(3, 2);
  text.replace(text.find("<labels>=;\r\n"), 12, "<labels>=;\r\n1=a;\r\n=b;\r\n");
  // Fields end at tabs and line ends, whatever line they are on; separators of numeric
  // columns become the local one; a single blank is empty in every column.
  MergeSource src =
      ReadMergeSource(ws, Write("m.msw", text + "1,5\t \r\n2\t3\t4\r\n5\t6\r\n"), MergeMode::AddCases);
  ASSERT_EQ(src.result, LoadResult::Loaded);
  EXPECT_EQ(src.data.GetCell(1, 1), "1.5");
  EXPECT_EQ(src.data.GetCell(2, 1), "");
  EXPECT_EQ(src.data.GetCell(3, 1), "2");
  EXPECT_EQ(src.data.GetCell(1, 2), "3");
  EXPECT_EQ(src.data.GetCell(3, 2), "5");
  EXPECT_EQ(src.vars.GetCell(kGroupLabels, 1), "1=a;/=b;/");
  EXPECT_EQ(src.title, "Merge files: add cases from " + (dir / "m.msw").string());
  EXPECT_EQ(Cell(4, 1), "Őszi űrlap, árvíztűrő");  // the workspace is untouched
  EXPECT_FALSE(fs::exists(dir / "last.mod"));

  src = ReadMergeSource(ws, Write("short.msw", text + "1\t2\t3\r\n4\r\n"), MergeMode::AddVariables);
  EXPECT_EQ(src.result, LoadResult::Damaged);
  EXPECT_EQ(src.data.GetCell(1, 2), "4");
  src = ReadMergeSource(ws, Write("bad.msw", "<x>=1;\r\n"), MergeMode::AddVariables);
  EXPECT_EQ(src.result, LoadResult::NotAProject);
  EXPECT_EQ(user.told, (std::vector<std::string>{"Error while reading data table.\r\nReading interrupted.",
                                                 "This is not a valid Tarvika file."}));
}

}  // namespace
}  // namespace tarvika
