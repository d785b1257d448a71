// Labels that several views use.
#pragma once

#include <QLabel>

// A label in bold.
QLabel* MakeTitle(const QString& text, QWidget* parent);

// A line of plain text. Text that is too long is cut, in the middle unless told, and shown whole in the tool tip.
class TElidedLabel : public QLabel {
  Q_OBJECT

 public:
  TElidedLabel(const QString& name, QWidget* parent, Qt::TextElideMode elide = Qt::ElideMiddle);
  [[nodiscard]] QSize minimumSizeHint() const override { return {0, QLabel::minimumSizeHint().height()}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Qt::TextElideMode FElide;
};
