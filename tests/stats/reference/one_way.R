# Reference values of the one-way comparison of independent groups, from R's own tests where
# R has them (oneway.test, t.test, car::leveneTest, aov) and from the published formulas
# written out here where it has none (O'Brien's scores, Brown and Forsythe's F*, Yuen's
# trimmed t, the Welch-type test of trimmed means).
# Run from this folder: Rscript one_way.R   (writes one_way.csv beside it)

library(car)
options(digits = 17)
join <- function(x) paste(x, collapse = " ")

sets <- list(
  # Two groups of unequal size and spread.
  k2 = list(y = c(12.1, 14.3, 9.8, 11.5, 13.9, 10.2, 12.7, 15.4,
                  16.2, 21.5, 9.1, 18.8, 24.3, 13.7, 19.9, 11.4, 22.8, 17.6, 14.9, 20.3),
            g = c(rep(1, 8), rep(2, 12))),
  # Four groups of unequal size and spread.
  k4 = list(y = c(5.1, 6.3, 4.8, 5.9, 6.1, 5.5,
                  7.2, 9.8, 6.1, 8.4, 10.9, 7.7, 9.3, 8.8, 6.6,
                  4.2, 12.5, 7.9, 3.1, 10.4, 8.8, 5.7, 11.2, 6.4, 9.9, 2.8,
                  6.0, 6.4, 5.8, 6.9, 7.1),
            g = c(rep(1, 6), rep(2, 9), rep(3, 11), rep(4, 5))),
  # Three groups with ties and equal sizes.
  k3_equal = list(y = c(3, 4, 4, 5, 6, 6, 7, 2, 5, 5, 8, 9, 9, 10, 1, 4, 6, 6, 7, 8, 12),
                  g = rep(1:3, each = 7)))

obrien_scores <- function(y, g) {
  r <- numeric(length(y))
  for (j in unique(g)) {
    x <- y[g == j]; n <- length(x); m <- mean(x); s2 <- var(x)
    r[g == j] <- ((n - 1.5) * n * (x - m)^2 - 0.5 * s2 * (n - 1)) / ((n - 1) * (n - 2))
  }
  r
}

brown_forsythe <- function(y, g) {
  n <- tapply(y, g, length); m <- tapply(y, g, mean); s2 <- tapply(y, g, var); N <- sum(n)
  b <- (1 - n / N) * s2
  c(F = sum(n * (m - mean(y))^2) / sum(b), df2 = 1 / sum((b / sum(b))^2 / (n - 1)))
}

# Trimmed at the fraction tr from each end, g = floor(tr n) values; d_j = (n - 1) sw^2 / (h (h - 1)).
trim_parts <- function(x, tr) {
  n <- length(x); y <- sort(x); gg <- floor(tr * n); h <- n - 2 * gg
  w <- pmin(pmax(y, y[gg + 1]), y[n - gg])
  c(mean = mean(y[(gg + 1):(n - gg)]), h = h, d = (n - 1) * var(w) / (h * (h - 1)), wsd = sd(w))
}
yuen <- function(y, g, tr) {
  a <- trim_parts(y[g == 1], tr); b <- trim_parts(y[g == 2], tr)
  t <- (a["mean"] - b["mean"]) / sqrt(a["d"] + b["d"])
  df <- (a["d"] + b["d"])^2 / (a["d"]^2 / (a["h"] - 1) + b["d"]^2 / (b["h"] - 1))
  c(t = unname(t), df = unname(df), p = unname(2 * pt(-abs(t), df)))
}
trimmed_welch <- function(y, g, tr) {
  p <- sapply(sort(unique(g)), function(j) trim_parts(y[g == j], tr))
  k <- ncol(p); w <- 1 / p["d", ]; U <- sum(w); mt <- sum(w * p["mean", ]) / U
  A <- sum(w * (p["mean", ] - mt)^2) / (k - 1)
  L <- sum((1 - w / U)^2 / (p["h", ] - 1))
  Ft <- A / (1 + 2 * (k - 2) * L / (k^2 - 1))
  df2 <- (k^2 - 1) / (3 * L)
  c(F = Ft, df2 = df2, p = 1 - pf(Ft, k - 1, df2))
}

