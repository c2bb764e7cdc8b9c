# Reference values of the measures of two variables: cor.test (Pearson, and Kendall with
# exact = FALSE, continuity = FALSE), lm for both regression lines, tau (not corrected
# for ties) and the shares of concordant pairs from the sign matrix, Wilcox's percentage
# bend correlation and the winsorized correlation written out from their definitions.
# Run from this folder: Rscript correlation.R   (writes correlation.csv and tau_critical.csv)

options(digits = 17)
set.seed(16)

source("correlation_measures.R")

measures <- function(name, x, y, g) {
  n <- length(x)
  p <- cor.test(x, y, method = "pearson")
  k <- cor.test(x, y, method = "kendall", exact = FALSE, continuity = FALSE)
  sx <- sign(outer(x, x, "-")); sy <- sign(outer(y, y, "-"))
  C <- sum(sx * sy > 0); D <- sum(sx * sy < 0)
  xy <- lm(y ~ x); yx <- lm(x ~ y)
  data.frame(name = name, g = g,
             x = paste(x, collapse = " "), y = paste(y, collapse = " "),
             mean_x = mean(x), mean_y = mean(y), sd_x = sd(x), sd_y = sd(y),
             r = unname(p$estimate), r_lower95 = p$conf.int[1], r_upper95 = p$conf.int[2],
             r_p = p$p.value,
             a_yx = coef(xy)[[1]], b_yx = coef(xy)[[2]], mserr_y = summary(xy)$sigma^2,
             a_xy = coef(yx)[[1]], b_xy = coef(yx)[[2]], mserr_x = summary(yx)$sigma^2,
             tau_b = unname(k$estimate), z_tau_b = unname(k$statistic),
             tau = (C - D) / (n * (n - 1)), p_pos = 100 * C / (n * (n - 1)), p_neg = 100 * D / (n * (n - 1)),
             rpb = pbcor(x, y), rw = if (g > 0) wincor(x, y, g) else NA)
}

# Half units keep the data exactly representable in the csv.
rounded <- function(v) round(v * 2) / 2
x1 <- rounded(rnorm(40, 170, 10)); y1 <- rounded(0.3 * x1 + rnorm(40, 0, 3))
x2 <- rpois(60, 3); y2 <- rpois(60, 3) + x2 %/% 2          # many ties in both
x3 <- c(1, 2, 3, 4, 5, 6, 7, 8, 9, 100); y3 <- c(2, 1, 4, 3, 6, 5, 8, 7, 10, -50)  # outliers
x4 <- c(5, 5, 5, 6, 6, 7, 8, 8, 9, 12, 15, 15); y4 <- c(1, 3, 2, 2, 2, 4, 4, 6, 5, 5, 9, 7)
x5 <- 1:6; y5 <- c(6, 5, 4, 3, 2, 1)                        # perfect negative

out <- rbind(measures("normal", x1, y1, 4), measures("ties", x2, y2, 6),
             measures("outliers", x3, y3, 1), measures("twelve", x4, y4, 2),
             measures("perfect_negative", x5, y5, 1))
write.csv(out, "correlation.csv", row.names = FALSE)

# The exact critical tau without ties from the exact test of cor.test: the smallest tau whose
# two-sided p is at most the level; 2 when none is.
perm_with_inversions <- function(n, inv) {
  # The permutation of the Lehmer code that puts as many inversions first as it can.
  left <- 1:n; p <- c()
  for (i in 1:n) {
    c <- min(inv, n - i)
    p <- c(p, left[c + 1]); left <- left[-(c + 1)]
    inv <- inv - c
  }
  p
}
crit <- data.frame()
for (n in 2:30) {
  pairs <- n * (n - 1) / 2
  row <- c()
  for (level in c(0.10, 0.05, 0.01)) {
    best <- 2
    for (inv in 0:(pairs - 1)) {
      if (2 * inv >= pairs) break
      y <- perm_with_inversions(n, inv)
      pv <- if (n < 3) 1 else cor.test(1:n, y, method = "kendall", exact = TRUE)$p.value
      if (pv > level * (1 + 1e-12)) break
      best <- (pairs - 2 * inv) / pairs
    }
    row <- c(row, best)
  }
  crit <- rbind(crit, data.frame(n = n, tau10 = row[1], tau05 = row[2], tau01 = row[3]))
}
write.csv(crit, "tau_critical.csv", row.names = FALSE)
