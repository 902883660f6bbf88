"""`vorn stats --recipe` against base R: compare_with_r.py VORN SOURCES [FILE...].

What recipe.R gives for the made-up cores is what figures.csv holds, and for the examples, or for the files named, the
figures of the command line are R's: each of the six digits that it writes.
"""
import csv
import io
import pathlib
import shutil
import subprocess
import sys
import tempfile

SKIPPED = 77
VORN, HERE = sys.argv[1], pathlib.Path(sys.argv[2]) / "tests" / "recipe"
EXAMPLES = [pathlib.Path(sys.argv[2]) / "examples" / name for name in ("nowhere.rwl", "yonder.rwl", "faraway.rwm")]
FILES = [pathlib.Path(name) for name in sys.argv[3:]] or EXAMPLES
NEAR = 1e-6  # of a figure that R and the program both compute in double precision
WIDTHS = {"mean_sensitivity": "sensitivity", "weighted_sensitivity": "weighted_sensitivity", "gini": "gini",
          "skew": "skew", "ar1": "ar1"}

if shutil.which("Rscript") is None:
    print("R is not here: nothing is compared")
    sys.exit(SKIPPED)


def rows(text):
    return list(csv.DictReader(io.StringIO(text)))


def printed(*arguments):
    return subprocess.run([VORN, *arguments], stdout=subprocess.PIPE, check=True, encoding="utf-8").stdout


def in_r(cores, *arguments):
    with tempfile.TemporaryDirectory() as folder:
        figures = pathlib.Path(folder) / "figures.csv"
        subprocess.run(["Rscript", HERE / "recipe.R", cores, figures, *arguments], check=True)
        return rows(figures.read_text())


def is_near(a, b):
    return abs(float(a) - float(b)) <= NEAR * max(1, abs(float(b)))


def different(ours, theirs, what):
    """A line where they differ; a figure that the program writes has six digits."""
    if ours != "" and abs(float(ours) - float(theirs)) <= 5.001e-6 * max(abs(float(theirs)), 0.1):
        return []
    return [f"{what}: {ours or 'nothing'}, in R {theirs}"]


def kept_figures():
    kept, now = rows((HERE / "figures.csv").read_text()), in_r(HERE / "cores.csv", "REC02,REC04")
    if [row["figure"] for row in kept] != [row["figure"] for row in now]:
        return ["figures.csv has other figures than R gives now"]
    return [f"{a['core']} {a['figure']} {a['year']}: {a['value']}, in R {b['value']}"
            for a, b in zip(kept, now) if not is_near(a["value"], b["value"])]


def as_cores(file, folder):
    """The rings of a file, absent ones as 0, a row for each."""
    wide = rows(printed("convert", "-q", str(file), "--to", "csv"))
    cores = pathlib.Path(folder) / "cores.csv"
    year, *names = list(wide[0])
    with open(cores, "w", encoding="utf-8") as out:
        out.write("core,year,width\n")
        for name in names:
            for row in wide:
                if row[name] != "":
                    out.write(f"{name},{row[year]},{0 if row[name] == 'NA' else row[name]}\n")
    return cores


def of_file(file):
    with tempfile.TemporaryDirectory() as folder:
        theirs = {(row["core"], row["figure"], row["year"]): row for row in in_r(as_cores(file, folder), "-")}
    wrong, compared = [], 0
    for row in rows(printed("stats", "-q", "--recipe", "--format", "csv", str(file))):
        core, figure, year = row["series"].removesuffix("-").strip(), row["figure"], row["from"]
        wanted = [("dplr", WIDTHS.get(figure))]
        if figure == "r" or figure == "segment":
            wanted = [("cofecha", f"holmes_{figure}"), ("dplr", f"dplr_{figure}")]
        if figure == "ar_order":
            wanted = [("cofecha", "holmes_order"), ("dplr", "dplr_order")]
        for column, name in wanted:
            found = theirs.pop((core, name, year), None)
            if name == "holmes_segment" and found:
                elsewhere = theirs.pop((core, "holmes_better_elsewhere", year))["value"] == "1"
                if elsewhere != ("B" in row["cofecha_flag"]):
                    wrong.append(f"{file.name} {core} flag B {year}: {row['cofecha_flag']}, in R {elsewhere}")
            if found is None:
                wrong += [f"{core} {figure} {year}: R has none"] if name and row[column] else []
                continue
            compared += 1
            wrong += different(row[column], found["value"], f"{file.name} {core} {name} {year}")
            if found["p"] and row["dplr_p"]:
                wrong += different(row["dplr_p"], found["p"], f"{file.name} {core} p {year}")
    wrong += [f"{file.name} {core} {figure} {year}: in R alone" for core, figure, year in theirs]
    print(f"{file.name}: {compared} figures compared, {len(wrong)} differ")
    return wrong if compared > 0 else wrong + [f"{file.name}: nothing compared"]


differences = kept_figures()
for one in FILES:
    differences += of_file(one)
print("\n".join(differences))
sys.exit(1 if differences else 0)
