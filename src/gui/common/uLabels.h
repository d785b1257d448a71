// Labels that several views use.
#pragma once

#include <QLabel>

// A label in the size and weight of titles.
QLabel* MakeTitle(const QString& text, QWidget* parent);

// A caption with a key. It asks for more than the base measures: the underlined letter is drawn without kerning.
class TKeyLabel : public QLabel {
 public:
  using QLabel::QLabel;
  [[nodiscard]] QSize sizeHint() const override { return QLabel::sizeHint() + QSize(4, 0); }
  [[nodiscard]] QSize minimumSizeHint() const override { return QLabel::minimumSizeHint() + QSize(4, 0); }
};

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
