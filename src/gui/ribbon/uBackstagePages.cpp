#include "gui/ribbon/uBackstagePages.h"

#include <QCompleter>
#include <QDir>
#include <QEvent>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QShowEvent>
#include <QStringListModel>
#include <QUrl>
#include <filesystem>
#include <system_error>

#include "base/uFiles.h"
#include "gui/common/uBackgroundTask.h"
#include "gui/common/uBoxes.h"
#include "gui/common/uIcons.h"
#include "gui/common/uLabels.h"
#include "gui/common/uQtText.h"
#include "gui/common/uTheme.h"
#include "gui/ribbon/uRecentList.h"
#include "gui/ribbon/uRecordingList.h"

namespace fs = std::filesystem;

namespace {

// A path as a person may paste it: in quotes, as a file address, or from the home folder.
QString Tidied(const QString& typed) {
  QString path = typed.trimmed();
  if (path.size() > 1 && (path[0] == '"' || path[0] == '\'') && path.back() == path[0])
    path = path.mid(1, path.size() - 2);
  if (path.startsWith("file:")) path = QUrl(path).toLocalFile();
  if (path == "~" || path.startsWith("~/")) path = QDir::homePath() + path.mid(1);
  return path.isEmpty() ? path : QDir::cleanPath(QFileInfo(QDir::fromNativeSeparators(path)).absoluteFilePath());
}

constexpr qsizetype kMaxPaths = 2000;  // to choose from; nobody scrolls through more

// Whole paths, folders with a delimiter behind them. What cannot be listed is left out.
QStringList PathsIn(const QString& folder, const QStringList& patterns) {
  QStringList paths;
  std::error_code error;
  for (fs::directory_iterator entry(PathFromUtf8(Utf8(folder)), error), end; !error && entry != end;
       entry.increment(error)) {
    if (paths.size() == kMaxPaths) break;
    const QString name = QtText(Utf8FromPath(entry->path().filename()));
    std::error_code unknown;
    if (entry->is_directory(unknown)) {
      if (!name.startsWith('.')) paths << QDir::toNativeSeparators(folder + name + '/');
    } else if (IsRecordingName(name, patterns)) {
      paths << QDir::toNativeSeparators(folder + name);
    }
  }
  paths.sort(Qt::CaseInsensitive);
  return paths;
}

}  // namespace

// Completes a path while it is typed with the folders and recordings of its folder, which is read in the background.
class TPathCompleter : public QCompleter {
 public:
  explicit TPathCompleter(QLineEdit* edit) : QCompleter(edit) {
    setModel(&FPaths);
    setCaseSensitivity(Qt::CaseInsensitive);
    edit->setCompleter(this);
    connect(edit, &QLineEdit::textEdited, this, &TPathCompleter::ReadFolderOf);
  }
  // Of recordings, such as "*.kshock".
  void SetFilePatterns(const QStringList& patterns) {
    FPatterns = patterns;
    FFolder.clear();
  }

 protected:
  // Either separator may be typed on Windows.
  [[nodiscard]] QStringList splitPath(const QString& typed) const override { return {QDir::toNativeSeparators(typed)}; }

 private:
  void ReadFolderOf(const QString& typed) {
    const QString path = QDir::fromNativeSeparators(typed);
    const QString folder = path.left(path.lastIndexOf('/') + 1);
    if (folder == FFolder || !QDir::isAbsolutePath(folder)) return;
    FFolder = folder;
    FPaths.setStringList({});
    const bool started = FTask.Start([this, folder, patterns = FPatterns](const TBackgroundTask::TReport& report) {
      report([this, paths = PathsIn(folder, patterns)] {
        FPaths.setStringList(paths);
        if (widget() != nullptr && widget()->hasFocus()) complete();
      });
    });
    if (!started) FFolder.clear();
  }

  QStringListModel FPaths;
  QStringList FPatterns;
  QString FFolder;  // the folder whose paths FPaths has or waits for
  TBackgroundTask FTask{this};
};

