#include "gui/ribbon/uPathCompleter.h"

#include <QDir>
#include <QLineEdit>
#include <filesystem>
#include <system_error>

#include "base/uFiles.h"
#include "gui/common/uQtText.h"
#include "gui/ribbon/uRecordingFolder.h"

namespace fs = std::filesystem;

namespace {

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

TPathCompleter::TPathCompleter(QLineEdit* edit) : QCompleter(edit) {
  setModel(&FPaths);
  setCaseSensitivity(Qt::CaseInsensitive);
  edit->setCompleter(this);
  connect(edit, &QLineEdit::textEdited, this, &TPathCompleter::ReadFolderOf);
}

void TPathCompleter::SetFilePatterns(const QStringList& patterns) {
  FPatterns = patterns;
  FFolder.clear();
}

void TPathCompleter::ReadFolderOf(const QString& typed) {
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
