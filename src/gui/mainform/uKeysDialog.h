// All keys by view, with a search: made from the window's actions and from what every chart and table does. A key that
// does nothing now is grey.
#pragma once

#include <QWidget>

void ShowKeys(QWidget& window);
