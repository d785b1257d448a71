// What nearly every unit of the window includes, compiled once. A unit still includes all that it uses.
#pragma once

#include <QAction>
#include <QApplication>
#include <QBoxLayout>
#include <QComboBox>
#include <QDockWidget>
#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QPainter>
#include <QStyle>
#include <QTableView>
#include <QTimer>
#include <QToolButton>
#include <QWidget>

#include "base/uPrecompiled.h"
