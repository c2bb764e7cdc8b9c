#include "ui/screenshots.h"

#include <QApplication>
#include <QDir>
#include <QListWidget>
#include <QTabWidget>

#include "ui/main_window.h"
#include "ui/report_window.h"
#include "ui/single_sample_form.h"

namespace tarvika {

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

  TKijelolForm* form = window.SingleSampleForm();
  if (!form->Open()) return false;
  form->resize(760, 600);
  QStringList names;
  for (int i = 0; i < form->SourceListWidget()->count() && names.size() < 4; ++i) {
    names << form->SourceListWidget()->item(i)->text();
  }
  form->Select(names);
  if (form->SourceListWidget()->count() > 0) {
    form->SetConditional(form->SourceListWidget()->item(form->SourceListWidget()->count() - 1)->text());
  }
  const std::pair<int, const char*> commands[] = {
      {kDetailedStatistics, "dialog_detailed"}, {kFrequencies, "dialog_frequency"},
      {kMeanMedianTests, "dialog_tests"},       {kNormalityTests, "dialog_normality"}};
  for (auto [code, name] : commands) {
    form->SetCommand(code);
    if (code == kNormalityTests) form->SetParameter("saveStandardized", "Yes");  // the toggle in its "on" colour
    save(form, name);
  }
  form->SetCommand(kBasicStatistics);
  if (form->Run() != RunResult::Ran) return false;
  save(window.Reports(), "viewer");
  return ok;
}

}  // namespace tarvika
