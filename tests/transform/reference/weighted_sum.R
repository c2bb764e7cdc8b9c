# Reference values of the weighted sum of the variables of a case, sum of w_i x_i with the
# raw weights 2, -1.5 and 0.25; a case with any value missing has none. Run with
# `Rscript weighted_sum.R` in this folder; writes weighted_sum.csv (the sum, then the data
# in a, b, c, empty for a missing cell).
set.seed(2027)
n <- 40
d <- data.frame(
  a = round(rnorm(n, 50, 10), 2),
  b = round(runif(n, -5, 5), 4),
  c = sample(c(1:9, 99), n, replace = TRUE)  # 99 is declared missing in the project
)
for (v in c("a", "b")) d[[v]][sample(n, 6)] <- NA
w <- c(2, -1.5, 0.25)
x <- as.matrix(d)
x[x[, "c"] %in% 99, "c"] <- NA
out <- data.frame(wsum = rowSums(sweep(x, 2, w, "*")), d)  # the sum first: a last empty field would be lost
text <- function(v, f) ifelse(is.na(v), "", f(v))
for (v in names(d)) out[[v]] <- text(out[[v]], as.character)
out$wsum <- text(out$wsum, function(z) sprintf("%.17g", z))
write.csv(out, "weighted_sum.csv", row.names = FALSE, quote = FALSE)
