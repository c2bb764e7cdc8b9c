# The reference numbers of the clustering tests (tests/pattern), computed once in R:
#   cd tests/pattern/data && Rscript cluster_check.R > cluster_check.txt
# The data are those of clusters.msw: X1..X3, case 9 has X2 missing, cases 1 and 3 are tied.
# Patterns are the distinct complete cases (in the order of their first case) with their
# multiplicities; values are standardized by the mean and SD (n - 1) of the complete cases;
# the distance is the mean squared difference over the three variables.
suppressPackageStartupMessages(library(cluster))
X <- data.frame(X1 = c(2, 3, 2, 8, 9, 7, 5, 4, 5, 8, 1, 6),
                X2 = c(5, 4, 5, 1, 2, 1, 5, 6, NA, 2, 6, 3),
                X3 = c(1, 2, 1, 6, 7, 5, 5, 4, 3, 8, 2, 6))
X$row <- seq_len(nrow(X))
cc <- X[complete.cases(X), ]
Z <- scale(cc[, 1:3])
key <- apply(Z, 1, paste, collapse = " ")
first <- !duplicated(key)
P <- Z[first, , drop = FALSE]
mult <- as.vector(table(factor(key, levels = key[first])))
rows <- cc$row[first]
pattern_of_case <- match(key, key[first])
V <- 3
d <- as.matrix(dist(P))^2 / V

cat("patterns", length(mult), "multiplicities", mult, "\n")
ward_d <- d * outer(mult, mult) / outer(mult, mult, "+")
hw <- hclust(as.dist(ward_d), method = "ward.D", members = mult)
cat("== ward ESSplus (V x height):", sprintf("%.3f", V * hw$height), "\n")

# The methods on data without ties among the distances (the project's data have one):
# ten patterns, the third twice.
T <- matrix(c(0.31, 1.20, -0.45, 1.73, 0.05, 2.41, -1.12, 0.66, 0.98, -0.27,
              0.87, -0.64, 1.35, 0.12, -1.48, 0.59, 2.04, -0.91, 0.23, 1.66,
              -0.18, 0.44, 1.91, -1.37, 0.72, 0.09, -0.56, 1.28, -0.83, 0.51), ncol = 3)
tm <- c(1, 1, 2, 1, 1, 1, 1, 1, 1, 1)
td <- as.matrix(dist(T))^2 / 3
show_tree <- function(label, h) {
  cat("==", label, "\n")
  for (k in nrow(T):1) cat("k", k, ":", cutree(h, k), "\n")
}
show_tree("Ward", hclust(as.dist(td * outer(tm, tm) / outer(tm, tm, "+")), method = "ward.D", members = tm))
for (m in c("average", "single", "complete", "centroid", "median")) {
  show_tree(m, hclust(as.dist(td), method = m, members = tm))
}
# Beta-flexible with beta = -0.2: agnes' alpha = (1 - beta) / 2; the rule uses no sizes.
show_tree("Beta-flexible", as.hclust(agnes(as.dist(td), diss = TRUE, method = "flexible", par.method = 0.6)))

# The Ward partitions of the cases at 3 and 2 clusters: ANOVA per variable, EESS%,
# the point-biserial correlation of the pair distances with being in different clusters.
dc <- as.matrix(dist(Z))^2 / V
pairs <- which(upper.tri(dc), arr.ind = TRUE)
for (k in c(3, 2)) {
  cl <- cutree(hw, k)[pattern_of_case]
  cat("== Ward k =", k, "clusters of cases:", cl, "\n")
  for (v in 1:3) {
    a <- summary(aov(cc[[v]] ~ factor(cl)))[[1]]
    eta <- a[1, 2] / sum(a[, 2])
    cat(sprintf("%s F = %.2f p = %.4f eta2 = %.3f\n", names(cc)[v], a[1, 4], a[1, 5], eta))
  }
  within <- sum(sapply(split(as.data.frame(Z), cl), function(g) sum(scale(g, scale = FALSE)^2)))
  total <- sum(scale(Z, scale = FALSE)^2)
  cat(sprintf("EESS%% = %.2f SScluster = %.3f Total = %.3f\n", 100 * (total - within) / total, within, total))
  between <- cl[pairs[, 1]] != cl[pairs[, 2]]
  cat(sprintf("Pointbis = %.3f\n", cor(dc[pairs], as.numeric(between))))
  for (j in 1:k) {
    g <- cc[cl == j, 1:3]
    cat(sprintf("cluster %d size %d means %s sd %s\n", j, nrow(g), paste(sprintf("%.3f", colMeans(g)), collapse = " "),
                paste(sprintf("%.3f", apply(g, 2, sd)), collapse = " ")))
  }
}

# Relocation of the start grouping (variable Start) by the rule of the program: each
# pattern in case order moves to the cluster where the within sum of squares falls most.
start <- c(1, 1, 1, 2, 2, 3, 3, 1, 3, 2, 1, 2)[cc$row]
lab <- start[first]
ss <- function(lab) sum(sapply(split(seq_along(lab), lab), function(ix) {
  w <- mult[ix]; m <- colSums(P[ix, , drop = FALSE] * w) / sum(w)
  sum(w * rowSums(sweep(P[ix, , drop = FALSE], 2, m)^2))
}))
cat("== relocation start SScluster", sprintf("%.3f", ss(lab)), "\n")
repeat {
  old <- ss(lab)
  for (i in seq_along(lab)) {
    n <- tapply(mult, factor(lab, levels = 1:3), sum); n[is.na(n)] <- 0
    m <- t(sapply(1:3, function(j) { ix <- which(lab == j); if (!length(ix)) return(rep(0, 3))
      colSums(P[ix, , drop = FALSE] * mult[ix]) / sum(mult[ix]) }))
    s <- lab[i]; w <- mult[i]; x <- P[i, ]
    if (n[s] <= 1) next
    loss <- if (n[s] != w) n[s] * w / (n[s] - w) * sum((x - m[s, ])^2) else 0
    best <- 0; target <- NA
    for (j in setdiff(1:3, s)) {
      delta <- n[j] * w / (n[j] + w) * sum((x - m[j, ])^2) - loss
      if (delta < best) { best <- delta; target <- j }
    }
    if (!is.na(target)) lab[i] <- target
  }
  cat("pass SScluster", sprintf("%.3f", ss(lab)), "\n")
  if (old - ss(lab) < 1e-4) break
}
cat("relocated clusters of cases:", lab[pattern_of_case], "\n")

# Pearson distances (1 - r of two standardized patterns across the variables): average
# linkage with the multiplicities as members, and the point-biserial correlation of the
# case pair distances with being in different clusters at 3 clusters.
rp <- 1 - cor(t(P))
hp <- hclust(as.dist(rp), method = "average", members = mult)
clp <- cutree(hp, 3)[pattern_of_case]
rc <- 1 - cor(t(Z))
cat("== Pearson average k = 3 clusters of cases:", clp, "\n")
cat(sprintf("Pearson Pointbis = %.3f\n", cor(rc[pairs], as.numeric(clp[pairs[, 1]] != clp[pairs[, 2]]))))
