#include "gui/shock/uResponsePanel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <array>

#include "base/uFiles.h"
#include "gui/charts/uResponseChart.h"
#include "gui/common/uMessageBox.h"
#include "gui/common/uQtText.h"
#include "gui/platform/uDialogs.h"
#include "gui/shock/uChoiceBar.h"

namespace {

constexpr QSize kMinSize(180, 120);  // px
constexpr std::array kQualities = {5.0, 10.0, 25.0, 50.0};
constexpr std::array<std::size_t, 4> kOctaves = {3, 6, 12, 24};

constexpr auto kLimitText = "&Limit…";
constexpr auto kLimitTip =
    "A limit from a CSV file with lines \"Hz,g\": it is drawn, and the title names the smallest margin";

}  // namespace

TResponsePanel::TResponsePanel(QWidget* parent)
    : QWidget(parent),
      FChart(new TResponseChart(this)),
      FChoices(new TChoiceBar("btnResponseChoices", tr("How the response is calculated, and its limit"), this)),
      FBar(new QProgressBar(this)) {
  setObjectName("pnlResponse");
  setMinimumSize(kMinSize);
  AddChoices();
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(2);
  layout->addWidget(MakeProgress());
  layout->addWidget(FChart, 1);
}

void TResponsePanel::AddChoices() {
  // `change` gets the request and the entry.
  const auto add = [&](const char* name, const QString& caption, const QString& what, const QStringList& names,
                       int first, TChange change) {
    QComboBox* list = MakeChoiceList(name, what, names);
    list->setCurrentIndex(first);
    connect(list, &QComboBox::currentIndexChanged, this, [this, change](int entry) {
      TResponseRequest request = FChart->Request();
      change(request, static_cast<std::size_t>(entry));
      FChart->SetRequest(request);
      EmitChoices();
    });
    FLists.emplace_back(list, std::move(change));
    FChoices->Add(caption, list);
  };
  QStringList qualities, octaves;
  for (const double quality : kQualities) qualities.append(tr("Q %1").arg(quality));
  for (const std::size_t octave : kOctaves) octaves.append(tr("1/%1 octave").arg(octave));
  add("cmbResponse", tr("Response"), tr("Response of the oscillators"), NamesOf(kResponses), 0,
      [](TResponseRequest& request, std::size_t entry) { request.options.response = kResponses[entry].second; });
  add("cmbResponseSign", tr("Extreme"), tr("Which extreme of a response counts"), NamesOf(kResponseSigns), 0,
      [](TResponseRequest& request, std::size_t entry) { request.options.sign = kResponseSigns[entry].second; });
  add("cmbResponseQ", tr("Quality"), tr("Quality of the oscillators: 10 is 5 % of critical damping"), qualities, 1,
      [](TResponseRequest& request, std::size_t entry) { request.options.quality = kQualities[entry]; });
  add("cmbResponseOctave", tr("Step"), tr("Step from frequency to frequency"), octaves, 2,
      [](TResponseRequest& request, std::size_t entry) { request.octave = kOctaves[entry]; });
  add("cmbResponseBaseline", tr("Zero"),
      tr("What is taken for zero: the mean before the shock, or the samples as they are"),
      {tr("baseline before"), tr("no baseline")}, 0,
      [](TResponseRequest& request, std::size_t entry) { request.baseline = kBaselines[entry].second; });
  auto* envelope = new QCheckBox(tr("All &visible events"));
  envelope->setObjectName("chbResponseEnvelope");
  envelope->setToolTip(tr("The largest response at each frequency of all events that the filter lets through"));
  connect(envelope, &QCheckBox::toggled, FChart, &TResponseChart::SetEnvelope);
  FChoices->Add({}, envelope);
  FLimitButton = new QPushButton(tr(kLimitText));
  FLimitButton->setObjectName("btnResponseLimit");
  FLimitButton->setCheckable(true);
  FLimitButton->setToolTip(tr(kLimitTip));
  connect(FLimitButton, &QPushButton::clicked, this, &TResponsePanel::ChangeLimit);
  FChoices->Add({}, FLimitButton);
}

void TResponsePanel::SetChoices(const TResponseChoices& choices) {
  const QSignalBlocker quiet(this);
  for (const auto& [list, change] : FLists) {
    for (int entry = 0; entry < list->count(); ++entry) {
      TResponseRequest changed = choices.request;
      change(changed, static_cast<std::size_t>(entry));
      if (changed == choices.request) list->setCurrentIndex(entry);
    }
  }
  FLimit = choices.limit;
  FLimitWaits = !FLimit.empty();
}

void TResponsePanel::EmitChoices() {
  TResponseRequest request = FChart->Request();
  request.levelOn = 0;  // the recording's
  emit ChoicesChanged({std::move(request), FLimit});
}

void TResponsePanel::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (!std::exchange(FLimitWaits, false)) return;
  // Queued: a message waits for the user.
  QMetaObject::invokeMethod(
      this, [this] { UseLimit(FLimit); }, Qt::QueuedConnection);
}

void TResponsePanel::ChangeLimit() {
  if (FLimitButton->isChecked()) {
    FLimitButton->setChecked(false);
    const auto file =
        AskForFile(this, tr("Open a limit curve"), {Utf8FromPath(FLimitFolder), "Limit curves|*.csv|All files|*"});
    if (!file) return;
    UseLimit(PathFromUtf8(*file));
  } else {
    FChart->SetLimit({});
    FLimitButton->setText(tr(kLimitText));
    FLimitButton->setToolTip(tr(kLimitTip));
    FLimit.clear();
  }
  EmitChoices();
}

void TResponsePanel::UseLimit(const std::filesystem::path& file) {
  const QString shown = QtText(Utf8FromPath(file));
  try {
    FChart->SetLimit(ReadLimitCurve(file));
    FLimitFolder = file.parent_path();
    FLimitButton->setChecked(true);
    FLimitButton->setText(tr("Remove &limit"));
    FLimitButton->setToolTip(tr("Limit: %1").arg(shown));
    FLimit = file;
  } catch (const std::exception& error) {
    FLimit.clear();
    ShowBox(this, QMessageBox::Warning, "msgLimit", tr("The limit curve cannot be used."),
            QString("%1\n%2").arg(shown, QtText(ReasonOf(error))));
  }
}

QWidget* TResponsePanel::MakeProgress() {
  auto* row = new QWidget(this);
  row->setObjectName("pnlResponseProgress");
  FBar->setObjectName("pgbResponse");
  FBar->setAccessibleName(tr("Events calculated"));
  auto* cancel = new QPushButton(tr("Cancel"), row);
  cancel->setObjectName("btnResponseCancel");
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(4, 0, 4, 0);
  layout->addWidget(FBar, 1);
  layout->addWidget(cancel);
  row->hide();
  connect(cancel, &QPushButton::clicked, FChart, &TResponseChart::Cancel);
  connect(FChart, &TResponseChart::Progressed, row, [this, row](std::size_t done, std::size_t count) {
    // A bar without a maximum says that it works.
    FBar->setRange(0, count > 1 ? static_cast<int>(count) : 0);
    FBar->setValue(static_cast<int>(done));
    row->show();
  });
  connect(FChart, &TResponseChart::Ended, row, &QWidget::hide);
  return row;
}