TRecordingPane::TRecordingPane(const QString& listName, const QString& accessibleName, QWidget* parent)
    : QWidget(parent),
      FFilter(new QLineEdit(this)),
      FNote(new TElidedLabel(listName + "Note", this, Qt::ElideRight)),
      FProgress(new QProgressBar(this)),
      FCancel(new QPushButton(tr("Cancel"), this)),
      FList(new TRecordingList(listName, accessibleName, this)) {
  Named(FFilter, listName + "Filter", tr("Filter of the list"));
  FFilter->setPlaceholderText(tr("Filter by name, title, operator or state"));
  FFilter->setClearButtonEnabled(true);
  FFilter->setMaximumWidth(fontMetrics().averageCharWidth() * 50);
  Named(FProgress, listName + "Progress", tr("Recordings read"));
  FProgress->setTextVisible(false);
  FProgress->setMaximumWidth(fontMetrics().averageCharWidth() * 20);
  Named(FCancel, listName + "Cancel", tr("Read no more recordings"),
        tr("Read no more recordings; what was read stays"));
  FCancel->setAutoDefault(true);  // Enter presses it
  auto* row = MakeRow(nullptr, {{FFilter, 2}, {FNote, 3}, {FProgress, 1}, FCancel});
  MakeColumn(this, {row, {FList, 1}}, kNoMargins);
  for (QWidget* widget : std::initializer_list<QWidget*>{FProgress, FCancel}) {
    QSizePolicy policy = widget->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget->setSizePolicy(policy);
    widget->hide();
  }
  connect(FFilter, &QLineEdit::textChanged, FList, &TRecordingList::SetFilter);
  connect(FCancel, &QPushButton::clicked, FList, &TRecordingList::CancelSummaries);
  connect(FList, &TRecordingList::Summarized, this, &TRecordingPane::ShowProgress);
  connect(FList, &TRecordingList::PathRead, this, [this] {
    if (FList->Empty()) ShowProgress(0, 0, {});
  });
}

void TRecordingPane::ShowProgress(int done, int total, const QString& problem) {
  const bool reads = done < total && problem.isEmpty();
  FProgress->setMaximum(std::max(1, total));
  FProgress->setValue(done);
  FProgress->setVisible(reads);
  FCancel->setVisible(reads);
  FNote->setText(reads ? tr("%1 of %2 read").arg(done).arg(total) : QString());
  if (!problem.isEmpty()) FNote->setText(tr("%1 of %2 read: %3").arg(done).arg(total).arg(problem));
}

TBrowsePathPage::TBrowsePathPage(QWidget* parent)
    : QWidget(parent),
      FPath(new QLineEdit(this)),
      FCompleter(new TPathCompleter(FPath)),
      FComplaint(new QWidget(this)),
      FComplaintIcon(new QLabel(FComplaint)),
      FComplaintText(MakeSentence("lblBrowsePathMessage", FComplaint)),
      FNote(MakeSentence("lblBrowsePathNote", this)),
      FPane(new TRecordingPane("lstBrowsePath", tr("Recordings in the folder"), this)),
      FList(FPane->List()) {
  Named(FPath, "edtBrowsePath", tr("Path of a recording or a folder"));
  FPath->setPlaceholderText(FPath->accessibleName());
  FPath->setClearButtonEnabled(true);
  auto* open = Named(new QPushButton(tr("Open"), this), "btnBrowsePathOpen");
  auto* choose = Named(new QPushButton(tr("Choose folder…"), this), "btnBrowsePathFolder", tr("Choose folder"));
  for (QPushButton* button : {open, choose}) button->setAutoDefault(true);  // Enter presses it

  MakeRow(FComplaint, {{FComplaintIcon, 0, Qt::AlignTop}, {FComplaintText, 1}}, kNoMargins);
  auto* row = MakeRow(nullptr, {{FPath, 1}, open, choose});
  MakeColumn(this, {row, FComplaint, FNote, {FPane, 1}}, kNoMargins);
  FComplaint->hide();
  FNote->setText(tr("The recordings of a folder are listed here."));
  PaintComplaint();

  connect(FPath, &QLineEdit::returnPressed, this, &TBrowsePathPage::Answer);
  connect(FPath, &QLineEdit::textEdited, this, [this] {
    FComplaint->hide();
    StopReading();
  });
  connect(FList, &TRecordingList::PathRead, this, &TBrowsePathPage::ShowAnswer);
  connect(open, &QPushButton::clicked, this, &TBrowsePathPage::Answer);
  connect(choose, &QPushButton::clicked, this, &TBrowsePathPage::FolderDialogRequested);
  connect(FList, &TRecordingList::FileChosen, this, &TBrowsePathPage::FileChosen);
}

