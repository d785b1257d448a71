#include "gui/settings/uLogoEdit.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include "base/uFiles.h"
#include "gui/common/uGuard.h"
#include "gui/common/uLogos.h"
#include "gui/common/uMessageBox.h"
#include "gui/common/uQtText.h"
#include "gui/platform/uDialogs.h"

namespace {

constexpr QSize kPictureSize(240, 56);  // px

}  // namespace

TLogoEdit::TLogoEdit(TLogos& logos, std::size_t index, const QString& buttonName, const QString& title)
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
  auto* button = new QPushButton(tr("Replace…"), this);
  button->setObjectName(buttonName);
  button->setAccessibleName(tr("Replace the %1").arg(title));
  button->setToolTip(tr("By a picture: PNG, JPEG, BMP or GIF"));
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(FPicture);
  layout->addWidget(button);
  connect(button, &QPushButton::clicked, this, [this] { Guarded(window(), [this] { AskAndReplace(); }); });
  connect(&FLogos, &TLogos::Changed, this, [this](std::size_t changed) {
    if (changed == FIndex) ShowLogo();
  });
  ShowLogo();
}

void TLogoEdit::ShowLogo() {
  const double ratio = devicePixelRatioF();
  QPixmap shown = QPixmap::fromImage(FLogos.Image(FIndex));
  const QSize room = (QSizeF(kPictureSize - QSize(8, 8)) * ratio).toSize();
  if (shown.width() > room.width() || shown.height() > room.height()) {
    shown = shown.scaled(room, Qt::KeepAspectRatio, Qt::SmoothTransformation);
  }
  shown.setDevicePixelRatio(ratio);
  FPicture->setPixmap(shown);
}

void TLogoEdit::AskAndReplace() {
  const auto file = AskForFile(window(), tr("Replace the logo"), {{}, "Pictures|*.png;*.jpg;*.jpeg;*.bmp;*.gif", 1});
  if (!file) return;
  try {
    FLogos.Replace(FIndex, PathFromUtf8(*file));
  } catch (const std::exception& error) {
    ShowBox(window(), QMessageBox::Warning, "msgLogo", tr("The logo cannot be used."),
            QString("%1\n%2").arg(QtText(*file), QtText(ReasonOf(error))));
  }
}
