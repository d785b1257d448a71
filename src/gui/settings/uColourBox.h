// A list of named colours, with one entry for any other colour.
#pragma once

#include <QComboBox>
#include <cstdint>

class TColourBox : public QComboBox {
  Q_OBJECT

 public:
  explicit TColourBox(QWidget* parent);

  // 0xRRGGBB.
  void SetColour(std::uint32_t rgb);
  [[nodiscard]] std::uint32_t Colour() const;

 signals:
  void ColourChanged();

 protected:
  void showPopup() override;

 private:
  void AddColour(const QString& caption, std::uint32_t rgb, int at);
  void AskForOne();

  bool FListWasOpen = false;  // "Another…" opens the dialog only when chosen from the open list
  int FChosen = 0;            // the index of the chosen colour; stays while the dialog is open
};
