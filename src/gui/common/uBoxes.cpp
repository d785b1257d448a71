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

QLabel* MakeSentence(const QString& name, QWidget* parent) {
  auto* label = Named(new QLabel(parent), name);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  return label;
}

QBoxLayout* MakeRow(QWidget* owner, std::initializer_list<TBoxPart> parts, const TBoxLook& look) {
  return MakeBox(new QHBoxLayout(owner), parts, look);
}

QBoxLayout* MakeColumn(QWidget* owner, std::initializer_list<TBoxPart> parts, const TBoxLook& look) {
  return MakeBox(new QVBoxLayout(owner), parts, look);
}
