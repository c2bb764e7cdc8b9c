# The measures of a two-way table f as their textbook definitions (Agresti, Categorical
# Data Analysis; Goodman and Kruskal 1954; Theil 1970; Fleiss, Cohen and Everitt 1969 for
# the standard error of kappa), beside R's own chisq.test and cor(method = "kendall").
# Sourced by contingency.R and by tests/relations/data/crosstab_check.R.

expand <- function(f) {
  rows <- rep(row(f), f)
  cols <- rep(col(f), f)
  list(x = rows, y = cols)
}

# Concordant and discordant counts of every cell.
cell_pairs <- function(f) {
  R <- nrow(f); C <- ncol(f)
  con <- dis <- matrix(0, R, C)
  for (i in 1:R) for (j in 1:C) {
    con[i, j] <- sum(f[row(f) < i & col(f) < j]) + sum(f[row(f) > i & col(f) > j])
    dis[i, j] <- sum(f[row(f) < i & col(f) > j]) + sum(f[row(f) > i & col(f) < j])
  }
  list(con = con, dis = dis)
}

lambda_tau <- function(f) {  # predicting the column from the row
  n <- sum(f); r <- rowSums(f); cc <- colSums(f)
  lambda <- (sum(apply(f, 1, max)) - max(cc)) / (n - max(cc))
  tau <- (sum(f^2 / r) / n - sum((cc / n)^2)) / (1 - sum((cc / n)^2))
  c(lambda = lambda, tau = tau)
}
entropy <- function(p) { p <- p[p > 0]; -sum(p * log(p)) }

measures <- function(name, f) {
  n <- sum(f); R <- nrow(f); C <- ncol(f)
  test <- suppressWarnings(chisq.test(f, correct = FALSE))
  e <- expand(f)
  tau_b <- cor(e$x, e$y, method = "kendall")
  cp <- cell_pairs(f)
  P <- sum(f * cp$con) / 2; Q <- sum(f * cp$dis) / 2
  sr <- sum(rowSums(f)^2); sc <- sum(colSums(f)^2)
  # The standard error of gamma under independence (Agresti) and its z.
  ase0_gamma <- 2 / (2 * P + 2 * Q) * sqrt(sum(f * (cp$con - cp$dis)^2) - (2 * P - 2 * Q)^2 / n)
  gamma <- (P - Q) / (P + Q)
  forward <- lambda_tau(f); backward <- lambda_tau(t(f))
  star_forward <- lambda_tau(f / rowSums(f))
  star_backward <- lambda_tau(t(f) / colSums(f))
  p <- f / n
  h_r <- entropy(rowSums(p)); h_c <- entropy(colSums(p)); h_rc <- entropy(p)
  row <- data.frame(table = name, cells = paste(t(f), collapse = " "), rows = R, columns = C,
                    chi = unname(test$statistic), df = unname(test$parameter), p = test$p.value,
                    e_min = min(test$expected),
                    cramer_v = sqrt(unname(test$statistic) / (n * (min(R, C) - 1))),
                    contingency = sqrt(unname(test$statistic) / (unname(test$statistic) + n)),
                    gamma = gamma, tau_b = tau_b,
                    somers_cr = (P - Q) / ((n^2 - sr) / 2), somers_rc = (P - Q) / ((n^2 - sc) / 2),
                    z = gamma / ase0_gamma, z_p = 2 * pnorm(-abs(gamma / ase0_gamma)),
                    lambda_cr = forward[["lambda"]], tau_cr = forward[["tau"]],
                    lambda_rc = backward[["lambda"]], tau_rc = backward[["tau"]],
                    lambda_star_cr = star_forward[["lambda"]], tau_star_cr = star_forward[["tau"]],
                    lambda_star_rc = star_backward[["lambda"]], tau_star_rc = star_backward[["tau"]],
                    uc_cr = (h_r + h_c - h_rc) / h_c, uc_rc = (h_r + h_c - h_rc) / h_r,
                    yule_q = NA, yule_y = NA, odds = NA, jaccard = NA,
                    kappa = NA, kappa_se0 = NA, kappa_p = NA)
  if (R == 2 && C == 2) {
    a <- f[1, 1]; b <- f[1, 2]; c <- f[2, 1]; d <- f[2, 2]
    row$yule_q <- (a * d - b * c) / (a * d + b * c)
    row$yule_y <- (sqrt(a * d) - sqrt(b * c)) / (sqrt(a * d) + sqrt(b * c))
    g <- if (any(f == 0)) f + 0.5 else f
    row$odds <- g[1, 1] * g[2, 2] / (g[1, 2] * g[2, 1])
    row$jaccard <- d / (b + c + d)
  }
  if (R == C) {
    po <- sum(diag(p)); pr <- rowSums(p); pc <- colSums(p); pe <- sum(pr * pc)
    row$kappa <- (po - pe) / (1 - pe)
    row$kappa_se0 <- sqrt(pe + pe^2 - sum(pr * pc * (pr + pc))) / ((1 - pe) * sqrt(n))
    row$kappa_p <- 2 * pnorm(-abs(row$kappa / row$kappa_se0))
  }
  row
}
