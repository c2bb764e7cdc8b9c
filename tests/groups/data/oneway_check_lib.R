# The statistics printed by the one-way comparison reports, from R's own functions where R
# has the statistic and from the published formulas written out where it has none; sourced by
# oneway_check.R and survey_oneway_check.R.
suppressMessages({library(car); library(e1071)})

obrien_scores <- function(y, g) {
  r <- numeric(length(y))
  for (j in unique(g)) {
    x <- y[g == j]; n <- length(x)
    r[g == j] <- ((n - 1.5) * n * (x - mean(x))^2 - 0.5 * var(x) * (n - 1)) / ((n - 1) * (n - 2))
  }
  r
}
trim_parts <- function(x, tr) {
  n <- length(x); y <- sort(x); gg <- floor(tr * n); h <- n - 2 * gg
  w <- pmin(pmax(y, y[gg + 1]), y[n - gg])
  c(n = n, h = h, mean = mean(y[(gg + 1):(n - gg)]), wsd = sd(w), min = y[gg + 1], max = y[n - gg],
    d = (n - 1) * var(w) / (h * (h - 1)))
}
f4 <- function(x) formatC(x, format = "f", digits = 4)
f3 <- function(x) formatC(x, format = "f", digits = 3)

report <- function(title, y, g, trim = 0) {
  cat("==", title, "\n")
  f <- factor(g); k <- nlevels(f)
  for (j in levels(f)) {
    x <- y[g == j]; n <- length(x)
    s <- if (n > 2 && sd(x) > 0) skewness(x, type = 2) else 0
    ku <- if (n > 3 && sd(x) > 0) kurtosis(x, type = 2) else NA
    cat(sprintf("group %s n=%d mean=%.4f sd=%.4f min=%g max=%g skew=%.3f (p=%.4f) kurt=%.3f (p=%.4f)\n", j, n,
                mean(x), if (n > 1) sd(x) else 0, min(x), max(x), s, 2 * pnorm(-abs(s / sqrt(6 / n))),
                ku, 2 * pnorm(-abs(0.5 * ku / sqrt(6 / n)))))
  }
  keep <- g %in% as.numeric(names(which(table(g) >= 2)))
  y <- y[keep]; g <- g[keep]; f <- factor(g); k <- nlevels(f)
  lev <- leveneTest(y ~ f, center = mean)
  dev <- abs(y - ave(y, f))
  cat("Levene F", f3(lev[1, "F value"]), "p", f4(lev[1, "Pr(>F)"]), "\n")
  lw <- oneway.test(dev ~ f, var.equal = FALSE)
  cat("Levene Welch W", f3(lw$statistic), "df2", sprintf("%.1f", lw$parameter[2]), "p", f4(lw$p.value), "\n")
  if (all(table(g) > 2)) {
    ob <- obrien_scores(y, g)
    of <- oneway.test(ob ~ f, var.equal = TRUE); ow <- oneway.test(ob ~ f, var.equal = FALSE)
    cat("O'Brien F", f3(of$statistic), "p", f4(of$p.value), " Welch W", f3(ow$statistic), "df2",
        sprintf("%.1f", ow$parameter[2]), "p", f4(ow$p.value), "\n")
  }
  a <- anova(aov(y ~ f)); ssb <- a[1, 2]; msw <- a[2, 3]; sst <- sum(a[, 2])
  cat("ANOVA F", f3(a[1, 4]), "df", a[1, 1], a[2, 1], "p", f4(a[1, 5]), "MS_treatment", f4(a[1, 3]),
      "MS_error", f4(msw), "\n")
  cat("eta", f3(sqrt(ssb / sst)), "eta2", f3(ssb / sst), "omega2", f3(max(0, (ssb - (k - 1) * msw) / (sst + msw))), "\n")
  w <- suppressWarnings(oneway.test(y ~ f, var.equal = FALSE))
  cat("Welch W", f3(w$statistic), "df2", sprintf("%.1f", w$parameter[2]), "p", f4(w$p.value), "\n")
  n <- tapply(y, f, length); s2 <- tapply(y, f, var); b <- (1 - n / sum(n)) * s2
  wj <- n / s2; mw <- sum(wj * tapply(y, f, mean)) / sum(wj)
  cat("James U", f3(sum(wj * (tapply(y, f, mean) - mw)^2)), "\n")
  bf <- sum(n * (tapply(y, f, mean) - mean(y))^2) / sum(b)
  bdf <- round(1 / sum((b / sum(b))^2 / (n - 1)))
  cat("Brown-Forsythe F*", f3(bf), "df2", bdf, "p", f4(1 - pf(bf, k - 1, bdf)), "\n")
  if (k == 2) {
    x1 <- y[g == levels(f)[1]]; x2 <- y[g == levels(f)[2]]
    tt <- t.test(x1, x2, var.equal = TRUE); wt <- t.test(x1, x2)
    cat("t", f3(tt$statistic), "p", f4(tt$p.value), "CI", f3(tt$conf.int), "\n")
    cat("Welch t", f3(wt$statistic), "df", sprintf("%.1f", wt$parameter), "p", f4(wt$p.value), "CI", f3(wt$conf.int), "\n")
    pooled <- sqrt((length(x1) * var(x1) + length(x2) * var(x2)) / (length(x1) + length(x2)))
    cat("Cohen d (n-weighted pooled SD)", f3((mean(x1) - mean(x2)) / pooled), "\n")
  }
  if (trim > 0) {
    p <- sapply(levels(f), function(j) trim_parts(y[g == j], trim))
    print(round(t(p), 4))
    if (k == 2) {
      a1 <- p[, 1]; a2 <- p[, 2]
      t <- (a1["mean"] - a2["mean"]) / sqrt(a1["d"] + a2["d"])
      df <- (a1["d"] + a2["d"])^2 / (a1["d"]^2 / (a1["h"] - 1) + a2["d"]^2 / (a2["h"] - 1))
      cat("Yuen t", f3(t), "df", sprintf("%.1f", df), "p", f4(2 * pt(-abs(t), df)), "\n")
      cat("trimmed d", f3((a1["mean"] - a2["mean"]) /
          sqrt(((a1["h"] - 1) * a1["wsd"]^2 + (a2["h"] - 1) * a2["wsd"]^2) / (a1["h"] + a2["h"] - 2))),
          "eta2", f3(t^2 / sum(p["h", ]) / (1 + t^2 / sum(p["h", ]))),
          "CI (exact t)", f3((a1["mean"] - a2["mean"]) + c(-1, 1) * qt(0.975, df) * sqrt(a1["d"] + a2["d"])), "\n")
    } else {
      wj <- 1 / p["d", ]; U <- sum(wj); mt <- sum(wj * p["mean", ]) / U
      A <- sum(wj * (p["mean", ] - mt)^2) / (k - 1); L <- sum((1 - wj / U)^2 / (p["h", ] - 1))
      Ft <- A / (1 + 2 * (k - 2) * L / (k^2 - 1)); df2 <- (k^2 - 1) / (3 * L)
      cat("Trimmed Welch Ft", f3(Ft), "df2", sprintf("%.1f", df2), "p", f4(1 - pf(Ft, k - 1, df2)),
          "eta2", f3((k - 1) * Ft / sum(p["h", ]) / (1 + (k - 1) * Ft / sum(p["h", ]))), "\n")
    }
  }
}


