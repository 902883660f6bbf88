// Menus: the bar at the upper edge, and those that open where they are asked for.
import {isMac, make} from './dom.js';
import {shownKey} from './shortcuts.js';

const titles = [['file', 'File'], ['edit', 'Edit'], ['view', 'View'], ['cores', 'Cores'], ['careful', 'Careful'], ['help', 'Help']];
const typedTogether = 700;  // ms between letters of one word

function withoutDots(text) {
  return text.replaceAll('…', '');
}

// One entry. Where it cannot be done it stays there, and says when it can.
class Entry {
  element;
  row;
  can = true;
  #text;

  constructor(row, chosen) {
    this.row = row;
    this.#text = make('span', {textContent: row.text});
    const key =
        make('span', {className: 'key', textContent: shownKey(row.key ?? '', isMac), aria: {hidden: 'true'}});
    this.element = make('div', {
      role: row.switches ? 'menuitemcheckbox' : 'menuitem',
      tabIndex: -1,
      className: 'entry',
      data: {id: row.id}
    },
        this.#text, key);
    if (row.key) this.element.setAttribute('aria-keyshortcuts', row.key.replace('Ctrl', 'Control'));
    this.element.addEventListener('click', () => this.can && chosen(row.id));
    this.element.addEventListener('pointermove', () => this.element.focus({preventScroll: true}));
  }

  get text() {
    return this.#text.textContent;
  }

  show({can = true, now = '', why_not: whyNot = ''}) {
    this.can = can;
    const text = now || this.row.text;
    this.#text.textContent = text;
    this.element.setAttribute('aria-disabled', String(!can));
    this.element.title = whyNot ? `${withoutDots(text)}: ${whyNot}` : '';
    whyNot                      ? this.element.setAttribute('aria-description', whyNot) :
                                  this.element.removeAttribute('aria-description');
  }

  check(on) {
    if (this.row.switches) this.element.setAttribute('aria-checked', String(Boolean(on)));
  }
}

// A list of entries that comes and goes.
class Menu {
  element;
  entries = [];
  #port;
  #typed = '';
  #typedAt = 0;

  // `port`: chosen(id), close(), beside(by) for the menu to the left or right.
  constructor(title, rows, port) {
    this.#port = port;
    this.element = make('div', {
      role: 'menu',
      className: 'menu',
      hidden: true,
      aria: {label: title},
      on: {keydown: (event) => this.#key(event)}
    });
    for (const row of rows) this.#add(row);
  }

  #add(row) {
    if (row.group && this.entries.length > 0) this.element.append(make('div', {role: 'separator'}));
    const entry = new Entry(row, (id) => this.#port.chosen(id));
    this.entries.push(entry);
    this.element.append(entry.element);
    entry.show({});
    entry.check(false);
  }

  // With its corner there, as far as the window has room.
  open(x, y) {
    this.element.hidden = false;
    const {width, height} = this.element.getBoundingClientRect();
    this.element.style.left = `${Math.max(0, Math.min(x, window.innerWidth - width))}px`;
    this.element.style.top = `${Math.max(0, Math.min(y, window.innerHeight - height))}px`;
  }

  close() {
    this.element.hidden = true;
  }

  enter(last = false) {
    (last ? this.entries.at(-1) : this.entries[0])?.element.focus();
  }

  #step(by) {
    const at = this.entries.findIndex((entry) => entry.element === document.activeElement);
    const count = this.entries.length;
    const to = at < 0 ? (by > 0 ? 0 : count - 1) : (at + by + count) % count;
    this.entries[to].element.focus();
  }

  // Goes to the next entry that begins with what was typed.
  #search(letter) {
    const now = performance.now();
    this.#typed = now - this.#typedAt < typedTogether ? this.#typed + letter : letter;
    this.#typedAt = now;
    const at = this.entries.findIndex((entry) => entry.element === document.activeElement);
    const from = this.#typed.length === 1 ? at + 1 : Math.max(at, 0);
    const order = [...this.entries.slice(from), ...this.entries.slice(0, from)];
    order.find((entry) => entry.text.toLowerCase().startsWith(this.#typed.toLowerCase()))?.element.focus();
  }

  #key(event) {
    const focused = this.entries.find((entry) => entry.element === document.activeElement);
    const deeds = {
      ArrowDown: () => this.#step(1),
      ArrowUp: () => this.#step(-1),
      Home: () => this.enter(),
      End: () => this.enter(true),
      ArrowLeft: () => this.#port.beside(-1),
      ArrowRight: () => this.#port.beside(1),
      Escape: () => this.#port.close(),
      Tab: () => this.#port.close(),
      Enter: () => focused?.element.click(),
      ' ': () => focused?.element.click(),
      F10: () => this.#port.close(),
    };
    const deed = deeds[event.key];
    if (!deed && (event.key.length !== 1 || event.ctrlKey || event.altKey || event.metaKey)) return;
    event.preventDefault();
    event.stopPropagation();
    deed ? deed() : this.#search(event.key);
  }
}

// The bar. `port`: chosen(id), leave() gives the keyboard back, opening() is called before a menu comes into sight.
export class MenuBar {
  element;
  #port;
  #menus = new Map();  // by name
  #titles = new Map();
  #open = null;
  #entries = new Map();  // by id

