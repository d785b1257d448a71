#include "gui/shock/uChoiceList.h"

#include "gui/common/uWheelGuard.h"

QComboBox* MakeChoiceList(const char* name, const QString& what, const QStringList& choices) {
  auto* list = new QComboBox;
  list->setObjectName(name);
  list->setAccessibleName(what);
  list->setToolTip(what);
  list->addItems(choices);
  list->ensurePolished();                           // its style pads it
  list->setMaximumWidth(list->sizeHint().width());  // all of the longest name, where there is room
  list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  list->setMinimumContentsLength(3);
  new TWheelGuard(*list);
  return list;
}
