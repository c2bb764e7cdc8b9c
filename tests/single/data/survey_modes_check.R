# The statistics of the single-sample reports tests/single/expected/survey_mode1[2-5]_*.txt,
# computed from the survey data set itself (data/dat/survey.msw holds the same values).
#   Rscript tests/single/data/survey_modes_check.R > tests/single/data/survey_modes_check.txt
# Where the program's conventions differ from R's defaults, they are computed here as the
# program has them, and said so:
#  - quartiles and median: the smallest value whose cumulative count reaches n*q, averaged
#    with the next value only on an exact hit; a median found in the first value is the
#    minimum (not quantile(type = 7));
#  - trimming cuts g = round(0.01 * p * n) values at each end (half away from zero);
#  - skewness and kurtosis are the adjusted G1 and excess G2;
#  - the Wilcoxon z has the tie correction and no continuity correction;
#    the program's signed ranks stop before the tie correction when every value lies on one
#    side of h, so for Exer against 1 it prints z = 9.585 where this gives 10.275 (p is
#    0.0000 either way);
#  - the sign test z is (|2k - n| - 1)/sqrt(n) with the sign of 2k - n;
#  - Johnson's J follows the program's formula;
#  - Gayen's p is compared with the Edgeworth expansion of the studentized mean to its 1/n
#    terms in the skewness and kurtosis (Hall, The Bootstrap and Edgeworth Expansion, 1992,
#    section 2.6) on the t test's p; the two agree to O(1/n^2), well within the printed
#    digits for these n;
#  - the trimmed t is Tukey and McLaughlin's (1 - 2 tr) sqrt(n) (trimmed mean - h)/(winsorized
#    SD) on n - 2g - 1 df;
#  - the program's normal distribution function is a five-term polynomial, so values that
#    rest on it (Kolmogorov D, chi-square of normality) may differ from these in the last
#    printed digit;
#  - the Kolmogorov p is Lilliefors' (nortest's lillie.test; the program's differs from it
#    by up to 0.015 above 0.1, see tests/stats/reference/normality.R); the chi-square test of normality is Pearson's
#    on the cells the program forms (see chisq_normality()).
library(MASS)
library(nortest)
data(survey)
s <- survey
s$Exer <- as.integer(factor(s$Exer, levels = c("Freq", "Some", "None")))
f4 <- function(x) sprintf("%.4f", x)

quantiles <- function(x) {
  x <- sort(x); n <- length(x); v <- sort(unique(x)); cum <- cumsum(table(factor(x, levels = v)))
  q <- function(target) {
    k <- which(cum >= target)[1]
    if (abs(cum[k] - target) < 1e-8 && k < length(v)) c((v[k] + v[k + 1]) / 2, k) else c(v[k], k)
  }
  m <- q(n / 2)
  if (m[2] == 1) c(q1 = v[1], median = v[1], q3 = q(n * 0.75)[1]) else c(q1 = q(n * 0.25)[1], median = m[1], q3 = q(n * 0.75)[1])
}
trimmed <- function(x, p) {
  x <- sort(x); n <- length(x); g <- floor(0.01 * p * n + 1e-8 + 0.5)
  w <- x; w[seq_len(g)] <- x[g + 1]; w[(n - g + 1):n] <- x[n - g]
  c(g = g, tmean = mean(x[(g + 1):(n - g)]), wsd = sd(w))
}
shape <- function(x) {
  n <- length(x); d <- x - mean(x); v <- var(x)
  c(skew = n / ((n - 1) * (n - 2)) * sum(d^3) / sd(x)^3,
    kurt = (n * (n + 1) * sum(d^4) - 3 * (n - 1) * sum(d^2)^2) / v^2 / ((n - 1) * (n - 2) * (n - 3)))
}
edgeworth <- function(n, t, g1, g2) {
  t <- abs(t)
  2 * pt(-t, n - 1) - 2 / n * t * dnorm(t) * (g2 * (t^2 - 3) / 12 - g1^2 * (t^4 + 2 * t^2 - 3) / 18)
}
# The class table: the distinct values while there are fewer than k, else k right-open
# classes of equal width from the minimum (R's cut), the maximum in the last.
classes <- function(x, k) {
  v <- sort(unique(x))
  if (length(v) < k) return(list(values = v, freq = as.vector(table(factor(x, levels = v))), binned = FALSE))
  edges <- seq(min(x), max(x), length.out = k + 1)
  list(values = (edges[-1] + edges[-(k + 1)]) / 2, freq = as.vector(table(cut(x, edges, right = FALSE, include.lowest = TRUE))),
       binned = TRUE)
}
# Pearson's chi-square on the cells the program forms: the classes, with classes 1..lower_end
# and upper_start..k merged into one cell at each end (checked: at most a fifth of the cells
# then expect fewer than 5), on cells - 3 df.
normality_cells <- list("Female Height" = c(2, 7), "Female Wr.Hnd" = c(2, 8), "Male Height" = c(2, 8),
                        "Male Wr.Hnd" = c(2, 8), "Pulse" = c(3, 13), "Height" = c(1, 14))
