# The numbers of the expected regression and item analysis reports
# (tests/relations/expected/*regression*, *items*), computed in R and compared by hand with
# the reports as they round them.
#   cd tests/relations/data && Rscript regression_check.R > regression_check.txt
# Var(Y) and the SDs of the basic table divide by N; the error variance is lm's sigma^2.
library(MASS)
suppressPackageStartupMessages(library(psych))

show_lm <- function(label, f, d) {
  s <- summary(f); y <- model.response(model.frame(f))
  cat("==", label, " N =", length(y), "\n")
  cat(sprintf("Var(Y) = %.4f TSS = %.4f RSS = %.4f Res = %.4f SE = %.4f R = %.4f R2 = %.4f adj = %.4f\n",
              mean((y - mean(y))^2), sum((y - mean(y))^2), sum(resid(f)^2), s$sigma^2, s$sigma,
              sqrt(s$r.squared), s$r.squared, s$adj.r.squared))
  fs <- s$fstatistic
  cat(sprintf("F(%d; %d) = %.3f p = %.4f\n", fs[2], fs[3], fs[1], pf(fs[1], fs[2], fs[3], lower.tail = FALSE)))
  co <- s$coefficients
  for (v in rownames(co)) {
    beta <- if (v == "(Intercept)") NA else co[v, 1] * sd(d[[v]]) / sd(y)
    cat(sprintf("%-12s B = %.4f SE = %.4f Beta = %.4f t = %.3f p = %.4f\n", v, co[v, 1], co[v, 2], beta, co[v, 3], co[v, 4]))
  }
}
partials <- function(d, y, given, others) {
  for (v in others) {
    ry <- if (length(given)) resid(lm(reformulate(given, y), d)) else d[[y]] - mean(d[[y]])
    rx <- if (length(given)) resid(lm(reformulate(given, v), d)) else d[[v]] - mean(d[[v]])
    cat(sprintf("partial %s | %s = %.4f\n", v, paste(given, collapse = ","), cor(ry, rx)))
  }
}

s <- na.omit(survey[, c("Height", "Wr.Hnd", "NW.Hnd", "Pulse", "Age")])
show_lm("survey stepwise: Height ~ Wr.Hnd", lm(Height ~ Wr.Hnd, s), s)
print(add1(lm(Height ~ 1, s), ~ Wr.Hnd + NW.Hnd + Pulse + Age, test = "F"))
print(add1(lm(Height ~ Wr.Hnd, s), ~ . + NW.Hnd + Pulse + Age, test = "F"))
partials(s, "Height", character(0), c("Wr.Hnd", "NW.Hnd", "Pulse", "Age"))
partials(s, "Height", "Wr.Hnd", c("NW.Hnd", "Pulse", "Age"))
show_lm("survey forced", lm(Height ~ Wr.Hnd + NW.Hnd + Pulse + Age, s), s)
cat(sprintf("N-SDs: %s\n", paste(sprintf("%.4f", sapply(s, function(x) sqrt(mean((x - mean(x))^2)))), collapse = " ")))

items <- read.table(text = sub("(?s).*<datamatrix>=;\r?\n", "", paste(readLines("items.msw"), collapse = "\n"), perl = TRUE),
                    sep = "\t", col.names = c("A", "B", "C", "D", "Const", "AB", "Grp"))
ok <- na.omit(items)
show_lm("items forced: C ~ A + B + D (Const constant, AB = A + B collinear)", lm(C ~ A + B + D, ok), ok)
a <- psych::alpha(ok[, c("A", "B", "C", "D")], keys = "D", warnings = FALSE)
cat("== items A, B, C, -D: n =", nrow(ok), " alpha =", round(a$total$raw_alpha, 3), " scale mean =",
    a$total$mean * 4, " SD =", a$total$sd * 4, "\n")
print(round(data.frame(mean = sapply(ok[, 1:4], mean), sd = sapply(ok[, 1:4], sd), raw.r = a$item.stats$raw.r,
                       r.drop = a$item.stats$r.drop, alpha.drop = a$alpha.drop$raw_alpha), 3))
for (v in c("A", "B", "C", "D")) {
  rest <- rowSums(cbind(ok[, c("A", "B", "C")], 6 - ok$D)) - (if (v == "D") 6 - ok$D else ok[[v]])
  cat(sprintf("r.drop %s p = %.4f\n", v, cor.test(if (v == "D") 6 - ok$D else ok[[v]], rest)$p.value))
}
# All 15 cases (B, missing once, is not an item here). psych::alpha refuses a constant
# item: alpha from its definition, the correlations by cor
# (NA for the constant item, which the report shows as 0); alpha without A or D is 0.
three <- cbind(A = items$A, Const = items$Const, D = 6 - items$D); total <- rowSums(three)
cat("== items A, Const, -D: alpha =", round(3 / 2 * (1 - sum(apply(three, 2, var)) / var(total)), 3), "\n")
for (v in colnames(three)) {
  cat(sprintf("%s r(IT) = %.2f r(IR) = %.2f\n", v, suppressWarnings(cor(three[, v], total)),
              suppressWarnings(cor(three[, v], total - three[, v]))))
}
cat(sprintf("alpha without Const = %.3f  item means %.3f %.3f  SDs %.3f %.3f  scale mean %.2f SD %.2f\n",
            2 * (1 - (var(items$A) + var(items$D)) / var(items$A + 6 - items$D)), mean(items$A), mean(items$D),
            sd(items$A), sd(items$D), mean(rowSums(cbind(items$A, items$Const, 5 - items$D))),
            sd(rowSums(cbind(items$A, items$Const, 5 - items$D)))))
# By class: 5 cases for 3 independents (N = V + 2, one residual df), and 9 complete cases.
for (g in 1:2) {
  d <- na.omit(items[items$Grp == g, ])
  show_lm(sprintf("items class %d: C ~ A + B + D", g), lm(C ~ A + B + D, d), d)
}
# Items A, B, -D by class.
for (g in 1:2) {
  d <- na.omit(items[items$Grp == g, c("A", "B", "D")])
  a <- psych::alpha(d, keys = "D", warnings = FALSE)
  cat(sprintf("== class %d: n = %d alpha = %.3f scale mean = %.2f SD = %.2f\n", g, nrow(d), a$total$raw_alpha,
              a$total$mean * 3, a$total$sd * 3))
  print(round(data.frame(mean = sapply(d, mean), sd = sapply(d, sd), raw.r = a$item.stats$raw.r,
                         r.drop = a$item.stats$r.drop, alpha.drop = a$alpha.drop$raw_alpha), 3))
}
