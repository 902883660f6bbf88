// What the program has to tell besides the page, in a strip below it.
import {button, make} from './dom.js';

export class NoticeStrip {
  element;
  #lines;
  #shown = 0;
  #leave;
  #turned;

  // `leave()` gives the keyboard back to the page; `turned()` is told that the strip came or went.
  constructor({leave, turned}) {
    this.#leave = leave;
    this.#turned = turned;
    this.#lines = make('pre', {tabIndex: 0, aria: {label: 'Notices'}, role: 'log'});
    const close = button('Close', () => this.#hide(), {className: 'flat'});
    this.element = make('div', {className: 'notices', hidden: true, on: {keydown: (event) => this.#key(event)}},
        this.#lines, close);
  }

  get isShown() {
    return !this.element.hidden;
  }

  // All of them, each time; the strip comes when there are others.
  show(all) {
    if (all.length === this.#shown) return;
    this.#shown = all.length;
    this.#lines.textContent = all.join('\n');
    this.element.hidden = all.length === 0;
    this.#turned();
  }

  toggle() {
    if (this.isShown) return this.#hide();
    if (this.#shown === 0) return;
    this.element.hidden = false;
    this.#turned();
    this.#lines.focus();
  }

  #hide() {
    this.element.hidden = true;
    this.#turned();
    this.#leave();
  }

  #key(event) {
    if (event.key !== 'Escape') return;
    event.preventDefault();
    event.stopPropagation();
    this.#hide();
  }
}
