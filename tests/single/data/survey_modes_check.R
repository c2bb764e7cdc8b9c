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
#  - the Kolmogorov p is the asymptotic series; the chi-square test of normality and the
#    histogram classes are built as the program builds them (see classes()).
library(MASS)
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
# The class table: distinct values until k of them have come (in case order), then k classes;
# the values so far go to class round((x - min)/w) + 1, later cases to trunc((x - min)/w) + 1.
classes <- function(x, k) {
  lo <- min(x); w <- (max(x) - lo) / k; seen <- c(); freq <- c(); binned <- FALSE
  for (v in x) {
    if (binned) { j <- min(floor((v - lo) / w) + 1, k); freq[j] <- freq[j] + 1; next }
    j <- which(abs(seen - v) < 1e-8)
    if (length(j)) { freq[j] <- freq[j] + 1; next }
    seen <- c(seen, v); freq <- c(freq, 1)
    if (length(seen) == k) {
      f <- rep(0, k); for (i in seq_along(seen)) { j <- min(round((seen[i] - lo) / w) + 1, k); f[j] <- f[j] + freq[i] }
      freq <- f; seen <- (seq_len(k) - 0.5) * w + lo; binned <- TRUE
    }
  }
  o <- order(seen); list(values = seen[o], freq = freq[o], binned = binned)
}
chisq_normality <- function(x) {
  n <- length(x); t <- classes(x, min(2000, (n - 1) %/% 15 + 1)); k <- length(t$values)
  cum <- c(pnorm(((t$values[-k] + t$values[-1]) / 2 - mean(x)) / sd(x)), 1)
  e <- n * diff(c(0, cum)); o <- t$freq; first <- 1; last <- k
  small <- function() sum(e[first:last] < 5); many <- function() small() > 0.2 * (last - first + 1)
  start <- small(); from_first <- e[first] <= e[last]
  while (many() && first < last) {
    if (from_first) { e[first + 1] <- e[first + 1] + e[first]; o[first + 1] <- o[first + 1] + o[first]; first <- first + 1 }
    else { e[last - 1] <- e[last - 1] + e[last]; o[last - 1] <- o[last - 1] + o[last]; last <- last - 1 }
  }
  r <- first:last; chi <- if (many()) 0 else sum(((e - o)^2 / e)[r][e[r] > 0])
  sprintf("chi2 df=%d chi=%.3f p=%s small at start=%.1f%%", last - first, chi, f4(pchisq(chi, last - first, lower.tail = FALSE)), 100 * start / k)
}
kolmogorov <- function(x) {
  n <- length(x); d <- ks.test(x, "pnorm", mean(x), sd(x))$statistic; ds <- sqrt(n) * d; k <- 1:100
  sprintf("ks D=%.3f D*=%.3f p=%s", d, ds, f4(2 * sum((-1)^(k - 1) * exp(-2 * k^2 * ds^2))))
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
  cat(g, v, length(x), if (length(x) <= 100) kolmogorov(x) else chisq_normality(x), "\n")
}
cat("# Mode 13: the classes of Pulse (case order), and Exer\n")
x <- s$Pulse[!is.na(s$Pulse)]; t <- classes(x, 11)
print(data.frame(mid = round(t$values, 1), freq = t$freq, pct = round(100 * t$freq / length(x), 1)))
print(table(s$Exer))
cat("# Mode 15, all cases, and the T-scale values of the first three cases\n")
for (v in c("Pulse", "Height")) { x <- s[[v]][!is.na(s[[v]])]; cat(v, chisq_normality(x), "\n") }
for (v in c("Pulse", "Height")) { x <- s[[v]]; cat(v, trunc(100 * ((x[1:3] - mean(x, na.rm = TRUE)) * 10 / sd(x, na.rm = TRUE) + 50)) * 0.01, "\n") }
