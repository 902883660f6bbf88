"""What became of the files, in Chromium: the panel Files and its clean copies, corrected files, and what was changed."""

import unittest

from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.keys import Keys

from chromium_test import YONDER
from guided_test import GuidedWindow
from pages import EXAMPLES, FILE

NOTICE = "is not read whole: the panel Files says what is missing"


def broken(content):
    """An empty line before the second core: there reading ends."""
    lines = content.split(b"\n")
    second = next(at for at, line in enumerate(lines) if line[:8] != lines[0][:8])
    return b"\n".join([*lines[:second], b"", *lines[second:]])


class FilesWindow(GuidedWindow):
    arguments = ("--window-size=1366,768",)

    def choose(self, action):
        """An entry of the menus."""
        self.vorn.until(lambda: self.hand.stand(f"actions?.{action}?.can"), f"the action {action}")
        self.vorn.js("document.querySelector(`[data-id=${arguments[0]}]`).click()", action)

    def drop_broken(self, name):
        self.vorn.drop({name: broken(YONDER)})
        self.vorn.answer("Make the List")
        self.vorn.wait_for_program()

    def type(self, key):
        """A key for whatever has the keyboard."""
        ActionChains(self.vorn.driver).send_keys(key).perform()

    def notices(self):
        return self.vorn.js("return document.querySelector('.notices pre')?.textContent ?? ''")

    def panel_is_told(self, words):
        tips = "return (heard.panels.files?.spots ?? []).map(spot => spot.tip).join('\\n')"
        self.vorn.until(lambda: words in self.vorn.js(tips), f"{words} in Files")

    def shown_text(self):
        self.vorn.find("dialog[open] textarea")
        return self.vorn.js("return document.querySelector('dialog[open] textarea').value")

    def mend(self):
        """NOW01 is moved, and that saved; the start menu is there again."""
        self.open_examples()
        self.vorn.keys(Keys.F2)
        self.vorn.until(lambda: "NOW01" in self.vorn.status(), "the cross-dating screen")
        self.vorn.keys(Keys.RIGHT)
        self.vorn.until(lambda: "NOW01 not saved" in self.vorn.status(), "the move")


class CleanCopies(FilesWindow):
    def test_a_copy_is_written_and_worked_with(self):
        self.drop_broken("yonder.rwl")
        self.vorn.until(lambda: f"yonder.rwl {NOTICE}" in self.notices(), "the notice")
        self.vorn.keys(Keys.ALT, "6")
        self.hand.pick("files", "A copy of yonder.rwl")
        self.vorn.until(self.vorn.has_question, "the question")
        self.assertIn("Write yonder-clean.rwl and work with it?", self.vorn.question())
        self.assertIn("empty, left out", self.vorn.question())
        self.vorn.answer("Cancel")
        self.vorn.js("document.querySelector('#tab-folder').click()")
        self.assertEqual(sorted(self.vorn.files()), ["Vorn.fil", "yonder.rwl"])
        self.vorn.keys(Keys.ALT, "6")  # and now by keys alone
        marked = "return document.querySelector('.panel-frame.files [aria-live]').textContent"
        self.vorn.until(lambda: "A copy of yonder.rwl" in self.vorn.js(marked) or self.type(Keys.TAB), "the key, marked")
        self.type(Keys.ENTER)
        self.vorn.until(lambda: "Write yonder-clean.rwl" in self.vorn.question(), "the question")
        self.type(Keys.ENTER)
        self.vorn.until(lambda: "yonder-clean.rwl" in self.vorn.driver.title, "the program, begun anew")
        self.panel_is_told("yonder-clean.rwl")
        self.assertEqual(self.notices(), "")
        self.assertEqual(self.download("yonder-clean.rwl"), YONDER)
        self.assertEqual(self.download("yonder.rwl"), broken(YONDER))
        self.assertEqual(self.download("Vorn.fil"), b"yonder-clean.rwl\n")
        self.vorn.stats_report()
        self.reload()
        self.vorn.press(".kept .open")
        self.vorn.until(lambda: "yonder-clean.rwl" in self.vorn.driver.title, "the copy, kept")
        asked = [address for address in self.vorn.requests() if not address.startswith(("blob:", "data:", "chrome"))]
        self.assertEqual({address.rsplit("/", 1)[1] for address in asked}, {FILE.name})

    def test_names_are_text_and_nothing_else(self):
        name = "<img src=x onerror=document.title='taken'>.rwl"
        self.drop_broken(name)
        self.vorn.until(lambda: f"{name} {NOTICE}" in self.notices(), "the notice")
        self.vorn.keys(Keys.ALT, "6")
        self.hand.pick("files", f"A copy of {name}")
        self.vorn.until(self.vorn.has_question, "the question")
        self.assertIn(f"{name} stays as it is.", self.vorn.question())
        self.assertEqual(self.vorn.all("dialog img, .notices img, .tip img"), [])
        self.assertNotEqual(self.vorn.driver.title, "taken")


class CorrectedFiles(FilesWindow):
    def test_mended_cores_are_put_back_into_their_file(self):
        self.mend()
        self.choose("save_corrected")
        self.vorn.until(lambda: "is not saved yet: Save Change comes first" in self.vorn.question(), "the word about it")
        self.vorn.answer("OK")
        self.vorn.keys(Keys.CONTROL, "u")
        self.vorn.until(lambda: "1 core not written: NOW01" in self.vorn.status(), "the change saved")
        self.choose("save_corrected")
        self.vorn.until(lambda: "Put the corrected cores back into nowhere.rwl?" in self.vorn.question(), "the question")
        self.assertIn("it is kept before as nowhere.rwl.orig.", self.vorn.question())
        self.vorn.answer("Save as a New File…")
        corrected = self.vorn.downloaded("nowhere-corrected.rwl")
        before = (EXAMPLES / "nowhere.rwl").read_bytes()
        changed = [line for line in corrected.split(b"\n") if line not in before.split(b"\n")]
        self.assertGreater(len(changed), 0)
        self.assertEqual({line[:5] for line in changed}, {b"NOW01"})
        self.choose("save_corrected")
        self.vorn.answer("Save over nowhere.rwl")
        self.vorn.until(lambda: "nowhere.rwl is written" in self.vorn.find(".status").text, "the word about it")
        self.assertEqual(self.download("nowhere.rwl"), corrected)
        self.assertEqual(self.download("nowhere.rwl.orig"), before)
        self.choose("save_corrected")
        self.vorn.until(lambda: "there is nothing to save" in self.vorn.question(), "the word about it")
        self.vorn.answer("OK")

    def test_what_was_changed_is_read_and_saved(self):
        self.mend()
        self.vorn.keys(Keys.CONTROL, "u")
        self.vorn.until(lambda: "1 core not written: NOW01" in self.vorn.status(), "the change saved")
        self.vorn.keys(Keys.CONTROL, Keys.SHIFT, "d")
        shown = self.shown_text()
        self.assertTrue(shown.startswith("What was changed since nowhere.rwl was read\n\nNOW01: "), shown)
        self.vorn.answer("Save…")
        self.assertEqual(self.vorn.downloaded("changes.txt").decode(), shown)


if __name__ == "__main__":
    unittest.main()
