# Reference values for the order statistics tests.
# Run from this folder: Rscript order_stats.R   (writes order_stats.csv)
#
# The program's conventions, computed here explicitly:
#  - quartiles and median: the smallest value whose cumulative count reaches n*p, averaged
#    with the next value on an exact hit: R's quantile type 2;
#  - trimming: g = round(p/100 * n) values cut at each end (R's mean(trim=) uses floor, so
#    the trimmed mean is computed by hand), winsorized SD with the n - 1 denominator;
#  - signed ranks: values equal to the reference are dropped, ties get mid-ranks: the V
#    statistic of wilcox.test with the same tie correction sum of (t^3 - t)/48.
set.seed(20261122)
sets <- list(
  a = round(rnorm(57, 50, 9)),
  b = round(rexp(40, 0.2), 1),
  c = c(rep(3, 10), rep(4, 3), 7, 8, 8, 12),
  d = round(runif(101, -5, 5), 2)
)
trim_pct <- c(a = 10, b = 20, c = 25, d = 5)
ref <- c(a = 50, b = 4, c = 4, d = 0.5)
rows <- list()
for (name in names(sets)) {
  x <- sets[[name]]
  n <- length(x)
  q <- quantile(x, c(0.25, 0.5, 0.75), type = 2, names = FALSE)
  g <- round(trim_pct[[name]] / 100 * n + 1e-8)
  s <- sort(x)
  tm <- mean(s[(g + 1):(n - g)])
  w <- s
  if (g > 0) { w[1:g] <- s[g + 1]; w[(n - g + 1):n] <- s[n - g] }
  wsd <- sd(w)
  # Differences equal to 8 decimals are ties, as in the program (not floating-point noise).
  d <- round(x - ref[[name]], 8)
  d <- d[d != 0]
  r <- rank(abs(d))
  vplus <- sum(r[d > 0])
  ties <- table(abs(d))
  tiecorr <- sum((ties^3 - ties) / 48)
  rows[[name]] <- data.frame(set = name, n = n, q1 = q[1], median = q[2], q3 = q[3],
                             trim = trim_pct[[name]], g = g, trimmed_mean = tm, winsorized_sd = wsd,
                             reference = ref[[name]], rank_sum_plus = vplus, count_plus = sum(d > 0),
                             reduced_n = length(d), tie_correction = tiecorr,
                             values = paste(x, collapse = " "))
}
write.csv(do.call(rbind, rows), "order_stats.csv", row.names = FALSE)
