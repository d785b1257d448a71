// A line of text that gives way: cut in the middle where it is too long, whole in the tool tip. Never taken for markup.
#pragma once

#include <QLabel>

class TElidedLabel : public QLabel {
  Q_OBJECT

 public:
  TElidedLabel(const QString& name, QWidget* parent);
  [[nodiscard]] QSize minimumSizeHint() const override { return {0, QLabel::minimumSizeHint().height()}; }

 protected:
  void paintEvent(QPaintEvent* event) override;
};
