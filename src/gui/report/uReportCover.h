// How a report begins.
#pragma once

#include "gui/report/uPageFlow.h"
#include "gui/report/uReportCharts.h"
#include "gui/report/uReportData.h"

// Instead of a cover: mission, file, date, and what limits the report.
void AddPageHead(TPageFlow& flow, const TReportData& data);

// The first page. Borrows the data and the charts until the pages are gone.
void AddCover(TPageFlow& flow, const TReportData& data, TReportCharts& charts);
