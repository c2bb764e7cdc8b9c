# Reference values of the one-sample statistics, computed with R's own functions
# (skewness and kurtosis with e1071's type 2, the adjusted coefficients).
# Run from this folder: Rscript one_sample.R   (writes the .csv files beside it)

library(e1071)
options(digits = 17)
join <- function(x) paste(x, collapse = " ")

# Moments, the t test, the signed-rank test and the sign test of h.
# "exact": ten distinct values, none equal to h, so the signed-rank p is exact.
# "ties": integers with values equal to h and ties, so R drops the zeros and uses the
# normal approximation with the tie correction (without continuity correction).
# "small_units": a measurement in small units (SD 7e-5, variance 5e-9), twelve distinct
# deviations from h, so the signed-rank p is exact.
# The trimmed t at 20 % is Tukey and McLaughlin's (1 - 2 tr) sqrt(n) (trimmed mean - h)/sw on
# n - 2g - 1 df, sw the SD of the sample winsorized at g = round(0.2 n) values each end,
# computed here by hand from that formula (the n are chosen so that round and floor agree).
samples <- list(
  exact = list(x = c(4.2, 5.1, 3.9, 6.3, 5.9, 4.7, 7.1, 5.5, 4.4, 6.0, 9.6), h = 5),
  ties = list(x = c(1, 2, 2, 3, 3, 3, 4, 4, 4, 4, 5, 5, 5, 6, 6, 6, 6, 7, 7, 7, 8, 8, 9, 10, 10, 3, 4, 6, 7, 8,
                    2, 9, 12, 5, 6, 4, 7), h = 5),
  small_units = list(x = c(0.00121, 0.00118, 0.00125, 0.00113, 0.00128, 0.00123, 0.00116, 0.00132, 0.00109,
                           0.00126, 0.00130, 0.00111), h = 0.0012))
trimmed_t <- function(x, h, tr) {
  n <- length(x); g <- floor(tr * n + 0.5); y <- sort(x)
  w <- pmin(pmax(y, y[g + 1]), y[n - g])
  se <- sd(w) / ((1 - 2 * tr) * sqrt(n))
  t <- (mean(y[(g + 1):(n - g)]) - h) / se
  c(se = se, t = t, df = n - 2 * g - 1, p = 2 * pt(-abs(t), n - 2 * g - 1))
}
one_sample <- data.frame()
for (name in names(samples)) {
  x <- samples[[name]]$x
  h <- samples[[name]]$h
  tt <- t.test(x, mu = h)
  exact <- name != "ties"
  w <- suppressWarnings(wilcox.test(x, mu = h, exact = exact, correct = FALSE))
  away <- x[x != h]
  z <- if (exact) NA else qnorm(w$p.value / 2) * sign(w$statistic - length(away) * (length(away) + 1) / 4) * -1
  one_sample <- rbind(one_sample, data.frame(
    set = name, h = h, n = length(x), mean = mean(x), variance = var(x), sd = sd(x),
    skewness = skewness(x, type = 2), kurtosis = kurtosis(x, type = 2), minimum = min(x), maximum = max(x),
    t = unname(tt$statistic), df = unname(tt$parameter), t_p = tt$p.value,
    r_plus = unname(w$statistic), w_p = w$p.value, w_z = z,
    below = sum(x < h), above = sum(x > h), sign_p = binom.test(sum(x > h), length(away))$p.value,
    trim20_se = trimmed_t(x, h, 0.2)[["se"]], trim20_t = trimmed_t(x, h, 0.2)[["t"]],
    trim20_df = trimmed_t(x, h, 0.2)[["df"]], trim20_p = trimmed_t(x, h, 0.2)[["p"]],
    values = join(x)))
}
write.csv(one_sample, "one_sample.csv", row.names = FALSE)

# The tests of normality: normality.R.

# Equal group frequencies: chi-square, the Pearson residuals and their two-sided normal p
# adjusted by Bonferroni for the number of groups.
freq <- c(12, 7, 20, 9)
chi <- chisq.test(freq)
residuals <- unname(chi$residuals)
write.csv(data.frame(chi = unname(chi$statistic), df = unname(chi$parameter), p = chi$p.value,
                     expected = chi$expected[1], frequencies = join(freq), residuals = join(residuals),
                     residual_p = join(2 * pnorm(-abs(residuals))),
                     adjusted = join(p.adjust(2 * pnorm(-abs(residuals)), "bonferroni"))),
          "equal_frequencies.csv", row.names = FALSE)
