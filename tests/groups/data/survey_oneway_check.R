# The numbers of the one-way comparison reports on data/dat/survey.msw (the data set survey of
# R's MASS package). Run from this folder: Rscript survey_oneway_check.R > survey_oneway_check.txt
source("oneway_check_lib.R")
library(MASS)
s <- survey
# The project's codes of Exer: 1 frequently, 2 some, 3 none.
s$ExerCode <- c(Freq = 1, Some = 2, None = 3)[as.character(s$Exer)]
s$SexCode <- c(Female = 1, Male = 2)[as.character(s$Sex)]
for (sex in 1:2) {
  for (v in c("Pulse", "Height")) {
    d <- s[!is.na(s$SexCode) & s$SexCode == sex & !is.na(s[[v]]) & !is.na(s$ExerCode), ]
    report(paste(v, "by Exer, Sex", sex), d[[v]], d$ExerCode)
  }
}
d <- s[!is.na(s$Pulse) & !is.na(s$SexCode), ]
report("Pulse by Sex, 10% trimming", d$Pulse, d$SexCode, 0.1)
# The pairwise comparisons of the three Exer groups.
for (sex in 1:2) {
  for (v in c("Pulse", "Height")) {
    d <- s[!is.na(s$SexCode) & s$SexCode == sex & !is.na(s[[v]]) & !is.na(s$ExerCode), ]
    tukey_pairs(paste(v, "by Exer, Sex", sex), d[[v]], d$ExerCode)
    games_howell_pairs(paste(v, "by Exer, Sex", sex), d[[v]], d$ExerCode)
  }
}
d <- s[!is.na(s$Pulse) & !is.na(s$ExerCode), ]
tukey_pairs("Pulse by Exer", d$Pulse, d$ExerCode)
games_howell_pairs("Pulse by Exer", d$Pulse, d$ExerCode)
adjusted_pairs("Pulse by Exer, covariate Height", s$Pulse, s$Height, s$ExerCode)
# Smoke as an ordinal dependent (the project's codes 1 never, 2 occasionally, 3 regularly,
# 4 heavily) by Exer within each sex: the rank tests.
source("oneway_ranks_lib.R")
s$SmokeCode <- c(Never = 1, Occas = 2, Regul = 3, Heavy = 4)[as.character(s$Smoke)]
for (sex in 1:2) {
  d <- s[!is.na(s$SexCode) & s$SexCode == sex & !is.na(s$SmokeCode) & !is.na(s$ExerCode), ]
  rank_report(paste("Smoke by Exer, Sex", sex), d$SmokeCode, d$ExerCode)
}
# The comparison of the distributions of Smoke across Exer (all students): the chi-square of
# the 2 x 3 table at each cut.
d <- s[!is.na(s$SmokeCode) & !is.na(s$ExerCode), ]
for (c in 1:3) {
  x <- suppressWarnings(chisq.test(table(d$SmokeCode <= c, d$ExerCode), correct = FALSE))
  cat(sprintf("Smoke <= %d: F %s chi-square %.2f p %.4f\n", c,
              paste(f3(tapply(d$SmokeCode <= c, d$ExerCode, mean)), collapse = " "), x$statistic, x$p.value))
}
# The summary table of ordinal dependents across Exer (all students): Pulse and Age as well.
for (v in c("Pulse", "Age")) {
  d <- s[!is.na(s[[v]]) & !is.na(s$ExerCode), ]
  rank_report(paste(v, "by Exer (ordinal)"), d[[v]], d$ExerCode)
}
d <- s[!is.na(s$SmokeCode) & !is.na(s$ExerCode), ]
rank_report("Smoke by Exer (ordinal)", d$SmokeCode, d$ExerCode)

# The pairwise comparisons of the rank means of Pulse across Exer (all students), after the
# trend of its rank tests.
d <- s[!is.na(s$Pulse) & !is.na(s$ExerCode), ]
tukey_pairs("Pulse ranks by Exer", rank(d$Pulse), d$ExerCode)
games_howell_pairs("Pulse ranks by Exer", rank(d$Pulse), d$ExerCode)
