// The same with the chart library, for the rooms that draw charts.
#pragma once

#include <qcustomplot.h>

#include "gui/common/uPrecompiled.h"