# The analysis of covariance on the cases valid on y, the covariate cv and the group g.
ancova_report <- function(title, y, cv, g) {
  cat("==", title, "\n")
  ok <- !is.na(y) & !is.na(cv) & !is.na(g); y <- y[ok]; cv <- cv[ok]; g <- g[ok]
  keep <- g %in% as.numeric(names(which(table(g) >= 3)))
  y <- y[keep]; cv <- cv[keep]; g <- g[keep]; f <- factor(g); k <- nlevels(f)
  small <- lm(y ~ cv); big <- lm(y ~ cv + f); cmp <- anova(small, big)
  b <- coef(lm(y ~ f + cv))["cv"]
  adj <- tapply(y, f, mean) - b * (tapply(cv, f, mean) - mean(cv))
  for (j in levels(f)) {
    ct <- cor.test(y[g == j], cv[g == j])
    cat(sprintf("group %s n=%d mean=%.4f adjusted=%.4f r=%.3f (p=%.3f)\n", j, sum(g == j), mean(y[g == j]), adj[j],
                ct$estimate, ct$p.value))
  }
  ct <- cor.test(y, cv)
  cat("r", f3(ct$estimate), "df", ct$parameter, "p", f4(ct$p.value), "\n")
  pr <- cor(resid(lm(y ~ g)), resid(lm(cv ~ g)))
  cat("partial r(xc.g)", f3(pr), "p", f4(2 * pt(-abs(pr * sqrt((length(y) - 3) / (1 - pr^2))), length(y) - 3)), "\n")
  nj <- tapply(y, f, length); z <- atanh(sapply(levels(f), function(j) cor(y[g == j], cv[g == j])))
  chi <- sum((nj - 3) * z^2) - sum((nj - 3) * z)^2 / sum(nj - 3)
  cat("equal correlations chi2", f3(chi), "df", k - 1, "p", f4(1 - pchisq(chi, k - 1)), "\n")
  cat("partial eta2", f3(cmp$`Sum of Sq`[2] / deviance(small)), "\n")
  if (k == 2) cat("d", f3((adj[1] - adj[2]) / sqrt(deviance(big) / df.residual(big))), "\n")
  cat("F", f3(cmp$F[2]), "df", cmp$Df[2], cmp$Res.Df[2], "p", f4(cmp$`Pr(>F)`[2]), "\n")
}

