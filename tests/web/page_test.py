"""The window of the browser edition around the program: places, keys and what it says, in Chromium."""

import unittest

from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.keys import Keys

from chromium_test import Window


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
                         ["Site", "Rings", "Dates", "Around a Year", "Pointer Years", "Journal", "Files"])
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


if __name__ == "__main__":
    unittest.main()
