#include "gui/settings/uSettingsPage.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QVBoxLayout>
#include <utility>
#include <vector>

#include "gui/common/uLabels.h"
#include "gui/common/uLogos.h"
#include "gui/common/uQtText.h"
#include "gui/common/uWheelGuard.h"
#include "gui/settings/uCaptionKeys.h"
#include "gui/settings/uColourBox.h"
#include "gui/settings/uLogoEdit.h"
#include "model/uQuantities.h"
#include "shell/uSettings.h"

namespace {

constexpr int kMaxTextLength = 200;  // characters
constexpr int kTextWidth = 30;       // characters
constexpr int kBoxSpace = 16;        // px, between boxes

struct TRow {
  std::string_view control;
  QString caption;  // with its key
  QString hint = {};
};

void Describe(QWidget& control, const TRow& row) {
  const QString plain = QString(row.caption).remove('&');
  control.setObjectName(QtText(row.control));
  control.setAccessibleName(plain);
  control.setToolTip(row.hint.isEmpty() ? plain : row.hint);
}

void AddRow(QFormLayout& form, const TRow& row, QWidget* control) {
  Describe(*control, row);
  new TWheelGuard(*control);
  auto* label = new TKeyLabel(row.caption);
  label->setBuddy(control);
  form.addRow(label, control);
}

void AddCheckBox(QFormLayout& form, const TRow& row) {
  auto* box = new QCheckBox(row.caption);
  Describe(*box, row);
  form.addRow(box);
}

void AddText(QFormLayout& form, const TRow& row) {
  auto* edit = new QLineEdit;
  edit->setMaxLength(kMaxTextLength);
  edit->setMinimumWidth(edit->fontMetrics().averageCharWidth() * kTextWidth);
  AddRow(form, row, edit);
}

void AddList(QFormLayout& form, const TRow& row, std::span<const std::string_view> entries) {
  auto* list = new QComboBox;
  for (const std::string_view entry : entries) list->addItem(QtText(entry));
  AddRow(form, row, list);
}

void AddColours(QFormLayout& form, std::initializer_list<TRow> rows) {
  for (const TRow& row : rows) AddRow(form, row, new TColourBox(nullptr));
}

// Scrolls a page that is larger than the window.
QWidget* Scrolled(QWidget* page) {
  auto* area = new QScrollArea;
  area->setFrameShape(QFrame::NoFrame);
  area->setWidgetResizable(true);
  area->setWidget(page);
  return area;
}

QFormLayout* MakeForm(QWidget* page) {
  auto* form = new QFormLayout(page);
  form->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
  return form;
}

// A titled box of rows.
QFormLayout* AddBox(QLayout& layout, const QString& title) {
  auto* box = new QGroupBox(title);
  layout.addWidget(box);
  layout.setAlignment(box, Qt::AlignTop | Qt::AlignLeft);
  return MakeForm(box);
}

// A page of boxes beside each other.
QHBoxLayout* MakeColumns(QWidget* page) {
  auto* columns = new QHBoxLayout(page);
  columns->setSpacing(kBoxSpace);
  return columns;
}

// A column of boxes above each other.
QVBoxLayout* AddColumn(QHBoxLayout& columns) {
  auto* column = new QVBoxLayout;
  column->setSpacing(kBoxSpace);
  columns.addLayout(column);
  return column;
}

}  // namespace

TSettingsPage::TSettingsPage(TLogos& logos) {
  setObjectName("pgcSettings");
  setAccessibleName(tr("Settings"));
  setDocumentMode(true);
  addTab(MakeGeneral(logos), tr("&General"));
  addTab(MakeFormats(), tr("For&mats"));
  addTab(MakeColours(), tr("Colo&urs"));
  addTab(MakeAnalogInputs(), tr("Analog i&nputs"));
}

