#include "gui/platform/uDialogs.h"

#include <QFileDialog>
#include <QStringList>
#include <algorithm>
#include <filesystem>

#include "base/uFiles.h"
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
  const std::filesystem::path name = PathFromUtf8(dialog.name + "." + std::string(dialog.extension));
  box.selectFile(QtText(Utf8FromPath(PathFromUtf8(dialog.folder) / name)));
  if (box.exec() != QDialog::Accepted || box.selectedFiles().isEmpty()) return std::nullopt;
  return box.selectedFiles().constFirst();
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
