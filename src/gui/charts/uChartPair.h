// Two charts above each other as one instrument: equal side margins, one pointer time through both, and the date axis
// of the lower one for both while they show the same span.
#pragma once

class TTimeChart;

// Both charts must live as long as each other.
void PairCharts(TTimeChart& upper, TTimeChart& lower);
