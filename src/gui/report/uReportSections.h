// The sections of a report in their order.
#pragma once

#include "gui/report/uPageFlow.h"
#include "gui/report/uReportCharts.h"
#include "gui/report/uReportData.h"

// Borrows the data and the charts until the pages are gone.
void AddSections(TPageFlow& flow, const TReportData& data, TReportCharts& charts);
