"""The browser edition in Chromium, opened as a file and served from this machine."""

import io
import pathlib
import re
import struct
import subprocess
import unittest
import xml.etree.ElementTree as ElementTree
import zipfile

from selenium.webdriver.common.keys import Keys

from chromium import Chromium
from pages import EXAMPLES, FILE, Server, scratch

NEARBY = (EXAMPLES / "nearby.fh").read_bytes()
YONDER = (EXAMPLES / "yonder.rwl").read_bytes()
ANYWHERE = (EXAMPLES / "anywhere.crn").read_bytes()


class Window(unittest.TestCase):
    """A window in which nothing is kept at the beginning of each test, and nothing is complained of at its end."""

    arguments = ()
    script = ""  # runs before the page's own
    is_served = False

    @classmethod
    def setUpClass(cls):
        profile = scratch("profile")
        cls.addClassCleanup(profile.cleanup)
        cls.vorn = Chromium(profile.name, *cls.arguments, script=cls.script)
        cls.addClassCleanup(cls.vorn.close)
        cls.origin, cls.at = "file://", FILE.as_uri()
        if cls.is_served:
            server = cls.enterClassContext(Server())
            cls.origin, cls.at = server.origin, server.address

    def address(self):
        return self.at

    def setUp(self):
        self.vorn.begin_anew(self.origin)
        self.vorn.open(self.address())

    def tearDown(self):
        self.assertEqual(self.vorn.complaints(), [])

    def open_examples(self):
        self.vorn.press(".examples")
        self.vorn.wait_for_program()

    def kept(self):
        return self.vorn.texts(".kept .name")

    def reload(self):
        self.vorn.driver.refresh()
        self.vorn.find(".start-page")
        self.vorn.find(".kept .name")


