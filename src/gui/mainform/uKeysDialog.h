// A list of all keys, made from the window's actions and what every chart does.
#pragma once

#include <QWidget>

void ShowKeys(QWidget& window);
