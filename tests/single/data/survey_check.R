# Counts, means, standard deviations and ranges of data/dat/survey.msw as the expected
# reports tests/single/expected/survey_*.txt show them, computed from the data set itself.
#   Rscript tests/single/data/survey_check.R > tests/single/data/survey_check.txt
library(MASS)
data(survey)
s <- survey
s$Smoke2 <- ifelse(s$Smoke == "Never", "never", "smoker")   # codes 2, 3, 4 share a label
s$AgeBand <- cut(s$Age, c(16 - 1e-8, 20, 25, 80 + 1e-8), labels = c("up to 20", "20 to 25", "over 25"))
vars <- c("Wr.Hnd", "NW.Hnd", "Pulse", "Height", "Age")
show <- function(label, d) {
  cat(label, " (", nrow(d), " cases)\n", sep = "")
  for (v in vars) {
    x <- d[[v]]
    x <- x[!is.na(x)]
    cat(sprintf("  %-7s n=%3d mean=%.4f sd=%.4f min=%g max=%g\n", v, length(x), mean(x), sd(x), min(x), max(x)))
  }
}
show("all", s)
for (k in c("never", "smoker")) show(paste("Smoke", k), s[!is.na(s$Smoke) & s$Smoke2 == k, ])
for (k in levels(s$AgeBand)) show(paste("Age", k), s[!is.na(s$AgeBand) & s$AgeBand == k, ])
for (k in levels(s$Sex)) show(paste("Sex", k), s[!is.na(s$Sex) & s$Sex == k, ])
