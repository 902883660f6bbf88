// A panel in the window: the part of it that is looked at, and what the user does there.
//
// The mouse clicks spots. The keyboard clicks them too: Tab, Left and Right go from spot to spot as they are read,
// Up and Down to the ones above and below, Home and End to the first and the last, PgUp and PgDn scroll, Return and
// Space click, and Escape leaves. The spot that the keyboard marks is seen and told to screen readers.
import {make, say} from './dom.js';
import {isPlain} from './keys.js';
import {marksOf} from './marks.js';
import {paintFocusRing, paintPage} from './painter.js';
import {following, followMark, inset, scrollTo, spotAt} from './panel_walk.js';
import {Sheet} from './sheet.js';
import {Tip} from './tip.js';

const unitsAPixel = 2;

const isSame = (a, b) => JSON.stringify(a) === JSON.stringify(b);

const ways = {
  ArrowRight: 'next',
  ArrowLeft: 'previous',
  ArrowUp: 'up',
  ArrowDown: 'down'
};

export class PanelArea {
  element;                                               // what is scrolled, and has the keyboard
  canvas = make('canvas', {className: 'panel-canvas'});  // stands behind it, and as large
  #port;
  #length = make('div', {className: 'length'});
  #description = make('div', {className: 'unseen', aria: {live: 'polite'}});
  #sheet;
  #tip = new Tip();
  #shown = null;  // the panel as it was answered last, with the view it was asked for
  #asked = null;  // the view that an answer is waited for
  #asksAgain = false;
  #mark = -1;  // the spot at which the keyboard is
  #showsMark = false;
  #then = null;  // what is to be done when the answer is there

  // `port`: ask(view) -> promise of a panel, click(ask, spot) by number, axis() -> {left, right} in pixels of the
  // window or null, leave(), menu(x, y), palette.
  constructor(title, port) {
    this.#port = port;
    this.element = make('div', {className: 'panel', tabIndex: 0, role: 'application', aria: {label: title}},
        this.#length, this.#description);
    this.#sheet = new Sheet(this.canvas, (context, width, height, pixels) => this.#paint(context, pixels));
    new ResizeObserver(() => this.lookAgain()).observe(this.element);
    this.#listen();
  }

  get isSeen() {
    return this.element.clientWidth > 0 && this.element.clientHeight > 0;
  }

  // What is looked at now.
  view() {
    const {clientWidth, clientHeight, scrollTop} = this.element;
    const units = (pixels) => Math.max(unitsAPixel, Math.round(pixels * unitsAPixel));
    return {
      width: units(clientWidth),
      height: units(clientHeight),
      scroll: Math.round(scrollTop * unitsAPixel),
      ...this.#axis()
    };
  }

  #axis() {
    const pixels = this.#port.axis();
    if (!pixels) return {};
    const from = this.element.getBoundingClientRect().left;
    const left = pixels.left - from, right = pixels.right - from;
    if (left < 0 || right > this.element.clientWidth) return {};
    return {left: left * unitsAPixel, right: right * unitsAPixel};
  }

  // To be called when there are other values to show.
  renew() {
    if (!this.isSeen) return;
    if (this.#asked) {
      this.#asksAgain = true;
      return;
    }
    this.#ask();
  }

