# Reference values of the statistical functions over the variables of a case: the mean,
# SD, variance, minimum, maximum, median and the counts of valid and missing values of each
# row of a data set with missing cells. Run with `Rscript row_statistics.R` in this folder;
# writes row_statistics.csv (the data in v1..v5, empty for a missing cell, and the results).
set.seed(2026)
n <- 60
d <- data.frame(
  v1 = round(rnorm(n, 50, 10), 2),
  v2 = round(rnorm(n, 1e6, 0.5), 3),          # large values with a small spread
  v3 = sample(c(1:9, 99), n, replace = TRUE), # 99 is declared missing in the project
  v4 = round(runif(n, -5, 5), 4),
  v5 = round(rexp(n, 0.1), 1)
)
for (v in c("v1", "v2", "v4", "v5")) d[[v]][sample(n, 12)] <- NA
d[1, ] <- NA                       # a case without a valid value
d[2, ] <- c(NA, NA, 99, NA, 7.25)  # one valid value
x <- as.matrix(d)
x[x[, "v3"] %in% 99, "v3"] <- NA
usable <- rowSums(!is.na(x))
narm <- function(f) apply(x, 1, function(r) if (all(is.na(r))) NA else f(r[!is.na(r)]))
out <- data.frame(d,
  mean = rowMeans(x, na.rm = TRUE),
  sd = narm(function(r) if (length(r) == 1) 0 else sd(r)),
  variance = narm(function(r) if (length(r) == 1) 0 else var(r)),
  min = narm(min), max = narm(max), median = narm(median),
  usable = usable, missing = ncol(x) - usable)
out$mean[usable == 0] <- NA
# The data as typed, the results with all their digits; a missing value is an empty field.
text <- function(v, f) ifelse(is.na(v), "", f(v))
for (v in names(d)) out[[v]] <- text(out[[v]], as.character)
for (v in setdiff(names(out), names(d))) out[[v]] <- text(out[[v]], function(z) sprintf("%.17g", z))
write.csv(out, "row_statistics.csv", row.names = FALSE, quote = FALSE)
