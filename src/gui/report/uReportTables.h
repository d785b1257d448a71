// The sections of a report that are tables of figures.
#pragma once

#include "gui/report/uPageFlow.h"
#include "gui/report/uReportData.h"

// They borrow the data until the pages are gone.
void AddMissionDetails(TPageFlow& flow, const TReportData& data);
void AddVerdict(TPageFlow& flow, const TReportData& data);
void AddSummary(TPageFlow& flow, const TReportData& data);
void AddImportantEvents(TPageFlow& flow, const TReportData& data);
void AddTables(TPageFlow& flow, const TReportData& data);
