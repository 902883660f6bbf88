"""Files as they come from old disks and many hands: the browser edition takes them, or says in words why not."""

import io
import os
import pathlib
import unittest
import zipfile

from chromium_test import ANYWHERE, NEARBY, YONDER, Window
from pages import scratch


class AwkwardFiles(Window):
    def setUp(self):
        super().setUp()
        folder = scratch("files")
        self.addCleanup(folder.cleanup)
        self.place = pathlib.Path(folder.name)

    def put(self, **texts):
        """Files in folders of the disk: their paths."""
        paths = []
        for path, content in texts.items():
            target = self.place / path
            target.parent.mkdir(parents=True, exist_ok=True)
            target.write_bytes(content)
            paths.append(str(target))
        return paths

    def told(self, *words):
        self.vorn.until(self.vorn.has_question, words[0])
        for word in words:
            self.assertIn(word, self.vorn.question())

    def test_two_dozen_files(self):
        self.vorn.drop_from_disk(*self.put(**{f"site{number:02}.rwl": YONDER for number in range(24)}))
        self.told("site00.rwl, site01.rwl", "and 12 more")
        self.vorn.answer("Make the List")
        self.vorn.wait_for_program()
        self.assertEqual(len(self.vorn.files()), 25)
        self.vorn.quit()
        self.vorn.press(".last .zip-all")
        with zipfile.ZipFile(io.BytesIO(self.vorn.downloaded("site00 and 23 more.zip"))) as archive:
            self.assertEqual(archive.read("site00 and 23 more/site23.rwl"), YONDER)

    def test_a_list_that_names_files_which_are_not_there(self):
        self.vorn.drop({"Vorn.fil": b"yonder.rwl\r\nbeyond.rwl\r\nNEARBY.FH\r\n", "yonder.rwl": YONDER, "nearby.fh": NEARBY})
        self.told("Vorn.fil names files that are not here: beyond.rwl, NEARBY.FH (there is nearby.fh)")
        self.vorn.answer("OK")
        self.vorn.wait_for_program()
        self.assertIn("yonder.rwl", self.vorn.driver.title)

    def test_a_list_with_the_line_ends_of_other_systems(self):
        self.vorn.drop({"Vorn.fil": b"yonder.rwl\r\nnearby.fh\r\n", "yonder.rwl": YONDER, "nearby.fh": NEARBY})
        self.vorn.wait_for_program()
        self.assertFalse(self.vorn.has_question())
        self.assertIn("yonder.rwl", self.vorn.driver.title)

    def test_names_that_differ_in_capital_letters_alone(self):
        self.vorn.drop({"Yonder.rwl": YONDER, "yonder.rwl": YONDER, "YONDER.RWL": YONDER})
        self.vorn.answer("Make the List")
        self.vorn.wait_for_program()
        self.assertEqual(sorted(self.vorn.files()), ["Vorn.fil", "YONDER.RWL", "Yonder.rwl", "yonder.rwl"])

    def test_files_named_alike_in_several_folders(self):
        self.vorn.drop_from_disk(*self.put(**{"east/yonder.rwl": YONDER, "west/yonder.rwl": YONDER, "nearby.fh": NEARBY}))
        self.told("nearby.fh, yonder (1).rwl, yonder.rwl.")  # this browser gives the second one a name of its own
        self.vorn.answer("Make the List")
        self.vorn.wait_for_program()
        self.assertEqual(sorted(self.vorn.files()), ["Vorn.fil", "nearby.fh", "yonder (1).rwl", "yonder.rwl"])

    def test_a_folder_among_files(self):
        self.put(**{"plots/anywhere.crn": ANYWHERE})
        self.vorn.drop_from_disk(str(self.place / "plots"), *self.put(**{"yonder.rwl": YONDER}))
        self.told("Not read: plots (a folder is opened alone")
        self.vorn.answer("Make the List")
        self.vorn.wait_for_program()

    def test_a_name_that_is_no_text(self):
        name = os.fsencode(self.place) + b"/caf\xe9.rwl"
        with open(name, "wb") as file:
            file.write(YONDER)
        self.put(**{"nearby.fh": NEARBY})
        self.vorn.drop_from_disk(str(self.place))
        self.vorn.answer("Work on a Copy")
        self.vorn.until(self.vorn.has_question, "the question about the list")
        self.vorn.answer("Make the List")
        self.vorn.wait_for_program()
        self.assertIn("nearby.fh", self.vorn.files())

    def test_files_without_anything_in_them(self):
        self.vorn.drop({"nothing.rwl": b"", "empty.fh": b"", "yonder.rwl": YONDER})
        self.vorn.answer("Make the List")
        self.vorn.wait_for_program()
        self.assertEqual(sorted(self.vorn.files()), ["Vorn.fil", "empty.fh", "nothing.rwl", "yonder.rwl"])

    def test_a_folder_of_more_files_than_a_list_takes(self):
        self.put(**{f"{number:03}.rwl": YONDER for number in range(300)})
        self.vorn.drop_from_disk(str(self.place))
        self.vorn.answer("Work on a Copy")
        self.told("A list takes 100 files. These stay out of it: 100.rwl, 101.rwl, 102.rwl, 103.rwl, 104.rwl and 195 more.")
        self.vorn.answer("Make the List")
        self.vorn.wait_for_program()
        self.assertEqual(len(self.vorn.files()), 301)

    def test_a_large_file_is_kept(self):
        large = YONDER * (50_000_000 // len(YONDER))
        self.vorn.drop_from_disk(*self.put(**{"large.rwl": large, "yonder.rwl": YONDER}))
        self.vorn.answer("Make the List")
        self.vorn.wait_for_program()
        self.reload()
        self.assertIn("50.0 MB", self.vorn.find(".kept").text)
        self.vorn.press(".kept .open")
        self.vorn.wait_for_program()

    def test_a_folder_that_was_deleted_in_another_window(self):
        self.open_examples()
        self.vorn.quit()
        first = self.vorn.driver.current_window_handle
        self.vorn.another_window()
        self.vorn.open(self.address())
        self.vorn.press(".kept .delete")
        self.vorn.answer("Delete")
        self.vorn.until(lambda: self.kept() == [], "the end of the folder")
        self.vorn.driver.switch_to.window(first)
        self.vorn.press(".kept .open")
        self.told("it was deleted in another window")
        self.vorn.answer("OK")
        self.vorn.until(lambda: self.kept() == [], "the folder is no longer offered")

    def test_a_folder_that_is_open_is_not_deleted_elsewhere(self):
        self.open_examples()
        first = self.vorn.driver.current_window_handle
        self.vorn.another_window()
        self.vorn.open(self.address())
        self.vorn.press(".kept .delete")
        self.vorn.answer("Delete")
        self.told("Examples is open in another window; it was not deleted.")
        self.vorn.answer("OK")
        self.vorn.driver.switch_to.window(first)
        self.vorn.stats_report()
        self.reload()
        self.vorn.press(".kept .open")
        self.vorn.wait_for_program()
        self.assertEqual(self.vorn.written(), ["Stats.prn"])


if __name__ == "__main__":
    unittest.main()
