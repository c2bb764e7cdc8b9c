# Wilcox's percentage bend correlation and the winsorized correlation, from their
# definitions; sourced by correlation.R and by the check of the correlation reports.

pb_scale <- function(x, beta) {
  n <- length(x)
  w <- sort(abs(x - median(x)))[floor((1 - beta) * n + 0.5)]
  u <- (x - median(x)) / w
  i1 <- sum(u < -1); i2 <- sum(u > 1)
  s <- sum(sort(x)[(i1 + 1):(n - i2)])
  list(omega = w, phi = (w * (i2 - i1) + s) / (n - i1 - i2))
}
pbcor <- function(x, y, beta = 0.1) {
  a <- pb_scale(x, beta); b <- pb_scale(y, beta)
  psi <- function(u) pmax(-1, pmin(1, u))
  A <- psi((x - a$phi) / a$omega); B <- psi((y - b$phi) / b$omega)
  sum(A * B) / sqrt(sum(A^2) * sum(B^2))
}
winsorize <- function(x, g) {
  s <- sort(x); n <- length(x)
  pmin(pmax(x, s[g + 1]), s[n - g])
}
wincor <- function(x, y, g) cor(winsorize(x, g), winsorize(y, g))
