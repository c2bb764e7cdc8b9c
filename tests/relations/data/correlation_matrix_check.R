# The numbers of the expected correlation matrix reports (tests/relations/expected/*matrix*),
# computed in R from MASS's copy of data/dat/survey.msw on the cases complete in all the
# variables of a run: psych::corr.test (Pearson and Spearman with their p), psych::partial.r
# with the t test of n - 2 - c df, psych::cortest.bartlett, and cor.test for Kendall's
# tau-b (exact = FALSE, continuity = FALSE).
#   cd tests/relations/data && Rscript correlation_matrix_check.R > correlation_matrix_check.txt
suppressMessages({ library(MASS); library(psych) })
s <- survey

complete <- function(vars) { d <- s[, vars]; d[complete.cases(d), ] }

cat("== Pearson, Wr.Hnd NW.Hnd Height Age\n")
d <- complete(c("Wr.Hnd", "NW.Hnd", "Height", "Age"))
ct <- corr.test(d, adjust = "none")
cat("N =", nrow(d), "\n"); print(round(ct$r, 3)); print(round(ct$p, 4))
print(round(sapply(d, mean), 2)); print(round(sapply(d, sd), 3))
b <- cortest.bartlett(cor(d), n = nrow(d))
cat(sprintf("Bartlett Chi2(%d) = %.3f p = %.4f\n", b$df, b$chisq, b$p.value))

cat("== Spearman partial, Wr.Hnd NW.Hnd Age controlling Height\n")
d <- complete(c("Wr.Hnd", "NW.Hnd", "Age", "Height"))
pr <- partial.r(d, c("Wr.Hnd", "NW.Hnd", "Age"), "Height", method = "spearman")
n <- nrow(d); df <- n - 2 - 1
t <- pr * sqrt(df / (1 - pr^2))
cat("N =", n, " df =", df, "\n"); print(round(unclass(pr), 3)); print(round(unclass(2 * pt(-abs(t), df)), 4))

cat("== Kendall tau-b, Wr.Hnd NW.Hnd by Height Age\n")
d <- complete(c("Wr.Hnd", "NW.Hnd", "Height", "Age"))
for (x in c("Wr.Hnd", "NW.Hnd")) for (y in c("Height", "Age")) {
  k <- cor.test(d[[x]], d[[y]], method = "kendall", exact = FALSE, continuity = FALSE)
  cat(sprintf("%s x %s: tau-b = %.3f p = %.4f\n", x, y, k$estimate, k$p.value))
}

cat("== A variable that is a line of another: X and Twice of correlation.msw are singular\n")
X <- c(1, 2, 1, 2, 3, 1, 2, 3, 4, 1, 1, 2, 2, 3, 3, 4, 5, 6)
Y <- c(2, 1, 1, 3, 2, 2, 1, 4, 3, 1, 2, 2, 3, 3, 3, 5, 4, NA)
ok <- !is.na(Y)
cat(sprintf("det = %g\n", det(cor(cbind(X[ok], Y[ok], 2 * X[ok] + 1)))))

cat("== Female against Male, Pearson of Wr.Hnd NW.Hnd Height: z of psych::r.test\n")
r_of <- function(sex) { d <- complete(c("Sex", "Wr.Hnd", "NW.Hnd", "Height")); d <- d[d$Sex == sex, -1]
                        list(r = cor(d), n = nrow(d)) }
f <- r_of("Female"); m <- r_of("Male")
for (p in list(c(2, 1), c(3, 1), c(3, 2))) {
  z <- r.test(n = f$n, r12 = f$r[p[1], p[2]], r34 = m$r[p[1], p[2]], n2 = m$n)$z
  cat(sprintf("%s x %s: n = %d, %d  z = %.3f\n", colnames(f$r)[p[1]], colnames(f$r)[p[2]], f$n, m$n,
              sign(f$r[p[1], p[2]] - m$r[p[1], p[2]]) * abs(z)))
}

cat("== Paired Wr.Hnd with NW.Hnd and Height with Age, by sex, on the cases complete in all four\n")
ha <- c(); ns <- c()
for (sex in c("Female", "Male")) {
  d <- complete(c("Sex", "Wr.Hnd", "NW.Hnd", "Height", "Age")); d <- d[d$Sex == sex, ]
  a <- cor.test(d$Wr.Hnd, d$NW.Hnd); b <- cor.test(d$Height, d$Age)
  ha <- c(ha, b$estimate); ns <- c(ns, nrow(d))
  cat(sprintf("%s N = %d: Wr.Hnd x NW.Hnd r = %.3f p = %.4f  Height x Age r = %.3f p = %.4f\n", sex, nrow(d),
              a$estimate, a$p.value, b$estimate, b$p.value))
}
cat(sprintf("Height x Age, Female against Male: z = %.3f\n",
            sign(ha[1] - ha[2]) * abs(r.test(n = ns[1], r12 = ha[1], r34 = ha[2], n2 = ns[2])$z)))
