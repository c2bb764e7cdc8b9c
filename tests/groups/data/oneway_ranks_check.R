# The numbers of the rank comparison reports on oneway.msw (tests/groups/expected/
# oneway_*_ranks_*), from R's own functions where R has the statistic (kruskal.test,
# wilcox.test, oneway.test and car::leveneTest on the ranks) and from the published formulas
# written out where it has none: Brunner and Munzel's test and interval, Fligner and
# Policello's statistic, the exact null by enumeration, the relative effects by counting
# pairs. Run from this folder: Rscript oneway_ranks_check.R > oneway_ranks_check.txt
source("oneway_check_lib.R")
source("oneway_ranks_lib.R")

Score <- c(5.1, 6.3, 4.8, 5.9, 6.1, 5.5, 7.2, 9.8, 6.1, 8.4, 10.9, 7.7, 9.3, 8.8, 6.6,
           4.2, 12.5, 7.9, 3.1, 10.4, 8.8, 5.7, 11.2, 6.4, 9.9, 2.8, 6.0, 6.4, 5.8, 6.9, 7.1)
Group <- c(rep(1, 6), rep(2, 9), rep(3, 11), rep(4, 5))
Time <- c(12.1, 14.3, 9.8, 11.5, 13.9, 10.2, 12.7, 15.4,
          16.2, 21.5, 9.1, 18.8, 24.3, 13.7, 19.9, 11.4, 22.8, 17.6, 14.9, 20.3)
Pair <- c(rep(1, 8), rep(2, 12))
Same <- c(4, 6, 5, 5, 3, 7, 5, 5, 2, 8, 5, 5, 5, 5, 4, 6, 3, 7, 5, 5)

rank_report("Time by Pair", Time, Pair)
rank_report("Same by Pair", Same, Pair)
rank_report("Score by Pair (the summary table)", Score[1:20], Pair)
rank_report("Score by Group", Score, Group)
rank_report("Time by Group5 (a group of one case)", Time, Group[1:20])
rank_report("Time by Pair within beta (a group of two cases)", Time[7:15], Pair[7:15])

# The comparison of distributions: Time by Pair at each cut of the report (the upper edges of
# the occupied cells of width range/100), Fisher's test of the 2 x 2 table and the
# Kolmogorov-Smirnov D; Score by Group, the chi-square of the 2 x 4 table.
cat("== distributions, Time by Pair\n")
w <- diff(range(Time)) / 100
cells <- round((Time - min(Time)) / w)
for (c in sort(unique(cells))) {
  below <- cells <= c
  if (all(below)) next
  tab <- table(factor(below, c(TRUE, FALSE)), Pair)
  cat(sprintf("cut %.3f F1 %.3f F2 %.3f Fisher p %.4f\n", (c + 0.5) * w + min(Time),
              mean(below[Pair == 1]), mean(below[Pair == 2]), fisher.test(tab)$p.value))
}
ks <- suppressWarnings(ks.test(Time[Pair == 1], Time[Pair == 2], exact = FALSE))
cat("KS D", f3(ks$statistic), "J", f3(ks$statistic * sqrt(8 * 12 / 20)), "p", f4(ks$p.value), "\n")
cat("== distributions, Score by Group\n")
w <- diff(range(Score)) / 100
cells <- round((Score - min(Score)) / w)
for (c in sort(unique(cells))) {
  below <- cells <= c
  if (all(below)) next
  x <- suppressWarnings(chisq.test(table(below, Group), correct = FALSE))
  cat(sprintf("cut %.3f chi-square %.2f p %.4f\n", (c + 0.5) * w + min(Score), x$statistic, x$p.value))
}

# The pairwise comparisons of the rank means after a trend in the rank tests: Tukey-Kramer's
# q from TukeyHSD on the pooled mid-ranks, Games-Howell's q = sqrt(2)|t| of Welch's t on them.
cat("== rank means compared pair by pair\n")
tukey_pairs("Score ranks by Group", rank(Score), Group)
games_howell_pairs("Score ranks by Group", rank(Score), Group)
tukey_pairs("Time ranks by Group5", rank(Time), Group[1:20])
games_howell_pairs("Time ranks by Group5", rank(Time), Group[1:20])
