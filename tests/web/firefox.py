"""Vorn in Firefox, driven over the port that Firefox itself opens for it (WebDriver BiDi), for Debian has no driver."""

import asyncio
import json
import pathlib
import socket
import subprocess
import time

import websockets

from pages import PATIENCE, scratch

PREFERENCES = """
user_pref("browser.download.folderList", 2);
user_pref("browser.download.dir", "%s");
user_pref("browser.download.useDownloadDir", true);
user_pref("browser.download.always_ask_before_handling_new_types", false);
user_pref("browser.download.alwaysOpenPanel", false);
user_pref("datareporting.policy.dataSubmissionEnabled", false);
user_pref("browser.shell.checkDefaultBrowser", false);
"""
KEYS = {"Control": "\ue009", "Alt": "\ue00a", "Shift": "\ue008", "F2": "\ue032", "F8": "\ue038"}


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


class Firefox:
    def __init__(self, profile):
        self.folder = scratch("downloads")
        self.downloads = pathlib.Path(self.folder.name)
        (pathlib.Path(profile) / "user.js").write_text(PREFERENCES % self.downloads, encoding="utf-8")
        port = free_port()
        self.process = subprocess.Popen(
            ["firefox-esr", "--headless", "--no-remote", "--profile", profile, "--remote-debugging-port", str(port)],
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.loop = asyncio.new_event_loop()
        self.number = 0
        self.events = []
        self.socket = self.loop.run_until_complete(self.connected(port))
        self.call("session.new", capabilities={})
        self.call("session.subscribe", events=["log.entryAdded", "network.beforeRequestSent"])
        self.context = self.call("browsingContext.getTree")["contexts"][0]["context"]

    async def connected(self, port):
        end = time.monotonic() + PATIENCE
        while True:
            try:
                return await websockets.connect(f"ws://127.0.0.1:{port}/session", max_size=None)
            except OSError:
                if time.monotonic() > end:
                    raise
                await asyncio.sleep(0.2)

    def close(self):
        try:
            self.call("browser.close")
        finally:
            self.loop.run_until_complete(self.socket.close())
            self.loop.close()
            self.process.wait(PATIENCE)
            self.folder.cleanup()

    async def answered(self, method, parameters):
        self.number += 1
        await self.socket.send(json.dumps({"id": self.number, "method": method, "params": parameters}))
        while True:
            message = json.loads(await asyncio.wait_for(self.socket.recv(), PATIENCE))
            if message.get("id") != self.number:
                self.events.append(message)
            elif message["type"] == "error":
                raise RuntimeError(f"{method}: {message['message']}")
            else:
                return message["result"]

    def call(self, method, **parameters):
        return self.loop.run_until_complete(self.answered(method, parameters))

    def open(self, address):
        self.call("browsingContext.navigate", context=self.context, url=address, wait="complete")
        self.find(".start-page")

    def js(self, expression):
        told = self.call("script.evaluate", expression=f"JSON.stringify({expression})", target={"context": self.context},
                         awaitPromise=True, userActivation=True)
        if told["type"] != "success":
            raise RuntimeError(told["exceptionDetails"]["text"])
        value = told["result"].get("value")
        return None if value is None else json.loads(value)

    def until(self, holds, what):
        end = time.monotonic() + PATIENCE
        while not (answer := holds()):
            if time.monotonic() > end:
                raise TimeoutError(f"in vain: {what}")
            time.sleep(0.1)
        return answer

    def find(self, selector):
        self.until(lambda: self.js(f"document.querySelector({json.dumps(selector)}) !== null"), selector)

    def press(self, selector):
        self.find(selector)
        self.js(f"document.querySelector({json.dumps(selector)}).click()")

    def texts(self, selector):
        return self.js(f"[...document.querySelectorAll({json.dumps(selector)})].map(place => place.textContent)")

    def keys(self, *names):
        """Keys for the page, held together."""
        self.js("document.querySelector('.program .page').focus()")
        values = [KEYS.get(name, name) for name in names]
        down = [{"type": "keyDown", "value": value} for value in values]
        up = [{"type": "keyUp", "value": value} for value in reversed(values)]
        self.call("input.performActions", context=self.context, actions=[{"type": "key", "id": "keyboard", "actions": down + up}])

    def wait_for_program(self):
        self.find(".program .page canvas")
        self.until(lambda: "Waits for" in self.texts(".program")[0], "the program's first wait")

    def downloaded(self, name):
        place = self.downloads / name
        self.until(lambda: place.exists() and place.stat().st_size > 0, f"the download of {name}")
        return place.read_bytes()

    def complaints(self):
        self.js("1")  # lets events come in
        return [event["params"]["text"] for event in self.events
                if event.get("method") == "log.entryAdded" and event["params"]["level"] in ("error", "warn")]

    def requests(self):
        self.js("1")
        return [event["params"]["request"]["url"] for event in self.events
                if event.get("method") == "network.beforeRequestSent"]
