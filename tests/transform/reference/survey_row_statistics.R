# Reference values of the statistics of a case on real data: the student survey of MASS,
# which data/dat/survey.msw holds (its missing pulse is the declared code 999 there). Per
# case the mean, SD and median of the valid values among Wr.Hnd, NW.Hnd, Pulse, Height and
# Age, and their number. Run with `Rscript survey_row_statistics.R` in this folder.
library(MASS)
x <- as.matrix(survey[, c("Wr.Hnd", "NW.Hnd", "Pulse", "Height", "Age")])
valid <- function(r) r[!is.na(r)]
out <- data.frame(
  mean = rowMeans(x, na.rm = TRUE),
  sd = apply(x, 1, function(r) if (length(valid(r)) == 1) 0 else sd(valid(r))),
  median = apply(x, 1, function(r) median(valid(r))),
  usable = rowSums(!is.na(x)))
for (v in c("mean", "sd", "median")) out[[v]] <- sprintf("%.17g", out[[v]])
write.csv(out, "survey_row_statistics.csv", row.names = FALSE, quote = FALSE)
