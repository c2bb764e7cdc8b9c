# The rank comparison numbers of one dependent by one grouping variable, for the check
# scripts beside it.

# Brunner and Munzel's (2000) statistic of x1 against x2 from the placements.
brunner_munzel <- function(x1, x2) {
  n1 <- length(x1); n2 <- length(x2); r <- rank(c(x1, x2))
  p1 <- r[1:n1] - rank(x1); p2 <- r[-(1:n1)] - rank(x2)
  A <- (mean(r[1:n1]) - (n1 + 1) / 2) / n2
  s1 <- var(p1); s2 <- var(p2)
  bm <- (A - 0.5) / sqrt(s1 / (n1 * n2^2) + s2 / (n2 * n1^2))
  df <- (s1 / n2 + s2 / n1)^2 / ((s1 / n2)^2 / (n1 - 1) + (s2 / n1)^2 / (n2 - 1))
  list(A = A, bm = bm, df = df, p = 2 * pt(-abs(bm), df))
}

effect <- function(a, b) mean(outer(a, b, ">") + 0.5 * outer(a, b, "=="))

rank_report <- function(title, y, g) {
  keep <- g %in% as.numeric(names(which(table(g) >= 2)))
  y <- y[keep]; g <- g[keep]; f <- factor(g); k <- nlevels(f); N <- length(y); r <- rank(y)
  # The tests of variances and Welch's test, all on the pooled ranks.
  report(paste(title, "(on the ranks)"), r, g)
  cat("rank means", f3(tapply(r, f, mean)), " rank SDs", f3(tapply(r, f, sd)), "\n")
  kw <- kruskal.test(y, f)
  cat("Kruskal-Wallis H", f3(kw$statistic), "df", kw$parameter, "p", f4(kw$p.value), "\n")
  n <- tapply(r, f, length); m <- tapply(r, f, mean); v <- tapply(r, f, var)
  ssb <- sum(n * (m - (N + 1) / 2)^2); ssw <- sum((n - 1) * v)
  cat("rank eta2", f3(ssb / (ssb + ssw)), "\n")
  groups <- split(y, f)
  cat("dominance weighted", f3(sapply(groups, function(a) effect(a, y))),
      " unweighted", f3(sapply(groups, function(a) mean(sapply(groups, function(b) effect(a, b))))), "\n")
  if (k > 2) {
    w <- oneway.test(r ~ f, var.equal = FALSE); s <- sqrt(v)
    cv <- k * sqrt((sum(s^2) - sum(s)^2 / k) / k) / sum(s); df <- w$parameter[2]; W <- w$statistic
    if (cv > 0.1) {
      c <- min(cv, 1.1); d <- round((1.1 - c) * df)
      if (d < 0.2 * df) d <- round(0.2 * df)
      df <- max(d, 2)
      if (cv > 0.25) W <- W / (1 + 0.5 * c)
    }
    cat("rank SD cv", f3(cv), "rW3", f3(W), "df", df, "p", f4(1 - pf(W, k - 1, df)), "\n")
    for (j in levels(f)) {
      b <- brunner_munzel(y[g == j], y[g != j])
      cat("group", j, "against the rest: A", f3(b$A), "BM", sprintf("%.2f", b$bm), "df", sprintf("%.1f", b$df),
          "p", f4(b$p), "adjusted", f4(min(1, k * b$p)), "\n")
    }
    # Each pair (the report bins the values into 101 cells of the range; these values keep
    # apart in them).
    for (a in 1:(k - 1)) for (b in (a + 1):k) {
      bp <- brunner_munzel(y[f == levels(f)[a]], y[f == levels(f)[b]])
      cat(sprintf("pair %s,%s", levels(f)[a], levels(f)[b]), "A", f3(bp$A), "BM", f3(bp$bm), "df",
          sprintf("%.1f", bp$df), "p", f4(bp$p), "Bonferroni", f4(min(1, bp$p * k * (k - 1) / 2)), "\n")
    }
    return(invisible())
  }
  x1 <- y[g == levels(f)[1]]; x2 <- y[g == levels(f)[2]]; n1 <- length(x1); n2 <- length(x2)
  r1 <- r[g == levels(f)[1]]; r2 <- r[g == levels(f)[2]]
  cat("R1", sprintf("%.1f", sum(r1)), "R2", sprintf("%.1f", sum(r2)), "\n")
  small <- if (n1 >= n2) r2 else r1; ms <- length(small)
  S <- max(sum(small), ms * (N + 1) - sum(small))
  cat("exact p (enumeration)", f3(min(1, 2 * mean(combn(r, ms, sum) >= S - 1e-9))), "\n")
  wt <- wilcox.test(x1, x2, exact = FALSE, correct = FALSE)
  cat("Mann-Whitney normal: Z", f3(sign(mean(r1) - mean(r2)) * sqrt(kw$statistic)), "p", f3(wt$p.value), "\n")
  cat("rank Cohen d", f3((mean(r1) - mean(r2)) / sqrt((n1 * var(r1) + n2 * var(r2)) / N)), "\n")
  p1 <- r1 - rank(x1); p2 <- r2 - rank(x2)
  v1 <- sum((p1 - mean(p1))^2); v2 <- sum((p2 - mean(p2))^2)
  fp <- (sum(p1) - sum(p2)) / (2 * sqrt(v1 + v2 + mean(p1) * mean(p2)))
  q1 <- v1 / (n1 - 1) / n1; q2 <- v2 / (n2 - 1) / n2; fdf <- (q1 + q2)^2 / (q1^2 / (n1 - 1) + q2^2 / (n2 - 1))
  cat("Fligner-Policello", f3(fp), "Welch-like df", sprintf("%.1f", fdf), "p", f4(2 * pt(-abs(fp), fdf)), "\n")
  A <- (mean(r1) - (n1 + 1) / 2) / n2
  s1 <- var(p1); s2 <- var(p2); vA <- s1 / (n1 * n2^2) + s2 / (n2 * n1^2)
  bdf <- (s1 / n2 + s2 / n1)^2 / ((s1 / n2)^2 / (n1 - 1) + (s2 / n1)^2 / (n2 - 1))
  bm <- (A - 0.5) / sqrt(vA)
  cat("Brunner-Munzel", f3(bm), "df", sprintf("%.1f", bdf), "p", f4(2 * pt(-abs(bm), bdf)), "\n")
  cat("A", f3(A), "P(1>2)", f3(mean(outer(x1, x2, ">"))), "P(1<2)", f3(mean(outer(x1, x2, "<"))),
      "C(0.95)", f3(pmin(1, pmax(0, A + c(-1, 1) * sqrt(qf(0.95, 1, bdf) * vA)))), "\n")
  cat("Somers d^2", f3((2 * A - 1)^2), "\n")
}
