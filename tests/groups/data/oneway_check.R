# The numbers of the one-way comparison reports on oneway.msw (tests/groups/expected),
# from R's own functions where R has the statistic and from the published formulas written
# out where it has none. Run from this folder: Rscript oneway_check.R > oneway_check.txt
source("oneway_check_lib.R")

Score <- c(5.1, 6.3, 4.8, 5.9, 6.1, 5.5, 7.2, 9.8, 6.1, 8.4, 10.9, 7.7, 9.3, 8.8, 6.6,
           4.2, 12.5, 7.9, 3.1, 10.4, 8.8, 5.7, 11.2, 6.4, 9.9, 2.8, 6.0, 6.4, 5.8, 6.9, 7.1)
Group <- c(rep(1, 6), rep(2, 9), rep(3, 11), rep(4, 5))
Flat <- c(Score[1:26], rep(6.5, 5))
Time <- c(12.1, 14.3, 9.8, 11.5, 13.9, 10.2, 12.7, 15.4,
          16.2, 21.5, 9.1, 18.8, 24.3, 13.7, 19.9, 11.4, 22.8, 17.6, 14.9, 20.3)
Pair <- c(rep(1, 8), rep(2, 12))
Same <- c(4, 6, 5, 5, 3, 7, 5, 5, 2, 8, 5, 5, 5, 5, 4, 6, 3, 7, 5, 5)
Cov <- c(3.2, 2.1, 4, 2.2, NA, 1.9, 2.8, 3.9, 2.4, 3.1, 4.4, 2, 3.7, 3.3, 2.6, 1.5, 4.8, 3, 2.2, 3.9,
         2.7, 3.4, 4.1, 1.8, 3.6, 2.5, 2.9, 3.3, 2.1, 3.8, 2.6)

report("Score by Group, 20% trimming", Score, Group, 0.2)
report("Flat by Group", Flat, Group)
report("Score by Group5 (a group of one case)", c(Score, 8), c(Group, 5))
report("Time by Pair, 20% trimming", Time, Pair, 0.2)
# Within the conditional group beta of Group5: a group of two cases beside one of seven.
report("Time by Pair within beta", Time[7:15], Pair[7:15])
ancova_report("Score by Group, covariate Cov", Score, Cov, Group)
ancova_report("Time by Pair, covariate Cov", Time, Cov[1:20], Pair)
# The summary tables: Score and Flat by Pair (the same first 20 cases), with and without Cov.
report("Score by Pair", Score[1:20], Pair)
ancova_report("Score by Pair, covariate Cov", Score[1:20], Cov[1:20], Pair)
ok <- !is.na(Cov[1:20]); x <- Score[1:20][ok]; cv <- Cov[1:20][ok]; p <- Pair[ok]
b <- coef(lm(x ~ factor(p) + cv))["cv"]
adj <- tapply(x, p, mean) - b * (tapply(cv, p, mean) - mean(cv))
pooled <- sqrt(sum((tapply(x, p, length) - 1) * tapply(x, p, var)) / (length(x) - 2))
cat("SDs of the covariance analysis's cases", f3(tapply(x, p, sd)), " Cohen d on the pooled SD (n - 2)",
    f3((adj[1] - adj[2]) / pooled), "\n")
# Cov as a dependent by Group (the table of more groups).
report("Cov by Group", Cov[!is.na(Cov)], Group[!is.na(Cov)])
# Equal means: t = 0, and the intervals still have their width.
report("Same by Pair, 10% trimming", Same, Pair, 0.1)
# The pairwise comparisons after the tests of means (Score and Flat by Group; Flat's group
# without spread borrows the pooled SD in Games-Howell, which R has no counterpart for).
tukey_pairs("Score by Group", Score, Group)
games_howell_pairs("Score by Group", Score, Group)
trimmed_pairs("Score by Group, 20% trimming", Score, Group, 0.2)
tukey_pairs("Flat by Group", Flat, Group)
