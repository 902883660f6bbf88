"""The bundle of macOS and the icons, as far as they can be tried elsewhere: bundle_test.py BUILD SOURCES.

The bundle is made of an installed tree, and its programs run from where they then lie.
"""
import os
import pathlib
import plistlib
import subprocess
import sys
import tempfile
import unittest

BUILD, SOURCES = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])


def run(*command, **more):
    return subprocess.run(command, capture_output=True, encoding="utf-8", timeout=300, **more)


class Bundle(unittest.TestCase):
    def setUp(self):
        made = tempfile.TemporaryDirectory()
        self.addCleanup(made.cleanup)
        self.folder = pathlib.Path(made.name)
        tree = self.folder / "tree"
        installed = run("cmake", "--install", BUILD, "--prefix", tree)
        self.assertEqual(installed.returncode, 0, installed.stderr)
        made = run(SOURCES / "packaging" / "macos" / "bundle", tree, self.folder)
        self.assertEqual(made.returncode, 0, made.stderr)
        tree.rename(self.folder / "gone")
        self.contents = self.folder / "Vorn.app" / "Contents"

    def test_says_what_it_is(self):
        said = plistlib.loads((self.contents / "Info.plist").read_bytes())
        version = run(self.contents / "MacOS" / "vorn", "--version").stdout.split()[-1]
        self.assertEqual(said["CFBundleShortVersionString"], version)
        self.assertTrue((self.contents / "Resources" / said["CFBundleIconFile"]).is_file())
        self.assertTrue(os.access(self.contents / "MacOS" / said["CFBundleExecutable"], os.X_OK))

    def test_paints_from_where_it_lies(self):
        demo = self.contents / "share" / "vorn" / "examples"
        done = run(self.contents / "MacOS" / "vorn_replay", "demo.vrs", cwd=demo)
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertGreater((demo / "1-start.png").stat().st_size, 1000)

    def test_starts_with_the_choice_of_a_folder(self):
        bare = {name: value for name, value in os.environ.items() if name not in ("DISPLAY", "WAYLAND_DISPLAY")}
        started = run(self.contents / "MacOS" / "choose", env=bare)
        self.assertIn("VORNosx: there is no display", started.stderr)


class Icons(unittest.TestCase):
    def test_are_of_the_drawing(self):
        looked = run(sys.executable, "-B", SOURCES / "packaging" / "icons" / "make.py", "--check")
        self.assertEqual(looked.returncode, 0, looked.stderr)


unittest.main(argv=sys.argv[:1])
