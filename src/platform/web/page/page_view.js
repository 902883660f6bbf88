// The page in the window: paints the one shown last and hands on what the user does with it.
import {mayDrag, onButton, paintDrag, yearsBetween} from './curve_drag.js';
import {isMac, make, say} from './dom.js';
import {isPlain, keyCode, stepOf} from './keys.js';
import {marksOf} from './marks.js';
import {pageAcross, pageDown, pageToArea, paintFocusRing, paintPage} from './painter.js';
import {Sheet} from './sheet.js';
import {shortcutOf} from './shortcuts.js';

const farEnough = 10;   // pixels that make a press a drag
const longPress = 500;  // ms that make a touch a request for help
const yearsANotch = 10;
const pixelsANotch = 100, linesANotch = 3;

const empty = {
  across: pageAcross,
  down: pageDown,
  marks: []
};

function clamped(value, last) {
  return Math.round(Math.min(Math.max(value, 0), last));
}

// Notches of the wheel, forward in time downwards or to the right.
export function notchesOf(event) {
  const turned = Math.abs(event.deltaX) > Math.abs(event.deltaY) ? event.deltaX : event.deltaY;
  if (event.deltaMode === 1) return turned / linesANotch;
  return event.deltaMode === 2 ? turned : turned / pixelsANotch;
}

export class PageView {
  element;
  #port;
  #palette;
  #graph;
  #plainKeys;  // from key to action
  #latest = {number: 0, page: empty, marks: null};
  #seen = {number: 0, page: empty, marks: null};  // the page painted last
  #stand = null;
  #mark = null;
  #mouse = {x: 0, y: 0};
  #told = '';    // the place of the mouse that was told last
  #drag = null;  // {from, to, at, seen, moving} in page units; `at` in the window
  #touch = 0;    // the timer of a touch
  #wheel = 0;    // turned, but not yet by a year
  #description;
  #canvas = make('canvas');
  #above = make('canvas');
  #sheet;
  #sheetAbove;

