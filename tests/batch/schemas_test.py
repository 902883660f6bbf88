"""vorn's JSON against docs/schemas: schemas_test.py VORN SOURCES.

Every verb has a schema, whose members are the columns in their order; what the verb writes is valid by it, for the
examples, for odd collections and for files that cannot be read; and what is not like that would not be.
"""
import copy
import csv
import io
import json
import pathlib
import subprocess
import sys
import tempfile
import unittest

SKIPPED = 77
try:
    import jsonschema
except ImportError:
    print("python3-jsonschema is not here: nothing is validated")
    sys.exit(SKIPPED)

VORN, SOURCES = sys.argv[1], pathlib.Path(sys.argv[2])
EXAMPLES = sorted(str(file) for file in (SOURCES / "examples").iterdir()
                  if file.suffix in (".rwl", ".fh", ".rwm", ".crn"))

# The columns that other tools read, in this order; more may come behind them.
COLUMNS = {
    "locate": "file series kind year from to gain margin pair end",
    "date": "file series reference first_year shift overlap r t_bp t_h glk p margin",
    "site": "file series first_year last_year r need flags_a flags_b todo",
    "stats": "file series first_year last_year rings mean_mm sd_mm r rbar",
    "corr": "file series from to lag r flag",
    "chron": "file year value depth",
    "check": "file line series check severity from to value message",
    "diff": "series change year before after",
    "recipe": "file series figure from to vorn vorn_flag cofecha cofecha_flag dplr dplr_flag dplr_p words",
    "move": "file cores cores_after r r_after rbar rbar_after eps eps_after",
}
# What is no verb of its own: the verb and the option that ask for it.
ASKED_BY = {"recipe": ["stats", "--recipe"], "move": ["stats"]}
# Those that are asked of two files, not of any number.
OF_TWO = ("diff", "move")
# By which each is tried.
WAYS = {verb: [[]] for verb in COLUMNS}
WAYS["locate"] = [[], ["--gain", "0"], ["--gain", "0", "--no-narrow"]]
WAYS["date"] = [[], ["--reference", str(SOURCES / "examples" / "anywhere.crn")]]
WAYS["corr"] = [[], ["--step", "10"], ["--grid", "lags"], ["--grid", "lags", "--segment", "20", "--max-lag", "3"]]
WAYS["move"] = [["--move", core, *(str(SOURCES / "examples" / file) for file in pair)]
                for core, pair in (("NOW07", ("nowhere.rwl", "yonder.rwl")), ("NOW01,NOW02", ("nowhere.rwl", "adrift.rwl")),
                                   ("NOW01", ("nowhere.rwl", "faraway.rwm")))]
WAYS["diff"] = [[str(SOURCES / "examples" / file) for file in pair]
                for pair in (("nearby.fh", "nowhere.rwl"), ("nowhere.rwl", "nowhere.rwl"))]


def tucson(name, first, widths, end=999):
    """A core in the Tucson layout."""
    text, year = "", first
    for width in [*widths, end]:
        if year == first or year % 10 == 0:
            text += f"{chr(10) if text else ''}{name:<8}{year:4}"
        text += f"{width:6}"
        year += 1
    return text + "\n"


ODD = {
    "one.rwl": tucson("ONE", 1900, [100 + 7 * k % 31 for k in range(80)]),
    "short.rwl": "".join(tucson(f"S{k}", 1900 + 5 * k, [90 + (11 * j + k) % 29 for j in range(12 + k)])
                         for k in range(4)),
    "alike.rwl": "".join(tucson(f"L{k}", 1850, [100] * 90) for k in range(3)),
    "zeros.rwl": "".join(tucson(f"Z{k}", 1800, [0 if j % 5 == k else 80 + 13 * j % 37 for j in range(120)])
                         for k in range(5)),
    'a, "b" \u00fc.rwl': tucson('A,"1"', 1900, [50 + 5 * k % 23 for k in range(60)]),
    "open.rwl": tucson("OPEN", 1900, [80 + 3 * k % 17 for k in range(70)]).rsplit("\n", 2)[0],
    "note.txt": "This is no file of ring widths.\n",
    "empty.rwl": "",
}


