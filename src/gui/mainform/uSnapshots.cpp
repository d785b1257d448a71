#include "gui/mainform/uSnapshots.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QPixmap>
#include <QTimer>
#include <stdexcept>

#include "gui/common/uQtText.h"
#include "gui/mainform/KorvexMainForm.h"
#include "gui/ribbon/uBackstage.h"
#include "gui/settings/uSettingsPage.h"

namespace {

// Charts draw in the event loop, and a layout may take several rounds.
void Settle() {
  for (int round = 0; round < 5; ++round) QCoreApplication::processEvents();
}

void Open(TKorvexMainForm& form, const QString& recording) {
  // A message box would wait for ever: it is closed, its text is the failure.
  QString complaint;
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, &form, [&complaint] {
    if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
      complaint = box->text() + " " + box->informativeText();
      box->accept();
    }
  });
  watch.start(20);
  form.Flow().Open(Utf8(recording));
  while (form.Flow().Busy()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
  if (!form.Flow().FileShown() || !complaint.isEmpty()) throw std::runtime_error(Utf8(complaint));
  Settle();
}

}  // namespace

QStringList SaveSnapshots(TKorvexMainForm& form, const QString& recording, const QString& folder) {
  if (!QDir().mkpath(folder)) throw std::runtime_error("cannot make the folder " + Utf8(folder));
  QStringList files;
  const auto save = [&](const QString& name) {
    Settle();
    const QString file = QDir(folder).filePath(name + ".png");
    if (!form.grab().save(file)) throw std::runtime_error("cannot write " + Utf8(file));
    files.append(file);
  };
  form.show();
  save("welcome");
  Open(form, recording);
  form.Flow().SwitchView(TView::Overview);
  save("overview");
  form.Flow().SwitchView(TView::Shock);
  save("shock");
  auto* spectrum = form.findChild<QAction*>("actShockSpecAnalysis");
  spectrum->trigger();
  save("spectrum");
  spectrum->trigger();
  form.findChild<QAction*>("actFilterEdit")->trigger();
  save("filter");
  form.Flow().SwitchView(TView::Report);
  save("report");
  form.findChild<QAction*>("actBackstage")->trigger();
  save("backstage");
  form.findChild<TBackstage*>()->SelectPage("backstageSettings");
  auto* settings = form.findChild<TSettingsPage*>();
  for (const char* page : {"general", "formats", "colours", "analog-inputs"}) {
    save(QString("settings-") + page);
    settings->setCurrentIndex(settings->currentIndex() + 1);
  }
  return files;
}
