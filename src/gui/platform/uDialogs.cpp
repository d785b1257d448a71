#include "gui/platform/uDialogs.h"

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

// The folder, or what is left of the way to it.
QString NearestFolder(const QString& folder) {
  QDir nearest(folder);
  while (!nearest.exists() && nearest.path() != QFileInfo(nearest.path()).path()) {
    nearest.setPath(QFileInfo(nearest.path()).path());
  }
  return nearest.path();
}

}  // namespace

std::optional<std::string> AskForFile(QWidget* parent, const QString& title, const TOpenDialog& dialog) {
  QFileDialog box(parent, title, QtText(dialog.folder));
  box.setObjectName("dlgOpen");
  box.setFileMode(QFileDialog::ExistingFile);
  const QStringList filters = NameFilters(dialog.filter);
  box.setNameFilters(filters);
  box.selectNameFilter(filters.at(std::clamp<qsizetype>(dialog.filterIndex - 1, 0, filters.size() - 1)));
  if (box.exec() != QDialog::Accepted || box.selectedFiles().isEmpty()) return std::nullopt;
  return Utf8(box.selectedFiles().constFirst());
}

std::optional<QString> AskForFolder(QWidget* parent, const QString& title, const QString& folder) {
  QFileDialog box(parent, title, folder);
  box.setObjectName("dlgFolder");
  box.setFileMode(QFileDialog::Directory);
  box.setOption(QFileDialog::ShowDirsOnly);
  if (box.exec() != QDialog::Accepted || box.selectedFiles().isEmpty()) return std::nullopt;
  return box.selectedFiles().constFirst();
}

std::optional<QString> AskWhereToSave(QWidget* parent, const TSaveDialog& dialog) {
  QFileDialog box(parent, QtText(dialog.title));
  box.setObjectName("dlgSave");
  box.setAcceptMode(QFileDialog::AcceptSave);
  box.setOption(QFileDialog::DontConfirmOverwrite, dialog.replaces);
  box.setNameFilters(NameFilters(dialog.filter));
  box.setDefaultSuffix(QtText(dialog.extension));
  const QString ending = "." + QtText(dialog.extension);
  box.setDirectory(NearestFolder(QtText(dialog.folder)));
  box.selectFile(QtText(dialog.name) + ending);
  while (box.exec() == QDialog::Accepted && !box.selectedFiles().isEmpty()) {
    const QString chosen = box.selectedFiles().constFirst();
    if (chosen.endsWith(ending, Qt::CaseInsensitive)) return chosen;
    // The toolkit leaves a name with a dot in it as it is.
    const QString named = chosen + ending;
    if (dialog.replaces || !QFileInfo::exists(named) ||
        AskUser(parent, QObject::tr("%1 already exists.\nDo you want to replace it?").arg(named))) {
      return named;
    }
    box.selectFile(named);
  }
  return std::nullopt;
}

void TellUser(QWidget* parent, const QString& text, const QString& details) {
  ShowBox(parent, QMessageBox::Warning, "msgFile", text, details);
}

void InformUser(QWidget* parent, const QString& text) {
  ShowBox(parent, QMessageBox::Information, "msgInformation", text, {});
}

bool AskUser(QWidget* parent, const QString& question) {
  QMessageBox box(QMessageBox::Question, QObject::tr("ShockScope"), question, QMessageBox::Ok | QMessageBox::Cancel,
                  parent);
  box.setObjectName("msgConfirm");
  box.setTextFormat(Qt::PlainText);
  box.setDefaultButton(QMessageBox::Ok);
  box.setEscapeButton(QMessageBox::Cancel);
  return box.exec() == QMessageBox::Ok;
}
