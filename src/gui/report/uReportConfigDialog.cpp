#include "gui/report/uReportConfigDialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSpinBox>
#include <cmath>
#include <stdexcept>
#include <utility>

#include "base/uDateTime.h"
#include "base/uFiles.h"
#include "gui/common/uBoxes.h"
#include "gui/common/uLabels.h"
#include "gui/common/uQtText.h"
#include "gui/platform/uDialogs.h"
#include "shell/uGoTo.h"

namespace {

constexpr int kDialogRowSpace = 3;  // px around a section
constexpr auto kFileFilter = "Report configuration|*.ini";

// In the order of the dialog's boxes.
constexpr std::pair<const char*, bool TReportConfig::*> kTableBoxes[] = {
    {"chkReportEvents", &TReportConfig::eventsTable},
    {"chkReportSensors", &TReportConfig::sensorsTable},
    {"chkReportBattery", &TReportConfig::batteryTable}};

QComboBox* MakeBox(const char* name, const QString& title, const QStringList& entries, QWidget* parent) {
  auto* box = Named(new QComboBox(parent), name, title);
  box->addItems(entries);
  return box;
}

void AddRow(QFormLayout& form, const QString& caption, QWidget& field) {
  auto* label = new TKeyLabel(caption, field.parentWidget());
  label->setBuddy(&field);
  form.addRow(label, &field);
}

QString TimeText(const std::optional<double>& time) {
  return time ? QtText(FormatDateTime(DateTimeMask(), *time)) : QString();
}

}  // namespace

TReportConfigDialog::TReportConfigDialog(const TReportConfig& config, const TTimeSpan& band, QWidget* parent)
    : QDialog(parent), FConfig(config) {
  setObjectName("dlgReportConfig");
  setWindowTitle(tr("Report"));
  auto* sections = MakeSections();
  auto* right = MakeColumn(nullptr, {MakePage(), MakeCards(), MakeTime(band), kRest});
  FProblem = MakeSentence("lblReportConfigProblem", this);
  FProblem->setMinimumHeight(FProblem->fontMetrics().height());
  MakeColumn(this, {MakeRow(nullptr, {sections, {right, 1}}), FProblem, MakeButtons()});
  Show(config);
}

QWidget* TReportConfigDialog::MakeSections() {
  auto* group = new QGroupBox(tr("Sections"), this);
  FSections = Named(new QListWidget(group), "lstReportSections", tr("Sections in their order"),
                    tr("Space switches a section on and off; drag it, or Alt+Up and Alt+Down, to move it"));
  FSections->setSpacing(kDialogRowSpace);
  FSections->setDragDropMode(QAbstractItemView::InternalMove);
  auto* buttons = new QHBoxLayout;
  const auto add = [&](const char* name, const QString& caption, const QKeySequence& keys, int step) {
    auto* button = Named(new QPushButton(caption, group), name);
    button->setShortcut(keys);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, [this, step] { MoveSection(step); });
    buttons->addWidget(button);
  };
  add("btnReportSectionUp", tr("Move up"), QKeySequence("Alt+Up"), -1);
  add("btnReportSectionDown", tr("Move down"), QKeySequence("Alt+Down"), 1);
  MakeColumn(group, {FSections, buttons});
  return group;
}

QWidget* TReportConfigDialog::MakePage() {
  auto* group = new QGroupBox(tr("Page and tables"), this);
  FPaper = MakeBox("cmbReportPaper", tr("Paper"), {tr("A4"), tr("Letter")}, group);
  FOrientation = MakeBox("cmbReportOrientation", tr("Orientation"), {tr("Portrait"), tr("Landscape")}, group);
  auto* form = new QFormLayout(group);
  AddRow(*form, tr("&Paper"), *FPaper);
  AddRow(*form, tr("&Orientation"), *FOrientation);
  auto* tables = new QHBoxLayout;
  const QString captions[] = {tr("&Events"), tr("Se&nsors"), tr("&Battery")};
  for (std::size_t i = 0; i < FTables.size(); ++i) {
    FTables[i] = Named(new QCheckBox(captions[i], group), kTableBoxes[i].first);
    tables->addWidget(FTables[i]);
  }
  form->addRow(tr("Tables of"), tables);
  return group;
}