rows <- data.frame()
for (name in names(sets)) {
  y <- sets[[name]]$y; g <- sets[[name]]$g; f <- factor(g); k <- nlevels(f)
  classic <- oneway.test(y ~ f, var.equal = TRUE)
  welch <- oneway.test(y ~ f, var.equal = FALSE)
  table <- anova(aov(y ~ f))
  ssb <- table[1, "Sum Sq"]; msw <- table[2, "Mean Sq"]; sst <- sum(table[, "Sum Sq"])
  lev <- leveneTest(y ~ f, center = mean)
  dev <- abs(y - ave(y, f))
  lev_w <- oneway.test(dev ~ f, var.equal = FALSE)
  ob <- obrien_scores(y, g)
  ob_f <- oneway.test(ob ~ f, var.equal = TRUE)
  ob_w <- oneway.test(ob ~ f, var.equal = FALSE)
  bf <- brown_forsythe(y, g)
  row <- data.frame(set = name, k = k, values = join(y), groups = join(g),
    anova_F = unname(classic$statistic), anova_df2 = unname(classic$parameter[2]), anova_p = classic$p.value,
    welch_W = unname(welch$statistic), welch_df2 = unname(welch$parameter[2]), welch_p = welch$p.value,
    eta2 = ssb / sst, omega2 = (ssb - (k - 1) * msw) / (sst + msw),
    levene_F = lev[1, "F value"], levene_p = lev[1, "Pr(>F)"],
    levene_W = unname(lev_w$statistic), levene_W_df2 = unname(lev_w$parameter[2]), levene_W_p = lev_w$p.value,
    obrien_F = unname(ob_f$statistic), obrien_p = ob_f$p.value,
    obrien_W = unname(ob_w$statistic), obrien_W_df2 = unname(ob_w$parameter[2]), obrien_W_p = ob_w$p.value,
    bf_F = unname(bf["F"]), bf_df2 = unname(bf["df2"]),
    t = NA, t_p = NA, welch_t = NA, welch_t_df = NA, welch_t_p = NA, t_low = NA, t_high = NA, qf_t = NA,
    welch_low = NA, welch_high = NA, qf_welch = NA, yuen_t = NA, yuen_df = NA, yuen_p = NA,
    trimmed_F = NA, trimmed_df2 = NA, trimmed_p = NA)
  if (k == 2) {
    tt <- t.test(y[g == 1], y[g == 2], var.equal = TRUE)
    wt <- t.test(y[g == 1], y[g == 2], var.equal = FALSE)
    yu <- yuen(y, g, 0.2)
    row$t <- unname(tt$statistic); row$t_p <- tt$p.value
    row$t_low <- tt$conf.int[1]; row$t_high <- tt$conf.int[2]; row$qf_t <- qf(0.95, 1, tt$parameter)
    row$welch_t <- unname(wt$statistic); row$welch_t_df <- unname(wt$parameter); row$welch_t_p <- wt$p.value
    row$welch_low <- wt$conf.int[1]; row$welch_high <- wt$conf.int[2]; row$qf_welch <- qf(0.95, 1, wt$parameter)
    row$yuen_t <- yu["t"]; row$yuen_df <- yu["df"]; row$yuen_p <- yu["p"]
  } else {
    tw <- trimmed_welch(y, g, 0.2)
    row$trimmed_F <- tw["F"]; row$trimmed_df2 <- tw["df2"]; row$trimmed_p <- tw["p"]
  }
  rows <- rbind(rows, row)
}
write.csv(rows, "one_way.csv", row.names = FALSE)

# The upper chi-square quantiles that James's second-order critical values approach as the
# groups grow: k - 1 = 3 df at 0.10, 0.05, 0.01, 0.001.
write.csv(data.frame(df = 3, alpha = c(0.10, 0.05, 0.01, 0.001), quantile = qchisq(c(0.90, 0.95, 0.99, 0.999), 3)),
          "chi_square_quantiles.csv", row.names = FALSE)

