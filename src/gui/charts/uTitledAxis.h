// An axis at the left or right whose title is in parts, each in its own colour. The label of the base class stays empty
// while there is such a title. Main thread only.
#pragma once

#include <qcustomplot.h>

#include <vector>

struct TTitlePart {
  QString text;
  QColor ink;
};

class TTitledAxis final : public QCPAxis {
  Q_OBJECT

 public:
  using QCPAxis::QCPAxis;

  // In the label's font; none without parts.
  void SetTitle(std::vector<TTitlePart> parts) { FParts = std::move(parts); }
  [[nodiscard]] const std::vector<TTitlePart>& Title() const { return FParts; }
  [[nodiscard]] QString TitleText() const;

 protected:
  int calculateMargin() override;
  void draw(QCPPainter* painter) override;

 private:
  std::vector<TTitlePart> FParts;
};
