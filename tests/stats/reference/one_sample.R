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
samples <- list(
  exact = list(x = c(4.2, 5.1, 3.9, 6.3, 5.9, 4.7, 7.1, 5.5, 4.4, 6.0, 9.6), h = 5),
  ties = list(x = c(1, 2, 2, 3, 3, 3, 4, 4, 4, 4, 5, 5, 5, 6, 6, 6, 6, 7, 7, 7, 8, 8, 9, 10, 10, 3, 4, 6, 7, 8,
                    2, 9, 12, 5, 6, 4, 7), h = 5))
one_sample <- data.frame()
for (name in names(samples)) {
  x <- samples[[name]]$x
  h <- samples[[name]]$h
  tt <- t.test(x, mu = h)
  exact <- name == "exact"
  w <- suppressWarnings(wilcox.test(x, mu = h, exact = exact, correct = FALSE))
  away <- x[x != h]
  z <- if (exact) NA else qnorm(w$p.value / 2) * sign(w$statistic - length(away) * (length(away) + 1) / 4) * -1
  one_sample <- rbind(one_sample, data.frame(
    set = name, h = h, n = length(x), mean = mean(x), variance = var(x), sd = sd(x),
    skewness = skewness(x, type = 2), kurtosis = kurtosis(x, type = 2), minimum = min(x), maximum = max(x),
    t = unname(tt$statistic), df = unname(tt$parameter), t_p = tt$p.value,
    r_plus = unname(w$statistic), w_p = w$p.value, w_z = z,
    below = sum(x < h), above = sum(x > h), sign_p = binom.test(sum(x > h), length(away))$p.value,
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
