# What R's haven reads from pspp.sav (written by PSPP from make_pspp_files.sps):
# pspp_cells.csv and pspp_declarations.csv. pspp.por holds the same data; the ReadStat
# under haven 2.5 refuses PSPP's portable files, so the tests check both against this view.
# Run once from this folder: Rscript check_pspp_files.R
source("haven_view.R")
write_haven_view("pspp.sav", "pspp")
