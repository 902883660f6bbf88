"""Runs what docs/from-python.md and docs/from-r.md tell: snippets_test.py python|r VORN SOURCES.

The pieces of a page are run one after another in a copy of the examples, with `vorn` to be found, and must print what
stands behind them, line by line. Pieces that load a package are left out where that is not installed.
"""
import contextlib
import importlib.util
import io
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import traceback

SKIPPED = 77
LANGUAGE, VORN, SOURCES = sys.argv[1], pathlib.Path(sys.argv[2]).resolve(), pathlib.Path(sys.argv[3]).resolve()

# A piece, and the indented lines that follow it.
PIECE = re.compile(r"```(?:python|r)\n(.*?)```\n\n((?:    [^\n]*\n)*)", re.DOTALL)


def pieces(page):
    text = (SOURCES / "docs" / page).read_text(encoding="utf-8")
    found = PIECE.findall(text)
    assert len(found) == len(re.findall(r"^```(?:python|r)$", text, re.MULTILINE)), "a piece is not taken"
    return [(code, re.sub(r"^    ", "", printed, flags=re.MULTILINE)) for code, printed in found]


def tidy(text):
    return [line.rstrip() for line in text.splitlines() if line.strip()]


def python_page():
    """What each piece printed, None where it was left out."""
    names = {"__name__": "page"}
    for code, expected in pieces("from-python.md"):
        if "import pandas" in code and importlib.util.find_spec("pandas") is None:
            print("pandas is not here: its piece is left out")
            continue
        printed = io.StringIO()
        with contextlib.redirect_stdout(printed):
            exec(compile(code, "from-python.md", "exec"), names)
        yield code, expected, printed.getvalue()


def r_page():
    if shutil.which("Rscript") is None:
        print("R is not here: its pieces are not run")
        sys.exit(SKIPPED)
    run = []
    for code, expected in pieces("from-r.md"):
        package = re.search(r"library\((\w+)\)", code)
        if package and subprocess.run(["Rscript", "-e", f"library({package[1]})"], capture_output=True).returncode != 0:
            print(f"{package[1]} is not here: its piece is left out")
            continue
        run.append((code, expected))
    mark = "--- the next piece ---"
    script = f'cat("{mark}\\n")\n'.join(code for code, _ in run)
    pathlib.Path("page.R").write_text(script, encoding="utf-8")
    done = subprocess.run(["Rscript", "--vanilla", "page.R"], stdout=subprocess.PIPE, check=True, encoding="utf-8")
    for (code, expected), printed in zip(run, done.stdout.split(mark + "\n"), strict=True):
        yield code, expected, printed


def main():
    with tempfile.TemporaryDirectory() as folder:
        shutil.copytree(SOURCES / "examples", folder, dirs_exist_ok=True)
        os.chdir(folder)
        os.environ["PATH"] = f"{VORN.parent}{os.pathsep}{os.environ['PATH']}"
        wrong = 0
        tried = 0
        for code, expected, printed in (python_page if LANGUAGE == "python" else r_page)():
            tried += 1
            if tidy(printed) != tidy(expected):
                wrong += 1
                print(f"{code}\nprints\n{printed}\nand not\n{expected}")
        os.chdir(SOURCES)
    print(f"{tried} pieces run, {wrong} of them print something else")
    return 1 if wrong or tried == 0 else 0


try:
    sys.exit(main())
except Exception:
    traceback.print_exc()
    sys.exit(1)
