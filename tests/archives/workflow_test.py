"""docs/archives/Snakefile against single calls of `vorn`: workflow_test.py VORN SOURCES [REAL_FILES].

On real files where they are there, on twenty examples otherwise: the tables are those of one call, byte for byte; what
did not change is not computed again; and jobs may be handed to the command of a cluster. Left out without snakemake.
"""
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

import archive_bench

SKIPPED = 77
VORN, SOURCES = pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2]).resolve()
REAL = pathlib.Path(sys.argv[3]) if len(sys.argv) > 3 else None


class Workflow(unittest.TestCase):
    files_per_job = 5

    def setUp(self):
        made = tempfile.TemporaryDirectory()
        self.addCleanup(made.cleanup)
        self.folder = pathlib.Path(made.name)
        self.archive = self.folder / "archive"
        if REAL and REAL.is_dir():
            shutil.copytree(REAL, self.archive, ignore=shutil.ignore_patterns("*.md"), copy_function=shutil.copy)
            self.archive.chmod(0o755)
            for file in self.archive.iterdir():
                file.chmod(0o644)
        else:
            archive_bench.twenty_files(SOURCES / "examples", self.archive)
        # A name that a shell takes apart.
        (self.archive / "with blank 'n quote").mkdir()
        shutil.copy(SOURCES / "examples" / "yonder.rwl", self.archive / "with blank 'n quote" / "far $away.rwl")
        archive_bench.sample(SOURCES / "examples", self.folder / "samples")

    def run_in_folder(self, *command):
        return subprocess.run(command, cwd=self.folder, env=archive_bench.surroundings(VORN, self.folder),
                              capture_output=True)

    def workflow(self, *more):
        """Names of what was made anew."""
        parts = self.folder / "results" / "parts"
        before = {file: file.stat().st_mtime_ns for file in parts.glob("*.csv")}
        done = self.run_in_folder("snakemake", "-s", str(SOURCES / "docs" / "archives" / "Snakefile"), *more,
                                  "--config", f"files_per_job={self.files_per_job}")
        self.assertEqual(done.returncode, 0, done.stderr.decode())
        return sorted(file.name for file in parts.glob("*.csv") if file.stat().st_mtime_ns != before.get(file))

    def expect_tables_of_one_call(self):
        for table, call in {"stats": ["stats", "archive"], "check": ["check", "archive"],
                            "date": ["date", "samples", "--references", "archive"]}.items():
            one = self.run_in_folder("vorn", *call, "--format", "csv", "-q")
            self.assertEqual(one.returncode, 0)
            self.assertGreater(one.stdout.count(b"\n"), 5)
            self.assertEqual((self.folder / "results" / f"{table}.csv").read_bytes(), one.stdout, table)

    def test_gives_the_tables_of_one_call(self):
        self.workflow("--cores", "2")
        self.expect_tables_of_one_call()

    def test_computes_what_changed_alone(self):
        everything = self.workflow("--cores", "2")
        self.assertGreater(len(everything), 5)
        self.assertEqual(self.workflow("--cores", "2"), [])
        shutil.copy(SOURCES / "examples" / "nowhere.rwl", self.archive / "put-in.rwl")
        again = self.workflow("--cores", "2")
        self.assertLess(len(again), len(everything))
        self.assertTrue(any(name.startswith("date-") for name in again))  # the archive is another
        self.expect_tables_of_one_call()
        (self.archive / "put-in.rwl").unlink()
        self.workflow("--cores", "2")
        self.expect_tables_of_one_call()

    def test_hands_its_jobs_to_a_cluster(self):
        shutil.rmtree(self.archive / "with blank 'n quote")  # which the engine does not hand on whole
        # Takes a script as sbatch does, runs it at once, and says its number.
        hand_in = self.folder / "hand-in"
        hand_in.write_text('#!/bin/sh\nshift 2\necho "$@" >>handed-in\nbash "$@" >/dev/null 2>&1\necho 1\n')
        hand_in.chmod(0o755)
        made = self.workflow("--jobs", "20", "--cluster", f"{hand_in} --mem 500M")
        handed = (self.folder / "handed-in").read_text().splitlines()
        self.assertGreaterEqual(len(handed), len(made))
        self.expect_tables_of_one_call()


if not shutil.which("snakemake"):
    print("snakemake is not here: the workflow is not tried")
    sys.exit(SKIPPED)
unittest.main(argv=sys.argv[:1])
