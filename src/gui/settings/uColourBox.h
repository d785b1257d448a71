// A list of colours by name, with one entry for a colour of one's own.
#pragma once

#include <QComboBox>
#include <string_view>

class TColourBox : public QComboBox {
  Q_OBJECT

 public:
  explicit TColourBox(QWidget* parent);

  // As shell/uColourNames writes it. A text that is no colour leaves the choice as it is.
  void SetColour(std::string_view text);
  [[nodiscard]] std::string Colour() const;

 signals:
  void ColourChanged();

 protected:
  void showPopup() override;

 private:
  void AddColour(const QString& caption, const std::string& text, int at);
  void AskForOne();

  bool FListWasOpen = false;  // "Another…" asks only when chosen from the open list
  int FChosen = 0;            // stays while the dialog asks
};