class AnyPlace:
    """What holds wherever the file comes from."""

    def test_the_examples_are_worked_on_and_kept(self):
        self.open_examples()
        self.vorn.stats_report()
        self.assertEqual(self.vorn.written(), ["Stats.prn"])
        self.vorn.quit()
        self.assertEqual(self.vorn.texts(".last .written .name"), ["Stats.prn"])
        self.reload()
        self.assertEqual(self.kept(), ["Examples"])
        self.vorn.press(".kept .open")
        self.vorn.wait_for_program()
        self.assertEqual(self.vorn.written(), ["Stats.prn"])

    def test_a_correction_is_written_and_outlives_the_page(self):
        self.open_examples()
        self.vorn.keys(Keys.F2)
        self.vorn.until(lambda: "NOW01" in self.vorn.status(), "the cross-dating screen")
        self.vorn.keys(Keys.CONTROL, "m")
        field = self.vorn.find("dialog[open] input")
        field.clear()
        field.send_keys("-7")
        self.vorn.answer("OK")
        self.vorn.until(lambda: "NOW01 not saved" in self.vorn.status(), "the move")
        self.vorn.keys(Keys.CONTROL, "u")
        self.vorn.until(lambda: "1 core not written" in self.vorn.status(), "the change saved")
        self.vorn.keys(Keys.F8)
        self.vorn.keys(Keys.CONTROL, Keys.SHIFT, "s")
        self.vorn.until(lambda: self.vorn.written() == ["nowhere.RWW"], "the corrected file")
        self.reload()
        self.vorn.press(".kept .open")
        self.vorn.wait_for_program()
        self.assertEqual(self.vorn.written(), ["nowhere.RWW"])

    def test_files_are_dropped_and_a_list_is_made(self):
        self.vorn.drop({"yonder.rwl": YONDER, "anywhere.crn": ANYWHERE, "nearby.fh": NEARBY})
        self.vorn.until(self.vorn.has_question, "the question about the list")
        self.assertIn("nearby.fh, yonder.rwl, anywhere.crn.", self.vorn.question())
        self.vorn.answer("Make the List")
        self.vorn.wait_for_program()
        self.assertEqual(sorted(self.vorn.files()), ["Vorn.fil", "anywhere.crn", "nearby.fh", "yonder.rwl"])
        self.vorn.quit()
        self.vorn.js("[...document.querySelectorAll('.files li')].find(row => row.textContent.startsWith('Vorn.fil'))"
                     ".querySelector('.download').click()")
        self.assertEqual(self.vorn.downloaded("Vorn.fil"), b"nearby.fh\nyonder.rwl\nanywhere.crn\n")

    def test_a_folder_is_dropped(self):
        with scratch("site") as site:
            (pathlib.Path(site) / "yonder.rwl").write_bytes(YONDER)
            (pathlib.Path(site) / "plots").mkdir()
            (pathlib.Path(site) / "plots" / "nearby.fh").write_bytes(NEARBY)
            self.vorn.drop_from_disk(site)
            self.vorn.answer("Work on a Copy")
            self.vorn.answer("Make the List")
            self.vorn.wait_for_program()
            self.assertEqual(sorted(self.vorn.files()), ["Vorn.fil", "yonder.rwl"])

    def test_a_list_among_the_files_is_used(self):
        self.vorn.drop({"yonder.rwl": YONDER, "nearby.fh": NEARBY, "Vorn.fil": b"yonder.rwl\n"})
        self.vorn.wait_for_program()
        self.vorn.quit()
        self.assertEqual(sorted(self.vorn.files()), ["Vorn.fil", "nearby.fh", "yonder.rwl"])

    def test_a_list_of_other_files_is_replaced_after_a_yes_and_kept(self):
        self.vorn.drop({"yonder.rwl": YONDER, "Vorn.fil": b"elsewhere.rwl\n"})
        self.vorn.answer("Replace the List")
        self.vorn.wait_for_program()
        self.assertEqual(sorted(self.vorn.files()), ["Vorn.fil", "Vorn.fil.1", "yonder.rwl"])

    def test_names_that_cannot_stand_in_a_list_are_told(self):
        self.vorn.drop({f"{number}.rwl": b"x" for number in range(101)})
        self.vorn.until(self.vorn.has_question, "the trouble")
        self.assertIn("A list takes 100 files, and these are 101.", self.vorn.question())
        self.vorn.answer("OK")
        self.assertEqual(self.kept(), [])

    def test_names_are_text_and_nothing_else(self):
        name = "<img src=x onerror=document.title='taken'>.rwl"
        self.vorn.drop({name: YONDER})
        self.vorn.answer("Make the List")
        self.vorn.wait_for_program()
        self.assertIn(name, self.vorn.files())
        self.assertEqual(self.vorn.all(".program img"), [])
        self.assertNotEqual(self.vorn.driver.title, "taken")

    def test_everything_is_downloaded_as_an_archive(self):
        self.open_examples()
        self.vorn.stats_report()
        self.vorn.quit()
        self.vorn.press(".last .zip-all")
        with zipfile.ZipFile(io.BytesIO(self.vorn.downloaded("Examples.zip"))) as archive:
            self.assertIsNone(archive.testzip())
            names = archive.namelist()
            self.assertIn("Examples/Stats.prn", names)
            for example in EXAMPLES.iterdir():
                self.assertEqual(archive.read(f"Examples/{example.name}"), example.read_bytes())
            self.assertTrue(any(name.startswith("Examples/.vorn/") for name in names), names)
        self.vorn.press(".last .zip-written")
        with zipfile.ZipFile(io.BytesIO(self.vorn.downloaded("Examples written.zip"))) as archive:
            self.assertEqual(archive.namelist(), ["Examples written/Stats.prn"])

    def test_a_kept_folder_is_deleted_after_a_question(self):
        self.open_examples()
        self.vorn.quit()
        self.vorn.press(".kept .delete")
        self.assertIn("Delete Examples?", self.vorn.question())
        self.vorn.answer("Cancel")
        self.assertEqual(self.kept(), ["Examples"])
        self.vorn.press(".kept .delete")
        self.vorn.answer("Delete")
        self.vorn.until(lambda: self.kept() == [], "the end of the folder")

    def test_a_folder_is_not_opened_in_two_windows(self):
        self.open_examples()
        first = self.vorn.driver.current_window_handle
        self.vorn.another_window()
        self.vorn.open(self.address())
        self.vorn.press(".kept .open")
        self.vorn.until(self.vorn.has_question, "the word about the other window")
        self.assertIn("open already", self.vorn.question())
        self.vorn.answer("OK")
        self.vorn.driver.switch_to.window(first)
        self.vorn.quit()
        self.vorn.driver.switch_to.window(self.vorn.driver.window_handles[1])
        self.vorn.press(".kept .open")
        self.vorn.wait_for_program()

    def test_a_file_is_read_as_text(self):
        self.open_examples()
        self.vorn.quit()
        row = "[...document.querySelectorAll('.last .files li')].find(row => row.textContent.startsWith('nowhere.rwl'))"
        self.vorn.js(f"{row}.querySelector('.view').click()")
        shown = self.vorn.js("return document.querySelector('dialog[open] textarea').value")
        self.assertEqual(shown, (EXAMPLES / "nowhere.rwl").read_text())

    def test_a_page_is_printed_on_one_sheet_across(self):
        self.open_examples()
        self.vorn.js("window.print = () => {}")
        self.vorn.keys(Keys.CONTROL, "p")
        self.vorn.find(".printed-page svg")
        pdf = self.vorn.printed()
        shown = subprocess.run(["pdfinfo", "-"], input=pdf, stdout=subprocess.PIPE, check=True).stdout.decode()
        self.assertRegex(shown, r"Pages: +1\n")
        width, height = map(float, re.search(r"Page size: +([\d.]+) x ([\d.]+) pts", shown).groups())
        self.assertAlmostEqual(width, 297 / 25.4 * 72, delta=2)
        self.assertAlmostEqual(height, 210 / 25.4 * 72, delta=2)
        text = subprocess.run(["pdftotext", "-", "-"], input=pdf, stdout=subprocess.PIPE, check=True).stdout.decode()
        self.assertIn("Number of cores", text)
        self.assertNotIn("Cross-dates tree-ring", text)
        self.vorn.js("window.dispatchEvent(new Event('afterprint'))")
        self.assertEqual(self.vorn.all(".printed-page"), [])

    def test_the_page_is_saved_as_a_picture_and_as_a_drawing(self):
        self.open_examples()
        self.vorn.keys(Keys.CONTROL, "s")
        self.vorn.answer("PNG Picture")
        png = self.vorn.downloaded("nowhere.png")
        self.assertEqual(struct.unpack(">II", png[16:24]), (1485, 1050))
        self.vorn.keys(Keys.CONTROL, "s")
        self.vorn.answer("SVG Drawing")
        drawing = ElementTree.fromstring(self.vorn.downloaded("nowhere.svg"))
        self.assertEqual((drawing.get("width"), drawing.get("height")), ("297mm", "210mm"))
        self.assertIn("Number of cores", "".join(drawing.itertext()))

    def test_the_guide_opens_and_its_links_stay_inside(self):
        self.vorn.js("[...document.querySelectorAll('button')].find(b => b.textContent.includes('guide')).click()")
        self.vorn.find("dialog.guide[open] .pages h1")
        links = self.vorn.js("return [...document.querySelectorAll('dialog.guide a')].map(a => a.getAttribute('href'))")
        self.assertGreater(len(links), 20)
        self.assertEqual([link for link in links if not link.startswith("#")], [])
        unseen = self.vorn.js("return [...document.querySelectorAll('dialog.guide img')].filter(i => !i.src.startsWith('data:')).length")
        self.assertEqual(unseen, 0)
        lost = self.vorn.js("return [...document.querySelectorAll('dialog.guide a')].map(a => a.getAttribute('href').slice(1))"
                            ".filter(id => !document.getElementById(id))")
        self.assertEqual(lost, [])

    def test_nothing_is_asked_of_a_network(self):
        self.open_examples()
        self.vorn.stats_report()
        self.vorn.quit()
        asked = [address for address in self.vorn.requests() if not address.startswith(("blob:", "data:", "chrome"))]
        self.assertEqual({address.rsplit("/", 1)[1] for address in asked} - {"favicon.ico"}, {FILE.name})


