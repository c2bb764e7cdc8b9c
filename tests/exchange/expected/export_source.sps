DATA LIST FILE 'DATA' ENCODING='UTF8' /
   V1st_sco       1 (F,0),
   group          2 (F,0),
   inc_          3-8 (F,1),
   name          9-17 (A),
   weird_na     18-21 (F,2).
VARIABLE LABELS V1st_sco "1st score"
 /weird_na "weird-name".
MISSING VALUES group (9)
 /inc_ (-1)
 /weird_na (90 thru 99, -1).
RECODE
    inc_
      (0 thru 2000 =1)
      (2000 thru 5000 =2)
      INTO   Var001.
EXECUTE.
VARIABLE LABELS Var001 "inc_ grouped by its intervals".
VALUE LABELS group 1 "control" 2 "treated"
  /Var001 1 "low" 2 "high".
FREQUENCIES /VARIABLES V1st_sco group inc_ name weird_na Var001.