  // `port`: send(message) to the program, placed() when the page may stand elsewhere.
  constructor({palette, graph, plainKeys}, port) {
    this.#palette = palette;
    this.#graph = graph;
    this.#plainKeys = plainKeys;
    this.#port = port;
    this.#description = make('div', {id: 'description', className: 'unseen', aria: {live: 'polite'}});
    this.element = make('div',
        {className: 'page', tabIndex: 0, role: 'application', aria: {label: 'Page', describedby: 'description'}},
        this.#canvas, this.#above, this.#description);
    this.#sheet = new Sheet(this.#canvas, (context, width, height) => this.#paint(context, width, height));
    this.#sheetAbove = new Sheet(
        this.#above, (context, width, height, pixels) => this.#paintAbove(context, width, height, pixels));
    this.#listen();
  }

  focus() {
    this.element.focus({preventScroll: true});
  }

  // The number of the page that the user sees, and its marks as they came.
  get seen() {
    return this.#seen.number;
  }

  get marks() {
    return this.#seen.marks;
  }

  show({number, marks}) {
    this.#latest = {number, page: marksOf(marks), marks};
    this.#sheet.repaint();
  }

  // To be called when the session stands anew.
  stand(stand) {
    this.#stand = stand;
    this.#mark = stand.mark ?? null;
    if (this.#drag && !stand.may_drag) this.#endDrag();
    this.#describe(stand.description);
    this.#sheetAbove.repaint();
    this.#point();
  }

  // What mouse and cursor have changed.
  mark(mark, description) {
    this.#mark = mark ?? null;
    this.#describe(description);
    this.#sheetAbove.repaint();
  }

  askForHelp() {
    this.#port.send({do: 'help', ...this.#mouse, seen: this.#seen.number});
  }

  // Where a place of the page stands in the window, from left to right.
  acrossOf(x) {
    const {left, width, height} = this.#canvas.getBoundingClientRect();
    const place = pageToArea(width, height);
    return left + place.x + x * place.scale;
  }

  // --- Painting.

  #paint(context, width, height) {
    const {scale, x, y} = pageToArea(width, height);
    context.setTransform(scale, 0, 0, scale, x, y);
    this.#seen = this.#latest;
    paintPage(context, this.#seen.page, this.#palette);
    this.#port.placed();
  }

  #paintAbove(context, width, height, pixels) {
    const {scale, x, y} = pageToArea(width, height);
    context.setTransform(scale, 0, 0, scale, x, y);
    const pixel = pixels / scale;
    const colours = {graph: this.#graph, palette: this.#palette, pixel};
    if (this.#mark) {
      const [left, top, right, bottom] = this.#mark;
      paintFocusRing(context, {left, top, right, bottom}, pixel);
    }
    if (this.#drag?.moving && this.#stand) paintDrag(context, this.#drag, this.#seen.page, this.#stand, colours);
  }

  #describe(text) {
    if (text !== undefined) say(this.#description, text);
  }

  // --- Where the mouse is.

  #pageAt(event) {
    const {left, top, width, height} = this.#canvas.getBoundingClientRect();
    const {scale, x, y} = pageToArea(width, height);
    return {x: (event.clientX - left - x) / scale, y: (event.clientY - top - y) / scale};
  }

  // Places beside the page count as the nearest place on it.
  #unitsAt(event) {
    const at = this.#pageAt(event);
    return {x: clamped(at.x, pageAcross), y: clamped(at.y, pageDown)};
  }

  #moved(event) {
    this.#mouse = this.#unitsAt(event);
    this.#point();
    const now = JSON.stringify(this.#mouse);
    if (now === this.#told) return;
    this.#told = now;
    this.#port.send({do: 'mouse', ...this.#mouse});
  }

  #left() {
    this.#told = '';
    this.#port.send({do: 'mouse'});
  }

  // A hand over what a click does something to.
  #point() {
    const {x, y} = this.#mouse;
    const hand = onButton(this.#stand?.buttons ?? [], x, y) ? 'pointer' : 'default';
    this.element.style.cursor = this.#drag?.moving ? 'ew-resize' : hand;
  }

  // --- What is done.

  #listen() {
    const listen = (name, listener, how) => this.element.addEventListener(name, listener, how);
    listen('pointerdown', (event) => this.#press(event));
    listen('pointermove', (event) => this.#move(event));
    listen('pointerup', (event) => this.#release(event));
    listen('pointercancel', () => this.#endPress());
    listen('pointerleave', (event) => event.pointerType === 'mouse' && this.#left());
    listen('contextmenu', (event) => event.preventDefault());
    listen('wheel', (event) => this.#turn(event), {passive: false});
    listen('keydown', (event) => this.key(event));
  }

  #press(event) {
    this.#mouse = this.#unitsAt(event);
    if (!event.isPrimary) return this.#endPress();  // a second finger: the first was no tap
    event.preventDefault();
    this.focus();
    if (event.button === 2 || (isMac && event.ctrlKey)) return this.askForHelp();
    if (event.button !== 0) return;
    event.pointerType === 'touch' ? this.#touched(event) : this.#pressed(event);
  }

  // Where the sample's curve may be moved, a click is one when the button is let go.
  #pressed(event) {
    const at = this.#pageAt(event);
    const click = {do: 'click', ...this.#mouse, seen: this.#seen.number};
    if (!mayDrag(this.#stand, this.#graph, at.x, at.y)) return this.#port.send(click);
    this.#hold(event, click, true);
  }

  // With a finger every click is one when it is lifted: until then it may become a long press, or a drag.
  #touched(event) {
    const at = this.#pageAt(event);
    const click = {do: 'click', ...this.#mouse, seen: this.#seen.number};
    this.#moved(event);
    this.#hold(event, click, mayDrag(this.#stand, this.#graph, at.x, at.y));
    this.#touch = setTimeout(() => {
      this.#endPress();
      this.#port.send({...click, do: 'help'});
    }, longPress);
  }

  #hold(event, click, mayMove) {
    const at = this.#pageAt(event);
    this.element.setPointerCapture(event.pointerId);
    this.#drag = {from: at, to: at, at: {x: event.clientX, y: event.clientY}, click, mayMove, moving: false};
  }

  #move(event) {
    if (event.isPrimary) this.#moved(event);
    const drag = this.#drag;
    if (!drag || !event.isPrimary) return;
    const far = Math.abs(event.clientX - drag.at.x) + Math.abs(event.clientY - drag.at.y) >= farEnough;
    if (far && !drag.mayMove) return this.#endPress();
    if (far) clearTimeout(this.#touch);
    drag.to = this.#pageAt(event);
    drag.moving ||= far;
    this.#point();
    this.#sheetAbove.repaint();
  }

  #release(event) {
    const drag = this.#drag;
    if (!drag || event.button !== 0) return;
    this.#endPress();
    if (!drag.moving) return this.#port.send(drag.click);
    const years = yearsBetween(drag.from.x, drag.to.x, this.#graph, this.#stand?.years_shown ?? 1);
    if (years !== 0) this.#port.send({do: 'move_sample', years});
  }

  #endPress() {
    clearTimeout(this.#touch);
    this.#endDrag();
  }

  #endDrag() {
    this.#drag = null;
    this.#point();
    this.#sheetAbove.repaint();
  }

  // With Control it is the browser's: it makes everything larger or smaller.
  #turn(event) {
    if (event.ctrlKey || event.metaKey) return;
    event.preventDefault();
    this.#wheel += notchesOf(event) * yearsANotch;
    const years = Math.trunc(this.#wheel);
    this.#wheel -= years;
    if (years !== 0) this.#port.send({do: 'scroll', years});
  }

  // Keys that stand for a letter, a move or an action without Control and its like. What they mean at the time the
  // program decides.
  key(event) {
    if (this.#drag?.moving && event.key === 'Escape') {
      this.#taken(event);
      return this.#endPress();
    }
    if (event.isComposing) return;
    const action = isPlain(event) ? this.#plainKeys.get(shortcutOf(event, isMac)) ?? '' : '';
    const code = keyCode(event), step = stepOf(event);
    if (code === 0 && step === '' && action === '') return;
    this.#taken(event);
    this.#port.send(
        {do: 'key', ...this.#mouse, seen: this.#seen.number, repeated: event.repeat, code, step, action});
  }

  #taken(event) {
    event.preventDefault();
    event.stopPropagation();
  }
}