def answer(verb, way, files, form):
    return printed([*ASKED_BY.get(verb, [verb]), "-q", "--format", form, *way, *([] if verb in OF_TWO else files)])


def printed(arguments):
    return subprocess.run([VORN, *arguments], stdout=subprocess.PIPE, check=True, encoding="utf-8").stdout


def schema_of(verb):
    return json.loads((SOURCES / "docs" / "schemas" / f"{verb}.json").read_text(encoding="utf-8"))


class Schemas(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.files = list(EXAMPLES)
        for name, text in ODD.items():
            file = pathlib.Path(cls.folder.name) / name
            file.write_text(text, encoding="utf-8")
            cls.files.append(str(file))
        cls.files += [cls.folder.name, str(pathlib.Path(cls.folder.name) / "gone.rwl")]

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def test_every_verb_has_one(self):
        listed = printed(["--help"]).split("Verbs:")[1].split("Examples:")[0].strip().splitlines()
        verbs = [line.split()[0] for line in listed]
        with_rows = {verb for verb in verbs if "--json" in printed([verb, "--help"])}
        self.assertEqual(set(COLUMNS), {file.stem for file in (SOURCES / "docs" / "schemas").iterdir()})
        self.assertEqual(with_rows, set(COLUMNS) - set(ASKED_BY))

    def test_members_are_the_columns_in_their_order(self):
        for verb, columns in COLUMNS.items():
            with self.subTest(verb):
                schema = schema_of(verb)
                jsonschema.Draft202012Validator.check_schema(schema)
                self.assertEqual(schema["required"], ["schema", "version", "recipe", "rows"])
                rows = schema["properties"]["rows"]["items"]
                self.assertEqual(rows["required"], list(rows["properties"]))
                self.assertEqual(rows["required"][:len(columns.split())], columns.split())
                header = next(csv.reader(io.StringIO(answer(verb, WAYS[verb][0], EXAMPLES[:1], "csv"))))
                self.assertEqual(rows["required"], header)

    def test_what_is_written_is_valid(self):
        for verb, ways in WAYS.items():
            validator = jsonschema.Draft202012Validator(schema_of(verb))
            seen = 0
            for way in ways:
                with self.subTest(verb=verb, way=way):
                    written = json.loads(answer(verb, way, self.files, "json"))
                    self.assertEqual([error.message for error in validator.iter_errors(written)], [])
                    self.assertEqual(list(written), ["schema", "version", "recipe", "rows"])
                    for row in written["rows"]:
                        self.assertEqual(list(row)[:len(COLUMNS[verb].split())], COLUMNS[verb].split())
                    seen += len(written["rows"])
            self.assertGreater(seen, 5, verb)

    def test_what_is_not_like_that_is_not_valid(self):
        for verb in COLUMNS:
            validator = jsonschema.Draft202012Validator(schema_of(verb))
            written = json.loads(answer(verb, WAYS[verb][0 if verb in OF_TWO else -1], EXAMPLES, "json"))
            self.assertTrue(validator.is_valid(written))
            for member in written["rows"][0]:
                with self.subTest(verb=verb, member=member):
                    without = copy.deepcopy(written)
                    del without["rows"][0][member]
                    self.assertFalse(validator.is_valid(without))
                    wrong = copy.deepcopy(written)
                    wrong["rows"][0][member] = ["no value is a list"]
                    self.assertFalse(validator.is_valid(wrong))

    def test_csv_and_json_say_the_same(self):
        for verb, ways in WAYS.items():
            for way in ways:
                with self.subTest(verb=verb, way=way):
                    rows = json.loads(answer(verb, way, self.files, "json"))["rows"]
                    fields = list(csv.DictReader(io.StringIO(answer(verb, way, self.files, "csv"), newline="")))
                    self.assertEqual(len(rows), len(fields))
                    for row, texts in zip(rows, fields):
                        for member, value in row.items():
                            if value is None or isinstance(value, str):
                                self.assertEqual(value or "", texts[member])
                            else:
                                self.assertEqual(float(value), float(texts[member]))


unittest.main(argv=sys.argv[:1], verbosity=0)