class AsAFile(AnyPlace, Window):
    pass


class Served(AnyPlace, Window):
    is_served = True


class WithoutAStore(Window):
    """Where the browser keeps nothing."""

    script = "IDBFactory.prototype.open = () => { throw new DOMException('not here', 'SecurityError'); };"

    def test_the_page_says_so_and_works(self):
        self.vorn.find(".kept .trouble")
        self.assertIn("keeps nothing", self.vorn.find(".kept").text)
        self.open_examples()
        self.assertIn("It lives in memory alone", self.vorn.find(".not-kept").text)
        self.vorn.stats_report()
        self.vorn.quit()
        self.vorn.press(".last .zip-written")
        with zipfile.ZipFile(io.BytesIO(self.vorn.downloaded("Examples written.zip"))) as archive:
            self.assertEqual(archive.namelist(), ["Examples written/Stats.prn"])

    def test_the_files_are_not_forgotten_with_the_end_of_the_program(self):
        self.open_examples()
        self.vorn.stats_report()
        self.vorn.quit()
        self.assertTrue(self.vorn.find(".not-kept").text.startswith("Examples:"))
        self.open_examples()
        self.vorn.find(".not-kept .forget")
        self.vorn.quit()
        strips = len(self.vorn.all(".not-kept"))
        self.vorn.press(".not-kept .forget")
        self.vorn.answer("Cancel")
        self.assertEqual(len(self.vorn.all(".not-kept")), strips)
        for left in reversed(range(strips)):
            self.vorn.press(".not-kept .forget")
            self.vorn.answer("Forget Them")
            self.vorn.until(lambda left=left: len(self.vorn.all(".not-kept")) == left, "files let go of")


