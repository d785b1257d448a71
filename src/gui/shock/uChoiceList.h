// A list of choices above the chart of the selected event.
#pragma once

#include <QComboBox>

// Of these names, with its own object name; `what` is said by its tool tip and to assistive technology.
QComboBox* MakeChoiceList(const char* name, const QString& what, const QStringList& choices);
