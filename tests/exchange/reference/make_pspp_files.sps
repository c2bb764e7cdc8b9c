* Writes pspp.sav and pspp.por with PSPP, a writer of SPSS files independent of this
* program and of the library it reads them with: long names, a variable label, value
* labels (one with ";" and "/"), missing codes, a missing range with a code, a string
* variable, a date, decimals and system-missing values.
* Run once from this folder: pspp make_pspp_files.sps, then Rscript check_pspp_files.R.
DATA LIST LIST /respondent_id (F4.0) wellbeing_score (F6.2) class (F2.0) name (A12) visit (DATE11).
BEGIN DATA
1 12.25 1 "Kovács" "01-MAR-2020"
2 -3.5 2 "Nagy" "29-FEB-2024"
3 99 9 "" "15-OCT-1582"
4 . 3 "Szabó Éva" .
5 0.01 . "Tóth" "31-DEC-1999"
END DATA.
VARIABLE LABELS wellbeing_score "Wellbeing score in week 1".
VALUE LABELS class 1 "first" 2 "second; or/third" 3 "a label longer than twelve".
MISSING VALUES class (9) /wellbeing_score (90 THRU 99, -3.5).
SAVE OUTFILE="pspp.sav".
EXPORT OUTFILE="pspp.por".