QWidget* TSettingsPage::MakeGeneral(TLogos& logos) {
  auto* page = new QWidget;
  auto* boxes = new QVBoxLayout(page);  // beside each other they are wider than a small window
  boxes->setSpacing(kBoxSpace);
  QFormLayout* form = AddBox(*boxes, tr("Reports"));
  AddText(*form, {"cxTextEditCompanyName", tr("&Company name"), tr("Stands on reports")});
  form->addRow(tr("Company logo"), new TLogoEdit(logos, TLogos::kCompany, "btnCompanyLogo", tr("company logo")));
  form->addRow(tr("Report logo"), new TLogoEdit(logos, TLogos::kReport, "btnReportLogo", tr("report logo")));
  form = AddBox(*boxes, tr("Window"));
  AddList(*form, {"cmbSettingsDateTimeFormat", tr("&Date format"), tr("How every date is shown")}, kDateFormats);
  AddList(*form,
          {"cmbSettingsDefFileFilter", tr("Default file &filter"),
           tr("What the open dialog and the lists of files show at first")},
          kFileFilters);
  AddCheckBox(*form, {"chboxDialogConfirmationsSync", tr("&Show sync dialog confirmations"),
                      tr("Ask before the navigator is synced with the currently viewed timespan")});
  AddCheckBox(*form, {"chboxShockChartPointAbsorption", tr("Absorb &overlapping points on chart"),
                      tr("If turned on the overlapping points in the Shock Events chart will be absorbed into a bigger "
                         "point")});
  boxes->addStretch();
  return Scrolled(page);
}

QWidget* TSettingsPage::MakeFormats() {
  using enum TQuantity;
  const std::pair<QString, std::vector<TQuantity>> boxes[] = {
      {tr("Events"), {Time, Acceleration, ToT, IoT}},
      {tr("Sensors"), {Temperature, Humidity, Pressure, Light, Battery}},
      {tr("Analog inputs"), {A1, A2, A3, A4}}};
  auto* page = new QWidget;
  QHBoxLayout* columns = MakeColumns(page);
  QString keys;
  for (const auto& [title, quantities] : boxes) {
    QFormLayout* form = AddBox(*columns, title);
    for (const TQuantity quantity : quantities) {
      const TQuantityControls& row = kQuantityControls[static_cast<std::size_t>(quantity)];
      QString caption = WithKey(QtText(row.caption), keys);
      if (!row.unit.empty()) caption += QString(" (%1)").arg(QtText(row.unit));
      const QString hint = row.hint.empty() ? QString() : QtText(row.hint) + ". ";
      AddList(*form, {row.format, caption, hint + tr("0: a digit that is always shown, #: one that may be left out")},
              kDecimalMasks);
    }
  }
  columns->addStretch();
  return Scrolled(page);
}

QWidget* TSettingsPage::MakeColours() {
  auto* page = new QWidget;
  QHBoxLayout* columns = MakeColumns(page);
  QVBoxLayout* left = AddColumn(*columns);
  AddColours(*AddBox(*left, tr("Acceleration")),
             {{"ccmbShockX", "&X"}, {"ccmbShockY", "&Y"}, {"ccmbShockZ", "&Z"}, {"ccmbShockTotal", tr("T&otal")}});
  AddColours(*AddBox(*left, tr("Axes of the sensors chart")), {{"clrgalSensorsLeftAxisI", tr("Left inner")},
                                                               {"clrgalSensorsLeftAxisII", tr("Left outer")},
                                                               {"clrgalSensorsRightAxisI", tr("Right inner")},
                                                               {"clrgalSensorsRightAxisII", tr("Right outer")}});
  left->addStretch();
  QFormLayout* sensors = AddBox(*columns, tr("Sensors"));
  for (const TQuantityRow* row : kColouredSensors) AddColours(*sensors, {{row->colourControl, tr(row->colourCaption)}});
  columns->addStretch();
  return Scrolled(page);
}

QWidget* TSettingsPage::MakeAnalogInputs() {
  auto* page = new QWidget;
  QHBoxLayout* columns = MakeColumns(page);
  QFormLayout* form = AddBox(*columns, tr("Names"));
  for (const TQuantityRow* row : kAnalogInputs) {
    AddText(*form, {row->nameControl, tr("Name of %1").arg(row->colourCaption)});
  }
  auto* where =
      new QLabel(tr("A name stands in tables, charts, exports and the alarm limits.\n"
                    "Without one the input keeps its name in the recording."));
  where->setForegroundRole(QPalette::PlaceholderText);
  form->addRow(where);
  columns->addStretch();
  return Scrolled(page);
}
