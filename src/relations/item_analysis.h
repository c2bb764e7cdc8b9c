#pragma once
// Item analysis of one scale: the X variables of the relationship dialog are its positive
// items, the Y variables its negative items (reversed as ItemMin + ItemMax - x); per
// conditional group the scale's mean, SD and Cronbach's alpha, the items' statistics and
// their item-total and item-remainder correlations; the scale saved as a new variable
// whose help text is its formula, and the negative items turned around in the data.

namespace tarvika {

class AnalysisRun;

void ItemAnalysis(AnalysisRun& run);

}  // namespace tarvika