QWidget* TReportConfigDialog::MakeCards() {
  auto* group = new QGroupBox(tr("Event cards"), this);
  FCardEvents = MakeBox("cmbReportCardEvents", tr("Events with a card"),
                        {tr("All events"), tr("Events that pass the filter"), tr("The first by \"Order By\""),
                         tr("Events above the alarm limits")},
                        group);
  FWorst = Named(new QSpinBox(group), "spnReportWorst", tr("Number of events by \"Order By\""));
  FWorst->setRange(1, static_cast<int>(kMaxWorst));
  QStringList counts;
  for (const std::size_t count : kCardsPerPage) counts << QString::number(count);
  FPerPage = MakeBox("cmbReportCardsPerPage", tr("Cards a page"), counts, group);
  connect(FCardEvents, &QComboBox::currentIndexChanged, this,
          [this](int entry) { FWorst->setEnabled(entry == static_cast<int>(TCardEvents::Worst)); });
  auto* form = new QFormLayout(group);
  AddRow(*form, tr("&Cards for"), *FCardEvents);
  AddRow(*form, tr("&Number by \"Order By\""), *FWorst);
  AddRow(*form, tr("Cards a pa&ge"), *FPerPage);
  return group;
}

QWidget* TReportConfigDialog::MakeTime(const TTimeSpan& band) {
  auto* group = new QGroupBox(tr("Time filter"), this);
  const auto edit = [&](const char* name, const QString& title) {
    auto* line = Named(new QLineEdit(group), name, title);
    line->setPlaceholderText(tr("whole recording"));
    line->setMinimumWidth(line->fontMetrics().averageCharWidth() * 24);
    connect(line, &QLineEdit::textEdited, this, [this] { FProblem->clear(); });
    return line;
  };
  FFrom = edit("edtReportFrom", tr("From"));
  FTo = edit("edtReportTo", tr("To"));
  auto* buttons = new QHBoxLayout;
  const auto add = [&](const char* name, const QString& caption, const TRange& time) {
    auto* button = Named(new QPushButton(caption, group), name);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, [this, time] { ShowTime(time); });
    buttons->addWidget(button);
  };
  add("btnReportTimeBand", tr("Na&vigator's band"), {band.start, band.end});
  add("btnReportTimeAll", tr("&Whole recording"), {});
  auto* form = new QFormLayout(group);
  AddRow(*form, tr("&From"), *FFrom);
  AddRow(*form, tr("&To"), *FTo);
  form->addRow(buttons);
  return group;
}

QWidget* TReportConfigDialog::MakeButtons() {
  auto* box = new QDialogButtonBox(this);
  const auto add = [&](const char* name, const QString& caption, QDialogButtonBox::ButtonRole role, auto clicked) {
    auto* button = Named(box->addButton(caption, role), name);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, clicked);
    return button;
  };
  add("btnReportConfigLoad", tr("&Load…"), QDialogButtonBox::ResetRole, [this] { Load(); });
  add("btnReportConfigSave", tr("&Save…"), QDialogButtonBox::ResetRole, [this] { Save(); });
  add("btnReportConfigDefaults", tr("&Defaults"), QDialogButtonBox::ResetRole, [this] { Show(TReportConfig()); });
  add("btnReportConfigCancel", tr("Cancel"), QDialogButtonBox::RejectRole, [this] { reject(); });
  const auto take = [this] {
    if (Try([this] { FConfig = Typed(); })) accept();
  };
  add("btnReportConfigOK", tr("OK"), QDialogButtonBox::AcceptRole, take)->setDefault(true);
  return box;
}

