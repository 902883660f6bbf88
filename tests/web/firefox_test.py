"""The browser edition in Firefox, opened as a file and served from this machine."""

import io
import unittest
import zipfile

from firefox import Firefox
from pages import FILE, Server, scratch


class AnyPlace:
    def setUp(self):
        self.profile = scratch("profile")
        self.addCleanup(self.profile.cleanup)
        self.vorn = Firefox(self.profile.name)
        self.addCleanup(self.vorn.close)
        self.vorn.open(self.address())

    def tearDown(self):
        self.assertEqual(self.vorn.complaints(), [])
        asked = [address for address in self.vorn.requests() if not address.startswith(("blob:", "data:", "about:"))]
        self.assertLessEqual({address.rsplit("/", 1)[1] for address in asked}, {FILE.name, "favicon.ico"})

    def test_a_report_is_kept_and_downloaded(self):
        self.vorn.press(".examples")
        self.vorn.wait_for_program()
        self.vorn.keys("Alt", "Shift", "t")
        self.vorn.until(lambda: "Stats.prn" in self.vorn.texts(".files .written .name"), "Stats.prn")
        self.vorn.keys("Alt", "q")
        self.vorn.press(".last .zip-written")
        with zipfile.ZipFile(io.BytesIO(self.vorn.downloaded("Examples written.zip"))) as archive:
            self.assertEqual(archive.namelist(), ["Examples written/Stats.prn"])
        self.vorn.open(self.address())
        self.vorn.until(lambda: self.vorn.texts(".kept .name") == ["Examples"], "the kept folder")
        self.vorn.press(".kept .open")
        self.vorn.wait_for_program()
        self.assertEqual(self.vorn.texts(".files .written .name"), ["Stats.prn"])

    def test_a_correction_is_written(self):
        self.vorn.press(".examples")
        self.vorn.wait_for_program()
        self.vorn.keys("F2")
        self.vorn.until(lambda: "NOW01" in self.vorn.texts(".program")[0], "the cross-dating screen")
        self.vorn.keys("Control", "m")
        self.vorn.find("dialog[open] input")
        self.vorn.js("document.querySelector('dialog[open] input').value = '-7'")
        self.vorn.press("dialog[open] button.first")
        self.vorn.until(lambda: "NOW01 not saved" in self.vorn.texts(".program")[0], "the move")
        self.vorn.keys("Control", "u")
        self.vorn.until(lambda: "1 core not written" in self.vorn.texts(".program")[0], "the change saved")
        self.vorn.keys("F8")
        self.vorn.keys("Control", "Shift", "s")
        self.vorn.until(lambda: self.vorn.texts(".files .written .name") == ["nowhere.RWW"], "the corrected file")
        self.vorn.press(".files .written .download")
        corrected = self.vorn.downloaded("nowhere.RWW").splitlines()
        self.assertTrue(any(line.startswith(b"NOW01") for line in corrected))
        self.assertTrue(any(line.startswith(b"NOW25") for line in corrected))
        self.vorn.press("[data-id=save_corrected]")
        self.vorn.press("dialog[open] button:nth-of-type(2)")  # over the file itself
        self.vorn.until(lambda: "nowhere.rwl.orig" in self.vorn.texts(".files .written .name"), "the file as it was, kept")
        self.vorn.keys("Control", "Shift", "d")
        self.vorn.find("dialog[open] textarea")
        self.assertIn("Since nowhere.rwl.orig, its oldest self\n\nNOW01: ", self.vorn.js("document.querySelector('dialog[open] textarea').value"))


class AsAFile(AnyPlace, unittest.TestCase):
    def address(self):
        return FILE.as_uri()


class Served(AnyPlace, unittest.TestCase):
    def setUp(self):
        self.server = Server().__enter__()
        self.addCleanup(self.server.__exit__)
        super().setUp()

    def address(self):
        return self.server.address


if __name__ == "__main__":
    unittest.main()
