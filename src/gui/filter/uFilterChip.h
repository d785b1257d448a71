// The number of shown events: "300 events", or with a filter "12 of 300 events · filter" and a button that switches the
// filter off.
#pragma once

#include <QFrame>
#include <cstddef>

class QLabel;
class QToolButton;

class TFilterChip : public QFrame {
  Q_OBJECT

 public:
  explicit TFilterChip(QWidget* parent);

  void ShowEvents(std::size_t visible, std::size_t all);
  void Clear();

 signals:
  void OffClicked();

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QLabel* FText;
  QToolButton* FOff;
};