  constructor(actions, port) {
    this.#port = port;
    this.element = make('div', {role: 'menubar', className: 'menubar', aria: {label: 'Menus'}});
    for (const [name, title] of titles) this.#add(name, title, actions.filter((row) => row.menu === name));
    this.element.addEventListener('keydown', (event) => this.#key(event));
    this.element.addEventListener('focusout', (event) => {
      if (!this.element.contains(event.relatedTarget)) this.#shut();
    });
  }

  // What can be done now, and what is on.
  show(states) {
    for (const [id, entry] of this.#entries) {
      const state = states[id] ?? (entry.row.window ? {} : {can: false});
      entry.show(state);
      if (!entry.row.window) entry.check(state.chosen);
    }
  }

  check(id, on) {
    this.#entries.get(id)?.check(on);
  }

  // Whether the key was one of the bar's: F10, or Alt with the letter of a menu.
  serve(event) {
    if (event.key === 'F10' && !event.shiftKey && !event.ctrlKey && !event.altKey) {
      event.preventDefault();
      this.#titles.get('file').focus();
      return true;
    }
    if (!event.altKey || event.ctrlKey || event.metaKey || event.shiftKey || event.getModifierState?.('AltGraph'))
      return false;
    const found = titles.find(([, title]) => event.code === `Key${title[0]}`);
    if (!found) return false;
    event.preventDefault();
    this.#openMenu(found[0], true);
    return true;
  }

  #add(name, title, rows) {
    const menu = new Menu(title, rows, {
      chosen: (id) => this.#choose(id),
      close: () => this.#leave(),
      beside: (by) => this.#openBeside(by, true),
    });
    for (const entry of menu.entries) this.#entries.set(entry.row.id, entry);
    const letter = make('u', {textContent: title[0]});
    const opener = make('button', {
      type: 'button',
      role: 'menuitem',
      tabIndex: name === 'file' ? 0 : -1,
      aria: {haspopup: 'menu', expanded: 'false'}
    },
        letter, title.slice(1));
    opener.addEventListener('pointerdown', (event) => this.#pressTitle(event, name));
    opener.addEventListener('pointerenter', (event) => this.#passTitle(event, name));
    opener.addEventListener('click', (event) => event.detail === 0 && this.#openMenu(name, true));
    this.#menus.set(name, menu);
    this.#titles.set(name, opener);
    this.element.append(opener, menu.element);
  }

  #pressTitle(event, name) {
    if (event.button !== 0) return;
    event.preventDefault();
    this.#open === name ? this.#leave() : this.#openMenu(name, false);
  }

  #passTitle(event, name) {
    if (event.pointerType === 'mouse' && this.#open !== null && this.#open !== name) this.#openMenu(name, false);
  }

  #openMenu(name, withEntry) {
    this.#shut();
    this.#port.opening();
    const opener = this.#titles.get(name), {left, bottom} = opener.getBoundingClientRect();
    this.#open = name;
    opener.setAttribute('aria-expanded', 'true');
    const menu = this.#menus.get(name);
    menu.open(left, bottom);
    withEntry ? menu.enter() : opener.focus();
  }

  #openBeside(by, withEntry) {
    const names = titles.map(([name]) => name);
    const at = names.indexOf(this.#open ?? this.#focused());
    this.#openMenu(names[(at + by + names.length) % names.length], withEntry);
  }

  #focused() {
    return titles.map(([name]) => name).find((name) => this.#titles.get(name) === document.activeElement) ?? 'file';
  }

  #shut() {
    if (this.#open === null) return;
    this.#menus.get(this.#open).close();
    this.#titles.get(this.#open).setAttribute('aria-expanded', 'false');
    this.#open = null;
  }

  #leave() {
    this.#shut();
    this.#port.leave();
  }

  #choose(id) {
    this.#leave();
    this.#port.chosen(id);
  }

  // On the bar itself: with a menu open it is entered, without one it is opened.
  #key(event) {
    const name = this.#focused();
    if (this.#titles.get(name) !== document.activeElement) return;
    const step = (by) => {
      if (this.#open !== null) return this.#openBeside(by, false);
      const names = titles.map(([each]) => each);
      this.#titles.get(names[(names.indexOf(name) + by + names.length) % names.length]).focus();
    };
    const deeds = {
      ArrowLeft: () => step(-1),
      ArrowRight: () => step(1),
      ArrowDown: () => this.#openMenu(name, true),
      ArrowUp: () => this.#openMenu(name, true),
      Enter: () => this.#openMenu(name, true),
      ' ': () => this.#openMenu(name, true),
      Escape: () => this.#leave(),
      F10: () => this.#leave(),
    };
    if (!deeds[event.key]) return;
    event.preventDefault();
    event.stopPropagation();
    deeds[event.key]();
  }
}

// Opens a menu of its own at a place of the window. `rows`: {id, text, key, act}.
export function popUp(title, rows, x, y) {
  const before = document.activeElement;
  const close = () => {
    menu.element.remove();
    document.removeEventListener('pointerdown', outside, true);
    window.removeEventListener('blur', close);
    before?.focus?.();
  };
  const outside = (event) => menu.element.contains(event.target) || close();
  const chosen = (id) => {
    close();
    rows.find((row) => row.id === id).act();
  };
  const menu = new Menu(title, rows, {chosen, close, beside: () => {}});
  document.body.append(menu.element);
  document.addEventListener('pointerdown', outside, true);
  window.addEventListener('blur', close);
  menu.open(x, y);
  menu.enter();
}
