#include "gui/common/uBoxes.h"

#include <QLabel>

namespace {

QBoxLayout* MakeBox(QBoxLayout* box, std::initializer_list<TBoxPart> parts, const TBoxLook& look) {
  if (look.margins) box->setContentsMargins(*look.margins);
  if (look.spacing >= 0) box->setSpacing(look.spacing);
  for (const TBoxPart& part : parts) {
    if (part.widget != nullptr) {
      box->addWidget(part.widget, part.share, part.place);
    } else if (part.layout != nullptr) {
      box->addLayout(part.layout, part.share);
    } else {
      box->addStretch();
    }
  }
  return box;
}

}  // namespace

QString PlainCaption(const QString& caption) {
  QString plain;
  for (qsizetype i = 0; i < caption.size(); ++i) {
    if (caption[i] == '&' && i + 1 < caption.size()) ++i;
    plain += caption[i];
  }
  if (plain.endsWith("...")) plain.chop(3);
  if (plain.endsWith(QChar(0x2026))) plain.chop(1);
  return plain.trimmed();
}

QLabel* MakeSentence(const QString& name, QWidget* parent) {
  auto* label = Named(new QLabel(parent), name);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  return label;
}

QScrollArea* MakeScrolled(QWidget* content) {
  auto* area = new QScrollArea;
  area->setFrameShape(QFrame::NoFrame);
  area->setFocusPolicy(Qt::NoFocus);
  area->setWidgetResizable(true);
  area->setWidget(content);
  return area;
}

QBoxLayout* MakeRow(QWidget* owner, std::initializer_list<TBoxPart> parts, const TBoxLook& look) {
  return MakeBox(new QHBoxLayout(owner), parts, look);
}

QBoxLayout* MakeColumn(QWidget* owner, std::initializer_list<TBoxPart> parts, const TBoxLook& look) {
  return MakeBox(new QVBoxLayout(owner), parts, look);
}