void TBrowsePathPage::SetFilePatterns(const QStringList& patterns) {
  FPatterns = patterns;
  FCompleter->SetFilePatterns(patterns);
}

void TBrowsePathPage::SetSource(const TSummarySource& source) {
  FList->SetSource(source);
}

void TBrowsePathPage::ProposePath(const QString& path) {
  FPath->setText(QDir::toNativeSeparators(path));
}

void TBrowsePathPage::SetPath(const QString& path) {
  ProposePath(path);
  Answer();
}

void TBrowsePathPage::Answer() {
  const QString path = Tidied(FPath->text());
  FComplaint->hide();
  if (path.isEmpty()) return Complain(tr("Type the path of a recording or of a folder."));
  FNote->setText(tr("Reading %1 …").arg(QDir::toNativeSeparators(path)));
  FNote->show();
  FList->ReadPath(path, FPatterns);
}

void TBrowsePathPage::ShowAnswer(const QString& path, TPathKind kind, const QString& note) {
  const QString shown = QDir::toNativeSeparators(path);
  switch (kind) {
    case TPathKind::Missing:
      return Complain(tr("There is no such file or folder: %1").arg(shown));
    case TPathKind::Other:
      return Complain(tr("This is neither a file nor a folder: %1").arg(shown));
    case TPathKind::File:
      FNote->hide();
      emit FileChosen(path);
      break;
    case TPathKind::Folder:
      FNote->setText(note);
      if (!FList->Empty()) FList->setFocus();
      break;
  }
}

// Nobody waits for an answer after another path is typed or the page has gone.
void TBrowsePathPage::StopReading() {
  if (!FList->Reading()) return;
  FList->Clear();
  FNote->hide();
}

void TBrowsePathPage::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  if (!event->spontaneous()) StopReading();
}

void TBrowsePathPage::Complain(const QString& what) {
  FList->Clear();
  FNote->hide();
  FComplaintText->setText(what);
  FComplaintText->setAccessibleName(what);
  FComplaint->show();
  FPath->setFocus();
}

void TBrowsePathPage::PaintComplaint() {
  const int edge = fontMetrics().height();
  FComplaintIcon->setPixmap(Icon("dialog-error").pixmap(QSize(edge, edge), devicePixelRatio()));
  QPalette ink = palette();
  ink.setColor(QPalette::WindowText, InkOn(palette(), QColor(0xB3261E), kTextContrast));
  FComplaintText->setPalette(ink);
}

void TBrowsePathPage::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) PaintComplaint();
}

TCurrentFolderPage::TCurrentFolderPage(QWidget* parent)
    : QWidget(parent),
      FNote(MakeSentence("lblCurrentFolderNote", this)),
      FPane(new TRecordingPane("lstCurrentFolder", tr("Recordings in the current folder"), this)),
      FList(FPane->List()) {
  MakeColumn(this, {FNote, {FPane, 1}}, kNoMargins);
  connect(FList, &TRecordingList::FileChosen, this, &TCurrentFolderPage::FileChosen);
  connect(FList, &TRecordingList::PathRead, this, [this](const QString& folder, TPathKind kind, const QString& note) {
    const QString shown = QDir::toNativeSeparators(folder);
    ShowNote(kind == TPathKind::Folder ? note : tr("The folder cannot be read: %1").arg(shown));
  });
}

void TCurrentFolderPage::SetFilePatterns(const QStringList& patterns) {
  FPatterns = patterns;
  if (isVisible()) Fill();
}

void TCurrentFolderPage::SetSource(const TSummarySource& source) {
  FList->SetSource(source);
}

void TCurrentFolderPage::SetFolder(const QString& folder) {
  FFolder = folder;
  if (isVisible()) Fill();
}

void TCurrentFolderPage::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (!event->spontaneous()) Fill();
}

