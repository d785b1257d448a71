// The section of event cards.
#pragma once

#include "gui/report/uPageFlow.h"
#include "gui/report/uReportData.h"

// Borrows the data until the pages are gone.
void AddEventCards(TPageFlow& flow, const TReportData& data);
