# Reference values of the exact tests, computed with R's own functions.
# Run from this folder: Rscript exact_tests.R   (writes the .csv files beside it)

options(digits = 17)

# Signed-rank test. Ranks without ties: wilcox.test(exact = TRUE) on data whose absolute
# values have these ranks and whose negative ones sum to t. Ranks with ties (mid-ranks):
# R has no exact test, so all 2^n sign patterns are counted here.
wilcoxon <- data.frame()
add_case <- function(ranks, t, p, count) {
  wilcoxon <<- rbind(wilcoxon, data.frame(n = length(ranks), t = t, count = count, p = p,
                                          ranks = paste(ranks, collapse = " ")))
}
negative_set <- function(n, t) {  # ranks from the top down whose sum is t
  chosen <- c(); left <- t
  for (r in n:1) if (r <= left) { chosen <- c(chosen, r); left <- left - r }
  chosen
}
for (n in 2:20) {
  total <- n * (n + 1) / 2
  for (t in unique(round(seq(0, floor(total / 2), length.out = 6)))) {
    x <- seq_len(n)
    x[negative_set(n, t)] <- -x[negative_set(n, t)]
    p <- wilcox.test(x, exact = TRUE)$p.value
    add_case(seq_len(n), t, p, psignrank(t, n) * 2^n)
  }
}
count_patterns <- function(ranks, t) {
  signs <- as.matrix(expand.grid(rep(list(0:1), length(ranks))))
  sum(signs %*% ranks <= t + 1e-8)
}
tied <- list(c(1.5, 1.5, 3, 4, 5.5, 5.5), c(2, 2, 2, 4.5, 4.5, 6, 7, 8),
             c(1, 2.5, 2.5, 4, 5, 6, 7, 8.5, 8.5, 10), c(3, 3, 3, 3, 3, 6.5, 6.5, 8, 9, 10.5, 10.5, 12),
             c(1:10, 12, 12, 12, 14.5, 14.5))
for (ranks in tied) {
  total <- sum(ranks)
  for (t in c(1.5, total / 8, total / 4, total / 2 - 0.5)) {
    count <- count_patterns(ranks, t)
    add_case(ranks, t, if (count == 0) 0 else min(1, 2 * count / 2^length(ranks)), count)
  }
}
write.csv(wilcoxon, "wilcoxon_exact.csv", row.names = FALSE)

# Fisher's exact test of the 2 by 2 table (a b / c d) and the probability of the table.
fisher <- data.frame()
tables <- rbind(expand.grid(a = c(0, 1, 3, 7), b = c(0, 2, 5, 9), c = c(1, 4, 8), d = c(0, 3, 6, 12)),
                data.frame(a = c(12, 25, 40, 3, 50, 10, 60), b = c(30, 20, 10, 45, 52, 90, 5),
                           c = c(28, 22, 35, 40, 48, 15, 70), d = c(10, 30, 5, 2, 50, 80, 9)),
                # Observed tables beyond the most probable one, ties of a table with its mirror
                # image, a single table, and counts whose factorials overflow a double.
                data.frame(a = c(1, 7, 100, 5, 4, 6, 0, 0, 20, 480, 1500, 3, 1200),
                           b = c(1, 12, 1, 5, 6, 4, 0, 9, 0, 520, 20, 2000, 1300),
                           c = c(1, 0, 1, 5, 6, 4, 0, 0, 0, 530, 15, 9, 1250),
                           d = c(100, 8, 1, 5, 4, 6, 0, 0, 30, 470, 1400, 1500, 1250)))
for (i in seq_len(nrow(tables))) {
  a <- tables$a[i]; b <- tables$b[i]; c <- tables$c[i]; d <- tables$d[i]
  m <- matrix(c(a, c, b, d), 2)
  p <- fisher.test(m)$p.value
  ptable <- dhyper(a, a + b, c + d, a + c)
  fisher <- rbind(fisher, data.frame(a = a, b = b, c = c, d = d, p = p, ptable = ptable))
}
write.csv(fisher, "fisher_exact.csv", row.names = FALSE)

# The sign test: k cases on one side among n, two-sided binomial test at 1/2.
sign <- data.frame()
for (n in c(2:50, 51, 60, 80, 120)) {
  for (k in unique(round(seq(0, n, length.out = min(n + 1, 9))))) {
    sign <- rbind(sign, data.frame(k = k, n = n, p = binom.test(k, n, 0.5)$p.value))
  }
}
write.csv(sign, "sign_test.csv", row.names = FALSE)

# The limiting distribution of the Kolmogorov statistic sqrt(n) D, upper tail.
d <- seq(0.3, 3.3, by = 0.05)
write.csv(data.frame(d = d, p = 1 - .Call(stats:::C_pKS2, d, 1e-12)), "kolmogorov.csv", row.names = FALSE)