void TReportConfigDialog::Show(const TReportConfig& config) {
  FSections->clear();
  for (const auto& [section, on] : config.sections) {
    auto* item = new QListWidgetItem(QtText(SectionName(section)), FSections);
    item->setData(Qt::UserRole, static_cast<int>(section));
    item->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsUserCheckable | Qt::ItemIsDragEnabled);
    item->setCheckState(on ? Qt::Checked : Qt::Unchecked);
  }
  FSections->setCurrentRow(0);
  FSections->setMinimumWidth(FSections->sizeHintForColumn(0) + 40);
  FSections->setMinimumHeight(FSections->sizeHintForRow(0) * static_cast<int>(kReportSectionCount) + 12);
  FPaper->setCurrentIndex(static_cast<int>(config.paper));
  FOrientation->setCurrentIndex(config.landscape ? 1 : 0);
  for (std::size_t i = 0; i < FTables.size(); ++i) FTables[i]->setChecked(config.*kTableBoxes[i].second);
  FCardEvents->setCurrentIndex(static_cast<int>(config.cardEvents));
  FWorst->setValue(static_cast<int>(config.worstCount));
  FWorst->setEnabled(config.cardEvents == TCardEvents::Worst);
  FPerPage->setCurrentText(QString::number(config.cardsPerPage));
  ShowTime(config.time);
}

void TReportConfigDialog::ShowTime(const TRange& time) {
  FTime = time;
  FFrom->setText(TimeText(time.from));
  FTo->setText(TimeText(time.to));
  FProblem->clear();
}

void TReportConfigDialog::FocusTime() {
  FFrom->setFocus();
  FFrom->selectAll();
}

TReportConfig TReportConfigDialog::Typed() const {
  TReportConfig config;
  for (int row = 0; row < FSections->count(); ++row) {
    const QListWidgetItem* item = FSections->item(row);
    config.sections.at(static_cast<std::size_t>(row)) = {static_cast<TReportSection>(item->data(Qt::UserRole).toInt()),
                                                         item->checkState() == Qt::Checked};
  }
  config.paper = static_cast<TReportPaper>(FPaper->currentIndex());
  config.landscape = FOrientation->currentIndex() == 1;
  for (std::size_t i = 0; i < FTables.size(); ++i) config.*kTableBoxes[i].second = FTables[i]->isChecked();
  config.cardEvents = static_cast<TCardEvents>(FCardEvents->currentIndex());
  config.worstCount = static_cast<std::size_t>(FWorst->value());
  config.cardsPerPage = kCardsPerPage.at(static_cast<std::size_t>(FPerPage->currentIndex()));
  const auto typed = [](const QLineEdit& edit, const std::optional<double>& shown) -> std::optional<double> {
    const QString text = edit.text().trimmed();
    if (text.isEmpty()) return std::nullopt;
    if (text == TimeText(shown)) return shown;
    const auto time = TypedTime(Utf8(text), std::nan(""));
    if (!time || !std::isfinite(*time)) {
      throw std::runtime_error(Utf8(tr("\"%1\" is no date and time.").arg(ShownText(Utf8(text), 60))));
    }
    return time;
  };
  config.time = {typed(*FFrom, FTime.from), typed(*FTo, FTime.to)};
  if (config.time.from && config.time.to && *config.time.from > *config.time.to) {
    throw std::runtime_error(Utf8(tr("The time filter ends before it begins.")));
  }
  if (std::ranges::none_of(config.sections, &TReportSectionChoice::on)) {
    throw std::runtime_error(Utf8(tr("A report needs a section.")));
  }
  return config;
}

void TReportConfigDialog::MoveSection(int step) {
  const int row = FSections->currentRow();
  if (row < 0 || row + step < 0 || row + step >= FSections->count()) return;
  FSections->insertItem(row + step, FSections->takeItem(row));
  FSections->setCurrentRow(row + step);
}

template <class TAction>
bool TReportConfigDialog::Try(const TAction& action) {
  try {
    action();
    FProblem->clear();
    return true;
  } catch (const std::exception& error) {
    FProblem->setText(QtText(Printable(ReasonOf(error))));
    return false;
  }
}

void TReportConfigDialog::Load() {
  TOpenDialog dialog;
  dialog.filter = kFileFilter;
  const auto file = AskForFile(this, tr("Load a report configuration"), dialog);
  if (file) Try([&] { Show(ReadReportConfig(PathFromUtf8(*file))); });
}

void TReportConfigDialog::Save() {
  Try([this] {
    const TReportConfig config = Typed();
    const auto chosen =
        TDialogs(*this).AskWhereToSave({"Save the report configuration", {}, "Report", kFileFilter, "ini"});
    if (chosen) WriteReportConfig(PathFromUtf8(chosen->file), config);
  });
}
