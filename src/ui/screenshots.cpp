#include "ui/screenshots.h"

#include <QApplication>
#include <QDir>
#include <QAction>
#include <QDockWidget>
#include <QListWidget>
#include <QTabWidget>

#include <set>

#include "analyses/command_table.h"
#include "ui/analysis_form.h"
#include "ui/main_window.h"
#include "ui/qt_text.h"
#include "ui/report_window.h"
#include "ui/results_pane.h"

namespace tarvika {
namespace {

// The picture's name of a dialog: its menu entry without "analysis." ("groups" becomes
// "group_comparison", as people call it).
QString DialogPictureName(DialogKind kind) {
  switch (kind) {
    case DialogKind::SingleSample: return "single_sample";
    case DialogKind::Groups: return "group_comparison";
    case DialogKind::Relations: return "relationship";
    default: break;
  }
  return ToQt(Dialog(kind).menuCommand).section('.', -1);
}

// Fills the lists the command shows with names from the source list, so the picture shows
// a selection ready to run.
void FillForm(AnalysisForm* form) {
  form->Reset();
  for (ListRole role : {ListRole::Selected, ListRole::Y, ListRole::Grouping, ListRole::Covariate, ListRole::Conditional}) {
    if (!form->TargetShown(role)) continue;
    QListWidget* source = form->SourceListWidget();
    int want = role == ListRole::Selected ? 3 : 1;
    QStringList names;
    for (int i = source->count() - 1; i >= 0 && names.size() < want; --i) names << source->item(i)->text();
    if (role == ListRole::Conditional) {
      if (!names.isEmpty()) form->SetConditional(names.front());
    } else {
      form->Select(names, role);
    }
  }
}

}  // namespace

bool WriteScreenshots(MainWindow& window, const QString& folder) {
  QDir().mkpath(folder);
  bool ok = true;
  auto save = [&](QWidget* widget, const QString& name) {
    QApplication::processEvents();
    ok = widget->grab().save(QDir(folder).filePath(name + ".png")) && ok;
  };
  window.resize(1000, 700);
  window.show();
  const char* pages[] = {"main_window_data", "main_window_variables"};
  for (int page = 0; page < window.Pages()->count(); ++page) {
    window.Pages()->setCurrentIndex(page);
    save(&window, pages[page]);
  }
  window.Pages()->setCurrentIndex(0);

  // Every dialog with every command of its list, named after both.
  std::set<DialogKind> kinds;
  for (const CommandInfo& row : AllCommands().Rows()) kinds.insert(row.dialog);
  for (DialogKind kind : kinds) {
    AnalysisForm* form = window.Form(kind);
    if (!form->Open()) return false;
    form->resize(820, 680);
    for (const CommandInfo* command : AllCommands().ListOf(kind)) {
      form->SetCommand(command->code);
      FillForm(form);
      if (command->code == kNormalityTests) form->SetParameter("saveStandardized", "Yes");  // the toggle "on"
      save(form, QString("%1_%2").arg(DialogPictureName(kind)).arg(command->code));
    }
    form->close();
  }

  // Runs side by side with the data.
  AnalysisForm* single = window.Form(DialogKind::SingleSample);
  single->Open();
  for (int code : {kBasicStatistics, kDetailedStatistics, kNormalityTests}) {
    single->SetCommand(code);
    FillForm(single);
    if (single->Run() != RunResult::Ran) return false;
  }
  // And one html report, with its histograms.
  window.MenuAction("view.html_reports")->trigger();
  single->SetCommand(kFrequencies);
  FillForm(single);
  if (single->Run() != RunResult::Ran) return false;
  window.MenuAction("view.html_reports")->trigger();
  single->close();
  window.resize(1400, 800);
  save(&window, "results_pane");
  window.Reports()->OpenReport();
  save(window.Reports(), "viewer");
  return ok;
}

}  // namespace tarvika
