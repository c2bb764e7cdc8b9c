# Reference values of the two-way table statistics: R's chisq.test (without continuity
# correction), Kendall's tau-b by cor(method = "kendall") on the table expanded to cases,
# and the other measures written out in contingency_measures.R.
# Run from this folder: Rscript contingency.R   (writes contingency.csv beside it)

options(digits = 17)
source("contingency_measures.R")
tables <- list(
  zero_cell = matrix(c(12, 0, 5, 9), 2, byrow = TRUE),
  ordered = matrix(c(20, 15, 5, 2,
                     10, 18, 12, 6,
                     3, 9, 16, 14), 3, byrow = TRUE),
  nominal = matrix(c(5, 17, 3,
                     11, 2, 8,
                     7, 6, 9,
                     1, 12, 4), 4, byrow = TRUE),
  raters = matrix(c(22, 4, 2,
                    5, 17, 3,
                    1, 4, 12), 3, byrow = TRUE))

out <- data.frame()
for (name in names(tables)) out <- rbind(out, measures(name, tables[[name]]))
write.csv(out, "contingency.csv", row.names = FALSE)
