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

}  // namespace

TColourBox::TColourBox(QWidget* parent) : QComboBox(parent) {
  setIconSize({kSwatchWidth, kSwatchHeight});
  for (const TNamedColour& named : NamedColours()) {
    AddColour(QtText(named.name.substr(2)), named.rgb, count());
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

void TColourBox::AddColour(const QString& caption, std::uint32_t rgb, int at) {
  insertItem(at, Swatch(rgb, devicePixelRatioF()), caption, rgb);
}

void TColourBox::SetColour(std::uint32_t rgb) {
  int index = findData(rgb);
  if (index < 0) {
    index = count() - 1;
    AddColour(QColor(rgb).name().toUpper(), rgb, index);
  }
  setCurrentIndex(index);
  if (std::exchange(FChosen, index) != index) Q_EMIT ColourChanged();
}

std::uint32_t TColourBox::Colour() const {
  return itemData(FChosen).toUInt();
}

void TColourBox::AskForOne() {
  QColorDialog dialog(QColor(Colour()), window());
  dialog.setObjectName("dlgColour");
  dialog.setWindowTitle(tr("Colour"));
  if (dialog.exec() == QDialog::Accepted) SetColour(dialog.currentColor().rgb() & RGB_MASK);
}
