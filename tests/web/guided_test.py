"""The case of docs/first-crossdating.md in the browser, by the panels: what comes of it is what the program writes
natively for the same clicks. And what was decided outlives every end of the page."""

import io
import os
import pathlib
import shutil
import subprocess
import unittest
import zipfile

from selenium.webdriver.common.keys import Keys

from chromium import Chromium
from chromium_test import Window
from guided import HEARD, Guided
from pages import EXAMPLES, FILE, TOP, scratch

PROGRAM = pathlib.Path(os.environ.get("VORN_REPLAY", TOP / "build/release/src/apps/vorn_replay"))
SHORT_WAY = """pick site NOW07
expect NOW07
pick rings A ring is missing in 1866 to 1869
expect Insert
press insertion_ok
press save_sample
press exit_crossdating
press save_raw
press quit
"""


def written_natively(script, name):
    """What the native program writes under this name when it is given these clicks in a copy of the examples."""
    with scratch("native") as folder:
        place = pathlib.Path(folder)
        for example in EXAMPLES.iterdir():
            shutil.copy(example, place)
        (place / "clicks.vrs").write_bytes(script)
        subprocess.run([PROGRAM, "clicks.vrs"], cwd=folder, check=True, stdout=subprocess.DEVNULL)
        return (place / name).read_bytes()


class GuidedWindow(Window):
    script = HEARD

    def setUp(self):
        super().setUp()
        self.hand = Guided(self.vorn)

    def place_is(self, place):
        self.vorn.until(lambda: self.hand.stand("place") == place, place)

    def put_ring_in(self):
        """From the start screen to the ring that is put in, but not saved."""
        self.hand.pick("site", "NOW07, ")
        self.place_is("crossdating")
        self.vorn.keys(Keys.ALT, "2")
        self.hand.pick("rings", "Inserts a ring at 1866")
        self.hand.press("OK")
        self.vorn.until(lambda: self.hand.stand("unsaved"), "the ring, put in")

    def save_change(self):
        self.hand.press("Save Change")
        self.vorn.until(lambda: "1 core not written" in self.vorn.status(), "the core, changed")

    def save_raw(self):
        self.hand.press("Exit Menu")
        self.hand.press("Save Raw")
        self.vorn.until(lambda: "nowhere.RWW" in self.vorn.written(), "the corrected file")

    def download(self, name):
        self.vorn.show_files()
        row = f"[...document.querySelectorAll('.files li')].find(row => row.querySelector('.name').textContent === '{name}')"
        self.vorn.js(f"{row}.querySelector('.download').click()")
        return self.vorn.downloaded(name)

    def kept_decisions(self):
        """What is in the store of the journals' decisions."""
        return self.vorn.driver.execute_async_script(DECISIONS)


# Counts the lines of all kept journals that tell a decision.
DECISIONS = """
const done = arguments[arguments.length - 1];
const asked = indexedDB.open('vorn');
asked.onsuccess = () => {
  const found = asked.result.transaction(['files']).objectStore('files').getAll();
  found.onsuccess = () => {
    const journals = found.result.filter(({path}) => /^\\.vorn\\/[^/]*\\.vrs$/.test(path));
    const texts = journals.map(({bytes}) => new TextDecoder('latin1').decode(bytes));
    asked.result.close();
    done(texts.join('').split('\\n').filter(line => line.startsWith('#: decision')).length);
  };
};
"""


class FirstCrossdating(GuidedWindow):
    def test_the_ring_is_put_in_as_by_the_native_program(self):
        self.open_examples()
        self.put_ring_in()
        self.save_change()
        self.save_raw()
        corrected = self.download("nowhere.RWW")
        row = next(line for line in corrected.decode().splitlines() if line.startswith("NOW07   1860"))
        self.assertIn("-9990", row)
        self.vorn.js("document.querySelector('.files .zip-all').click()")
        with zipfile.ZipFile(io.BytesIO(self.vorn.downloaded("Examples.zip"))) as archive:
            self.assertEqual(archive.read("Examples/nowhere.RWW"), corrected)
            journals = [name for name in archive.namelist() if name.endswith(".vrs") and "/.vorn/" in name]
            self.assertEqual(len(journals), 1)
            journal = archive.read(journals[0])
        asked = [address for address in self.vorn.requests() if not address.startswith(("blob:", "data:", "chrome"))]
        self.assertEqual({address.rsplit("/", 1)[1] for address in asked}, {FILE.name})
        if not PROGRAM.exists():
            self.skipTest(f"there is no {PROGRAM} to compare with")
        self.assertEqual(corrected, written_natively(SHORT_WAY.encode(), "nowhere.RWW"))
        self.assertEqual(corrected, written_natively(journal + b"press quit\n", "nowhere.RWW"))


class TheEndOfThePage(GuidedWindow):
    """However the page ends, what was decided is there again and can be taken up."""

    def begun(self):
        self.open_examples()
        self.put_ring_in()
        self.save_change()
        self.vorn.until(lambda: self.kept_decisions() == 2, "both decisions in the store")

    def taken_up(self):
        self.vorn.press(".kept .open")
        self.vorn.wait_for_program()
        self.vorn.answer("Take It Up")
        self.vorn.until(lambda: self.hand.stand("taken") == 2, "what was decided")
        self.place_is("crossdating")
        self.save_raw()
        corrected = self.download("nowhere.RWW")
        if PROGRAM.exists():
            self.assertEqual(corrected, written_natively(SHORT_WAY.encode(), "nowhere.RWW"))
        self.assertIn(b"-9990", corrected)

    def test_it_is_loaded_anew(self):
        self.begun()
        self.reload()
        self.taken_up()

    def test_it_is_loaded_anew_while_a_decision_is_written(self):
        self.open_examples()
        self.put_ring_in()
        self.vorn.until(lambda: self.kept_decisions() == 1, "the first decision in the store")
        self.hand.press("Save Change")
        self.reload()
        self.vorn.press(".kept .open")
        self.vorn.wait_for_program()
        self.vorn.answer("Take It Up")
        self.vorn.until(lambda: self.hand.stand("taken") in (1, 2), "what was decided")
        self.place_is("crossdating")

    def test_its_window_is_closed(self):
        self.begun()
        first = self.vorn.driver.current_window_handle
        other = self.vorn.another_window()
        self.vorn.driver.switch_to.window(first)
        self.vorn.driver.close()
        self.vorn.driver.switch_to.window(other)
        self.vorn.prepare_window()
        self.vorn.open(self.address())
        self.taken_up()

    def test_its_process_is_killed(self):
        self.begun()
        first = self.vorn.driver.current_window_handle
        other = self.vorn.another_window()
        self.vorn.driver.switch_to.window(first)
        self.vorn.crash()
        self.vorn.driver.switch_to.window(other)
        self.vorn.prepare_window()
        self.vorn.open(self.address())
        self.taken_up()

    def test_the_browser_is_killed(self):
        with scratch("profile") as profile:
            killed = Chromium(profile, script=HEARD)
            try:
                self.go_on_in(killed)
                self.begun()
            finally:
                killed.kill()
                self.vorn = type(self).vorn
            again = Chromium(profile, script=HEARD)
            try:
                self.go_on_in(again)
                self.taken_up()
            finally:
                again.close()
                self.vorn = type(self).vorn

    def go_on_in(self, browser):
        self.vorn, self.hand = browser, Guided(browser)
        browser.open(self.address())


if __name__ == "__main__":
    unittest.main()
