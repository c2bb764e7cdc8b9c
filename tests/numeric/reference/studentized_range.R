# Reference values of the studentized range distribution from R's ptukey and qtukey.
# Run from this folder: Rscript studentized_range.R   (writes studentized_range.csv)
# R's own accuracy is limited (qtukey stops at about 1e-4; ptukey loses digits for small
# df and many means), which the test's tolerances allow for.

options(digits = 17)
cases <- expand.grid(q = c(2.5, 3.5, 4.5, 6), k = c(2, 3, 5, 10, 20), df = c(3, 5, 10, 30, 120, 255))
cases$cdf <- ptukey(cases$q, cases$k, cases$df)
quantiles <- expand.grid(alpha = c(0.10, 0.05, 0.01), k = c(2, 4, 8, 20), df = c(5, 10, 24, 60, 255))
quantiles$q <- qtukey(1 - quantiles$alpha, quantiles$k, quantiles$df)
write.csv(cases, "studentized_range_cdf.csv", row.names = FALSE)
write.csv(quantiles, "studentized_range_quantile.csv", row.names = FALSE)
