#include "gui/mainform/uSnapshots.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPixmap>
#include <QTabWidget>
#include <QTimer>
#include <stdexcept>

#include "gui/charts/uResponseChart.h"
#include "gui/common/uQtText.h"
#include "gui/mainform/KorvexMainForm.h"
#include "gui/report/uPageView.h"
#include "gui/ribbon/uBackstage.h"
#include "gui/ribbon/uRecordingList.h"
#include "gui/ribbon/uRibbon.h"
#include "gui/settings/uAlarmLimitsPanel.h"
#include "gui/settings/uLimitEdit.h"
#include "gui/settings/uLimitProfileBar.h"
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

class TAlbum {
 public:
  TAlbum(TKorvexMainForm& form, const QString& folder) : FForm(form), FFolder(folder) {
    if (!FFolder.mkpath(".")) throw std::runtime_error("cannot make the folder " + Utf8(folder));
  }

  void Save(const QString& name, const QPixmap& picture) {
    const QString file = FFolder.filePath(name + ".png");
    if (!picture.save(file)) throw std::runtime_error("cannot write " + Utf8(file));
    FFiles.append(file);
  }
  void Save(const QString& name) {
    Settle();
    Save(name, FForm.grab());
  }
  // Of the modal dialog that the action opens.
  void SaveDialog(const char* action, const QString& name) {
    QPixmap picture;
    QTimer::singleShot(0, &FForm, [&picture] {
      Settle();
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      picture = dialog->grab();
      dialog->reject();
    });
    Trigger(action);
    Save(name, picture);
  }
  // Of the alarm panel with a profile, and of the overview that is judged by it.
  void SaveLimits() {
    const TListedProfile example{"Fragile.ini", "Fragile"};
    TLimitProfile profile;
    profile.name = example.name;
    for (TJudgedLimits& limits : profile.limits) limits.minSource = limits.maxSource = TLimitSource::Default;
    profile.allowedEvents = 30;
    profile.allowedTimes[static_cast<std::size_t>(TQuantity::Humidity)].above = 48 * 3600000.0;
    FForm.Flow().Mission().Settings.display.profile = profile;
    FForm.findChild<QAbstractButton*>("chboxLoadAccAlarmFromFile")->setChecked(false);
    FForm.findChild<TLimitEdit*>("dxBarSpinAlarmAccMax")->setValue(15);
    FForm.findChild<TLimitEdit*>("dxBarSpinAlarmRHMax")->setValue(70);
    SaveWith("actAlarmSet", "overview-judged");
    Trigger("actAlarmLimits");
    auto* panel = FForm.findChild<TAlarmLimitsPanel*>();
    panel->Profiles().ShowProfiles({&example, 1}, example.file);
    Settle();
    Save("limits", panel->grab());
    panel->hide();
    FForm.Flow().Mission().Settings.display.profile.reset();
  }
  // Of the recording's folder, with the figures of its recordings.
  void SaveFolder() {
    constexpr int kPatienceMs = 20000;
    auto* list = FForm.findChild<TRecordingList*>("lstCurrentFolder");
    bool done = false;
    const auto connection = QObject::connect(
        list, &TRecordingList::Summarized, &FForm,
        [&done](int read, int all, const QString& problem) { done = read == all || !problem.isEmpty(); });
    FForm.findChild<TBackstage*>()->SelectPage("backstageCurrentFolder");
    QElapsedTimer waited;
    waited.start();
    while (!done && !waited.hasExpired(kPatienceMs)) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
    QObject::disconnect(connection);
    Save("folder");
  }
  // The table, the damage boundary of a product that some events exceed, and the statistics.
  void SaveAnalysis() {
    auto* tabs = FForm.findChild<QTabWidget*>("pgcShockGrids");
    tabs->setCurrentIndex(2);
    while (!FForm.Flow().Mission().Analysis) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
    Save("shock-analysis");
    tabs->setCurrentIndex(0);
    FForm.Flow().SwitchView(TView::DamageBoundary);
    Save("damage-boundary-empty");
    FForm.findChild<QLineEdit*>("edtCriticalVelocity")->setText("1");
    FForm.findChild<QLineEdit*>("edtCriticalAcceleration")->setText("8");
    Save("damage-boundary");
    FForm.Flow().SwitchView(TView::Statistics);
    Save("statistics");
    FForm.Flow().SwitchView(TView::Shock);
  }
  // Beside a reference that is like the recording, but milder.
  void SaveReference() {
    TShownMission& mission = FForm.Flow().Mission();
    Trigger("actUseAsReference");
    while (!mission.Analysis) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
    mission.ReferenceIsShown = false;
    mission.Reference->file = "reference.kshock";
    for (TDistribution& distribution : mission.Reference->distributions) {
      for (TCountedValue& each : distribution) each.value *= 0.8F;
    }
    FForm.Flow().SwitchView(TView::Overview);
    SaveWith("actAlarmSet", "reference");
    FForm.Flow().SwitchView(TView::Statistics);
    FForm.findChild<QComboBox*>("cmbStatisticsQuantity")->setCurrentIndex(1);
    Save("reference-statistics");
    FForm.Flow().SwitchView(TView::Report);
    FForm.findChild<TPageView*>("scrlReport")->GoToPage(1);
    Save("reference-report");
    Trigger("actClearReference");
    FForm.Flow().SwitchView(TView::Shock);
  }
  // The selected event beside two others, aligned at the peak.
  void SavePins() {
    for (const char* action : {"actEventPin", "actNextEvent", "actEventPin", "actNextEvent"}) Trigger(action);
    FForm.findChild<QComboBox*>("cmbPinAlignment")->setCurrentIndex(2);
    Save("pinned");
    SaveWith("actShockSpecAnalysis", "pinned-spectrum");
    SaveWith("actShockResponse", "pinned-response");
    FForm.findChild<QMenu*>("mnuPins")->actions().constLast()->trigger();
    for (const char* action : {"actPreviousEvent", "actPreviousEvent"}) Trigger(action);
  }
  // Of the selected event, as pseudo-velocity, with its values, and of all events with a limit.
  void SaveResponse() {
    Trigger("actShockResponse");
    Save("response");
    auto* response = FForm.findChild<QComboBox*>("cmbResponse");
    response->setCurrentIndex(1);
    Save("response-velocity");
    response->setCurrentIndex(0);
    SaveWith("actShockShowTable", "response-values");
    auto* chart = FForm.findChild<TResponseChart*>();
    chart->SetLimit({{2, 8}, {25, 100}, {1000, 100}});
    FForm.findChild<QAbstractButton*>("chbResponseEnvelope")->setChecked(true);
    while (!FForm.findChild<QWidget*>("pnlResponseProgress")->isHidden()) QCoreApplication::processEvents();
    Save("response-envelope");
    FForm.findChild<QAbstractButton*>("chbResponseEnvelope")->setChecked(false);
    chart->SetLimit({});
    Trigger("actShockResponse");
  }
  void Trigger(const char* action) { FForm.findChild<QAction*>(action)->trigger(); }
  // Switches the action on for one picture.
  void SaveWith(const char* action, const QString& name) {
    Trigger(action);
    Save(name);
    Trigger(action);
  }
  [[nodiscard]] const QStringList& Files() const { return FFiles; }

