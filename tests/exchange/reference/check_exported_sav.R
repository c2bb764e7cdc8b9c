# What R's haven reads from exported.sav, the SPSS data file that the program wrote from
# export_source.msw (tarvika-cli export export_source.msw exported.sav): cells with the
# user-missing values kept, and per variable its label, value labels and missing codes.
# Run once from this folder: Rscript check_exported_sav.R
library(haven)

d <- read_sav("exported.sav", user_na = TRUE)
cells <- data.frame(lapply(d, function(x) {
  v <- as.vector(unclass(x))
  if (!is.numeric(v)) return(v)
  vapply(v, function(e) if (is.na(e)) "" else format(e, digits = 15, scientific = FALSE), "")
}), check.names = FALSE, stringsAsFactors = FALSE)
write.csv(cells, "exported_cells.csv", row.names = FALSE, fileEncoding = "UTF-8")

meta <- do.call(rbind, lapply(names(d), function(n) {
  x <- d[[n]]
  labs <- attr(x, "labels")
  data.frame(name = n,
             label = if (is.null(attr(x, "label", exact = TRUE))) "" else attr(x, "label"),
             labels = if (is.null(labs)) "" else paste0(unname(labs), "=", names(labs), collapse = "|"),
             na_values = paste(attr(x, "na_values"), collapse = "|"),
             na_range = paste(attr(x, "na_range"), collapse = "|"),
             type = if (is.character(x)) "string" else "numeric",
             stringsAsFactors = FALSE)
}))
write.csv(meta, "exported_declarations.csv", row.names = FALSE, fileEncoding = "UTF-8")
