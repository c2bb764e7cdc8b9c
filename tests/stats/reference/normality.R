# Reference values of the tests of normality, computed with R's own functions.
# Run from this folder: Rscript normality.R   (writes the .csv files beside it; needs nortest)

library(nortest)
options(digits = 17)
join <- function(x) paste(x, collapse = " ")

# Pearson's chi-square against the normal with the sample's mean and SD on a frequency table,
# each cell reaching to the midpoint between its value and the next (the first from -Inf, the
# last to Inf); df = cells - 3, as the mean and SD are estimated.
# "five": every cell expects at least 5, so no cell is merged.
# The samples are continuous, their cells the k classes of equal width from the minimum to
# the maximum, right-open (R's cut), k = (n - 1) %/% 15 + 1 up to 2000. The tail classes that
# expect little are merged into one cell at each end: classes 1..lower_end and
# upper_start..k, the ends where the program stops merging; the script checks that at most a
# fifth of the cells then expect fewer than 5.
chi_rows <- data.frame()
chi_row <- function(set, values, freq, mean, sd, lower_end, upper_start) {
  k <- length(values); n <- sum(freq)
  bounds <- (values[-1] + values[-k]) / 2
  e <- n * diff(c(0, pnorm(bounds, mean, sd), 1))
  group <- c(rep(1, lower_end), seq_len(upper_start - lower_end - 1) + 1,
             rep(upper_start - lower_end + 1, k - upper_start + 1))
  e_cells <- tapply(e, group, sum); o_cells <- tapply(freq, group, sum)
  stopifnot(sum(e_cells < 5) <= 0.2 * length(e_cells))
  chi <- sum((o_cells - e_cells)^2 / e_cells); df <- length(e_cells) - 3
  data.frame(set = set, n = n, mean = mean, sd = sd, lower_end = lower_end, upper_start = upper_start,
             cells = length(e_cells), small_cells = sum(e_cells < 5), chi = chi, df = df,
             p = pchisq(chi, df, lower.tail = FALSE), values = join(values), frequencies = join(freq))
}
classes <- function(x) {
  n <- length(x); k <- min(2000, (n - 1) %/% 15 + 1)
  edges <- seq(min(x), max(x), length.out = k + 1)
  list(values = (edges[-1] + edges[-(k + 1)]) / 2,
       freq = as.vector(table(cut(x, edges, right = FALSE, include.lowest = TRUE))))
}
x <- rep(1:5, c(20, 45, 70, 45, 20))
chi_rows <- rbind(chi_rows, chi_row("five", 1:5, c(20, 45, 70, 45, 20), mean(x), sd(x), 1, 5))
ends <- list(normal5000 = c(77, 289), normal30001 = c(265, 1525), exponential600 = c(1, 21))
set.seed(20261123)
samples <- list(normal5000 = rnorm(5000, 50, 10), normal30001 = rnorm(30001, 170, 9),
                exponential600 = round(rexp(600, 1 / 20), 1))
for (set in names(samples)) {
  x <- samples[[set]]; t <- classes(x)
  chi_rows <- rbind(chi_rows, chi_row(set, t$values, t$freq, mean(x), sd(x), ends[[set]][1], ends[[set]][2]))
}
write.csv(chi_rows, "chi_square_normality.csv", row.names = FALSE)
