# Writes labelled.sav, a small SPSS data file with what an import must keep: value labels
# (one with ";" and "/", one longer than 12 characters), user-missing codes, a missing
# range with a code, long names that share their first characters, a string variable with
# accented letters, decimals, system-missing values and dates. Then reads it back with haven and
# writes what haven sees (labelled_cells.csv, labelled_declarations.csv) as the reference
# the tests compare with. Run once from this folder: Rscript make_labelled_sav.R
library(haven)

d <- data.frame(id = 1:6)
d$sex <- labelled_spss(c(1, 2, 2, 9, 1, NA), labels = c(male = 1, "female; other/none" = 2),
                       na_values = c(9), label = "Sex of the respondent")
d$satisfaction_total <- labelled_spss(c(3.5, 4.25, 95, 0, -1.5, 2),
                                      labels = c("not satisfied at all" = 0),
                                      na_values = c(-1.5), na_range = c(90, 99),
                                      label = "Overall satisfaction")
d$satisfaction_work <- labelled_spss(c(1, 2, 3, 97, 98, 99), na_values = c(97, 98, 99))
d$town <- c("Pécs", "Győr", "", "Szeged", "Árvíztűrő tükörfúrógép", "Eger")
attr(d$town, "label") <- "Town of residence"
d$weight <- c(0.123456, 1e6, NA, 12.5, -3, 7)
d$born <- as.Date(c("1990-05-17", "2001-12-31", NA, "1582-10-15", "1970-01-01", "2024-02-29"))

write_sav(d, "labelled.sav")

source("haven_view.R")
write_haven_view("labelled.sav", "labelled")
