#include "gui/mainform/uNotice.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QTextDocument>
#include <QToolButton>
#include <QUrl>

#include "base/uFiles.h"
#include "gui/common/uBoxes.h"
#include "gui/common/uIcons.h"
#include "gui/common/uLabels.h"
#include "gui/common/uQtText.h"

TNotice::TNotice(QWidget* hint, QWidget* parent)
    : QWidget(parent), FHint(hint), FText(new TElidedLabel("lblNotice", this)), FOpen(new QToolButton(this)) {
  setObjectName("pnlNotice");
  FOpen->setObjectName("btnNoticeFolder");
  FOpen->setText(tr("Open folder"));
  FOpen->setIcon(Icon("document-open-folder"));
  FOpen->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  FOpen->setAutoRaise(true);
  FOpen->setFocusPolicy(Qt::TabFocus);
  connect(FOpen, &QToolButton::clicked, this, &TNotice::OpenFolder);
  MakeRow(this, {FText, FOpen, kRest}, {QMargins(4, 0, 12, 0), 8});
  hide();
}

void TNotice::ShowText(const QString& text, const std::filesystem::path& folder) {
  FText->setText(text);
  setAccessibleName(text);
  FFolder = QtText(Utf8FromPath(folder));
  FOpen->setVisible(!FFolder.isEmpty());
  FOpen->setToolTip(Qt::convertFromPlainText(tr("Show %1 in the desktop's file manager").arg(FFolder)));
  setVisible(!text.isEmpty());
  FHint->setVisible(text.isEmpty());
}

void TNotice::OpenFolder() {
  const QString folder = FFolder;
  if (!QFileInfo(folder).isDir() || !QDesktopServices::openUrl(QUrl::fromLocalFile(folder))) emit OpenFailed(folder);
}
