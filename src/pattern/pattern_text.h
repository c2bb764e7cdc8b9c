#pragma once
// What the reports of the pattern analyses share: the value formatter of the tables of
// means, the pattern marks, the headings of short names, the head of a group, and the
// legends of the quality figures and of the marks.

#include <string>
#include <string_view>

#include "lang/language.h"

namespace tarvika {

class AnalysisRun;
class ReportWriter;

// The text of a table cell of means: near-zero values are 0, values just above a whole
// number snap to it; "TooBig" from 10^width up (width above 2); decimals 1..7 fixed,
// otherwise by size, and with form below 8 a whole value (or 1) without decimals.
std::string PatternValueText(double value, int width, int form, Language lang);

// The mark of a standardized mean: "." near 0, "H"/"L" ("M"/"A"), in parentheses when
// weak, with one "+" for each of the bounds 1, 1.405, 1.645 and 2.045 passed.
std::string PatternMark(double z, Language lang);

// A short name as a column heading: after the fifth character, A to Z from the second on
// in lower case.
std::string HeadingName(std::string_view shortName);

// The blank line, the group line (with a conditional variable) and the case counts.
void WritePatternGroupHead(AnalysisRun& run, int casesInGroup);

// "Notations:" and the meaning of the marks.
void WriteMarkLegend(ReportWriter& r, Language lang);

// The legend of the quality figures; the relocation reports add CLdelta and GDI24.
void WriteQualityLegend(ReportWriter& r, Language lang, bool relocation);

}  // namespace tarvika
