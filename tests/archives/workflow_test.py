"""docs/archives/Snakefile against single calls of `vorn`: workflow_test.py VORN SOURCES [REAL_FILES].

On real files where they are there, on twenty examples otherwise: the tables are those of one call, byte for byte; what
did not change is not computed again; and jobs may be handed to the command of a cluster. Left out without snakemake.
"""
import os
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
        # Names that a shell, the engine or its log takes apart, and one that is no UTF-8.
        for name in ["with blank 'n quote/far $away.rwl", "{one}.rwl", "{{two}}.rwl", "-o.rwl", "new\nline.rwl",
                     "\\\".rwl", os.fsdecode(b"k\xfche.rwl")]:
            (self.archive / name).parent.mkdir(exist_ok=True)
            shutil.copy(SOURCES / "examples" / "yonder.rwl", self.archive / name)
        (self.archive / "no-rings.rwl").write_bytes(b"\0\xff no ring widths")
        archive_bench.sample(SOURCES / "examples", self.folder / "samples")
        shutil.copy(SOURCES / "examples" / "adrift.rwl", self.folder / "samples" / os.fsdecode(b"{beam \xe4}.rwl"))

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

    def test_goes_by_contents(self):
        self.workflow("--cores", "2")
        for file in self.archive.iterdir():
            file.touch()
        self.assertEqual([name for name in self.workflow("--cores", "2") if not name.startswith("date-")], [])
        # Put back from a copy that is older than all that was computed.
        restored = self.archive / "{one}.rwl"
        shutil.copy(SOURCES / "examples" / "nowhere.rwl", restored)
        os.utime(restored, (1_000_000_000, 1_000_000_000))
        self.assertGreater(len(self.workflow("--cores", "2")), 1)
        self.expect_tables_of_one_call()

    def test_hands_on_no_more_names_than_a_command_takes(self):
        shutil.rmtree(self.archive)
        folder = self.archive / ("x" * 240)
        folder.mkdir(parents=True)
        for number in range(800):
            shutil.copy(SOURCES / "examples" / "yonder.rwl", folder / f"{number}.rwl")
        shutil.rmtree(self.folder / "samples")
        self.files_per_job = 1_000_000
        self.assertEqual(len(self.workflow("--cores", "2")), 2 * 3)  # of 100,000 bytes and less
        one = self.run_in_folder("vorn", "stats", "archive", "--format", "csv", "-q")
        self.assertEqual((self.folder / "results" / "stats.csv").read_bytes(), one.stdout)

    def test_says_that_there_is_nothing_to_work_on(self):
        shutil.rmtree(self.archive)
        done = self.run_in_folder("snakemake", "-s", str(SOURCES / "docs" / "archives" / "Snakefile"), "--cores", "1",
                                  "--quiet", "all")
        self.assertEqual(done.returncode, 1)
        self.assertIn(b"archive: no such folder, or no files in it", done.stderr)

    def test_hands_its_jobs_to_a_cluster(self):
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
