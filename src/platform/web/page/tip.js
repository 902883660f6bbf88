// What is under the mouse, in words beside it.
import {make} from './dom.js';

const comesAfter = 400;  // ms
const beside = 14;       // pixels

export class Tip {
  #element = make('div', {className: 'tip', role: 'tooltip', hidden: true});
  #timer = 0;
  #text = '';

  // At the place of the mouse, when it has stayed with the same thing for a moment. An empty text takes it away.
  show(text, x, y) {
    if (text === this.#text) return;
    this.hide();
    this.#text = text;
    if (text !== '') this.#timer = setTimeout(() => this.#come(x, y), comesAfter);
  }

  hide() {
    clearTimeout(this.#timer);
    this.#text = '';
    this.#element.remove();
  }

  #come(x, y) {
    const element = this.#element;
    element.textContent = this.#text;
    element.hidden = false;
    document.body.append(element);
    const {width, height} = element.getBoundingClientRect();
    const below = y + beside + height <= window.innerHeight;
    element.style.left = `${Math.max(0, Math.min(x + beside, window.innerWidth - width))}px`;
    element.style.top = `${below ? y + beside : Math.max(0, y - beside - height)}px`;
  }
}
