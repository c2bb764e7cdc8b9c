// The desktop program's main window over the project of 1,000,000 cases by 21 numeric
// variables (the file compare-fread.sh times), painted without a screen: the open of the
// file through the window and the paint of its first page; the jump to the last case
// (Ctrl+End) with its paint; and the frames of a scroll down the grid, a page a frame, to
// the last case. The grid model reads the cell store for the painted cells only.

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QScrollBar>
#include <QTableView>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>

#include "../project_load/synthetic_project.h"
#include "ui/main_window.h"
#include "workspace/session.h"
#include "workspace/user_channel.h"

namespace {

namespace fs = std::filesystem;
using namespace tarvika;

constexpr int kCases = 1000000;

// A program folder of its own (the language files of the built program folder) with the
// project in dat/; removed at the end.
struct Folder {
  fs::path root = fs::temp_directory_path() / ("tarvika_bench_window_" + std::to_string(QCoreApplication::applicationPid()));
  fs::path project = root / "dat" / "synthetic_1m.msw";
  Folder() {
    fs::remove_all(root);
    fs::create_directories(root / "dat");
    fs::create_directories(root / "stattab");
    fs::copy(fs::path(TARVIKA_PROGRAM_DIR) / "language", root / "language", fs::copy_options::recursive);
    std::FILE* msw = std::fopen(project.string().c_str(), "wb");
    bench::WriteSyntheticProject(msw, nullptr, kCases);
    std::fclose(msw);
  }
  ~Folder() {
    std::error_code ec;
    fs::remove_all(root, ec);
  }
};

// Made by main before anything is timed, and gone before the application ends.
std::unique_ptr<Folder> folder;

Folder& TheFolder() { return *folder; }

// The program as it runs: the session started over the folder and its window shown.
struct Program {
  ScriptedChannel user{Answer::No};
  Session session{user};
  std::unique_ptr<MainWindow> window;
  Program() {
    StartOptions options;
    options.programFolder = TheFolder().root.string();
    options.decimalSeparator = '.';
    if (session.StartUp(options) != StartResult::Ready) throw std::runtime_error("the session didn't start");
    window = std::make_unique<MainWindow>(session);
    window->resize(1000, 700);
    window->show();
    QApplication::processEvents();
  }
  // The whole window painted as it stands.
  void Paint() { benchmark::DoNotOptimize(window->grab()); }
};

// Start of the window, the open of the project through it and the paint of its first page.
void BM_OpenProjectAndPaintFirstPage(benchmark::State& state) {
  const QString path = QString::fromStdString(TheFolder().project.string());
  for (auto _ : state) {
    Program program;
    if (!program.window->OpenFile(path)) state.SkipWithError("the project didn't open");
    program.Paint();
    state.PauseTiming();  // the tables are freed outside the time
    program.window.reset();
    state.ResumeTiming();
  }
}
BENCHMARK(BM_OpenProjectAndPaintFirstPage)->Unit(benchmark::kMillisecond)->Iterations(1)->Repetitions(5)
    ->ReportAggregatesOnly(true);

// The window with the project open, for the frames; closed by main before the application ends.
std::unique_ptr<Program> openProgram;

Program& TheOpenProgram() {
  if (!openProgram) {
    openProgram = std::make_unique<Program>();
    if (!openProgram->window->OpenFile(QString::fromStdString(TheFolder().project.string()))) {
      throw std::runtime_error("the project didn't open");
    }
  }
  return *openProgram;
}

// Whether the row of the last case lies inside the grid's viewport.
bool LastCaseShown(Program& p) {
  QTableView* view = p.window->DataView();
  const QRect last = view->visualRect(view->model()->index(view->model()->rowCount() - 1, 0));
  return view->viewport()->rect().contains(last.center());
}

// Ctrl+End from the first case: the grid at the last case, painted (one frame).
void BM_JumpToLastCaseFrame(benchmark::State& state) {
  Program& p = TheOpenProgram();
  QTableView* view = p.window->DataView();
  for (auto _ : state) {
    state.PauseTiming();
    view->scrollToTop();
    p.Paint();
    state.ResumeTiming();
    view->scrollToBottom();
    p.Paint();
  }
  state.counters["last_case_shown"] = LastCaseShown(p) ? 1 : 0;
}
BENCHMARK(BM_JumpToLastCaseFrame)->Unit(benchmark::kMillisecond)->Iterations(5)->Repetitions(5)
    ->ReportAggregatesOnly(true);

// One frame of a scroll down the grid: a page further, painted; the 50 frames of a
// repetition end at the last case.
void BM_ScrollFrameToLastCase(benchmark::State& state) {
  Program& p = TheOpenProgram();
  QScrollBar* bar = p.window->DataView()->verticalScrollBar();
  bar->setValue(bar->maximum() - 50 * bar->pageStep());
  for (auto _ : state) {
    bar->setValue(bar->value() + bar->pageStep());
    p.Paint();
  }
  state.counters["last_case_shown"] = LastCaseShown(p) ? 1 : 0;
}
BENCHMARK(BM_ScrollFrameToLastCase)->Unit(benchmark::kMillisecond)->Iterations(50)->Repetitions(5)
    ->ReportAggregatesOnly(true);

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  // The plugin without a screen says at every window that it can't size it to its hints.
  qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (!message.contains("propagateSizeHints")) std::fprintf(stderr, "%d: %s\n", type, qPrintable(message));
  });
  QApplication app(argc, argv);
  folder = std::make_unique<Folder>();  // the file is written before anything is timed
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  openProgram.reset();
  folder.reset();
  return 0;
}
