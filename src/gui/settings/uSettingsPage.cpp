#include "gui/settings/uSettingsPage.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <utility>
#include <vector>

#include "base/uFiles.h"
#include "gui/common/uBoxes.h"
#include "gui/common/uGuard.h"
#include "gui/common/uLabels.h"
#include "gui/common/uLogos.h"
#include "gui/common/uMessageBox.h"
#include "gui/common/uQtText.h"
#include "gui/common/uWheelGuard.h"
#include "gui/platform/uDialogs.h"
#include "gui/settings/uCaptionKeys.h"
#include "gui/settings/uColourBox.h"
#include "model/uQuantities.h"
#include "shell/uSettings.h"

namespace {

constexpr int kMaxTextLength = 200;     // characters
constexpr int kTextWidth = 30;          // characters
constexpr int kBoxSpace = 16;           // px, between boxes
constexpr QSize kPictureSize(240, 56);  // px, of a logo

struct TRow {
  std::string_view control;
  QString caption;  // with its key
  QString hint = {};
};

void Describe(QWidget& control, const TRow& row) {
  const QString plain = QString(row.caption).remove('&');
  Named(&control, QtText(row.control), plain, row.hint.isEmpty() ? plain : row.hint);
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

QLineEdit* MakeText() {
  auto* edit = new QLineEdit;
  edit->setMaxLength(kMaxTextLength);
  edit->setMinimumWidth(edit->fontMetrics().averageCharWidth() * kTextWidth);
  return edit;
}

QComboBox* MakeList(std::span<const std::string_view> entries) {
  auto* list = new QComboBox;
  for (const std::string_view entry : entries) list->addItem(QtText(entry));
  return list;
}

QString MaskHint() {
  return QObject::tr("0: a digit that is always shown, #: one that may be left out");
}

void AddColours(QFormLayout& form, std::initializer_list<TRow> rows) {
  for (const TRow& row : rows) AddRow(form, row, new TColourBox(nullptr));
}

// A titled box.
QGroupBox* AddBox(QBoxLayout& layout, const QString& title) {
  auto* box = new QGroupBox(title);
  layout.addWidget(box, layout.direction() == QBoxLayout::LeftToRight ? 1 : 0, Qt::AlignTop);
  return box;
}

QFormLayout* AddForm(QBoxLayout& layout, const QString& title) {
  auto* form = new QFormLayout(AddBox(layout, title));
  form->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
  return form;
}

// A page of boxes beside each other.
QHBoxLayout* MakeColumns(QWidget* page) {
  auto* columns = new QHBoxLayout(page);
  columns->setSpacing(kBoxSpace);
  return columns;
}

// A page of boxes that are beside each other where there is room, else above each other.
class TBoxes : public QWidget {
 public:
  TBoxes() : FLayout(new QBoxLayout(QBoxLayout::TopToBottom, this)) { FLayout->setSpacing(kBoxSpace); }
  QFormLayout* AddForm(const QString& title) { return ::AddForm(*FLayout, title); }
  void AddEnd() { FLayout->addStretch(); }

 protected:
  void resizeEvent(QResizeEvent* event) override {
    int needed = 0;
    for (const QWidget* box : findChildren<QGroupBox*>()) needed += box->sizeHint().width() + kBoxSpace;
    const bool beside = width() >= needed + kBoxSpace;
    FLayout->setDirection(beside ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    for (int i = 0; i < FLayout->count(); ++i)
      FLayout->setStretch(i, beside == (FLayout->itemAt(i)->widget() != nullptr));
    QWidget::resizeEvent(event);
  }

 private:
  QBoxLayout* FLayout;
};

// A column of boxes above each other.
QVBoxLayout* AddColumn(QHBoxLayout& columns) {
  auto* column = new QVBoxLayout;
  column->setSpacing(kBoxSpace);
  columns.addLayout(column, 1);
  return column;
}

// A logo and a button that replaces it by a picture of the user.
class TLogoEdit final : public QWidget {
 public:
  // `logos` outlives the edit.
  TLogoEdit(TLogos& logos, std::size_t index, const QString& buttonName, const QString& title)
      : FLogos(logos), FIndex(index), FPicture(new QLabel(this)) {
    FPicture->setFixedSize(kPictureSize);
    FPicture->setFrameShape(QFrame::StyledPanel);
    FPicture->setAlignment(Qt::AlignCenter);
    FPicture->setAccessibleName(title);
    // White, because logos are printed.
    QPalette paper = FPicture->palette();
    paper.setColor(QPalette::Window, Qt::white);
    FPicture->setPalette(paper);
    FPicture->setAutoFillBackground(true);
    auto* button = Named(new QPushButton(tr("Replace…"), this), buttonName, tr("Replace the %1").arg(title),
                         tr("By a picture: PNG, JPEG, BMP or GIF"));
    MakeRow(this, {FPicture, button}, kNoMargins);
    connect(button, &QPushButton::clicked, this, [this] { Guarded(window(), [this] { AskAndReplace(); }); });
    connect(&FLogos, &TLogos::Changed, this, [this](std::size_t changed) {
      if (changed == FIndex) ShowLogo();
    });
    ShowLogo();
  }

 private:
  void ShowLogo() {
    const double ratio = devicePixelRatioF();
    QPixmap shown = QPixmap::fromImage(FLogos.Image(FIndex));
    const QSize room = (QSizeF(kPictureSize - QSize(8, 8)) * ratio).toSize();
    if (shown.width() > room.width() || shown.height() > room.height()) {
      shown = shown.scaled(room, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    }
    shown.setDevicePixelRatio(ratio);
    FPicture->setPixmap(shown);
  }

  void AskAndReplace() {
    const auto file = AskForFile(window(), tr("Replace the logo"), {{}, "Pictures|*.png;*.jpg;*.jpeg;*.bmp;*.gif", 1});
    if (!file) return;
    try {
      FLogos.Replace(FIndex, PathFromUtf8(*file));
    } catch (const std::exception& error) {
      ShowBox(window(), QMessageBox::Warning, "msgLogo", tr("The logo cannot be used."),
              QString("%1\n%2").arg(QtText(*file), QtText(ReasonOf(error))));
    }
  }

  TLogos& FLogos;
  std::size_t FIndex;
  QLabel* FPicture;
};

}  // namespace

TSettingsPage::TSettingsPage(TLogos& logos) {
  Named(this, "pgcSettings", tr("Settings"));
  setDocumentMode(true);
  addTab(MakeGeneral(logos), tr("&General"));
  addTab(MakeFormats(), tr("For&mats"));
  addTab(MakeColours(), tr("Colo&urs"));
  addTab(MakeAnalogInputs(), tr("Analog i&nputs"));
}

QWidget* TSettingsPage::MakeGeneral(TLogos& logos) {
  auto* page = new TBoxes;
  QFormLayout* form = page->AddForm(tr("Reports"));
  AddRow(*form, {"cxTextEditCompanyName", tr("&Company name"), tr("Stands on reports")}, MakeText());
  form->addRow(tr("Company logo"), new TLogoEdit(logos, TLogos::kCompany, "btnCompanyLogo", tr("company logo")));
  form->addRow(tr("Report logo"), new TLogoEdit(logos, TLogos::kReport, "btnReportLogo", tr("report logo")));
  form = page->AddForm(tr("Window"));
  AddRow(*form, {"cmbSettingsDateTimeFormat", tr("&Date format"), tr("How every date is shown")},
         MakeList(kDateFormats));
  AddRow(*form,
         {"cmbSettingsDefFileFilter", tr("Default file &filter"),
          tr("What the open dialog and the lists of files show at first")},
         MakeList(kFileFilters));
  AddCheckBox(*form, {"chboxDialogConfirmationsSync", tr("&Show sync dialog confirmations"),
                      tr("Ask before the navigator is synced with the currently viewed timespan")});
  AddCheckBox(*form, {"chboxShockChartPointAbsorption", tr("Absorb &overlapping points on chart"),
                      tr("If turned on the overlapping points in the Shock Events chart will be absorbed into a bigger "
                         "point")});
  page->AddEnd();
  return MakeScrolled(page);
}

QWidget* TSettingsPage::MakeFormats() {
  using enum TQuantity;
  const std::pair<QString, std::vector<TQuantity>> boxes[] = {
      {tr("Events"), {Time, Acceleration, ToT, IoT}},
      {tr("Sensors"), {Temperature, Humidity, Pressure, Light, Battery}}};
  auto* page = new QWidget;
  QHBoxLayout* columns = MakeColumns(page);
  QString keys;
  for (const auto& [title, quantities] : boxes) {
    QFormLayout* form = AddForm(*columns, title);
    for (const TQuantity quantity : quantities) {
      const TQuantityControls& row = kQuantityControls[static_cast<std::size_t>(quantity)];
      QString caption = WithKey(QtText(row.caption), keys);
      if (!row.unit.empty()) caption += QString(" (%1)").arg(QtText(row.unit));
      const QString hint = row.hint.empty() ? QString() : QtText(row.hint) + ". ";
      AddRow(*form, {row.format, caption, hint + MaskHint()}, MakeList(kDecimalMasks));
    }
  }
  return MakeScrolled(page);
}

QWidget* TSettingsPage::MakeColours() {
  auto* page = new QWidget;
  QHBoxLayout* columns = MakeColumns(page);
  QVBoxLayout* left = AddColumn(*columns);
  AddColours(*AddForm(*left, tr("Acceleration")),
             {{"ccmbShockX", "&X"}, {"ccmbShockY", "&Y"}, {"ccmbShockZ", "&Z"}, {"ccmbShockTotal", tr("T&otal")}});
  AddColours(*AddForm(*left, tr("Axes of the sensors chart")), {{"clrgalSensorsLeftAxisI", tr("Left inner")},
                                                                {"clrgalSensorsLeftAxisII", tr("Left outer")},
                                                                {"clrgalSensorsRightAxisI", tr("Right inner")},
                                                                {"clrgalSensorsRightAxisII", tr("Right outer")}});
  left->addStretch();
  QFormLayout* sensors = AddForm(*columns, tr("Sensors"));
  for (const TQuantityRow* row : kColouredSensors) {
    if (row->namePlace == 0) AddColours(*sensors, {{row->colourControl, tr(row->colourCaption)}});
  }
  return MakeScrolled(page);
}

// All that can be set for an input stands in one line.
QWidget* TSettingsPage::MakeAnalogInputs() {
  auto* page = new QWidget;
  auto* boxes = new QVBoxLayout(page);
  auto* grid = new QGridLayout(AddBox(*boxes, tr("Analog inputs")));
  grid->setHorizontalSpacing(kBoxSpace);
  const QString titles[] = {{}, tr("Name"), tr("Decimals"), tr("Colour")};
  for (int column = 1; column < 4; ++column) grid->addWidget(new QLabel(titles[column]), 0, column);
  grid->setColumnStretch(1, 1);
  for (const TQuantityRow* row : kAnalogInputs) {
    const int line = grid->rowCount();
    const QString input = tr(row->colourCaption);
    auto* label = new TKeyLabel(input);
    const auto add = [&](int column, std::string_view control, const QString& hint, QWidget* edit) {
      Describe(*edit, {control, QString("%1, %2").arg(input, titles[column]), hint});
      new TWheelGuard(*edit);
      grid->addWidget(edit, line, column);
    };
    grid->addWidget(label, line, 0);
    add(1, row->nameControl, tr("Stands in tables, charts, exports and the alarm limits"), MakeText());
    add(2, kQuantityControls[static_cast<std::size_t>(*row->quantity)].format, MaskHint(), MakeList(kDecimalMasks));
    add(3, row->colourControl, {}, new TColourBox(nullptr));
    label->setBuddy(grid->itemAtPosition(line, 1)->widget());
  }
  auto* where = new QLabel(tr("Without a name of yours the input keeps its name in the recording."));
  where->setForegroundRole(QPalette::PlaceholderText);
  grid->addWidget(where, grid->rowCount(), 1, 1, 3);
  boxes->addStretch(1);
  return MakeScrolled(page);
}
