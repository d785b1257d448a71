#include "gui/settings/uSettingsPage.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QScrollArea>

#include "gui/common/uLogos.h"
#include "gui/common/uQtText.h"
#include "gui/common/uWheelGuard.h"
#include "gui/settings/uColourBox.h"
#include "gui/settings/uLogoEdit.h"
#include "model/uQuantities.h"
#include "shell/uSettingsSchema.h"

namespace {

constexpr int kLongestText = 200;  // characters
constexpr int kTextWidth = 40;     // characters

struct TRow {
  const char* control;
  const char* caption;  // with its key
  const char* hint = "";
};

QString PlainText(const char* caption) {
  return QObject::tr(caption).remove('&');
}

void Describe(QWidget& control, const TRow& row) {
  control.setObjectName(row.control);
  control.setAccessibleName(PlainText(row.caption));
  control.setToolTip(*row.hint == '\0' ? PlainText(row.caption) : QObject::tr(row.hint));
}

void AddRow(QFormLayout& form, const TRow& row, QWidget* control) {
  Describe(*control, row);
  new TWheelGuard(*control);
  form.addRow(QObject::tr(row.caption), control);
}

void AddCheckBox(QFormLayout& form, const TRow& row) {
  auto* box = new QCheckBox(QObject::tr(row.caption));
  Describe(*box, row);
  form.addRow(box);
}

void AddText(QFormLayout& form, const TRow& row) {
  auto* edit = new QLineEdit;
  edit->setMaxLength(kLongestText);
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

// A page scrolls where the window is too small for it.
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
  auto* form = MakeForm(page);
  AddText(*form, {"cxTextEditCompanyName", "&Company name", "Stands on reports"});
  form->addRow(tr("Company logo"), new TLogoEdit(logos, TLogos::kCompany, "btnCompanyLogo", tr("company logo")));
  form->addRow(tr("Report logo"), new TLogoEdit(logos, TLogos::kReport, "btnReportLogo", tr("report logo")));
  AddList(*form, {"cmbSettingsDateTimeFormat", "&Date format", "How every date is shown"}, kDateFormats);
  AddList(
      *form,
      {"cmbSettingsDefFileFilter", "Default file &filter", "What the open dialog and the lists of files show at first"},
      kFileFilters);
  AddCheckBox(*form, {"chboxDialogConfirmationsSync", "&Show sync dialog confirmations",
                      "Ask before the navigator is synced with the currently viewed timespan"});
  AddCheckBox(*form, {"chboxShockChartPointAbsorption", "Absorb &overlapping points on chart",
                      "If turned on the overlapping points in the Shock Events chart will be absorbed into a bigger "
                      "point"});
  return Scrolled(page);
}

QWidget* TSettingsPage::MakeFormats() {
  constexpr TRow kRows[] = {{"cmbSettingsTimeDec", "&Time (ms)"},
                            {"cmbSettingsAccDec", "&Acceleration (g)"},
                            {"cmbSettingsDBCDec", "T&oT (ms)", "Time over threshold"},
                            {"cmbSettingsIntDec", "&IoT (g ms)", "Integral over threshold"},
                            {"cmbSettingsTempDec", "T&emperature (°C)"},
                            {"cmbSettingsRHDec", "&Humidity (%RH)"},
                            {"cmbSettingsPresDec", "&Pressure (mbar)"},
                            {"cmbSettingsLiDec", "&Light (lux)"},
                            {"cmbSettingsBatDec", "&Battery (V)"},
                            {"cmbSettingsA1Dec", "A&1"},
                            {"cmbSettingsA2Dec", "A&2"},
                            {"cmbSettingsA3Dec", "A&3"},
                            {"cmbSettingsA4Dec", "A&4"}};
  auto* page = new QWidget;
  auto* form = MakeForm(page);
  for (const TRow& row : kRows) AddList(*form, row, kDecimalMasks);
  return Scrolled(page);
}

QWidget* TSettingsPage::MakeColours() {
  auto* page = new QWidget;
  auto* columns = new QHBoxLayout(page);
  auto* left = new QVBoxLayout;
  AddColours(*AddBox(*left, tr("Acceleration")),
             {{"ccmbShockX", "&X"}, {"ccmbShockY", "&Y"}, {"ccmbShockZ", "&Z"}, {"ccmbShockTotal", "T&otal"}});
  AddColours(*AddBox(*left, tr("Axes of the sensors chart")), {{"clrgalSensorsLeftAxisI", "Left inner"},
                                                               {"clrgalSensorsLeftAxisII", "Left outer"},
                                                               {"clrgalSensorsRightAxisI", "Right inner"},
                                                               {"clrgalSensorsRightAxisII", "Right outer"}});
  left->addStretch();
  columns->addLayout(left);
  QFormLayout* sensors = AddBox(*columns, tr("Sensors"));
  for (const TQuantityRow* row : kColouredSensors) {
    AddRow(*sensors, {row->colourControl.data(), row->colourCaption}, new TColourBox(nullptr));
  }
  columns->addStretch();
  return Scrolled(page);
}

QWidget* TSettingsPage::MakeAnalogInputs() {
  constexpr TRow kRows[] = {{"tedA1Name", "Name of A&1"},
                            {"tedA2Name", "Name of A&2"},
                            {"tedA3Name", "Name of A&3"},
                            {"tedA4Name", "Name of A&4"}};
  auto* page = new QWidget;
  auto* form = MakeForm(page);
  for (const TRow& row : kRows) AddText(*form, row);
  return Scrolled(page);
}
