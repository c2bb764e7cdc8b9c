# Writes data/dat/survey.msw, the bundled example project, from the student survey data set
# of the R package MASS (Venables and Ripley, Modern Applied Statistics with S: 237 students
# of the University of Adelaide). Run from the source root:
#   Rscript tools/make_survey_project.R
# Factors become numeric codes with declared labels; a missing pulse is the declared code
# 999, every other missing value an empty cell. The file is Windows-1250 with CR LF.
library(MASS)
data(survey)
s <- survey

codes <- function(f) as.integer(f)
labels_of <- function(f) paste0(seq_along(levels(f)), "=", levels(f), ";")

vars <- list(
  list(name = "Sex", long = "Sex of the student", assign = "codes",
       labels = labels_of(s$Sex), missing = "", values = codes(s$Sex)),
  list(name = "Wr.Hnd", long = "Span of the writing hand (cm)", assign = "none",
       labels = character(0), missing = "", values = s$Wr.Hnd),
  list(name = "NW.Hnd", long = "Span of the non-writing hand (cm)", assign = "none",
       labels = character(0), missing = "", values = s$NW.Hnd),
  list(name = "W.Hnd", long = "Writing hand", assign = "codes",
       labels = labels_of(s$W.Hnd), missing = "", values = codes(s$W.Hnd)),
  list(name = "Pulse", long = "Pulse rate (beats per minute)", assign = "none",
       labels = character(0), missing = "999", values = ifelse(is.na(s$Pulse), 999L, s$Pulse)),
  list(name = "Exer", long = "How often the student exercises", assign = "codes",
       labels = c("1=frequently;", "2=some;", "3=none;"),
       missing = "", values = match(as.character(s$Exer), c("Freq", "Some", "None"))),
  # Occasional, regular and heavy smokers share one label: they form one group.
  list(name = "Smoke", long = "Smoking habit", assign = "codes",
       labels = c("1=never;", "2=smoker;", "3=smoker;", "4=smoker;"),
       missing = "", values = match(as.character(s$Smoke), c("Never", "Occas", "Regul", "Heavy"))),
  list(name = "Height", long = "Height of the student (cm)", assign = "none",
       labels = character(0), missing = "", values = s$Height),
  list(name = "Age", long = "Age of the student (years)", assign = "intervals",
       labels = c("16_20=up to 20;", "20_25=20 to 25;", "25_80=over 25;"),
       missing = "", values = s$Age)
)

cell <- function(x) ifelse(is.na(x), "", format(x, trim = TRUE, drop0trailing = TRUE, digits = 15))

lines <- c("<Tarvika_for_windows>=2.0;",
           paste0("<variables>=", length(vars), ";"),
           paste0("<cases>=", nrow(s), ";"))
for (i in seq_along(vars)) {
  v <- vars[[i]]
  lines <- c(lines,
             paste0("#=", i, ";"),
             paste0("<name>=", v$name, ";"),
             paste0("<longname>=", v$long, ";"),
             "$num=0_0;",
             paste0("<assign>=", v$assign, ";"),
             "<labels>=;",
             v$labels,
             "<help>=;",
             paste0("<missing>=", v$missing, ";"))
}
lines <- c(lines, "<datamatrix>=;")
columns <- lapply(vars, function(v) vapply(v$values, cell, ""))
rows <- do.call(paste, c(columns, sep = "\t"))
lines <- c(lines, rows)

text <- paste0(paste(lines, collapse = "\r\n"), "\r\n")
out <- file("data/dat/survey.msw", open = "wb")
writeBin(iconv(text, from = "UTF-8", to = "CP1250", toRaw = TRUE)[[1]], out)
close(out)
