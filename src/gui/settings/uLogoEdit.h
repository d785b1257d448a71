// Shows a logo and a button that replaces it by a picture of the user.
#pragma once

#include <QWidget>
#include <cstddef>

class QLabel;
class TLogos;

class TLogoEdit : public QWidget {
  Q_OBJECT

 public:
  // `logos` outlives the edit.
  TLogoEdit(TLogos& logos, std::size_t index, const QString& buttonName, const QString& title);

 private:
  void ShowLogo();
  void AskAndReplace();

  TLogos& FLogos;
  std::size_t FIndex;
  QLabel* FPicture;
};
