// Chooses the limit profile that is in force, and asks for new ones, copies and deletion. It shows what it is told.
#pragma once

#include <QWidget>
#include <filesystem>
#include <span>

#include "shell/uLimitProfiles.h"

class QComboBox;
class QLineEdit;
class QPushButton;

class TLimitProfileBar : public QWidget {
  Q_OBJECT

 public:
  explicit TLimitProfileBar(QWidget* parent);
  // An empty file: no profile is in force.
  void ShowProfiles(std::span<const TListedProfile> profiles, const std::filesystem::path& inForce);

 signals:
  // An empty file: none.
  void Chosen(const QString& file);
  void CreateAsked(const QString& name);
  void SaveAsAsked(const QString& name);
  void DeleteAsked();

 private:
  enum class TAction { Create, SaveAs };
  void AskForName(TAction action);
  void TakeName();

  QComboBox* FList;
  QPushButton* FDelete;
  QWidget* FNameRow;
  QLineEdit* FName;
  QPushButton* FSave;
  TAction FAction = TAction::Create;
};