 private:
  TKorvexMainForm& FForm;
  QDir FFolder;
  QStringList FFiles;
};

}  // namespace

QStringList SaveSnapshots(TKorvexMainForm& form, const QString& recording, const QString& folder) {
  form.show();
  Settle();
  const QPixmap welcome = form.grab();
  Open(form, recording);
  TAlbum album(form, folder);
  album.Save("welcome", welcome);
  form.Flow().SwitchView(TView::Overview);
  album.Save("overview");
  album.SaveWith("actAlarmSet", "overview-alarm");
  album.SaveLimits();
  form.Flow().SwitchView(TView::Shock);
  album.Save("shock");
  album.SaveWith("actAlarmSet", "shock-alarm");
  album.SaveWith("actShockShowTable", "shock-values");
  album.SaveWith("actShockSpecAnalysis", "spectrum");
  album.SaveAnalysis();
  album.SaveReference();
  album.SaveResponse();
  album.SavePins();
  album.Trigger("actFilterEdit");
  form.findChild<QLineEdit*>("edtFilterAccelerationMaxFrom")->setText("10");  // switches the filter on
  album.Save("filter");
  album.SaveDialog("actKeys", "keys");
  album.SaveDialog("actNoteAdd", "note");
  album.SaveDialog("actNotes", "notes");
  album.SaveDialog("actExportPart", "export-part");
  form.Flow().SwitchView(TView::Report);
  form.findChild<TRibbon*>()->SelectTab("tabReport");
  album.Save("report");
  form.findChild<TPageView*>("scrlReport")->SetFit(TPageView::TFit::Page);
  form.findChild<TPageView*>("scrlReport")->GoToPage(1);
  album.Save("report-page");
  album.SaveDialog("actReportConfig", "report-config");
  form.Flow().SwitchView(TView::Overview);
  album.SaveDialog("actOverviewPreview", "overview-preview");
  form.Flow().SwitchView(TView::Shock);
  album.SaveDialog("actShockPreview", "shock-preview");
  album.Trigger("actBackstage");
  album.Save("backstage");
  album.SaveFolder();
  form.findChild<TBackstage*>()->SelectPage("backstageSettings");
  auto* settings = form.findChild<TSettingsPage*>();
  for (const char* page : {"general", "formats", "colours", "analog-inputs"}) {
    album.Save(QString("settings-") + page);
    settings->setCurrentIndex(settings->currentIndex() + 1);
  }
  return album.Files();
}
