"""The window of the browser edition around the program: places, keys and what it says, in Chromium."""

import unittest

from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.keys import Keys

from chromium_test import Window

# Keeps the workers where a test can make them fail.
WATCHED = """
window.workers = {};
window.Worker = class extends Worker {
  constructor(source, what) {
    super(source, what);
    window.workers[what.name] = this;
  }
};
"""


class SmallWindow(Window):
    """As large as a common portable computer shows it."""

    arguments = ("--window-size=1366,768",)

    def setUp(self):
        super().setUp()
        self.open_examples()

    def type(self, *keys):
        """Keys for whatever has the keyboard, one after the other."""
        ActionChains(self.vorn.driver).send_keys(*keys).perform()

    def type_with(self, held, key):
        ActionChains(self.vorn.driver).key_down(held).send_keys(key).key_up(held).perform()

    def focused(self):
        return self.vorn.js("return document.activeElement.getAttribute('aria-label') ?? document.activeElement.textContent")

    def height(self, selector):
        return self.vorn.js("return document.querySelector(arguments[0]).getBoundingClientRect().height", selector)

    def tabs(self):
        return [tab.text for tab in self.vorn.all("[role=tab]") if tab.is_displayed()]


class Places(SmallWindow):
    def test_panels_of_years_stand_beside_the_page_until_they_are_moved_to_it(self):
        whole = self.height(".page")
        self.vorn.keys(Keys.ALT, "2")
        self.vorn.until(lambda: self.focused() == "Rings", "the keyboard in Rings")
        self.assertEqual(self.height(".page"), whole)
        self.assertEqual(self.tabs(),
                         ["Site", "Rings", "Dates", "Around a Year", "Pointer Years", "Files", "Other Programs", "Moving Cores", "Journal", "Folder"])
        self.type_with(Keys.SHIFT, Keys.F10)
        self.type(Keys.ENTER)
        self.vorn.until(lambda: self.height(".page") < whole, "Rings below the page")
        self.assertNotIn("Rings", self.tabs())
        self.assertEqual(self.focused(), "Rings")
        self.vorn.driver.refresh()
        self.vorn.press(".kept .open")
        self.vorn.wait_for_program()
        self.vorn.until(lambda: "Rings" not in self.tabs(), "the arrangement as it was")
        self.vorn.press(".strip:not([hidden]) [aria-haspopup]")
        self.type(Keys.ENTER)
        self.vorn.until(lambda: "Rings" in self.tabs(), "Rings beside the page")
        self.assertEqual(self.height(".page"), whole)

    def test_a_tab_that_is_clicked_hands_the_keyboard_to_its_panel(self):
        self.vorn.keys(Keys.F2)
        self.vorn.until(lambda: "NOW01" in self.vorn.status(), "the cross-dating screen")
        self.vorn.press("#tab-rings")
        self.assertEqual(self.focused(), "Rings")
        self.vorn.until(lambda: "NOW01" not in self.vorn.status() or self.type("n"), "the next core by need")

    def test_what_was_said_goes_when_the_program_goes_on(self):
        self.vorn.keys(Keys.F2)
        self.vorn.until(lambda: "NOW01" in self.vorn.status(), "the cross-dating screen")
        self.vorn.keys(Keys.CONTROL, Keys.SHIFT, "s")
        self.assertIn("Save Raw: on the start menu", self.vorn.find(".status").text)
        self.vorn.keys(Keys.F8)
        self.vorn.until(lambda: "Save Raw" not in self.vorn.find(".status").text, "the usual line")


class Typing(SmallWindow):
    def test_what_is_typed_ahead_is_done_in_its_order(self):
        """The number of years shown, and at once the chooser, which cannot be opened while the number is typed."""
        self.vorn.keys(Keys.F2)
        self.vorn.until(lambda: "NOW01" in self.vorn.status(), "the cross-dating screen")
        self.vorn.keys(Keys.CONTROL, "d")
        self.type("80", Keys.ENTER, Keys.F3)
        self.vorn.until(lambda: "a pair of series" in self.vorn.status(), "the chooser")


class ByKeys(SmallWindow):
    """The ring that NOW07 lost, from the list of the site to the corrected file, without a mouse."""

    def marked(self, panel):
        return self.vorn.js(f"return document.querySelector('.panel-frame.{panel} [aria-live]').textContent")

    def go_to(self, panel, key, beginning):
        self.vorn.until(lambda: self.marked(panel).startswith(beginning) or self.type(key), beginning)
        self.type(Keys.ENTER)

    def test_a_ring_is_inserted_kept_and_written(self):
        self.vorn.press("#tab-site")
        self.go_to("site", Keys.ARROW_DOWN, "NOW07, 1740-2013")
        self.vorn.until(lambda: "NOW07 " in self.vorn.find(".status").text, "NOW07 on the page")
        self.type_with(Keys.ALT, "2")
        self.go_to("rings", Keys.TAB, "Inserts a ring at 1866")
        self.vorn.until(lambda: "OK to keep the ring inserted" in self.vorn.status(), "the ring inserted")
        self.type_with(Keys.CONTROL, "k")
        self.type_with(Keys.CONTROL, "u")
        self.vorn.until(lambda: "1 core not written: NOW07" in self.vorn.status(), "the change saved")
        self.type(Keys.F8)
        self.vorn.stats_report()
        self.vorn.js("[...document.querySelectorAll('.files li')].find(row => row.textContent.startsWith('Stats.prn'))"
                     ".querySelector('.view').click()")
        stats = self.vorn.js("return document.querySelector('dialog[open] textarea').value").split("\n")
        self.assertIn("NOW07      1740   2014    275   0.91   0.43   0.66   0.51", stats)


class Failing(SmallWindow):
    """Where a worker fails, which no click of a user brings about."""

    def setUp(self):
        super().setUp()
        self.vorn.driver.execute_cdp_cmd("Page.addScriptToEvaluateOnNewDocument", {"source": WATCHED})
        self.vorn.open(self.address())
        self.vorn.press(".kept .open")
        self.vorn.wait_for_program()

    def fail(self, role):
        self.vorn.js("window.workers[arguments[0]].dispatchEvent(new ErrorEvent('error', {message: 'a failure'}))", role)

    def test_the_program_begins_again_with_what_was_done(self):
        self.vorn.keys(Keys.F2)
        self.vorn.until(lambda: "NOW01" in self.vorn.status(), "the cross-dating screen")
        self.vorn.keys(Keys.RIGHT)
        self.vorn.until(lambda: "NOW01 not saved" in self.vorn.status(), "the move")
        self.vorn.keys(Keys.CONTROL, "m")
        self.fail("program")
        self.vorn.until(lambda: "Vorn cannot go on" in self.vorn.question(), "the word about it")
        self.assertEqual(len(self.vorn.all("dialog[open]")), 1)  # what was asked for the program is gone with it
        self.vorn.answer("Begin Again")
        self.vorn.answer("Take It Up")
        self.vorn.until(lambda: "NOW01 not saved" in self.vorn.status(), "the move taken up")


if __name__ == "__main__":
    unittest.main()
