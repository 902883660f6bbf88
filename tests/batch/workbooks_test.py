"""Workbooks of other writers and readers: workbooks_test.py VORN SOURCES.

What two libraries write is read as its twin in CSV; what vorn writes is read by one of them as its twin in CSV.
"""
import csv
import datetime
import pathlib
import random
import subprocess
import sys
import tempfile
import unittest

SKIPPED = 77
try:
    import openpyxl
    import xlsxwriter
except ImportError:
    print("python3-openpyxl and python3-xlsxwriter are not here: no workbook is tried")
    sys.exit(SKIPPED)

VORN, SOURCES = sys.argv[1], pathlib.Path(sys.argv[2])


def vorn(*words):
    """Status, output and what was said."""
    ended = subprocess.run([VORN, *map(str, words)], capture_output=True, text=True, timeout=120, check=False)
    return ended.returncode, ended.stdout, ended.stderr


def made_up(cores=12, years=180, first=1801):
    """Rows of a table, the names first; None where there is no ring."""
    chance = random.Random(5)
    rows = [["year"] + [f"C{core:02d}" for core in range(cores)]]
    begins = [chance.randrange(max(years // 3, 1)) for _ in range(cores)]
    for year in range(years):
        widths = [round(chance.uniform(0.05, 4), 3) if year >= begins[core] else None for core in range(cores)]
        rows.append([first + year] + widths)
    return rows


def by_openpyxl(path, sheets):
    book = openpyxl.Workbook()
    book.remove(book.active)
    for name, rows in sheets.items():
        sheet = book.create_sheet(name)
        for row in rows:
            sheet.append(row)
    book.save(path)


def by_xlsxwriter(path, sheets, **options):
    book = xlsxwriter.Workbook(path, options)
    for name, rows in sheets.items():
        sheet = book.add_worksheet(name)
        for at, row in enumerate(rows):
            sheet.write_row(at, 0, row)
    book.close()


class Workbooks(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def as_csv(self, name):
        status, out, said = vorn("convert", self.folder / name, "--to", "csv")
        self.assertEqual(status, 0, said)
        return out

    def twin(self, rows):
        with open(self.folder / "twin.csv", "w", newline="", encoding="utf-8") as file:
            csv.writer(file).writerows([["" if value is None else value for value in row] for row in rows])
        return self.as_csv("twin.csv")

    def test_both_writers_against_csv(self):
        rows = made_up()
        for write in (by_openpyxl, by_xlsxwriter):
            write(self.folder / "book.xlsx", {"Widths": rows, "Notes": [["what", "who"]], "Empty": []})
            self.assertEqual(self.as_csv("book.xlsx"), self.twin(rows), write.__name__)

    def test_small_parts_streamed_and_strings_inline(self):
        rows = made_up()
        by_xlsxwriter(self.folder / "book.xlsx", {"Widths": rows}, constant_memory=True)
        self.assertEqual(self.as_csv("book.xlsx"), self.twin(rows))

    def test_years_across_and_a_row_a_ring(self):
        rows = made_up(cores=4, years=20)
        across = [list(column) for column in zip(*rows)]
        across[0][0] = "core"
        rings = [["series", "year", "width (mm)"]]
        for column in across[1:]:
            rings += [[column[0], year, width] for year, width in zip(across[0][1:], column[1:]) if width]
        for table in (across, rings):
            by_openpyxl(self.folder / "book.xlsx", {"Widths": table})
            self.assertEqual(self.as_csv("book.xlsx"), self.twin(table))

    def test_dates_of_both_epochs_are_years(self):
        rows = made_up(cores=3, years=30, first=1950)
        for epoch in (False, True):
            book = xlsxwriter.Workbook(self.folder / "book.xlsx", {"date_1904": epoch})
            sheet, shown = book.add_worksheet(), book.add_format({"num_format": "dd/mm/yyyy"})
            sheet.write_row(0, 0, rows[0])
            for at, row in enumerate(rows[1:], 1):
                sheet.write_datetime(at, 0, datetime.datetime(row[0], 12, 31), shown)
                sheet.write_row(at, 1, row[1:])
            book.close()
            self.assertEqual(self.as_csv("book.xlsx"), self.twin(rows), f"1904: {epoch}")

    def test_formulas_errors_and_merged_cells(self):
        rows = made_up(cores=2, years=10)
        book = xlsxwriter.Workbook(self.folder / "book.xlsx")
        sheet = book.add_worksheet()
        sheet.merge_range(0, 0, 0, 2, "Nowhere, widths in mm")
        for at, row in enumerate(rows, 1):
            sheet.write_row(at, 0, row)
        sheet.write_formula(4, 1, "=1/2", value=0.5)
        sheet.write_formula(5, 1, "=NA()", value="#N/A")
        book.close()
        rows[3][1], rows[4][1] = 0.5, None
        self.assertEqual(self.as_csv("book.xlsx").replace("NA", ""), self.twin(rows).replace("NA", ""))
        self.assertIn("merged-cells", vorn("check", self.folder / "book.xlsx")[1])

    def test_formulas_without_values_are_said(self):
        rows = made_up(cores=2, years=10)
        rows[5][1] = "=B2*2"
        by_openpyxl(self.folder / "book.xlsx", {"Widths": rows})
        self.assertIn("no-stored-value", vorn("check", self.folder / "book.xlsx")[1])

    def test_several_and_hidden_sheets(self):
        one, other = made_up(cores=2, years=10), made_up(cores=2, years=15, first=1850)
        other[0] = ["year", "D1", "D2"]
        by_openpyxl(self.folder / "book.xlsx", {"One": one, "Other": other, "Hidden": one})
        book = openpyxl.load_workbook(self.folder / "book.xlsx")
        book["Hidden"].sheet_state = "veryHidden"
        book.save(self.folder / "book.xlsx")
        names = next(csv.reader([self.as_csv("book.xlsx").splitlines()[0]]))
        self.assertEqual(names, ["year", "C00", "C01", "D1", "D2"])
        self.assertIn("hidden-sheet", vorn("check", self.folder / "book.xlsx")[1])

    def test_a_lone_far_cell(self):
        rows = made_up(cores=3, years=30)
        book = openpyxl.Workbook()
        for row in rows:
            book.active.append(row)
        book.active.cell(1048576, 16384, "far")
        book.save(self.folder / "book.xlsx")
        self.assertEqual(self.as_csv("book.xlsx"), self.twin(rows))

    # --- What vorn writes

    def same(self, book, text):
        """Whether a workbook holds what its twin in CSV does, numbers as numbers."""
        sheet = openpyxl.load_workbook(book).active
        self.assertEqual(sheet.freeze_panes, "A2")
        rows, twin = list(sheet.iter_rows(values_only=True)), list(csv.reader(text.splitlines()))
        self.assertEqual(len(rows), len(twin))
        for row, fields in zip(rows, twin):
            self.assertEqual(len(row), len(fields))
            for value, field in zip(row, fields):
                if isinstance(value, (int, float)):
                    self.assertEqual(value, float(field))
                else:
                    self.assertEqual(value or "", field)

    def test_widths_of_the_examples(self):
        for name in ("nowhere.rwl", "nearby.fh", "faraway.rwm"):
            file, book = SOURCES / "examples" / name, self.folder / "book.xlsx"
            self.assertEqual(vorn("convert", file, "--to", "xlsx", "-o", book)[0], 0)
            self.same(book, vorn("convert", file, "--to", "csv")[1])
            self.assertEqual(vorn("diff", file, book, "--format", "csv")[1].count("\n"), 1, "no more than the names")

    def test_rows_of_verbs(self):
        file, book = SOURCES / "examples" / "nowhere.rwl", self.folder / "book.xlsx"
        for verb in ("locate", "date", "site", "stats", "corr", "chron", "check"):
            words = (verb, file, "--year", "2026") if verb == "check" else (verb, file)
            vorn(*words, "--format", "xlsx", "-o", book)
            self.same(book, vorn(*words, "--format", "csv")[1])
            first = book.read_bytes()
            vorn(*words, "--format", "xlsx", "-o", book)
            self.assertEqual(book.read_bytes(), first, "the same bytes")

    def test_text_stays_text(self):
        names = ["=1+1", "+A", "-B", "@C", "<&>\"", "1990", "\u00e4\u00df"]
        with open(self.folder / "names.csv", "w", newline="", encoding="utf-8") as file:
            csv.writer(file).writerows([["year"] + names] + [[1990 + k] + [1.25] * len(names) for k in range(9)])
        book = self.folder / "book.xlsx"
        status, _, said = vorn("convert", self.folder / "names.csv", "--to", "xlsx", "-o", book)
        self.assertEqual(status, 0, said)
        head = next(openpyxl.load_workbook(book).active.iter_rows())
        self.assertTrue(all(cell.data_type in "si" for cell in head), [cell.data_type for cell in head])


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
