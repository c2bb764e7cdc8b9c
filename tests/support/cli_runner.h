#pragma once
// Runs the headless program as a shell would, in a program folder of its own under the
// temporary directory that holds the statistical tables and nothing else.

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace tarvika::test {

struct CliResult {
  int status = -1;
  std::string out;
  std::string err;
};

inline std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream s;
  s << in.rdbuf();
  return s.str();
}

class CliTest : public ::testing::Test {
 protected:
  void SetUp() override {
    const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
    std::string name = std::string(info->test_suite_name()) + "_" + info->name();
    for (char& c : name) {
      if (c == '/') c = '_';
    }
    folder_ = std::filesystem::temp_directory_path() / ("tarvika_cli_" + std::to_string(::getpid()) + "_" + name);
    std::filesystem::remove_all(folder_);
    std::filesystem::create_directories(folder_);
    std::filesystem::copy(std::filesystem::path(TARVIKA_PROGRAM_DIR) / "stattab", folder_ / "stattab");
  }
  void TearDown() override { std::filesystem::remove_all(folder_); }

  // tarvika-cli --program-dir FOLDER ARGS, its exit status and the text of its two streams.
  CliResult Cli(const std::string& args) const {
    const std::string errFile = (folder_ / "stderr.txt").string();
    const std::string command = std::string(TARVIKA_PROGRAM_DIR) + "/tarvika-cli --program-dir '" + folder_.string() +
                                "' " + args + " 2>'" + errFile + "'";
    CliResult r;
    FILE* pipe = popen(command.c_str(), "r");
    std::array<char, 4096> buffer;
    for (std::size_t n; (n = fread(buffer.data(), 1, buffer.size(), pipe)) > 0;) r.out.append(buffer.data(), n);
    int status = pclose(pipe);
    r.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    r.err = ReadFile(errFile);
    return r;
  }

  static std::string Survey() { return std::string(TARVIKA_SOURCE_DIR) + "/data/dat/survey.msw"; }
  // A report of tests/single/expected, with the CR LF line ends of a report.
  static std::string Expected(const std::string& name) { return ExpectedIn("single", name); }
  // A report of tests/<folder>/expected, with the CR LF line ends of a report.
  static std::string ExpectedIn(const std::string& folder, const std::string& name) {
    std::string text = ReadFile(std::string(TARVIKA_TEST_DATA) + "/" + folder + "/expected/" + name);
    std::string crlf;
    for (char c : text) {
      if (c == '\n') crlf.push_back('\r');
      crlf.push_back(c);
    }
    return crlf;
  }
  // The report with the path of the project in it, which differs between machines, made fixed.
  static std::string WithoutProjectPath(std::string report) {
    std::size_t at = report.find(Survey());
    if (at != std::string::npos) report.replace(at, Survey().size(), "survey.msw");
    return report;
  }
  bool ReportWritten() const {
    return std::filesystem::exists(folder_ / "output" / "zuli_akt.txt") ||
           std::filesystem::exists(folder_ / "output" / "zuli_akt.html");
  }

  std::filesystem::path folder_;
};

// A report checked by hand: its file in tests/<folder>/expected (which also names the
// test), the project ("survey" for the bundled one, else tests/<folder>/data/<project>.msw)
// and the arguments after "run PROJECT".
struct ReportCase {
  const char* expected;
  const char* project;
  std::string args;
};
inline void PrintTo(const ReportCase& c, std::ostream* out) { *out << c.expected; }

// The name of a report case's test: its file with "_" for ".".
inline std::string ReportCaseName(const ::testing::TestParamInfo<ReportCase>& info) {
  std::string name = info.param.expected;
  for (char& c : name) {
    if (c == '.') c = '_';
  }
  return name;
}

// The reports of one test folder run through the program and compared with their files.
class ReportCliTest : public CliTest, public ::testing::WithParamInterface<ReportCase> {
 protected:
  explicit ReportCliTest(std::string folder) : testFolder_(std::move(folder)) {}

  std::string ProjectPath(const std::string& project) const {
    return project == "survey" ? Survey()
                               : std::string(TARVIKA_TEST_DATA) + "/" + testFolder_ + "/data/" + project + ".msw";
  }
  CliResult Run(const std::string& project, const std::string& args) const {
    return Cli("run '" + ProjectPath(project) + "' " + args);
  }
  // The report with the machine's path of the project made its file name.
  std::string WithoutPath(std::string report, const std::string& project) const {
    const std::string path = ProjectPath(project);
    const std::size_t at = report.find(path);
    if (at != std::string::npos) report.replace(at, path.size(), project + ".msw");
    return report;
  }
  // Runs the case and compares its report with its file.
  void ExpectReport(const ReportCase& c) const {
    const CliResult r = Run(c.project, c.args);
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(WithoutPath(r.out, c.project), ExpectedIn(testFolder_, c.expected));
  }

 private:
  std::string testFolder_;
};

}  // namespace tarvika::test