chisq_normality <- function(x, cells) {
  n <- length(x); t <- classes(x, min(2000, (n - 1) %/% 15 + 1)); k <- length(t$values)
  cum <- c(pnorm(((t$values[-k] + t$values[-1]) / 2 - mean(x)) / sd(x)), 1)
  e <- n * diff(c(0, cum)); lower_end <- cells[1]; upper_start <- cells[2]
  group <- c(rep(1, lower_end), seq_len(upper_start - lower_end - 1) + 1, rep(upper_start - lower_end + 1, k - upper_start + 1))
  ec <- tapply(e, group, sum); oc <- tapply(t$freq, group, sum); stopifnot(sum(ec < 5) <= 0.2 * length(ec))
  chi <- sum((oc - ec)^2 / ec); df <- length(ec) - 3
  sprintf("chi2 df=%d chi=%.3f p=%s small at start=%.1f%%", df, chi, f4(pchisq(chi, df, lower.tail = FALSE)), 100 * sum(e < 5) / k)
}
kolmogorov <- function(x) {
  n <- length(x); t <- lillie.test(x)
  sprintf("ks D=%.3f D*=%.3f Lilliefors p=%s", t$statistic, sqrt(n) * t$statistic, f4(t$p.value))
}
describe <- function(label, x, h = NA, trim = 10) {
  x <- x[!is.na(x)]; n <- length(x); q <- quantiles(x); tr <- trimmed(x, trim); sh <- shape(x)
  cat(sprintf("%s n=%d mean=%s sd=%s se=%s q1=%g median=%g q3=%g\n", label, n, f4(mean(x)), f4(sd(x)), f4(sd(x) / sqrt(n)), q[1], q[2], q[3]))
  cat(sprintf("  skew=%s p=%.3f kurt=%s p=%.3f  trim %d%%: g=%d tmean=%s wsd=%s\n", f4(sh[1]), 2 * pnorm(-abs(sh[1] / sqrt(6 / n))),
              f4(sh[2]), 2 * pnorm(-abs(0.5 * sh[2] / sqrt(6 / n))), trim, tr[1], f4(tr[2]), f4(tr[3])))
  if (is.na(h)) return(invisible())
  t <- sqrt(n) * (mean(x) - h) / sd(x); a <- sh[1] / 3; J <- t + 0.5 * a / sqrt(n) + a * t * t / sqrt(n)
  tt <- (1 - 2 * trim / 100) * sqrt(n) * (tr[2] - h) / tr[3]; tdf <- n - 2 * tr[1] - 1
  cat(sprintf("  h=%g t=%.3f p=%s J=%.3f p=%s gayen p=%s Tt(%d)=%.3f p=%s\n", h, t, f4(2 * pt(-abs(t), n - 1)), J,
              f4(2 * pt(-abs(J), n - 1)), f4(edgeworth(n, t, sh[1], sh[2])), tdf, tt, f4(2 * pt(-abs(tt), tdf))))
  y <- x[abs(x - h) > 1e-8]; N <- length(y); w <- suppressWarnings(wilcox.test(y, mu = h, exact = FALSE, correct = FALSE))
  rp <- unname(w$statistic); tie <- table(abs(y - h)); v <- N * (N + 1) * (2 * N + 1) / 24 - sum(tie^3 - tie) / 48
  z <- (rp - N * (N + 1) / 4) / sqrt(v); k <- sum(y > h); zs <- sign(2 * k - N) * (abs(2 * k - N) - 1) / sqrt(N)
  cat(sprintf("  wilcoxon N=%d R-=%.1f R+=%.1f z=%.3f p=%s  sign below=%d above=%d z=%.3f p=%s\n", N, N * (N + 1) / 2 - rp, rp, z,
              f4(2 * pnorm(-abs(z))), N - k, k, zs, f4(2 * pnorm(-abs(zs)))))
}
cat("# Mode 12 and 14, all cases\n")
describe("Pulse", s$Pulse, 72); describe("Exer", s$Exer, 1); describe("Height", s$Height, 170); describe("Age", s$Age, 20); describe("Wr.Hnd", s$Wr.Hnd)
cat("# Mode 15 by sex\n")
for (g in c("Female", "Male")) for (v in c("Pulse", "Height", "Wr.Hnd")) {
  x <- s[[v]][!is.na(s$Sex) & s$Sex == g]; x <- x[!is.na(x)]
  cat(g, v, length(x), if (length(x) <= 100) kolmogorov(x) else chisq_normality(x, normality_cells[[paste(g, v)]]), "\n")
}
cat("# Mode 13: the classes of Pulse, and Exer\n")
x <- s$Pulse[!is.na(s$Pulse)]; t <- classes(x, 11)
print(data.frame(mid = round(t$values, 1), freq = t$freq, pct = round(100 * t$freq / length(x), 1)))
print(table(s$Exer))
cat("# Mode 13 by sex: the 20 classes of Height\n")
for (g in c("Female", "Male")) { y <- s$Height[!is.na(s$Sex) & s$Sex == g]; cat(g, "Height", classes(y[!is.na(y)], 20)$freq, "\n") }
cat("# Mode 15, all cases, and the T-scale values of the first three cases\n")
for (v in c("Pulse", "Height")) { x <- s[[v]][!is.na(s[[v]])]; cat(v, chisq_normality(x, normality_cells[[v]]), "\n") }
for (v in c("Pulse", "Height")) { x <- s[[v]]; cat(v, trunc(100 * ((x[1:3] - mean(x, na.rm = TRUE)) * 10 / sd(x, na.rm = TRUE) + 50)) * 0.01, "\n") }
