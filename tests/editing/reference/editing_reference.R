# Reference orders and joins for the editing tests, computed once with R and committed as
# CSV beside this script (the tests read the CSV; they never run R).
#   Rscript editing_reference.R   (in this folder)
set.seed(20261124)
n <- 40
fmt <- function(v) ifelse(is.na(v), "", format(v, trim = TRUE, drop0trailing = TRUE))

# Cases to sort: a grouping number with ties and empty cells, texts of mixed case (no two
# differ by case alone), and a number with one decimal.
g <- sample(c(1:4, NA), n, replace = TRUE)
words <- c("apple", "Banana", "cherry", "Date", "elder", "Fig", "grape", "Kiwi", "lemon", "Mango")
s <- sample(words, n, replace = TRUE)
x <- round(rnorm(n, 50, 10), 1)
x[c(5, 17)] <- NA
cases <- data.frame(id = 1:n, g = fmt(g), s = s, x = fmt(x))
write.csv(cases, "sort_cases.csv", row.names = FALSE, quote = FALSE)

# order() is stable and puts NA last; text ignores case through tolower (the words are ASCII).
lower <- tolower(s)
orders <- data.frame(
  position = 1:n,
  by_g = order(g, na.last = TRUE),
  by_s = order(lower, method = "radix"),
  by_g_desc_then_x = order(-g, x, na.last = TRUE),
  by_s_desc_then_g = order(-xtfrm(lower), g, na.last = TRUE)
)
# The descending text key must keep tied texts in their order: -xtfrm keeps order() stable.
write.csv(orders, "sort_orders.csv", row.names = FALSE, quote = FALSE)

# Two projects to merge by a key with duplicate and missing keys on both sides.
a <- data.frame(key = c(1, 2, 2, 3, NA, 5, 6, 7), score = c(10, 20, 21, 30, 99, 50, 60, 70),
                name = c("a", "b", "b2", "c", "none", "e", "f", "g"))
b <- data.frame(key = c(2, 3, 3, 4, NA, 7, 1), extra = c(200, 300, 301, 400, 999, 700, 100),
                name = c("B", "C", "C2", "D", "NA", "G", "A"))
write.csv(data.frame(key = fmt(a$key), score = a$score, name = a$name), "merge_working.csv", row.names = FALSE, quote = FALSE)
write.csv(data.frame(key = fmt(b$key), extra = b$extra, name = b$name), "merge_added.csv", row.names = FALSE, quote = FALSE)

# Adding variables by the key: every working case once, in its order, with the first added
# case of its key (match takes the first); an empty key matches nothing.
hit <- match(a$key, b$key, incomparables = NA)
joined <- data.frame(key = fmt(a$key), score = a$score, name = a$name, extra = fmt(b$extra[hit]),
                     name0 = ifelse(is.na(hit), "", b$name[hit]))
write.csv(joined, "merge_by_key.csv", row.names = FALSE, quote = FALSE)

# Adding cases: the added cases after the working ones; a column of one file only is empty
# for the other's cases (rbind after filling the missing columns).
a2 <- a; a2$extra <- NA
b2 <- b; b2$score <- NA
stacked <- rbind(a2[, c("key", "score", "name", "extra")], b2[, c("key", "score", "name", "extra")])
write.csv(data.frame(key = fmt(stacked$key), score = fmt(stacked$score), name = stacked$name, extra = fmt(stacked$extra)),
          "merge_cases.csv", row.names = FALSE, quote = FALSE)
