# Writes sheet.xls, a legacy spreadsheet in the BIFF8 format written by python3-xlwt (not by
# this program): the sheet "First" holds a small table from B2 with a shared-string column,
# a column of booleans, empty cells, decimals and dates; a second sheet follows.
# Run once from this folder: /usr/bin/python3 make_sheet_xls.py
import datetime

import xlwt

book = xlwt.Workbook(encoding="utf-8")
first = book.add_sheet("First")
for c, name in enumerate(["id", "name", "ok", "score", "visit"]):
    first.write(1, 1 + c, name)
date = xlwt.easyxf(num_format_str="YYYY-MM-DD")
rows = [(1, "Anna", True, 3.5, datetime.date(2020, 3, 1)), (2, None, False, None, None),
        (3, "Béla", True, -0.25, datetime.datetime(2024, 2, 29, 12, 30))]
for r, (ident, name, ok, score, visit) in enumerate(rows):
    first.write(2 + r, 1, ident)
    if name is not None:
        first.write(2 + r, 2, name)
    first.write(2 + r, 3, int(ok))
    if score is not None:
        first.write(2 + r, 4, score)
    if visit is not None:
        first.write(2 + r, 5, visit, date)
second = book.add_sheet("Second")
second.write(0, 0, "x")
second.write(1, 0, 10)
book.save("sheet.xls")
