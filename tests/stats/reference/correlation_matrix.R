# Reference values of the matrix functions: Spearman by cor(method = "spearman"), partial
# correlations by psych::partial.r, the determinant by det, on a small data set with ties.
# Run from this folder: Rscript correlation_matrix.R   (writes correlation_matrix.csv)
suppressMessages(library(psych))
options(digits = 17)
set.seed(32)
a <- round(rnorm(30), 1); b <- round(a + rnorm(30), 1); c <- round(b - a + rnorm(30), 1); d <- rpois(30, 3)
m <- cbind(a, b, c, d)
p <- cor(m)
sp <- cor(m, method = "spearman")
pab_cd <- partial.r(m, c(1, 2), c(3, 4))[1, 2]
pac_b <- partial.r(m, c(1, 3), 2)[1, 2]
out <- data.frame(a = paste(a, collapse = " "), b = paste(b, collapse = " "), c = paste(c, collapse = " "),
                  d = paste(d, collapse = " "), spearman_ad = sp[1, 4], spearman_bc = sp[2, 3],
                  partial_ab_cd = pab_cd, partial_ac_b = pac_b, det = det(p))
write.csv(out, "correlation_matrix.csv", row.names = FALSE)