# What is put into the store is taken back as browsers do when their room is used up.
FULL = """
const put = IDBObjectStore.prototype.put, ended = new WeakSet();
window.isFull = true;
IDBObjectStore.prototype.put = function (...row) {
  const request = put.apply(this, row), transaction = this.transaction;
  if (!window.isFull || ended.has(transaction)) return request;
  ended.add(transaction);
  Object.defineProperty(transaction, 'error', {get: () => new DOMException('', 'QuotaExceededError')});
  queueMicrotask(() => transaction.abort());
  return request;
};
"""


class FullDisk(Window):
    def test_what_does_not_fit_is_told_and_kept_when_there_is_room_again(self):
        self.open_examples()
        self.vorn.js(FULL)
        self.vorn.stats_report()
        self.vorn.until(lambda: self.vorn.find(".not-kept").is_displayed(), "the trouble")
        self.assertIn("the room that this browser gives to pages is used up", self.vorn.find(".not-kept").text)
        self.vorn.js("window.isFull = false")
        self.vorn.keys(Keys.CONTROL, Keys.SHIFT, "r")
        self.vorn.until(lambda: not self.vorn.find(".not-kept").is_displayed(), "the end of the trouble")
        self.reload()
        self.vorn.press(".kept .open")
        self.vorn.wait_for_program()
        self.assertEqual(sorted(self.vorn.written()), ["Corr.prn", "Stats.prn"])


class WithoutLocks(Window):
    """As served from another machine without encryption, where browsers give pages no locks: time tells."""

    script = "Object.defineProperty(Navigator.prototype, 'locks', {get: () => undefined});"

    def test_who_takes_a_folder_keeps_it_and_the_other_window_says_so(self):
        self.open_examples()
        first = self.vorn.driver.current_window_handle
        self.vorn.another_window()
        self.vorn.open(self.address())
        self.vorn.press(".kept .open")
        self.vorn.until(self.vorn.has_question, "the word about the other window")
        self.assertIn("seems to be open in another window", self.vorn.question())
        self.vorn.answer("Open It Here")
        self.vorn.wait_for_program()
        self.vorn.driver.switch_to.window(first)
        self.assertEqual(self.vorn.js("return document.querySelector('.not-kept').hidden"), True)
        self.vorn.stats_report()
        self.vorn.until(lambda: not self.vorn.js("return document.querySelector('.not-kept').hidden"), "the trouble")
        self.assertIn("that window keeps it now", self.vorn.find(".not-kept").text)


# A folder of the browser's own stands for one of the disk; it is read and written by the same means.
DISK = """
const done = arguments[arguments.length - 1];
(async () => {
  const root = await navigator.storage.getDirectory();
  const folder = await root.getDirectoryHandle('site', {create: true});
  for (const [name, letters] of Object.entries(arguments[0])) {
    const out = await (await folder.getFileHandle(name, {create: true})).createWritable();
    await out.write(letters);
    await out.close();
  }
  window.showDirectoryPicker = async () => folder;
  const texts = {};
  for await (const item of folder.values()) {
    // A file that is just being written may be gone again, with the one beside it that it is written to.
    const text = await item.getFile().then(file => file.text()).catch(() => null);
    if (text !== null && !item.name.endsWith('.crswap')) texts[item.name] = text;
  }
  done(texts);
})();
"""


