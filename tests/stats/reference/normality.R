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

# Dmax against the normal with the sample's mean and SD, and its p by Lilliefors'
# distribution: nortest's lillie.test, and a Monte-Carlo estimate of P(D >= Dmax) from
# normal samples of the same n (40000 each, fixed seed). "skewed40" is forty distinct values
# skewed to the right, whose p by Kolmogorov's distribution (known mean and SD) is 0.37.
lilliefors_d <- function(x) {
  n <- length(x); z <- pnorm(sort(x), mean(x), sd(x))
  max(c((1:n) / n - z, z - (0:(n - 1)) / n))
}
set.seed(1949)
samples <- list(
  skewed40 = c(2.31, 2.95, 3.12, 3.40, 3.58, 3.71, 3.86, 3.99, 4.07, 4.15, 4.26, 4.33, 4.41, 4.52, 4.60,
               4.68, 4.79, 4.85, 4.97, 5.06, 5.13, 5.24, 5.38, 5.45, 5.57, 5.69, 5.84, 5.98, 6.13, 6.31,
               6.52, 6.77, 7.04, 7.39, 7.82, 8.36, 9.05, 9.98, 11.40, 13.75),
  eight = c(2.1, 3.4, 3.9, 4.4, 5.0, 5.2, 6.8, 9.9),
  twelve_uniform = round(runif(12, 0, 10), 2),
  twenty_normal = round(rnorm(20, 100, 15), 1),
  thirty_t3 = round(rt(30, 3), 3),
  sixty_lognormal = round(rlnorm(60), 3),
  hundred_normal = round(rnorm(100, 50, 10), 2),
  hundred_gamma = round(rgamma(100, 8), 3),
  ninety_item = sample(1:7, 90, replace = TRUE, prob = c(1, 2, 4, 6, 4, 2, 1)))
ks_rows <- data.frame()
for (set in names(samples)) {
  x <- samples[[set]]; n <- length(x); d <- lilliefors_d(x)
  simulated <- replicate(40000, lilliefors_d(rnorm(n)))
  ks_rows <- rbind(ks_rows, data.frame(set = set, n = n, d = d, p = lillie.test(x)$p.value,
                                       monte_carlo_p = mean(simulated >= d - 1e-12),
                                       kolmogorov_p = ks.test(x, "pnorm", mean(x), sd(x), exact = FALSE)$p.value,
                                       values = join(x)))
}
write.csv(ks_rows, "kolmogorov_normality.csv", row.names = FALSE)
