#include "gui/platform/uDialogs.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QStringList>
#include <algorithm>

#include "gui/common/uMessageBox.h"
#include "gui/common/uQtText.h"

namespace {

// "name|*.a;*.b|…" as the filters of a file dialog.
QStringList NameFilters(std::string_view filter) {
  QStringList filters;
  const QStringList parts = QtText(filter).split('|');
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    filters.append(QString("%1 (%2)").arg(parts[i], QString(parts[i + 1]).replace(';', ' ')));
  }
  return filters;
}

// The nearest existing folder at or above this one.
QString NearestFolder(const QString& folder) {
  QDir nearest(folder);
  while (!nearest.exists() && nearest.path() != QFileInfo(nearest.path()).path()) {
    nearest.setPath(QFileInfo(nearest.path()).path());
  }
  return nearest.path();
}

// A popup that stays open would keep mouse and keys from the box.
void ClosePopups() {
  while (QWidget* popup = QApplication::activePopupWidget()) {
    if (!popup->close()) return;
  }
}

std::optional<std::string> ChosenFile(QFileDialog& box) {
  if (box.exec() != QDialog::Accepted || box.selectedFiles().isEmpty()) return std::nullopt;
  return Utf8(box.selectedFiles().constFirst());
}

}  // namespace

std::optional<std::string> AskForFile(QWidget* parent, const QString& title, const TOpenDialog& dialog) {
  QFileDialog box(parent, title, QtText(dialog.folder));
  box.setObjectName("dlgOpen");
  box.setFileMode(QFileDialog::ExistingFile);
  const QStringList filters = NameFilters(dialog.filter);
  box.setNameFilters(filters);
  box.selectNameFilter(filters.at(std::clamp<qsizetype>(dialog.filterIndex - 1, 0, filters.size() - 1)));
  return ChosenFile(box);
}

std::optional<std::string> TDialogs::AskForRecording(const TOpenDialog& dialog) {
  return AskForFile(&FWindow, QObject::tr("Open a recording"), dialog);
}

std::optional<std::string> TDialogs::AskForFolder(std::string_view title, const std::string& folder) {
  QFileDialog box(&FWindow, QtText(title), QtText(folder));
  box.setObjectName("dlgFolder");
  box.setFileMode(QFileDialog::Directory);
  box.setOption(QFileDialog::ShowDirsOnly);
  return ChosenFile(box);
}

std::optional<TSaveChoice> TDialogs::AskWhereToSave(const TSaveDialog& dialog) {
  QFileDialog box(&FWindow, QtText(dialog.title));
  box.setObjectName("dlgSave");
  box.setAcceptMode(QFileDialog::AcceptSave);
  box.setOption(QFileDialog::DontConfirmOverwrite, dialog.replaces);
  const QStringList filters = NameFilters(dialog.filter);
  box.setNameFilters(filters);
  box.setDefaultSuffix(QtText(dialog.extension));
  const QString ending = "." + QtText(dialog.extension);
  box.setDirectory(NearestFolder(QtText(dialog.folder)));
  box.selectFile(QtText(dialog.name) + ending);
  while (const auto file = ChosenFile(box)) {
    const QString chosen = QtText(*file);
    const int filter = static_cast<int>(filters.indexOf(box.selectedNameFilter())) + 1;
    if (chosen.endsWith(ending, Qt::CaseInsensitive)) return TSaveChoice{*file, filter};
    // Qt adds no extension to a name that contains a dot.
    const QString named = chosen + ending;
    if (dialog.replaces || !QFileInfo::exists(named) ||
        Confirm(Utf8(QObject::tr("%1 already exists.\nDo you want to replace it?").arg(named)))) {
      return TSaveChoice{Utf8(named), filter};
    }
    box.selectFile(named);
  }
  return std::nullopt;
}

// Queued until the window is shown: closing a box that is the only window would quit the program.
void TDialogs::ShowMessage(std::string_view text, std::string_view details) {
  const auto show = [this, text = QtText(text), details = QtText(details)] {
    ClosePopups();
    ShowBox(&FWindow, QMessageBox::Warning, "msgFile", text, details);
  };
  if (FWindow.isVisible()) {
    show();
  } else {
    QMetaObject::invokeMethod(&FWindow, show, Qt::QueuedConnection);
  }
}

void TDialogs::ShowInformation(std::string_view text) {
  ShowBox(&FWindow, QMessageBox::Information, "msgInformation", QtText(text), {});
}

bool TDialogs::Confirm(std::string_view question) {
  ClosePopups();
  QMessageBox box(QMessageBox::Question, QObject::tr("ShockScope"), QtText(question),
                  QMessageBox::Ok | QMessageBox::Cancel, &FWindow);
  box.setObjectName("msgConfirm");
  box.setTextFormat(Qt::PlainText);
  box.setDefaultButton(QMessageBox::Ok);
  box.setEscapeButton(QMessageBox::Cancel);
  return box.exec() == QMessageBox::Ok;
}
