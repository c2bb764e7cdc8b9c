# Means and standard deviations of the small project of single_sample_run_test.cpp, the
# figures the expected reports in ../expected were checked against by hand.
#   Rscript tests/single/data/small_check.R > tests/single/data/small_check.txt
num <- function(x) suppressWarnings(as.numeric(x))
g   <- c("1", "1", "3", "3", "4", "4", "", "abc", "5", "1")
age <- c(5, 10, 10.5, 15, 20, 25, 30, 99, 100, 0)
x   <- num(c("10.5", "12", "99", "11.25", "9", "13", "14.5", "8", "7.75", "x"))
x[x %in% 99] <- NA                      # the declared missing code
neg <- num(c(-1, 1, 2, NA, -1, 1, 0, 1, 0, 2))
big <- c(0, 2e8, 4e8, NA, 0, NA, NA, NA, NA, NA)
two <- c(1, NA, 3, NA, NA, NA, NA, NA, NA, NA)
# sd(), and so the relative SD and the z of the extremes, is NA for a single value.
show <- function(label, v) {
  v <- v[!is.na(v)]
  s <- sd(v)
  cat(sprintf("%-22s n=%d mean=%.6f sd=%.6f rel=%.4f z_min=%.2f z_max=%.2f min=%g max=%g\n", label, length(v),
              mean(v), s, s / mean(v), (min(v) - mean(v)) / s, (max(v) - mean(v)) / s, min(v), max(v)))
}
show("x all", x); show("neg all", neg); show("big all", big); show("two all", two)
merged <- ifelse(g == "1", "one", ifelse(g %in% c("3", "4"), "three", NA))
for (k in c("one", "three")) {
  i <- !is.na(merged) & merged == k
  show(paste("age", k), age[i]); show(paste("x", k), x[i]); show(paste("neg", k), neg[i])
  show(paste("two", k), two[i])
}
band <- cut(age, c(-1e-8, 10, 20, 99 + 1e-8), labels = c("young", "middle", "old"))
for (k in levels(band)) {
  i <- !is.na(band) & band == k
  show(paste("x", k), x[i]); if (any(!is.na(two[i]))) show(paste("two", k), two[i])
}
