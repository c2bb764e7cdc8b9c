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

# Kolmogorov's distance from the normal with the sample's mean and SD, and its p from the
# limiting distribution of sqrt(n) D. Forty distinct values, skewed to the right.
x <- c(2.31, 2.95, 3.12, 3.40, 3.58, 3.71, 3.86, 3.99, 4.07, 4.15, 4.26, 4.33, 4.41, 4.52, 4.60,
       4.68, 4.79, 4.85, 4.97, 5.06, 5.13, 5.24, 5.38, 5.45, 5.57, 5.69, 5.84, 5.98, 6.13, 6.31,
       6.52, 6.77, 7.04, 7.39, 7.82, 8.36, 9.05, 9.98, 11.40, 13.75)
ks <- ks.test(x, "pnorm", mean(x), sd(x), exact = FALSE)
write.csv(data.frame(d = unname(ks$statistic), p = ks$p.value, values = join(x)), "kolmogorov_normality.csv",
          row.names = FALSE)

# Pearson's chi-square of a frequency table against the normal with the sample's mean and
# SD, each cell reaching to the midpoint between its value and the next; every cell expects
# at least 5, so no cell is merged.
values <- 1:5
freq <- c(20, 45, 70, 45, 20)
x <- rep(values, freq)
bounds <- (values[-1] + values[-length(values)]) / 2
probs <- diff(c(0, pnorm(bounds, mean(x), sd(x)), 1))
chi <- chisq.test(freq, p = probs)
write.csv(data.frame(chi = unname(chi$statistic), df = unname(chi$parameter), p = chi$p.value,
                     smallest_expected = min(chi$expected), values = join(values), frequencies = join(freq)),
          "chi_square_normality.csv", row.names = FALSE)

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
