# What R's haven reads from exported.sav, the SPSS data file that the program wrote from
# export_source.msw (tarvika-cli export export_source.msw exported.sav), into
# exported_cells.csv and exported_declarations.csv.
# Run once from this folder: Rscript check_exported_sav.R
source("haven_view.R")
write_haven_view("exported.sav", "exported")
