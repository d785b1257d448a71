// The first page of a report.
#pragma once

#include "gui/report/uPageFlow.h"
#include "gui/report/uReportCharts.h"
#include "gui/report/uReportData.h"

// Borrows the data and the charts until the pages are gone.
void AddCover(TPageFlow& flow, const TReportData& data, TReportCharts& charts);
