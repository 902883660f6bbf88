"""Runs what docs/archives.md tells: page_test.py VORN SOURCES.

The pieces of the page are run one after another in a folder like the one that it speaks of, and must say what stands
behind them, line by line. Those that call snakemake are left out where that is not installed.
"""
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

import archive_bench

PIECE = re.compile(r"```sh\n(.*?)```\n\n((?:    [^\n]*\n)*)", re.DOTALL)


def pieces(page):
    found = PIECE.findall(page)
    assert len(found) == len(re.findall(r"^```sh$", page, re.MULTILINE)) > 0, "a piece is not taken"
    return [(code, re.sub(r"^    ", "", said, flags=re.MULTILINE)) for code, said in found]


def main(vorn, sources):
    wrong = 0
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        archive_bench.twenty_files(sources / "examples", folder / "archive")
        archive_bench.sample(sources / "examples", folder / "samples")
        shutil.copy(sources / "docs" / "archives" / "Snakefile", folder)
        for code, expected in pieces((sources / "docs" / "archives.md").read_text(encoding="utf-8")):
            if "snakemake" in code and not shutil.which("snakemake"):
                print("snakemake is not here: its piece is left out")
                continue
            said = subprocess.run(["bash", "-c", code], cwd=folder, env=archive_bench.surroundings(vorn, folder), encoding="utf-8",
                                  stdout=subprocess.PIPE, stderr=subprocess.STDOUT).stdout
            if archive_bench.without_engine(said) != expected:
                wrong += 1
                print(f"{code}\nsays\n{said}\nand not\n{expected}")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2]).resolve()))
