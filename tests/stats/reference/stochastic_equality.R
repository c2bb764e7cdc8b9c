# Reference values of the rank tests of stochastic equality, from R's own tests where R has
# them (kruskal.test, wilcox.test) and from the published formulas written out here where it
# has none: Brunner and Munzel's (2000) statistic with its df, Fligner and Policello's (1981)
# statistic from the placements, and the exact null of the rank sum by enumerating every
# subset of the pooled mid-ranks.
# Run from this folder: Rscript stochastic_equality.R   (writes stochastic_equality.csv)

options(digits = 17)
join <- function(x) paste(x, collapse = " ")

sets <- list(
  # Two small groups without ties: the exact test.
  k2_exact = list(y = c(3.1, 5.6, 2.2, 6.4, 7.5, 6.1, 9.3, 4.8, 5.9), g = c(1, 1, 1, 1, 2, 2, 2, 2, 2)),
  # Two small groups with ties across them: the exact null of the mid-ranks.
  k2_exact_ties = list(y = c(2, 4, 4, 6, 3, 5, 4, 6, 7, 6, 8, 5, 9, 6, 7, 10),
                       g = c(rep(1, 6), rep(2, 10))),
  # Two larger groups with ties and unequal spread.
  k2_ties = list(y = c(3, 4, 4, 5, 2, 5, 6, 3, 4, 4, 5, 7, 1, 4,
                       6, 5, 7, 8, 4, 9, 6, 6, 2, 8, 7, 10, 5, 6, 9, 3, 7, 8),
                 g = c(rep(1, 14), rep(2, 18))),
  # Four groups with ties.
  k4 = list(y = c(2, 3, 3, 5, 4, 1, 6,
                  5, 6, 7, 7, 8, 4, 9, 6,
                  3, 9, 1, 10, 5, 7, 2, 8, 6, 11,
                  4, 4, 5, 6, 5),
            g = c(rep(1, 7), rep(2, 8), rep(3, 10), rep(4, 5))))

placements <- function(y, g, j) {
  rank(y)[g == j] - rank(y[g == j])
}

two_group <- function(y, g) {
  x1 <- y[g == 1]; x2 <- y[g == 2]; n1 <- length(x1); n2 <- length(x2); N <- n1 + n2
  r <- rank(y)
  p1 <- placements(y, g, 1); p2 <- placements(y, g, 2)
  # Brunner-Munzel: the estimate of P(X1 > X2) + P(X1 = X2)/2 and its variance terms.
  A <- (mean(r[g == 1]) - (n1 + 1) / 2) / n2
  s1 <- var(p1); s2 <- var(p2)
  v <- s1 / (n1 * n2^2) + s2 / (n2 * n1^2)
  bm <- (A - 0.5) / sqrt(v)
  bm_df <- (s1 / n2 + s2 / n1)^2 / ((s1 / n2)^2 / (n1 - 1) + (s2 / n1)^2 / (n2 - 1))
  bm_p <- 2 * pt(-abs(bm), bm_df)
  # Fligner-Policello from the placements (group 1 above group 2 positive).
  v1 <- sum((p1 - mean(p1))^2); v2 <- sum((p2 - mean(p2))^2)
  fp <- (sum(p1) - sum(p2)) / (2 * sqrt(v1 + v2 + mean(p1) * mean(p2)))
  greater <- mean(outer(x1, x2, ">")); less <- mean(outer(x1, x2, "<"))
  # The exact null: every subset of the smaller group's size among the pooled mid-ranks.
  small <- if (n1 >= n2) 2 else 1
  m <- sum(g == small)
  R <- sum(r[g == small]); S <- max(R, m * (N + 1) - R)
  sums <- if (N <= 24) combn(r, m, sum) else NA
  exact_p <- if (N <= 24) min(1, 2 * mean(sums >= S - 1e-9)) else NA
  w <- wilcox.test(x1, x2, exact = FALSE, correct = FALSE)
  list(A = A, greater = greater, less = less, bm = bm, bm_df = bm_df, bm_p = bm_p, fp = fp,
       exact_p = exact_p, mw_p = w$p.value, rank_sum1 = sum(r[g == 1]))
}

rows <- list()
for (name in names(sets)) {
  s <- sets[[name]]
  kw <- kruskal.test(s$y, factor(s$g))
  row <- list(set = name, values = join(s$y), groups = join(s$g), k = length(unique(s$g)),
              kw_H = unname(kw$statistic), kw_p = kw$p.value)
  two <- if (length(unique(s$g)) == 2) two_group(s$y, s$g) else
    list(A = NA, greater = NA, less = NA, bm = NA, bm_df = NA, bm_p = NA, fp = NA, exact_p = NA,
         mw_p = NA, rank_sum1 = NA)
  rows[[name]] <- as.data.frame(c(row, two))
}
# Where R's own exact test applies (no ties), it agrees with the enumeration.
s <- sets$k2_exact
stopifnot(abs(wilcox.test(s$y[s$g == 1], s$y[s$g == 2], exact = TRUE)$p.value -
              rows$k2_exact$exact_p) < 1e-12)
write.csv(do.call(rbind, rows), "stochastic_equality.csv", row.names = FALSE)
