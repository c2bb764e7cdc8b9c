# What R's haven reads from an SPSS data file, written as two CSV files beside it:
# <prefix>_cells.csv (every cell, user-missing values kept, numbers with up to 15
# significant digits, NA as an empty field) and <prefix>_declarations.csv (per variable its
# name, label, value labels "value=label|...", missing codes and range, and kind).
# Dates are written as YYYY-MM-DD.
library(haven)

write_haven_view <- function(sav, prefix) {
  d <- read_sav(sav, user_na = TRUE)
  cells <- data.frame(lapply(d, function(x) {
    if (inherits(x, "Date")) return(ifelse(is.na(x), "", format(x, "%Y-%m-%d")))
    v <- as.vector(unclass(x))
    if (!is.numeric(v)) return(v)
    vapply(v, function(e) if (is.na(e)) "" else format(e, digits = 15, scientific = FALSE), "")
  }), check.names = FALSE, stringsAsFactors = FALSE)
  write.csv(cells, paste0(prefix, "_cells.csv"), row.names = FALSE, fileEncoding = "UTF-8")

  meta <- do.call(rbind, lapply(names(d), function(n) {
    x <- d[[n]]
    labs <- attr(x, "labels")
    label <- attr(x, "label", exact = TRUE)
    data.frame(name = n,
               label = if (is.null(label)) "" else label,
               labels = if (is.null(labs)) "" else paste0(unname(labs), "=", names(labs), collapse = "|"),
               na_values = paste(attr(x, "na_values"), collapse = "|"),
               na_range = paste(attr(x, "na_range"), collapse = "|"),
               type = if (inherits(x, "Date")) "date" else if (is.character(x)) "string" else "numeric",
               stringsAsFactors = FALSE)
  }))
  write.csv(meta, paste0(prefix, "_declarations.csv"), row.names = FALSE, fileEncoding = "UTF-8")
}
