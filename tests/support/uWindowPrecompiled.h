// The same for the window's tests, with the toolkit and the chart library.
#pragma once

#include <QTest>

#include "gui/charts/uPrecompiled.h"
#include "tests/support/uPrecompiled.h"