# The pairwise comparisons of the groups of at least two cases. Tukey-Kramer from TukeyHSD:
# q = |diff| / sqrt(0.5 V), the root taken from its interval's half width over qtukey.
# Games-Howell from Welch's t.test of each pair: q = sqrt(2) |t| at its rounded df. Each q
# with its ptukey upper tail (the marks: "**" below 0.01, "*" below 0.05, "+" below 0.10).
tukey_pairs <- function(title, y, g) {
  cat("== Tukey-Kramer,", title, "\n")
  keep <- g %in% as.numeric(names(which(table(g) >= 2))); y <- y[keep]; g <- g[keep]
  f <- factor(g); k <- nlevels(f); fit <- aov(y ~ f); df <- df.residual(fit)
  hsd <- TukeyHSD(fit)$f
  q <- abs(hsd[, "diff"]) / ((hsd[, "upr"] - hsd[, "diff"]) / qtukey(0.95, k, df))
  for (i in seq_along(q)) cat(sprintf("%s q=%.2f df=%d p=%.4f\n", rownames(hsd)[i], q[i], df, ptukey(q[i], k, df, lower.tail = FALSE)))
}
games_howell_pairs <- function(title, y, g) {
  cat("== Games-Howell,", title, "\n")
  keep <- g %in% as.numeric(names(which(table(g) >= 2))); y <- y[keep]; g <- g[keep]
  lev <- sort(unique(g)); k <- length(lev)
  for (a in 1:(k - 1)) for (b in (a + 1):k) {
    tt <- t.test(y[g == lev[a]], y[g == lev[b]], var.equal = FALSE)
    q <- sqrt(2) * abs(tt$statistic); df <- round(tt$parameter)
    cat(sprintf("%s-%s q=%.2f df=%d p=%.4f\n", lev[a], lev[b], q, df, ptukey(q, k, df, lower.tail = FALSE)))
  }
}
# The trimmed means: each pair's Yuen t (written out above, as R has no Yuen test), q = sqrt(2) |t|.
trimmed_pairs <- function(title, y, g, trim) {
  cat("== Games-Howell of trimmed means,", title, "\n")
  lev <- sort(unique(g)); k <- length(lev)
  p <- sapply(lev, function(j) trim_parts(y[g == j], trim))
  for (a in 1:(k - 1)) for (b in (a + 1):k) {
    t <- (p["mean", a] - p["mean", b]) / sqrt(p["d", a] + p["d", b])
    df <- round((p["d", a] + p["d", b])^2 / (p["d", a]^2 / (p["h", a] - 1) + p["d", b]^2 / (p["h", b] - 1)))
    q <- sqrt(2) * abs(t)
    cat(sprintf("%s-%s q=%.2f df=%d p=%.4f\n", lev[a], lev[b], q, df, ptukey(q, k, df, lower.tail = FALSE)))
  }
}
# The adjusted means of lm(y ~ cv + g) on the complete cases: Tukey-Kramer with the model's
# residual mean square; Games-Howell with the groups' SDs of y and Welch's df of each pair.
adjusted_pairs <- function(title, y, cv, g) {
  cat("== Adjusted means,", title, "\n")
  ok <- !is.na(y) & !is.na(cv) & !is.na(g); y <- y[ok]; cv <- cv[ok]; g <- g[ok]
  keep <- g %in% as.numeric(names(which(table(g) >= 3))); y <- y[keep]; cv <- cv[keep]; g <- g[keep]
  f <- factor(g); k <- nlevels(f); big <- lm(y ~ cv + f); df <- df.residual(big); mse <- deviance(big) / df
  b <- coef(big)["cv"]; adj <- tapply(y, f, mean) - b * (tapply(cv, f, mean) - mean(cv))
  n <- tapply(y, f, length); s2 <- tapply(y, f, var); lev <- levels(f)
  for (a in 1:(k - 1)) for (c in (a + 1):k) {
    d <- abs(adj[a] - adj[c])
    q <- d / sqrt(0.5 * mse * (1 / n[a] + 1 / n[c]))
    tt <- t.test(y[g == lev[a]], y[g == lev[c]], var.equal = FALSE); gdf <- round(tt$parameter)
    gq <- d / sqrt(0.5 * (s2[a] / n[a] + s2[c] / n[c]))
    cat(sprintf("%s-%s Tukey q=%.2f df=%d p=%.4f  Games-Howell q=%.2f df=%d p=%.4f\n", lev[a], lev[c], q, df,
                ptukey(q, k, df, lower.tail = FALSE), gq, gdf, ptukey(gq, k, gdf, lower.tail = FALSE)))
  }
}
