# Reference values of the multiple regression and of the scale reliability.
#   cd tests/stats/reference && Rscript regression.R
# regression_data.csv: each data set as space-separated columns (y, then x1..xV).
# regression.csv: per data set and mode, the terms in the final model with lm's B, SE, t
# and p (summary.lm; Beta = B sd_x / sd_y), and the fit (R square, adjusted R square, F,
# its p, sigma^2). The stepwise path comes from add1/drop1(test = "F") with F to enter and
# stay 3.84: the variable of largest F enters, the one of smallest F leaves.
# reliability.csv: psych::alpha with keys for the reversed items: raw alpha, per item
# raw.r (item-total), r.drop (item-rest) and raw_alpha of alpha.drop.
library(MASS)
suppressPackageStartupMessages(library(psych))

sets <- list()
s <- na.omit(survey[, c("Height", "Wr.Hnd", "NW.Hnd", "Pulse", "Age")])
sets$survey <- data.frame(y = s$Height, x1 = s$Wr.Hnd, x2 = s$NW.Hnd, x3 = s$Pulse, x4 = s$Age)
m <- mtcars
sets$mtcars <- data.frame(y = m$mpg, x1 = m$disp, x2 = m$hp, x3 = m$drat, x4 = m$wt, x5 = m$qsec, x6 = m$cyl)
# x3 is x1 + x2: its tolerance is 0.
set.seed(17)
x1 <- round(rnorm(12, 10, 2), 1); x2 <- round(rnorm(12, 5, 1), 1)
sets$collinear <- data.frame(y = round(x1 + 2 * x2 + rnorm(12), 1), x1 = x1, x2 = x2, x3 = x1 + x2)
# N = V + 2: one residual degree of freedom.
sets$smallest <- data.frame(y = c(3, 5, 4, 8, 9), x1 = c(1, 2, 3, 4, 5), x2 = c(2, 1, 4, 3, 6), x3 = c(5, 3, 4, 1, 2))
# x3 follows x1 + x2: it enters first and leaves once both are in.
set.seed(1)
x1 <- round(rnorm(30), 2); x2 <- round(rnorm(30), 2); x3 <- round(x1 + x2 + rnorm(30, 0, 0.6), 2)
sets$removal <- data.frame(y = round(x1 + x2 + rnorm(30, 0, 0.7), 2), x1 = x1, x2 = x2, x3 = x3)

data_rows <- data.frame(name = names(sets),
                        columns = sapply(sets, function(d) paste(apply(d, 2, paste, collapse = " "), collapse = ";")))
write.csv(data_rows, "regression_data.csv", row.names = FALSE)

fit_rows <- function(name, mode, d, terms) {
  f <- lm(reformulate(if (length(terms)) terms else "1", "y"), data = d)
  sm <- summary(f); co <- sm$coefficients
  keep <- rownames(co)[rownames(co) != "(Intercept)"]
  rows <- data.frame(name = name, mode = mode, term = c("(Intercept)", keep),
                     b = co[c("(Intercept)", keep), 1], se = co[c("(Intercept)", keep), 2],
                     t = co[c("(Intercept)", keep), 3], p = co[c("(Intercept)", keep), 4])
  rows$beta <- c(NA, co[keep, 1] * sapply(keep, function(v) sd(d[[v]])) / sd(d$y))
  fs <- sm$fstatistic
  rows$rsq <- sm$r.squared; rows$adj <- sm$adj.r.squared
  rows$f <- fs[1]; rows$fp <- pf(fs[1], fs[2], fs[3], lower.tail = FALSE); rows$sigma2 <- sm$sigma^2
  rows$path <- paste(attr(terms, "path"), collapse = " ")
  rows
}

stepwise <- function(d, enter = 3.84) {
  xs <- setdiff(names(d), "y"); model <- character(0); path <- character(0)
  repeat {
    if (length(model) > 0) {
      dr <- drop1(lm(reformulate(model, "y"), data = d), test = "F")[-1, ]
      worst <- rownames(dr)[which.min(dr$`F value`)]
      if (min(dr$`F value`) <= enter) {
        model <- setdiff(model, worst); path <- c(path, paste0("-", worst)); next
      }
    }
    out <- setdiff(xs, c(model, sub("^-", "", path[startsWith(path, "-")])))
    if (length(out) == 0) break
    ad <- add1(lm(reformulate(if (length(model)) model else "1", "y"), data = d), scope = out, test = "F")[-1, ]
    best <- rownames(ad)[which.max(ad$`F value`)]
    if (max(ad$`F value`) <= enter) break
    model <- c(model, best)
    path <- c(path, sprintf("+%s:%.6f:%.10g", best, max(ad$`F value`), ad[best, "Pr(>F)"]))
  }
  attr(model, "path") <- path
  model
}

out <- rbind(fit_rows("survey", "forced", sets$survey, c("x1", "x2", "x3", "x4")),
             fit_rows("survey", "stepwise", sets$survey, stepwise(sets$survey)),
             fit_rows("mtcars", "forced", sets$mtcars, paste0("x", 1:6)),
             fit_rows("mtcars", "stepwise", sets$mtcars, stepwise(sets$mtcars)),
             fit_rows("removal", "stepwise", sets$removal, stepwise(sets$removal)),
             fit_rows("collinear", "forced", sets$collinear, c("x1", "x2")),
             fit_rows("smallest", "forced", sets$smallest, c("x1", "x2", "x3")))
write.csv(out, "regression.csv", row.names = FALSE)

# Four Likert items of 1..5, D worded negatively; 14 respondents.
items <- data.frame(A = c(4, 5, 3, 2, 4, 5, 1, 3, 4, 2, 5, 3, 4, 2),
                    B = c(4, 4, 3, 1, 5, 5, 2, 3, 3, 2, 4, 2, 5, 1),
                    C = c(3, 5, 2, 2, 4, 4, 1, 4, 4, 3, 5, 3, 3, 2),
                    D = c(2, 1, 3, 5, 2, 1, 4, 3, 2, 4, 1, 4, 1, 5))
write.csv(items, "reliability_items.csv", row.names = FALSE)
rel <- function(name, d, keys) {
  a <- psych::alpha(d, keys = keys, warnings = FALSE)
  data.frame(name = name, item = rownames(a$item.stats), alpha = a$total$raw_alpha, raw_r = a$item.stats$raw.r,
             r_drop = a$item.stats$r.drop, alpha_drop = a$alpha.drop$raw_alpha,
             scale_mean = a$total$mean * ncol(d), scale_sd = a$total$sd * ncol(d))
}
write.csv(rbind(rel("four", items, c("D")), rel("two", items[, c("A", "D")], c("D"))),
          "reliability.csv", row.names = FALSE)
