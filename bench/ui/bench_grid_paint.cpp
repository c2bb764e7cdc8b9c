// The data grid over 1,000,000 cases by 21 variables (value labels on one, a missing code
// on another): the first paint after a load, a paint at the last case, and a paint with
// value labels shown. The model reads the cell store for the painted cells only.

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QHeaderView>
#include <QTableView>

#include <memory>
#include <string>

#include "ui/table_models.h"
#include "workspace/user_channel.h"
#include "workspace/workspace.h"

namespace {

constexpr int kCases = 1000000;
constexpr int kVariables = 21;

struct Grid {
  tarvika::ScriptedChannel user;
  tarvika::Workspace ws{user, tarvika::Language::English, '.'};
  std::unique_ptr<tarvika::DataMatrixModel> model;
  std::unique_ptr<QTableView> view;

  Grid() {
    using namespace tarvika;
    ws.data.Resize(kVariables + 1, kCases + 1);
    ws.vars.SetRowCount(kVariables + 1);
    for (int v = 1; v <= kVariables; ++v) {
      std::string name = "v" + std::to_string(v);
      ws.vars.SetCell(kIndex, v, std::to_string(v));
      ws.vars.SetCell(kShortName, v, name);
      ws.vars.SetCell(kType, v, "num=0_0;");
      ws.vars.SetCell(kGroupType, v, v == 1 ? "codes" : "none");
      ws.data.SetCell(v, 0, name);
    }
    ws.vars.SetCell(kGroupLabels, 1, "1=one;/2=two;/3=three;/");
    ws.vars.SetCell(kMissing, 2, "9");
    for (int r = 1; r <= kCases; ++r) {
      ws.data.SetCell(0, r, std::to_string(r));
      for (int v = 1; v <= kVariables; ++v) ws.data.SetCell(v, r, std::to_string((r * 7 + v) % 10));
    }
    model = std::make_unique<DataMatrixModel>(ws);
    view = std::make_unique<QTableView>();
    view->setModel(model.get());
    view->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    view->resize(1000, 700);
    view->show();
  }
};

// Made when first asked for, and gone before the application ends (a view may not outlive it).
std::unique_ptr<Grid> grid;

Grid& TheGrid() {
  if (!grid) grid = std::make_unique<Grid>();
  return *grid;
}

void BM_FirstPaintAfterLoad(benchmark::State& state) {
  Grid& g = TheGrid();
  for (auto _ : state) {
    g.model->Reload();
    g.view->scrollToTop();
    benchmark::DoNotOptimize(g.view->grab());
  }
}
BENCHMARK(BM_FirstPaintAfterLoad)->Unit(benchmark::kMillisecond)->Iterations(5);

void BM_PaintAtTheLastCase(benchmark::State& state) {
  Grid& g = TheGrid();
  for (auto _ : state) {
    g.view->scrollToBottom();
    benchmark::DoNotOptimize(g.view->grab());
    g.view->scrollToTop();
  }
}
BENCHMARK(BM_PaintAtTheLastCase)->Unit(benchmark::kMillisecond)->Iterations(5);

void BM_PaintWithValueLabels(benchmark::State& state) {
  Grid& g = TheGrid();
  g.model->ShowLabels(true);
  for (auto _ : state) benchmark::DoNotOptimize(g.view->grab());
  g.model->ShowLabels(false);
}
BENCHMARK(BM_PaintWithValueLabels)->Unit(benchmark::kMillisecond)->Iterations(5);

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  grid.reset();
  return 0;
}
