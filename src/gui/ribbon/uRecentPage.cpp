#include "gui/ribbon/uRecentPage.h"

#include <QLabel>
#include <QVBoxLayout>

#include "gui/ribbon/uRecentList.h"

namespace {

QLabel* Title(const QString& text, QWidget* buddy, QWidget* parent) {
  auto* title = new QLabel(text, parent);
  QFont bold = title->font();
  bold.setBold(true);
  title->setFont(bold);
  title->setBuddy(buddy);
  return title;
}

}  // namespace

TRecentPage::TRecentPage(QWidget* parent)
    : QWidget(parent),
      FNote(new QLabel(this)),
      FFiles(new TRecentListView("lstRecentFiles", tr("Recent files"), this)),
      FFolders(new TRecentListView("lstRecentFolders", tr("Recent folders"), this)) {
  FNote->setObjectName("lblRecentNote");
  FNote->setWordWrap(true);
  FFilesTitle = Title(tr("Recordings"), FFiles, this);
  FFoldersTitle = Title(tr("Folders"), FFolders, this);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(FNote);
  layout->addWidget(FFilesTitle);
  layout->addWidget(FFiles, 3);
  layout->addWidget(FFoldersTitle);
  layout->addWidget(FFolders, 2);
  layout->addStretch(0);
  ShowRecent({});
}

void TRecentPage::ShowRecent(const TRecentDocuments& recent) {
  FFiles->ShowEntries(recent.Files.Entries());
  FFolders->ShowEntries(recent.Folders.Entries());
  const bool hasFiles = !recent.Files.Entries().empty();
  const bool hasFolders = !recent.Folders.Entries().empty();
  FNote->setText(hasFiles || hasFolders ? tr("Enter or a click opens · P pins · Del removes from the list")
                                        : tr("Recordings that were opened, and their folders, are listed here."));
  for (QWidget* widget : {static_cast<QWidget*>(FFilesTitle), static_cast<QWidget*>(FFiles)}) {
    widget->setVisible(hasFiles);
  }
  for (QWidget* widget : {static_cast<QWidget*>(FFoldersTitle), static_cast<QWidget*>(FFolders)}) {
    widget->setVisible(hasFolders);
  }
  layout()->setAlignment(FNote, hasFiles || hasFolders ? Qt::Alignment() : Qt::AlignTop);
}