void TCurrentFolderPage::Fill() {
  if (FFolder.isEmpty()) {
    FList->Clear();
    return ShowNote(tr("No recording is open, so there is no current folder. Browse path lists any folder."));
  }
  FList->ReadPath(FFolder, FPatterns);
  if (FList->Reading()) ShowNote(tr("Reading %1 …").arg(QDir::toNativeSeparators(FFolder)));
}

void TCurrentFolderPage::ShowNote(const QString& note) {
  FNote->setText(note);
  const bool shown = FList->Reading() || !FList->Empty();
  FPane->setVisible(shown);
  layout()->setAlignment(FNote, shown ? Qt::Alignment() : Qt::AlignTop);
}

TRecentPage::TRecentPage(QWidget* parent)
    : QWidget(parent),
      FNote(new QLabel(this)),
      FFiles(new TRecentListView("lstRecentFiles", tr("Recent files"), this)),
      FFolders(new TRecentListView("lstRecentFolders", tr("Recent folders"), this)) {
  FNote->setObjectName("lblRecentNote");
  FNote->setWordWrap(true);
  FFilesTitle = MakeTitle(tr("Recordings"), this);
  FFilesTitle->setBuddy(FFiles);
  FFoldersTitle = MakeTitle(tr("Folders"), this);
  FFoldersTitle->setBuddy(FFolders);
  MakeColumn(this, {FNote, FFilesTitle, {FFiles, 3}, FFoldersTitle, {FFolders, 2}, kRest}, kNoMargins);
  ShowRecent({});
}

void TRecentPage::ShowRecent(const TRecentDocuments& recent) {
  FFiles->ShowEntries(recent.Files.Entries());
  FFolders->ShowEntries(recent.Folders.Entries());
  const bool hasFiles = !recent.Files.Entries().empty();
  const bool hasFolders = !recent.Folders.Entries().empty();
  FNote->setText(hasFiles || hasFolders ? tr("Enter or a click opens · P pins · Del removes from the list")
                                        : tr("Recordings that were opened, and their folders, are listed here."));
  for (QWidget* widget : std::initializer_list<QWidget*>{FFilesTitle, FFiles}) widget->setVisible(hasFiles);
  for (QWidget* widget : std::initializer_list<QWidget*>{FFoldersTitle, FFolders}) widget->setVisible(hasFolders);
  layout()->setAlignment(FNote, hasFiles || hasFolders ? Qt::Alignment() : Qt::AlignTop);
}

TAboutPage::TAboutPage(QWidget* parent) : QWidget(parent), FVersion(MakeSentence("lblAboutVersion", this)) {
  auto* name = MakeSentence("lblAboutName", this);
  name->setText("Korvex165 ShockScope");
  QFont large = font();
  large.setPointSizeF(large.pointSizeF() * 1.6);
  name->setFont(large);
  auto* rest = Named(new QLabel(this), "lblAboutText");
  rest->setWordWrap(true);
  rest->setText(
      tr("<p>Shows what a portable shock and environment logger recorded: what happened, when, and how bad it was.</p>"
         "<p>Licence: GPL-3.0-or-later. This program comes with no warranty; you may pass it on and change it under "
         "the "
         "terms of that licence.</p>"
         "<p>It is built with:</p>"
         "<table cellspacing='0' cellpadding='3'>"
         "<tr><td>Qt %1</td><td>&nbsp;</td><td>LGPL-3.0</td></tr>"
         "<tr><td>QCustomPlot</td><td></td><td>GPL-3.0-or-later</td></tr>"
         "<tr><td>zlib</td><td></td><td>Zlib</td></tr>"
         "<tr><td>fmt</td><td></td><td>MIT</td></tr>"
         "<tr><td>Breeze icons</td><td></td><td>LGPL-3.0-or-later</td></tr></table>")
          .arg(QString::fromLatin1(qVersion())));
  auto* inside = new QWidget(this);
  for (QLabel* label : {name, FVersion, rest}) {
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  }
  MakeColumn(inside, {name, FVersion, rest, kRest}, kNoMargins);
  auto* scroll = MakeScrolled(inside);
  scroll->setFocusPolicy(Qt::StrongFocus);  // it has no controls
  MakeColumn(this, {scroll}, kNoMargins);
}

void TAboutPage::SetVersion(const QString& version) {
  FVersion->setText(tr("Version %1").arg(version));
}
