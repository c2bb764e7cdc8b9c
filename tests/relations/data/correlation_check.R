# The numbers of the expected correlation reports (tests/relations/expected/*corr*),
# computed in R from MASS's copy of data/dat/survey.msw and printed as the reports round
# them. cor.test gives r, its p and its limits (Fisher's z, SE 1/sqrt(n - 3)) and tau-b
# with z (exact = FALSE, continuity = FALSE); lm gives both lines and their error
# variances; tau and p_pos, p_neg come from the sign matrix; Rpb and Rw from their
# definitions in tests/stats/reference/correlation_measures.R.
#   cd tests/relations/data && Rscript correlation_check.R > correlation_check.txt
library(MASS)
source("../../stats/reference/correlation_measures.R")

show <- function(label, x, y, conf = 0.95, trim = 0) {
  ok <- !is.na(x) & !is.na(y); x <- x[ok]; y <- y[ok]; n <- length(x)
  cat("==", label, " N =", n, "\n")
  if (n < 3) return(invisible())
  cat(sprintf("mean %s %s  var %s %s  min %g %g  max %g %g\n", format(mean(x), digits = 8), format(mean(y), digits = 8),
              format(var(x), digits = 8), format(var(y), digits = 8), min(x), min(y), max(x), max(y)))
  yx <- lm(y ~ x); xy <- lm(x ~ y)
  cat(sprintf("x = %.6f + %.6f y   y = %.6f + %.6f x\n", coef(xy)[1], coef(xy)[2], coef(yx)[1], coef(yx)[2]))
  cat(sprintf("MSerr(X) = %.6f SE(X) = %.6f  MSerr(Y) = %.6f SE(Y) = %.6f df = %d\n", summary(xy)$sigma^2,
              summary(xy)$sigma, summary(yx)$sigma^2, summary(yx)$sigma, n - 2))
  if (sd(x) == 0 || sd(y) == 0) return(invisible())
  p <- cor.test(x, y, conf.level = conf)
  cat(sprintf("r = %.3f p = %.4f C = (%.3f; %.3f)\n", p$estimate, p$p.value, p$conf.int[1], p$conf.int[2]))
  if (n >= 4) {
    rpb <- pbcor(x, y)
    t <- rpb * sqrt((n - 2) / (1 - rpb^2))
    cat(sprintf("Rpb = %.3f p = %.4f\n", rpb, 2 * pt(-abs(t), n - 2)))
  }
  if (trim > 0) {
    g <- floor(trim / 100 * n + 0.5)
    rw <- wincor(x, y, g)
    t <- rw * sqrt((n - 2) / (1 - rw^2))
    cat(sprintf("Rw g = %d Rw = %.3f p = %.4f\n", g, rw, 2 * pt(-abs(t), n - 2 * g - 2)))
  }
  k <- cor.test(x, y, method = "kendall", exact = FALSE, continuity = FALSE)
  sx <- sign(outer(x, x, "-")); sy <- sign(outer(y, y, "-"))
  C <- sum(sx * sy > 0); D <- sum(sx * sy < 0); P <- n * (n - 1)
  cat(sprintf("tau-b = %.3f z = %.3f p = %.4f  tau = %.3f  p_pos = %.2f p_neg = %.2f\n", k$estimate, k$statistic,
              k$p.value, (C - D) / P, 100 * C / P, 100 * D / P))
}

s <- survey
# survey_corr_en.txt: every X with every Y, 90% limits, 10% winsorized.
for (x in c("Height", "Pulse")) for (y in c("Wr.Hnd", "Age")) show(paste(x, "x", y), s[[x]], s[[y]], conf = 0.90, trim = 10)
# survey_corr_hu_sex.txt: by sex, 99% limits, and the equality of r across the sexes by the
# chi-square of Fisher's z weighted by n - 3.
for (sex in c("Female", "Male")) {
  g <- !is.na(s$Sex) & s$Sex == sex
  for (y in c("Wr.Hnd", "Age")) show(paste(sex, "Height x", y), s$Height[g], s[[y]][g], conf = 0.99)
}
for (y in c("Wr.Hnd", "Age")) {
  z <- c(); w <- c()
  for (sex in c("Female", "Male")) {
    d <- s[!is.na(s$Sex) & s$Sex == sex, c("Height", y)]; d <- d[complete.cases(d), ]
    z <- c(z, atanh(cor(d[, 1], d[, 2]))); w <- c(w, nrow(d) - 3)
  }
  chi <- sum(w * z^2) - sum(w * z)^2 / sum(w)
  cat(sprintf("== equal r of Height x %s: Chi2(1) = %.3f p = %.4f\n", y, chi, pchisq(chi, 1, lower.tail = FALSE)))
}

# The corners of tests/relations/data/correlation.msw: groups of 2, 3, 4 and 9 cases, Y
# missing in the last case, Const one value, Twice = 2 X + 1.
grp <- c(1, 1, 2, 2, 2, 3, 3, 3, 3, rep(4, 9))
X <- c(1, 2, 1, 2, 3, 1, 2, 3, 4, 1, 1, 2, 2, 3, 3, 4, 5, 6)
Y <- c(2, 1, 1, 3, 2, 2, 1, 4, 3, 1, 2, 2, 3, 3, 3, 5, 4, NA)
for (g in 2:4) {
  show(paste("corner group", g, "X x Y"), X[grp == g], Y[grp == g])
  show(paste("corner group", g, "X x Twice"), X[grp == g], 2 * X[grp == g] + 1)
}
show("corner pairs X x Y, 25% winsorized", X, Y, trim = 25)

# survey_corr_en_local.txt: the local lines of Height and Wr.Hnd with local range 2, a window
# of 62 of the 208 cases sorted by Height (ties in case order), around the ranks
# floor((k + 0.5) * 208 / 10) for k = 0..9; lm and cor on each window.
d <- s[!is.na(s$Height) & !is.na(s$Wr.Hnd), c("Height", "Wr.Hnd")]
d <- d[order(d$Height), ]
n <- nrow(d); w <- 62
for (k in 0:9) {
  c <- floor((k + 0.5) * n / 10)
  lo <- min(max(c - w %/% 2, 0), n - w)
  win <- d[(lo + 1):(lo + w), ]
  cat(sprintf("x = %g  [%g, %g]  b = %.4f  r = %.3f  p = %.4f\n", d$Height[c + 1], win$Height[1], win$Height[w],
              coef(lm(Wr.Hnd ~ Height, win))[2], cor(win$Height, win$Wr.Hnd), cor.test(win$Height, win$Wr.Hnd)$p.value))
}
