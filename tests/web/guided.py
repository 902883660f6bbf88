"""What a user sees and clicks in the running program: the buttons of the page, the places of the panels."""

# Hears what the two workers say and are asked, as the page does, and touches nothing.
HEARD = """
(() => {
  const heard = window.heard = {stand: null, painted: 0, panels: {}, asked: new Map(), working: ''};
  const told = {
    stand: stand => (heard.stand = stand),
    page: ({number}) => (heard.painted = number),
    found: ({working}) => (heard.working = working),
    panel: panel => {
      heard.panels[panel.name] = {spots: panel.spots, scroll: heard.asked.get(panel.ask)?.scroll};
      heard.asked.delete(panel.ask);
    }
  };
  window.Worker = class extends Worker {
    constructor(...how) {
      super(...how);
      this.addEventListener('message', ({data}) => told[data.is]?.(data));
    }
    postMessage(message, ...rest) {
      if (message.do === 'panel') heard.asked.set(message.ask, message);
      super.postMessage(message, ...rest);
    }
  };
})();
"""

# Where something stands in the window, or null. Panels are drawn two units to a pixel, the page fills its place.
PLACE_ON_PAGE = """
const found = (heard.stand?.buttons ?? []).find(button => button[4].trim() === arguments[0]);
if (!found) return null;
const {left, top, width, height} = document.querySelector('.program .page canvas').getBoundingClientRect();
const scale = Math.min(width / 2970, height / 2100);
const [x1, y1, x2, y2] = found;
return [left + (width - 2970 * scale) / 2 + scale * (x1 + x2) / 2, top + (height - 2100 * scale) / 2 + scale * (y1 + y2) / 2];
"""
PLACE_IN_PANEL = """
const [name, words] = arguments;
const area = document.querySelector(`.panel-frame.${name} .panel`), shown = heard.panels[name];
if (heard.working !== '' || heard.asked.size > 0 || shown?.scroll !== Math.round(2 * area.scrollTop)) return null;
const spot = shown.spots.find(spot => spot.does && spot.tip.includes(words));
if (!spot) return null;
const {left, top} = area.getBoundingClientRect();
const [x1, y1, x2, y2] = spot.place;
const x = (x1 + x2) / 4, y = (y1 + y2) / 4;
if (y >= 0 && y < area.clientHeight) return [left + x, top + y];
area.scrollTop += y - area.clientHeight / 2;
return null;
"""


class Guided:
    """The hand of a user, in a window of Chromium that has HEARD before each page."""

    def __init__(self, vorn):
        self.vorn = vorn

    def click(self, x, y):
        for kind in ("mouseMoved", "mousePressed", "mouseReleased"):
            self.vorn.driver.execute_cdp_cmd("Input.dispatchMouseEvent", {
                "type": kind, "x": x, "y": y, "button": "none" if kind == "mouseMoved" else "left", "clickCount": 1})

    def press(self, label):
        """A button of the page."""
        self.click(*self.vorn.until(lambda: self.vorn.js(PLACE_ON_PAGE, label), f"the button {label}"))

    def pick(self, panel, words):
        """A place of a panel that tells these words, when all is studied; it is scrolled to."""
        self.click(*self.vorn.until(lambda: self.vorn.js(PLACE_IN_PANEL, panel, words), f"{words} in {panel}"))

    def stand(self, path):
        return self.vorn.js(f"return heard.stand?.{path} ?? null")

    def labels(self):
        return self.vorn.js("return (heard.stand?.buttons ?? []).map(button => button[4])")
