#include "gui/settings/uColourBox.h"

#include <QColorDialog>
#include <QPainter>
#include <QPixmap>

#include "gui/common/uGuard.h"
#include "gui/common/uQtText.h"
#include "shell/uColourNames.h"

namespace {

constexpr int kSwatchWidth = 28;  // px
constexpr int kSwatchHeight = 14;

QIcon Swatch(QRgb rgb, double ratio) {
  QPixmap pixmap(QSize(kSwatchWidth, kSwatchHeight) * ratio);
  pixmap.setDevicePixelRatio(ratio);
  pixmap.fill(QColor(rgb));
  QPainter painter(&pixmap);
  painter.setPen(Qt::gray);
  painter.drawRect(QRectF(0.5, 0.5, kSwatchWidth - 1, kSwatchHeight - 1));
  return pixmap;
}

QString HexOf(std::uint32_t rgb) {
  return QColor(rgb).name().toUpper();
}

}  // namespace

TColourBox::TColourBox(QWidget* parent) : QComboBox(parent) {
  setIconSize({kSwatchWidth, kSwatchHeight});
  for (const TNamedColour& named : NamedColours()) {
    AddColour(QtText(named.name.substr(2)), std::string(named.name), count());
  }
  addItem(tr("Another…"));
  connect(this, &QComboBox::activated, this, [this](int index) {
    if (index == count() - 1) {
      setCurrentIndex(FChosen);
      if (FListWasOpen) Guarded(window(), [this] { AskForOne(); });
    } else if (index != FChosen) {
      FChosen = index;
      Q_EMIT ColourChanged();
    }
    FListWasOpen = false;
  });
}

void TColourBox::showPopup() {
  FListWasOpen = true;
  QComboBox::showPopup();
}

void TColourBox::AddColour(const QString& caption, const std::string& text, int at) {
  insertItem(at, Swatch(ColourFromText(text).value_or(0), devicePixelRatioF()), caption, QtText(text));
}

void TColourBox::SetColour(std::string_view text) {
  const auto rgb = ColourFromText(text);
  if (!rgb) return;
  const std::string wanted = TextFromColour(*rgb);
  int index = findData(QtText(wanted));
  if (index < 0) {
    index = count() - 1;
    AddColour(HexOf(*rgb), wanted, index);
  }
  setCurrentIndex(index);
  if (std::exchange(FChosen, index) != index) Q_EMIT ColourChanged();
}

std::string TColourBox::Colour() const {
  return Utf8(itemData(FChosen).toString());
}

void TColourBox::AskForOne() {
  QColorDialog dialog(QColor(ColourFromText(Colour()).value_or(0)), window());
  dialog.setObjectName("dlgColour");
  dialog.setWindowTitle(tr("Colour"));
  if (dialog.exec() == QDialog::Accepted) SetColour(TextFromColour(dialog.currentColor().rgb() & RGB_MASK));
}
