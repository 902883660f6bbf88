"""Vorn in Chromium, driven by chromedriver: a window with a profile of its own."""

import base64
import json
import os
import pathlib
import signal
import time

from selenium import webdriver
from selenium.common.exceptions import WebDriverException
from selenium.webdriver.chrome.options import Options
from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys
from selenium.webdriver.support.ui import WebDriverWait

from pages import PATIENCE, scratch

ARGUMENTS = ["--headless=new", "--no-sandbox", "--disable-dev-shm-usage", "--window-size=1400,1000", "--no-first-run",
             "--disable-background-networking", "--disable-component-update"]

# Drops files on the window as if they came from the desktop. A real drop carries a folder too; a made one cannot.
DROP = """
const transfer = new DataTransfer();
for (const [name, letters] of Object.entries(arguments[0])) {
  transfer.items.add(new File([Uint8Array.from(atob(letters), letter => letter.charCodeAt(0))], name));
}
for (const name of ['dragenter', 'dragover', 'drop']) {
  document.body.dispatchEvent(new DragEvent(name, {dataTransfer: transfer, bubbles: true, cancelable: true}));
}
"""


class Chromium:
    def __init__(self, profile, *arguments, script=""):
        """`script` runs in each page before the page's own."""
        self.profile = pathlib.Path(profile)
        self.folder = scratch("downloads")
        self.downloads = pathlib.Path(self.folder.name)
        options = Options()
        for argument in [*ARGUMENTS, f"--user-data-dir={profile}", *arguments]:
            options.add_argument(argument)
        options.set_capability("goog:loggingPrefs", {"browser": "ALL", "performance": "ALL"})
        self.driver = webdriver.Chrome(options=options)
        self.script = script
        self.prepared = set()  # windows that know the script
        self.prepare_window()

    def prepare_window(self):
        self.let_download()
        window = self.driver.current_window_handle
        if self.script and window not in self.prepared:
            self.driver.execute_cdp_cmd("Page.addScriptToEvaluateOnNewDocument", {"source": self.script})
        self.prepared.add(window)

    # Each window asks for it anew: what one asked for goes with it.
    def let_download(self):
        self.driver.execute_cdp_cmd("Browser.setDownloadBehavior",
                                    {"behavior": "allow", "downloadPath": str(self.downloads)})

    def close(self):
        self.driver.quit()
        self.folder.cleanup()

    def begin_anew(self, origin):
        """Nothing is kept, downloaded or noticed, and one empty window is open, as in a browser just started."""
        kept = self.driver.current_window_handle
        for other in set(self.driver.window_handles) - {kept}:
            self.driver.switch_to.window(other)
            self.driver.close()
        self.driver.switch_to.window(kept)
        self.prepare_window()
        self.driver.get("about:blank")
        self.driver.execute_cdp_cmd("Storage.clearDataForOrigin", {"origin": origin, "storageTypes": "all"})
        for file in self.downloads.iterdir():
            file.unlink()
        for kind in ("browser", "performance"):
            self.driver.get_log(kind)

    def another_window(self):
        """Opens one and goes there."""
        self.driver.switch_to.new_window("tab")
        self.prepare_window()
        return self.driver.current_window_handle

    def crash(self):
        """Ends the process of the page that is shown, as the system does when memory runs out."""
        try:
            self.driver.execute_cdp_cmd("Page.crash", {})
        except WebDriverException:
            pass  # it is no longer there to answer

    def kill(self):
        """Ends the browser as a failing machine does: nobody is told."""
        lock = os.readlink(self.profile / "SingletonLock")  # "machine-process"
        browser = int(lock.rsplit("-", 1)[1])
        os.kill(browser, signal.SIGKILL)
        self.driver.service.process.terminate()
        self.driver.service.process.wait()
        self.driver.command_executor.close()
        while pathlib.Path(f"/proc/{browser}").exists():
            time.sleep(0.05)
        self.folder.cleanup()

    def until(self, holds, what):
        return WebDriverWait(self.driver, PATIENCE, poll_frequency=0.1).until(lambda _: holds(), f"in vain: {what}")

    def js(self, script, *arguments):
        return self.driver.execute_script(script, *arguments)

    def find(self, selector):
        return self.until(lambda: next(iter(self.driver.find_elements(By.CSS_SELECTOR, selector)), None), selector)

    def all(self, selector):
        return self.driver.find_elements(By.CSS_SELECTOR, selector)

    def texts(self, selector):
        return self.js("return [...document.querySelectorAll(arguments[0])].map(place => place.textContent)", selector)

    def press(self, selector):
        self.find(selector)
        self.until(lambda: self.find(selector).is_displayed(), selector)
        self.find(selector).click()

    def open(self, address):
        self.driver.get(address)
        self.find(".start-page")

    def answer(self, words):
        """Presses the button with these words in the question that is shown."""
        def button():
            return next((found for found in self.all("dialog[open] button") if found.text == words), None)
        self.until(button, f"the answer {words}").click()

    def question(self):
        return self.find("dialog[open]").text

    def has_question(self):
        return bool(self.all("dialog[open]"))

    def drop(self, files):
        letters = {name: base64.b64encode(content).decode("ascii") for name, content in files.items()}
        self.js(DROP, letters)

    def drop_from_disk(self, *paths):
        """Drops files or folders as the desktop does."""
        data = {"items": [], "files": list(paths), "dragOperationsMask": 1}
        for kind in ("dragEnter", "dragOver", "drop"):
            self.driver.execute_cdp_cmd("Input.dispatchDragEvent", {"type": kind, "x": 300, "y": 300, "data": data})

    # --- The program.

    def wait_for_program(self):
        self.find(".program .page canvas")
        self.until(lambda: "Waits for" in self.find(".program").text, "the program's first wait")

    def keys(self, *keys):
        """Keys for the page, held together."""
        self.js("document.querySelector('.program .page').focus()")
        chain = ActionChains(self.driver)
        for key in keys[:-1]:
            chain.key_down(key)
        chain.send_keys(keys[-1])
        for key in reversed(keys[:-1]):
            chain.key_up(key)
        chain.perform()

    def status(self):
        return self.find(".program").text

    def stats_report(self):
        self.keys(Keys.ALT, Keys.SHIFT, "t")
        self.until(lambda: "Stats.prn" in self.files(), "Stats.prn")

    def quit(self):
        self.keys(Keys.ALT, "q")
        self.find(".start-page")

    def show_files(self):
        """The list of files, if it is not shown yet."""
        for tab in self.all("[role=tab]"):
            if tab.text == "Folder":
                self.js("arguments[0].click()", tab)

    def files(self):
        return self.texts(".files .name")

    def written(self):
        return self.texts(".files .written .name")

    def downloaded(self, name):
        """The bytes of a file when it is there as a whole."""
        place = self.downloads / name
        self.until(place.exists, f"the download of {name}")
        return place.read_bytes()

    # --- What the browser noticed.

    def complaints(self):
        return [entry["message"] for entry in self.driver.get_log("browser")
                if entry["level"] in ("SEVERE", "WARNING") and "favicon" not in entry["message"]]

    def requests(self):
        """The addresses that the page asked for."""
        events = (json.loads(entry["message"])["message"] for entry in self.driver.get_log("performance"))
        return [event["params"]["request"]["url"] for event in events if event["method"] == "Network.requestWillBeSent"]

    def printed(self):
        """The PDF that the browser makes of the page as it would print it."""
        made = self.driver.execute_cdp_cmd("Page.printToPDF", {"preferCSSPageSize": True, "printBackground": True})
        return base64.b64decode(made["data"])

    def rest(self, seconds=0.5):
        time.sleep(seconds)