  // To be called when what stands around it was moved: asks anew only where that makes a difference.
  lookAgain() {
    if (this.isSeen && !isSame(this.view(), this.#asked ?? this.#shown?.view)) this.renew();
  }

  // Nothing that was asked is going to be answered: the worker has gone.
  forget() {
    this.#asked = null;
    this.#asksAgain = false;
  }

  focus() {
    this.element.focus();
  }

  // One question at a time: when its answer is there, the next one asks for what is looked at by then.
  async #ask() {
    const view = this.view();
    this.#asked = view;
    const panel = await this.#port.ask(view);
    if (this.#asked !== view) return;
    this.#asked = null;
    this.#take({...panel, page: marksOf(panel.marks), view});
    if (!this.#asksAgain) return this.lookAgain();
    this.#asksAgain = false;
    this.renew();
  }

  #take(panel) {
    const before = this.#marked(), scrolledBefore = this.#shown?.view.scroll ?? 0;
    this.#shown = panel;
    this.#mark = followMark(panel, before, panel.view.scroll - scrolledBefore);
    this.#length.style.height = `${panel.content_height / unitsAPixel}px`;
    const then = this.#then;
    this.#then = null;
    then?.();
    this.#describe();
    this.#sheet.repaint();
  }

  // --- Painting.

  #paint(context, pixels) {
    if (!this.#shown) return;
    const scale = pixels / unitsAPixel;
    context.setTransform(scale, 0, 0, scale, 0, 0);
    paintPage(context, this.#shown.page, this.#port.palette);
    const spot = this.#marked();
    if (spot && this.#showsMark && document.activeElement === this.element) this.#paintMark(context, spot);
  }

  #paintMark(context, spot) {
    const [left, top, right, bottom] = spot.place;
    const across = inset(right - left, unitsAPixel), down = inset(bottom - top, unitsAPixel);
    paintFocusRing(
        context, {left: left + across, top: top + down, right: right - across, bottom: bottom - down}, unitsAPixel);
  }

  #marked() {
    return this.#shown?.spots[this.#mark] ?? null;
  }

  // For those who do not see it.
  #describe() {
    say(this.#description, document.activeElement === this.element ? this.#marked()?.tip ?? '' : '');
  }

  // --- The mouse.

  #listen() {
    const listen = (name, listener) => this.element.addEventListener(name, listener);
    listen('scroll', () => this.lookAgain());
    listen('pointermove', (event) => this.#point(event));
    listen('pointerleave', () => this.#tip.hide());
    listen('click', (event) => this.#press(event));
    listen('contextmenu', (event) => this.#openMenu(event));
    listen('keydown', (event) => this.#key(event));
    listen('focus', () => this.#entered());
    listen('blur', () => this.#left());
  }

  #spotUnder(event) {
    if (!this.#shown) return -1;
    const {left, top} = this.element.getBoundingClientRect();
    const units = (from, to) => Math.floor((to - from) * unitsAPixel);
    return spotAt(this.#shown, units(left, event.clientX), units(top, event.clientY));
  }

  #point(event) {
    const spot = this.#shown?.spots[this.#spotUnder(event)];
    this.element.style.cursor = spot?.does ? 'pointer' : 'default';
    if (event.pointerType === 'mouse') this.#tip.show(spot?.tip ?? '', event.clientX, event.clientY);
  }

  // Many click twice where once is enough: what is played is not to be played again on what comes of it, nor what is
  // asked to be asked twice.
  #press(event) {
    this.#tip.hide();
    this.#showsMark = false;
    this.#sheet.repaint();
    const place = this.#spotUnder(event), spot = this.#shown?.spots[place];
    if (!spot || ((spot.plays || spot.asks) && event.detail > 1)) return;
    this.#mark = place;
    this.#describe();
    if (spot.does) this.#port.click(this.#shown.ask, place);
    if (spot.plays) this.#port.leave();  // what it plays is gone on with on the page
  }

  #openMenu(event) {
    event.preventDefault();
    this.#tip.hide();
    const byMouse = event.button === 2;
    const {left, top} = this.element.getBoundingClientRect();
    this.#port.menu(byMouse ? event.clientX : left, byMouse ? event.clientY : top);
  }

  // --- The keyboard.

  #entered() {
    if (this.element.matches(':focus-visible')) {
      this.#showsMark = true;
      if (!this.#marked() && this.#shown?.spots.length) this.#mark = 0;
    }
    this.#describe();
    this.#sheet.repaint();
  }

  #left() {
    this.#tip.hide();
    this.#describe();
    this.#sheet.repaint();
  }

  // Whether there was more to be looked at; then the answer is waited for.
  #scrollBy(units, then) {
    const before = Math.round(this.element.scrollTop * unitsAPixel);
    this.element.scrollTop += units / unitsAPixel;
    if (Math.round(this.element.scrollTop * unitsAPixel) === before) return false;
    this.#then = then;
    this.renew();
    return true;
  }

  #goTo(place) {
    this.#mark = place;
    const by = scrollTo(this.#shown, this.#shown.spots[place], this.#shown.view.height);
    if (by !== 0) this.#scrollBy(by, null);
  }

  // Whether there is one on the part that is looked at.
  #step(way) {
    const to = this.#shown ? following(this.#shown, this.#mark, way, this.#shown.view.scroll) : -1;
    if (to < 0) return false;
    this.#goTo(to);
    return true;
  }

  // What is marked stays within sight.
  #go(way) {
    if (this.#step(way) || !this.#shown) return;
    const half = this.#shown.view.height / 2;
    this.#scrollBy(way === 'next' || way === 'down' ? half : -half, () => this.#step(way));
  }

  #goToEnd(last) {
    const mark = () => {
      if (this.#shown?.spots.length) this.#goTo(last ? this.#shown.spots.length - 1 : 0);
    };
    const all = this.#shown?.content_height ?? 0;
    if (!this.#scrollBy(last ? all : -all, mark)) mark();
  }

  #clickMarked(event) {
    const spot = this.#marked();
    if (spot?.does && !event.repeat) this.#port.click(this.#shown.ask, this.#mark);
  }

  #deedOf(event) {
    if (event.key === 'Tab') return () => this.#go(event.shiftKey ? 'previous' : 'next');
    if (ways[event.key]) return () => this.#go(ways[event.key]);
    const page = this.view().height;
    return {
      Home: () => this.#goToEnd(false),
      End: () => this.#goToEnd(true),
      PageUp: () => this.#scrollBy(-page, null),
      PageDown: () => this.#scrollBy(page, null),
      Enter: () => this.#clickMarked(event),
      ' ': () => this.#clickMarked(event),
      Escape: () => this.#port.leave(),
    }[event.key];
  }

  #key(event) {
    const deed = isPlain(event) ? this.#deedOf(event) : null;
    if (!deed) return;
    event.preventDefault();
    event.stopPropagation();
    this.#showsMark = true;
    deed();
    this.#describe();
    this.#sheet.repaint();
  }
}