# Four groups, the last constant: the F forms of Levene's and O'Brien's tests are defined
# (the constant group adds nothing to the within sum).
y <- c(5.1, 6.3, 4.8, 5.9, 6.1, 5.5, 7.2, 9.8, 6.1, 8.4, 10.9, 7.7, 9.3, 8.8, 6.6,
       4.2, 12.5, 7.9, 3.1, 10.4, 8.8, 5.7, 11.2, 6.4, 9.9, 2.8, rep(6.5, 5))
g <- c(rep(1, 6), rep(2, 9), rep(3, 11), rep(4, 5)); f <- factor(g)
lev <- leveneTest(y ~ f, center = mean)
ob <- oneway.test(obrien_scores(y, g) ~ f, var.equal = TRUE)
write.csv(data.frame(values = join(y), groups = join(g), levene_F = lev[1, "F value"], levene_p = lev[1, "Pr(>F)"],
                     obrien_F = unname(ob$statistic), obrien_p = ob$p.value),
          "constant_group.csv", row.names = FALSE)

# The analysis of covariance: the F of the adjusted means from the comparison of the
# regressions without and with the groups, the adjusted means by lm's pooled slope, partial
# eta squared from the same sums, Cohen's d on the residual mean square, the within-group
# correlations by cor.test, Fisher's z test of their equality written out, and the partial
# correlation after the group code as the correlation of residuals.
ancova_sets <- list(
  k4 = list(y = sets$k4$y, g = sets$k4$g,
            c = c(2.1, 2.9, 1.8, 2.5, 2.8, 2.2, 3.0, 4.1, 2.6, 3.5, 4.6, 3.1, 3.9, 3.8, 2.7,
                  1.9, 5.2, 3.3, 1.2, 4.4, 3.6, 2.4, 4.9, 2.8, 4.1, 1.0, 2.5, 2.9, 2.3, 3.0, 3.2)),
  k2 = list(y = sets$k2$y, g = sets$k2$g,
            c = c(30, 41, 22, 28, 35, 27, 33, 44, 38, 52, 20, 47, 61, 30, 45, 26, 55, 43, 36, 49)))
anc <- data.frame()
for (name in names(ancova_sets)) {
  s <- ancova_sets[[name]]; y <- s$y; cv <- s$c; g <- s$g; f <- factor(g); k <- nlevels(f)
  small <- lm(y ~ cv); big <- lm(y ~ cv + f)
  cmp <- anova(small, big)
  b <- coef(lm(y ~ f + cv))["cv"]
  adj <- tapply(y, f, mean) - b * (tapply(cv, f, mean) - mean(cv))
  rj <- sapply(levels(f), function(j) cor(y[g == j], cv[g == j]))
  pj <- sapply(levels(f), function(j) cor.test(y[g == j], cv[g == j])$p.value)
  nj <- tapply(y, f, length); z <- atanh(rj)
  chi <- sum((nj - 3) * z^2) - sum((nj - 3) * z)^2 / sum(nj - 3)
  mse <- deviance(big) / df.residual(big)
  pr <- cor(resid(lm(y ~ g)), resid(lm(cv ~ g)))
  anc <- rbind(anc, data.frame(set = name, values = join(y), covariate = join(cv), groups = join(g),
    F = cmp$F[2], df1 = cmp$Df[2], df2 = cmp$Res.Df[2], p = cmp$`Pr(>F)`[2],
    partial_eta2 = cmp$`Sum of Sq`[2] / deviance(small),
    adjusted = join(adj), within_r = join(rj), within_p = join(pj),
    chi = chi, chi_p = 1 - pchisq(chi, k - 1),
    r = cor(y, cv), r_p = cor.test(y, cv)$p.value,
    d = if (k == 2) unname((adj[1] - adj[2]) / sqrt(mse)) else NA,
    partial_r = pr))
}
write.csv(anc, "ancova.csv", row.names = FALSE)
