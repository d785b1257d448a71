#include "gui/welcome/uRecentFiles.h"

#include <QDir>
#include <QEvent>
#include <QFileInfo>
#include <QPushButton>
#include <QShowEvent>
#include <QTextDocument>
#include <algorithm>
#include <filesystem>
#include <system_error>
#include <tuple>

#include "base/uFiles.h"
#include "gui/common/uBoxes.h"
#include "gui/common/uQtText.h"

TRecentFiles::TRecentFiles(QWidget* parent) : QWidget(parent) {
  setObjectName("pnlWellcomeRecent");
  MakeColumn(this, {}, kNoGaps);
  hide();
}

void TRecentFiles::AddButton() {
  const std::size_t number = FButtons.size();
  auto* button = Named(new QPushButton(this), QString("btnWellcomeRecent_%1").arg(number));
  button->setFlat(true);
  button->setAutoDefault(true);  // Enter presses it
  button->setStyleSheet("text-align: left; padding: 3px;");
  button->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  connect(button, &QPushButton::clicked, this, [this, number] { emit FileChosen(QString(FPaths[number])); });
  layout()->addWidget(button);
  FButtons.push_back(button);
}

void TRecentFiles::ShowEntries(const std::vector<TRecentEntry>& entries) {
  FPaths.clear();
  FAbouts.clear();
  for (std::size_t i = 0; i < std::min(kMaxShown, entries.size()); ++i) {
    FPaths.push_back(QtText(entries[i].Path));
    FAbouts.push_back(QtText(entries[i].About));
  }
  while (FButtons.size() < FPaths.size()) AddButton();
  for (std::size_t i = 0; i < FButtons.size(); ++i) FButtons[i]->setVisible(i < FPaths.size());
  FitTexts();
  setVisible(!FPaths.empty());
  if (isVisible()) CheckPaths();
}

void TRecentFiles::CheckPaths() {
  // Without a thread nothing is known of the paths.
  std::ignore = FTask.Start([this, paths = FPaths](const TBackgroundTask::TReport& report) {
    for (std::size_t i = 0; i < paths.size(); ++i) {
      std::error_code unknown;
      const bool exists = std::filesystem::exists(PathFromUtf8(Utf8(paths[i])), unknown);
      if (!report([this, i, exists] { FButtons[i]->setEnabled(exists); })) return;
    }
  });
}

// The whole name, what is known of it, then as much of the folder as fits.
void TRecentFiles::FitTexts() {
  for (std::size_t i = 0; i < FPaths.size(); ++i) {
    const QFileInfo file(FPaths[i]);
    const QString path = QDir::toNativeSeparators(FPaths[i]);
    QStringList parts = {file.fileName(), FAbouts[i], QDir::toNativeSeparators(file.path())};
    parts.removeAll(QString());
    const QString whole = parts.join("  ·  ");
    const int room = std::max(width() - 12, 100);
    // A single "&" would be a mnemonic.
    FButtons[i]->setText(fontMetrics().elidedText(whole, Qt::ElideMiddle, room).replace("&", "&&"));
    FButtons[i]->setAccessibleName(path);
    FButtons[i]->setToolTip(Qt::convertFromPlainText(path));
  }
}

void TRecentFiles::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  FitTexts();
}

void TRecentFiles::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (!event->spontaneous()) CheckPaths();
}

void TRecentFiles::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::FontChange) FitTexts();
}
