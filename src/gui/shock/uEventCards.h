// The four summary cards of the selected event: side by side, or two above two where they would not fit. Every card is
// as wide as the others, whatever its figures.
#pragma once

#include <QWidget>
#include <array>
#include <cstddef>
#include <optional>

class QFrame;
class QGridLayout;
class QLabel;
class TDataset;
struct TDisplaySettings;

class TEventCards : public QWidget {
 public:
  explicit TEventCards(QWidget* parent);

  // Fills the cards from a row of the shock event table; nullopt empties them.
  void ShowRow(const TDataset& events, std::optional<std::size_t> row, const TDisplaySettings& display);

  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  static constexpr std::size_t kCount = 4;

  [[nodiscard]] int CardWidth() const;  // that shows usual figures whole
  void Arrange(int columns);

  QGridLayout* FGrid;
  int FColumns = 0;
  std::array<QFrame*, kCount> FCards{};
  std::array<QLabel*, kCount> FValues{};
};