class FolderOfTheDisk(Window):
    is_served = True

    def disk(self, **texts):
        """Puts texts into the folder, and tells what is in it."""
        return self.vorn.driver.execute_async_script(DISK, {name.replace("_", "."): text for name, text in texts.items()})

    def open_folder(self):
        self.vorn.press(".open-folder")

    def test_what_is_written_goes_there_but_for_the_journal(self):
        self.disk(yonder_rwl=YONDER.decode())
        self.open_folder()
        self.vorn.answer("Make the List")
        self.vorn.wait_for_program()
        self.vorn.stats_report()
        self.vorn.quit()
        self.vorn.until(lambda: self.disk().get("Stats.prn"), "the report in the folder")
        disk = self.disk()
        self.assertEqual(sorted(disk), ["Stats.prn", "Vorn.fil", "yonder.rwl"])
        self.assertEqual(disk["Vorn.fil"], "yonder.rwl\n")

    def test_the_folder_is_opened_again_with_what_others_changed(self):
        self.disk(yonder_rwl=YONDER.decode(), Vorn_fil="yonder.rwl\n")
        self.open_folder()
        self.vorn.wait_for_program()
        self.vorn.quit()
        self.reload()
        self.disk(nearby_fh=NEARBY.decode(), Vorn_fil="nearby.fh\n")
        self.vorn.press(".kept .open")
        self.vorn.wait_for_program()
        self.assertIn("nearby.fh", self.vorn.files())

    def test_a_file_changed_by_others_is_asked_about(self):
        self.disk(yonder_rwl=YONDER.decode(), Vorn_fil="yonder.rwl\n")
        self.open_folder()
        self.vorn.wait_for_program()
        self.disk(Stats_prn="somebody else's")
        self.vorn.stats_report()
        self.vorn.until(self.vorn.has_question, "the question about the other file")
        self.assertIn("Stats.prn was changed on the disk by another program.", self.vorn.question())
        self.vorn.answer("Keep Both (the New One Gets a Number)")
        self.vorn.until(lambda: self.disk().get("Stats.prn.1"), "the report beside it")
        self.assertEqual(self.disk()["Stats.prn"], "somebody else's")


class PickedFolder(Window):
    """Where the browser lets no page write into folders."""

    def setUp(self):
        super().setUp()
        self.vorn.js("delete window.showDirectoryPicker; delete Window.prototype.showDirectoryPicker")
        self.vorn.driver.execute_cdp_cmd("Page.setInterceptFileChooserDialog", {"enabled": True})

    def test_it_is_read_with_what_its_list_names_further_down(self):
        with scratch("site") as site:
            plots = pathlib.Path(site) / "plots"
            plots.mkdir()
            (plots / "yonder.rwl").write_bytes(YONDER)
            (plots / "other.rwl").write_bytes(YONDER)
            (pathlib.Path(site) / "Vorn.fil").write_text("plots/yonder.rwl\n")
            self.vorn.press(".open-folder")
            self.vorn.find(".pick-folder").send_keys(site)
            self.vorn.wait_for_program()
            self.assertEqual(sorted(self.vorn.files()), ["Vorn.fil", "plots/yonder.rwl"])

    def test_a_folder_that_may_not_be_written_to_is_read(self):
        self.vorn.js("window.showDirectoryPicker = async () => { throw new DOMException('not here', 'SecurityError'); }")
        with scratch("site") as site:
            (pathlib.Path(site) / "yonder.rwl").write_bytes(YONDER)
            self.vorn.press(".open-folder")
            self.vorn.until(self.vorn.has_question, "the word about writing")
            self.assertIn("does not let this page write into folders (not here)", self.vorn.question())
            self.vorn.answer("OK")
            self.vorn.find(".pick-folder").send_keys(site)
            self.vorn.answer("Make the List")
            self.vorn.wait_for_program()

    def test_a_dialog_closed_without_a_choice_does_not_stand_in_the_way(self):
        self.vorn.press(".open-files")
        first = self.vorn.find(".pick-files")
        self.vorn.press(".open-files")
        self.vorn.until(lambda: self.vorn.all(".pick-files") not in ([], [first]), "the second dialog")
        self.vorn.find(".pick-files").send_keys(str(EXAMPLES / "yonder.rwl"))
        self.vorn.answer("Make the List")
        self.vorn.wait_for_program()

    def test_files_are_picked(self):
        self.vorn.press(".open-files")
        self.vorn.find(".pick-files").send_keys(f"{EXAMPLES / 'yonder.rwl'}\n{EXAMPLES / 'nearby.fh'}")
        self.vorn.answer("Make the List")
        self.vorn.wait_for_program()
        self.assertEqual(sorted(self.vorn.files()), ["Vorn.fil", "nearby.fh", "yonder.rwl"])


class PrivateWindow(Window):
    arguments = ("--incognito",)

    def test_it_is_worked_in_as_in_any_other(self):
        self.open_examples()
        self.vorn.stats_report()
        self.vorn.quit()
        self.assertEqual(self.kept(), ["Examples"])
        self.assertIn("a private window forgets them", self.vorn.find(".kept").text)


if __name__ == "__main__":
    unittest.main()
