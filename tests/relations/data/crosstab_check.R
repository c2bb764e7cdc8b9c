# The numbers of the expected crosstab reports (tests/relations/expected), computed in R
# from the data themselves, rounded as the reports print them.
#   cd tests/relations/data && Rscript crosstab_check.R > crosstab_check.txt
# The survey tables come from MASS's copy of data/dat/survey.msw, with the project's
# groups: Smoke codes 2, 3 and 4 share the label "smoker", Age falls in (16, 20], (20, 25]
# and (25, 80]. The small tables are those of crosstab.msw.
library(MASS)
source("../../stats/reference/contingency_measures.R")

show <- function(label, f) {
  m <- measures(label, f)
  n <- sum(f)
  cat("==", label, "\n")
  print(f)
  cat("expected:\n"); print(round(outer(rowSums(f), colSums(f)) / n, 2))
  cat("row %:\n"); print(round(100 * f / rowSums(f), 2))
  cat("column %:\n"); print(round(100 * t(t(f) / colSums(f)), 2))
  cat("total %:\n"); print(round(100 * f / n, 2))
  cat(sprintf("chi = %.3f df = %d p = %.4f e_min = %.2f\n", m$chi, m$df, m$p, m$e_min))
  cat(sprintf("V = %.4f C = %.4f\n", m$cramer_v, m$contingency))
  cat(sprintf("gamma = %.4f tau-b = %.4f D(c,r) = %.4f D(r,c) = %.4f z = %.3f p = %.4f\n",
              m$gamma, m$tau_b, m$somers_cr, m$somers_rc, m$z, m$z_p))
  cat(sprintf("lambda(c,r) = %.4f tau(c,r) = %.4f lambda(r,c) = %.4f tau(r,c) = %.4f\n",
              m$lambda_cr, m$tau_cr, m$lambda_rc, m$tau_rc))
  cat(sprintf("lambda*(c,r) = %.4f tau*(c,r) = %.4f lambda*(r,c) = %.4f tau*(r,c) = %.4f\n",
              m$lambda_star_cr, m$tau_star_cr, m$lambda_star_rc, m$tau_star_rc))
  cat(sprintf("UC(c,r) = %.4f UC(r,c) = %.4f\n", m$uc_cr, m$uc_rc))
  if (nrow(f) == 2 && ncol(f) == 2) {
    cat(sprintf("Q = %.4f Y = %.4f odds = %.4f Jaccard = %.4f\n", m$yule_q, m$yule_y, m$odds, m$jaccard))
  }
  if (!is.na(m$kappa)) {
    p <- f / n
    cat(sprintf("p_o = %.4f p_e = %.4f kappa = %.4f se0 = %.4f z = %.3f p = %.4f\n", sum(diag(p)),
                sum(rowSums(p) * colSums(p)), m$kappa, m$kappa_se0, m$kappa / m$kappa_se0, m$kappa_p))
  }
  # Pairwise chi-squares of rows and of columns (2 by k subtables), Bonferroni by the
  # number of pairs.
  for (side in c("rows", "columns")) {
    g <- if (side == "rows") f else t(f)
    k <- nrow(g)
    for (a in 1:(k - 1)) for (b in (a + 1):k) {
      sub <- g[c(a, b), , drop = FALSE]
      sub <- sub[, colSums(sub) > 0, drop = FALSE]
      x <- suppressWarnings(chisq.test(sub, correct = FALSE))
      cat(sprintf("%s %s-%s: chi2 = %.3f p = %.4f p*pairs = %.4f\n", side, rownames(g)[a], rownames(g)[b],
                  x$statistic, pchisq(x$statistic, ncol(g) - 1, lower.tail = FALSE),
                  min(1, choose(k, 2) * pchisq(x$statistic, ncol(g) - 1, lower.tail = FALSE))))
    }
  }
}

s <- survey
s$Smoke2 <- factor(ifelse(s$Smoke == "Never", "never", "smoker"))
s$AgeBand <- cut(s$Age, c(16, 20, 25, 80), labels = c("up to 20", "20 to 25", "over 25"))
show("survey Exer x Smoke", table(s$Exer, s$Smoke2)[c("Freq", "Some", "None"), ])
show("survey Age x Exer", table(s$AgeBand, s$Exer)[, c("Freq", "Some", "None")])
for (k in c("never", "smoker")) {
  d <- s[!is.na(s$Smoke2) & s$Smoke2 == k, ]
  show(paste("survey Sex x W.Hnd, Smoke", k), table(d$Sex, d$W.Hnd))
}
show("survey Sex x Smoke", table(s$Sex, s$Smoke2))

show("crosstab.msw A x B", matrix(c(12, 0, 5, 9), 2, byrow = TRUE, dimnames = list(c("no", "yes"), c("low", "high"))))
show("crosstab.msw Rater1 x Rater2", matrix(c(22, 4, 2, 5, 17, 3, 1, 4, 12), 3, byrow = TRUE,
                                            dimnames = list(1:3, 1:3)))
# The Jaccard coefficient of A and B (the larger code present): both 9, A only 5, B only 0.
cat(sprintf("Jaccard(A, B) = %.4f\n", 9 / (9 + 5 + 0)))
