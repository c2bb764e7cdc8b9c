# Reference values of the pairwise post hoc comparisons.
# Run from this folder: Rscript pairwise.R
#   pairwise_groups.csv  the groups of three data sets (n, mean, SD) with the error term of aov
#   pairwise_pairs.csv   per pair: Tukey's q recovered from TukeyHSD's interval, its p; the
#                        Welch t test's statistic and df (q = sqrt(2) |t|) and ptukey's p
#   pairwise_scheffe.csv the contrast of each group against the mean of all group means:
#                        its estimate and the Scheffe F from lm's covariance of the means
#   pairwise_critical.csv  qtukey at 0.90, 0.95, 0.99 for k and df on and between table rows
#   pairwise_critical_limit.csv  qtukey at infinite df
# Critical values at df 3 are left out: qtukey loses accuracy there with many means (k 20
# at 0.01 gives 19.95 for 19.77); the table generator is checked at its rows on its own.
options(digits = 17)
set.seed(20261123)

make_set <- function(name, sizes, means, sds) {
  g <- factor(rep(seq_along(sizes), sizes))
  y <- round(unlist(mapply(function(n, m, s) rnorm(n, m, s), sizes, means, sds)), 2)
  list(name = name, y = y, g = g)
}
sets <- list(
  make_set("equal", c(8, 12, 10, 9), c(10, 12.5, 10.8, 14), c(2, 2, 2, 2)),
  make_set("unequal", c(6, 15, 9, 20, 11), c(20, 23, 20.5, 27, 24), c(1.5, 4, 2.5, 6, 3)),
  make_set("eleven", rep(c(4, 6), length.out = 11), seq(5, 10, by = 0.5), rep(1.5, 11))
)

groups <- NULL
pairs <- NULL
for (s in sets) {
  fit <- aov(s$y ~ s$g)
  df <- fit$df.residual
  mse <- sum(residuals(fit)^2) / df
  k <- nlevels(s$g)
  n <- as.vector(table(s$g))
  m <- as.vector(tapply(s$y, s$g, mean))
  sd <- as.vector(tapply(s$y, s$g, sd))
  groups <- rbind(groups, data.frame(set = s$name, group = seq_len(k), n = n, mean = m, sd = sd,
                                     mse = mse, df = df))
  hsd <- TukeyHSD(fit, conf.level = 0.95)[[1]]
  for (i in 1:(k - 1)) for (j in (i + 1):k) {
    row <- hsd[paste0(j, "-", i), ]
    # TukeyHSD's interval is diff +- qtukey(0.95, k, df) * se: the se is recovered from it.
    se <- (row[["upr"]] - row[["diff"]]) / qtukey(0.95, k, df)
    welch <- t.test(s$y[s$g == i], s$y[s$g == j], var.equal = FALSE)
    welch_q <- sqrt(2) * abs(unname(welch$statistic))
    welch_df <- unname(welch$parameter)
    pairs <- rbind(pairs, data.frame(set = s$name, i = i, j = j, tukey_q = abs(row[["diff"]]) / se,
                                     tukey_p = row[["p adj"]], welch_q = welch_q, welch_df = welch_df,
                                     games_howell_p = ptukey(welch_q, k, round(welch_df), lower.tail = FALSE)))
  }
}

# Each group against the rest in the unequal set, from the cell-means model y ~ g - 1.
unequal <- sets[[2]]
cells <- lm(unequal$y ~ unequal$g - 1)
L <- nlevels(unequal$g)
scheffe <- NULL
for (i in 1:L) {
  contrast <- -rep(1, L) / L
  contrast[i] <- contrast[i] + 1  # mean i minus the mean of the means
  estimate <- sum(contrast * coef(cells))
  f1 <- estimate^2 / drop(t(contrast) %*% vcov(cells) %*% contrast)
  scheffe <- rbind(scheffe, data.frame(level = i, effect = estimate, f = f1 / (L - 1),
                                       p = pf(f1 / (L - 1), L - 1, cells$df.residual, lower.tail = FALSE)))
}

critical <- expand.grid(k = c(2, 3, 7, 20), df = c(5, 10, 20, 22, 27, 45, 90, 200, 255, 1000, 1e5))
critical$q90 <- qtukey(0.90, critical$k, critical$df)
critical$q95 <- qtukey(0.95, critical$k, critical$df)
critical$q99 <- qtukey(0.99, critical$k, critical$df)
# The limit as df grows without bound, which the lookup holds in the file's form (q x 100).
limit <- expand.grid(k = 2:20, level = c(0.10, 0.05, 0.01))
limit$q <- qtukey(1 - limit$level, limit$k, Inf)

write.csv(groups, "pairwise_groups.csv", row.names = FALSE)
write.csv(pairs, "pairwise_pairs.csv", row.names = FALSE)
write.csv(scheffe, "pairwise_scheffe.csv", row.names = FALSE)
write.csv(limit, "pairwise_critical_limit.csv", row.names = FALSE)
write.csv(critical, "pairwise_critical.csv", row.names = FALSE)
