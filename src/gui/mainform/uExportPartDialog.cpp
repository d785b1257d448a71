#include "gui/mainform/uExportPartDialog.h"

#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QStandardItemModel>
#include <span>

#include "base/uDateTime.h"
#include "gui/common/uBoxes.h"
#include "gui/common/uQtText.h"
#include "gui/mainform/KorvexMainForm.h"
#include "gui/mainform/uCommandTable.h"
#include "shell/uExportCommands.h"

namespace {

// In the order of TPartChoice and of TPartForm.
constexpr const char* kParts[] = {QT_TR_NOOP("All of the recording"), QT_TR_NOOP("What the filter lets through"),
                                  QT_TR_NOOP("The navigator's band")};
constexpr const char* kForms[] = {QT_TR_NOOP("Tables in a workbook (XLSX)"), QT_TR_NOOP("Tables as CSV files"),
                                  QT_TR_NOOP("Samples of each event in a workbook (XLSX)"),
                                  QT_TR_NOOP("Samples of each event as CSV files"),
                                  QT_TR_NOOP("A recording of its own (KSHOCK)")};

class TChoice final : public QComboBox {
 public:
  TChoice(const QString& name, std::span<const char* const> entries, QWidget* parent) : QComboBox(parent) {
    setObjectName(name);
    for (const char* entry : entries) addItem(tr(entry));
  }
  void SetEntryEnabled(int entry, bool enabled) {
    qobject_cast<QStandardItemModel*>(model())->item(entry)->setEnabled(enabled);
    if (!enabled && currentIndex() == entry) setCurrentIndex(0);
  }
};

QString BandText(const TTimeSpan& band) {
  return QObject::tr("%1 … %2").arg(QtText(FormatDateTime(DateTimeMask(), band.start)),
                                    QtText(FormatDateTime(DateTimeMask(), band.end)));
}

}  // namespace

void AskAndExportPart(const TCommandTargets& on) {
  if (!on.flow.FileShown()) return;
  const TShownMission& mission = on.flow.Mission();
  QDialog dialog(&on.form);
  dialog.setObjectName("dlgExportPart");
  dialog.setWindowTitle(QObject::tr("Export a part"));
  auto* parts = new TChoice("cmbPart", kParts, &dialog);
  parts->setCurrentIndex(static_cast<int>(TPartChoice::Band));
  parts->SetEntryEnabled(static_cast<int>(TPartChoice::Filtered), mission.FilterActive);
  parts->setToolTip(
      QObject::tr("The band has the events that begin in it, and its readings.\n"
                  "While the filter is on, its events are a part, with the readings in its time."));
  auto* forms = new TChoice("cmbPartForm", kForms, &dialog);
  forms->setToolTip(
      QObject::tr("Tables are those of events, sensors and battery.\n"
                  "Only the band becomes a recording; its title says what it was cut from."));
  auto* size = Named(new QLabel(&dialog), "lblPartSize");
  size->setTextFormat(Qt::PlainText);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, &dialog);
  QPushButton* go = buttons->addButton(QObject::tr("&Export…"), QDialogButtonBox::AcceptRole);
  go->setDefault(true);
  auto* form = new QFormLayout;
  form->addRow(QObject::tr("&Part"), parts);
  form->addRow(QObject::tr("&As"), forms);
  MakeColumn(&dialog, {form, size, buttons});
  const auto update = [&] {
    const auto choice = static_cast<TPartChoice>(parts->currentIndex());
    const bool isBand = choice == TPartChoice::Band;
    forms->SetEntryEnabled(static_cast<int>(TPartForm::Recording), isBand);
    const TMissionPart part = PartOf(mission, choice);
    size->setText((isBand ? BandText(mission.Band) : QString()) + '\n' + QtText(PartSizeText(part)));
    go->setEnabled(!part.IsEmpty());
  };
  QObject::connect(parts, &QComboBox::currentIndexChanged, &dialog, update);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  update();
  if (dialog.exec() != QDialog::Accepted) return;
  on.exports.ExportPart(static_cast<TPartChoice>(parts->currentIndex()), static_cast<TPartForm>(forms->currentIndex()));
}
