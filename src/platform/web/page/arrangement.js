// How page and panels stand in the window: the page at the left, as large as the height lets it be, panels at the
// right, one behind the other. Those of years can be moved above and below the page, where they share its axis: that
// costs the page height, which few windows have to spare. All of it stays as the user has it.
import {button, make} from './dom.js';
import {pageAcross, pageDown} from './painter.js';
import {remember, remembered} from './store.js';

const key = 'arrangement';
const widestDock = 560, narrowestDock = 216;
const leastPage = 240, leastStrip = 60;
const strips = {
  pointers: {place: 'above', height: 116},
  rings: {place: 'below', height: 180}
};
const step = 16;  // pixels a key moves an edge

export function clampTo(value, least, most) {
  return Math.max(least, Math.min(value, Math.max(least, most)));
}

// How wide the dock is where nobody has said so: what the page leaves, nothing where that is too little.
export function firstDockWidth(width, height) {
  const left = Math.floor(width - (height * pageAcross) / pageDown);
  return left < narrowestDock ? 0 : Math.min(left, widestDock);
}

const usual = () => ({dock: null, tab: 'site', dockWidth: null, atPage: {}, open: {}, heights: {}});

export class Arrangement {
  element;
  #port;
  #state = usual();
  #dock = make('aside', {className: 'dock', aria: {label: 'Panels'}});
  #tabs = make('div', {className: 'tabs', role: 'tablist', aria: {label: 'Panels'}});
  #pages = new Map();   // of the dock, by name: {tab, page, enter}
  #strips = new Map();  // by name: {strip, edge, frame}
  #column = make('div', {className: 'column'});
  #edge;
  #more;

  // `room` holds the page; `lists`: [{name, title, body, enter}], among them all that can be moved to the page.
  // `port`: turned() when something came, went or moved, leave(), openMenu(name, button) of a panel.
  constructor({room, lists}, port) {
    this.#port = port;
    this.#edge = this.#makeEdge('vertical', 'Width of the panels', (by) => this.#widen(by));
    this.#column.append(room);
    for (const {name, body} of lists)
      if (strips[name]) this.#addStrip(name, body);
    const hide = button('×', () => this.#hideDock(),
        {className: 'flat', title: 'Hide the panels', aria: {label: 'Hide the panels'}});
    this.#more = this.#makeMore(() => this.#state.tab);
    this.#tabs.addEventListener('wheel', (event) => this.#turnTabs(event), {passive: false});
    this.#dock.append(make('div', {className: 'dock-head'}, this.#tabs, this.#more, hide));
    for (const list of lists) this.#addList(list);
    this.element = make('div', {className: 'desk'}, this.#column, this.#edge, this.#dock);
    new ResizeObserver(() => this.#lay()).observe(this.element);
    this.#recall();
  }

  isShown(name) {
    if (this.#isAtPage(name)) return Boolean(this.#state.open[name]);
    return this.#dockShown() && this.#state.tab === name;
  }

  // Where else it can stand: {text, act}, or null.
  otherPlace(name) {
    if (!this.#strips.has(name)) return null;
    const isAtPage = this.#isAtPage(name);
    return {
      text: isAtPage ? 'Move beside the Page' : `Move ${strips[name].place} the Page`,
      act: () => this.#moveTo(name, !isAtPage)
    };
  }

  #isAtPage(name) {
    return this.#strips.has(name) && this.#state.atPage[name] === true;
  }

  #moveTo(name, atPage) {
    this.#state.atPage[name] = atPage;
    if (atPage && this.#state.tab === name) this.#state.tab = 'site';
    this.show(name);
    this.#pages.get(name).enter();
  }

  // Shows it, with the keyboard in it, or hides it.
  toggle(name) {
    if (this.isShown(name)) return this.#hide(name);
    this.show(name);
    this.#pages.get(name).enter();
  }

  show(name) {
    if (this.#isAtPage(name)) this.#state.open[name] = true;
    else Object.assign(this.#state, {dock: true, tab: name});
    this.#changed();
  }

  #hide(name) {
    if (!this.#isAtPage(name)) return this.#hideDock();
    this.#state.open[name] = false;
    this.#changed();
    this.#port.leave();
  }

  #hideDock() {
    this.#state.dock = false;
    this.#changed();
    this.#port.leave();
  }

  // --- What stands in it.

  #addStrip(name, frame) {
    const {place} = strips[name];
    const edge = this.#makeEdge(
        'horizontal', `Height of the panel ${name}`, (by) => this.#heighten(name, place === 'above' ? by : -by));
    const hide = button(
        '×', () => this.#hide(name), {className: 'flat', title: 'Hide the panel', aria: {label: 'Hide the panel'}});
    const side = make('div', {className: 'strip-side'}, hide, this.#makeMore(() => name));
    const strip = make('div', {className: 'strip'}, side);
    this.#strips.set(name, {strip, edge, frame});
    place === 'above' ? this.#column.prepend(strip, edge) : this.#column.append(edge, strip);
  }

  #makeMore(nameOf) {
    const more = button('⋯', () => this.#port.openMenu(nameOf(), more), {
      className: 'flat',
      title: 'What can be done with the panel',
      aria: {label: 'Menu of the panel', haspopup: 'menu'}
    });
    return more;
  }

  #addList({name, title, body, enter}) {
    const tab = make('button', {
      type: 'button',
      role: 'tab',
      id: `tab-${name}`,
      textContent: title,
      aria: {controls: `list-${name}`},
      on: {click: (event) => this.#press(event, name), keydown: (event) => this.#stepTabs(event, name)}
    });
    const page = make(
        'div', {className: 'list-page', role: 'tabpanel', id: `list-${name}`, aria: {labelledby: tab.id}}, body);
    this.#pages.set(name, {tab, page, enter});
    this.#tabs.append(tab);
    this.#dock.append(page);
  }

  // By the mouse, what comes is worked in at once: its keys are to reach it. By the keyboard one goes on among them.
  #press(event, name) {
    this.show(name);
    if (event.detail > 0) this.#pages.get(name).enter();
  }

  // Where they have not room enough, a wheel brings the others into sight as well.
  #turnTabs(event) {
    if (event.ctrlKey || this.#tabs.scrollWidth <= this.#tabs.clientWidth) return;
    event.preventDefault();
    this.#tabs.scrollLeft += event.deltaX || event.deltaY;
  }

  #stepTabs(event, name) {
    const names = [...this.#pages.keys()].filter((each) => !this.#isAtPage(each)), at = names.indexOf(name);
    const to = {ArrowLeft: at - 1, ArrowRight: at + 1, Home: 0, End: names.length - 1}[event.key];
    if (event.key === 'Escape') return this.#port.leave();
    if (event.key === 'ArrowDown') return this.#pages.get(name).enter();
    if (to === undefined) return undefined;
    event.preventDefault();
    const next = names[(to + names.length) % names.length];
    this.show(next);
    return this.#pages.get(next).tab.focus();
  }

  // --- Edges that can be moved, by the mouse and by keys.

  #makeEdge(orientation, title, move) {
    const edge = make('div', {
      className: `edge ${orientation}`,
      role: 'separator',
      tabIndex: 0,
      title,
      aria: {orientation, label: title}
    });
    const across = orientation === 'vertical';
    let last = null;
    const place = (event) => (across ? event.clientX : event.clientY);
    edge.addEventListener('pointerdown', (event) => {
      edge.setPointerCapture(event.pointerId);
      last = place(event);
    });
    edge.addEventListener('pointermove', (event) => {
      if (last === null) return;
      const moved = move(place(event) - last);
      last += moved;
    });
    const end = () => {
      last = null;
      this.#keep();
    };
    edge.addEventListener('pointerup', end);
    edge.addEventListener('pointercancel', end);
    edge.addEventListener('keydown', (event) => this.#edgeKey(event, across, move));
    return edge;
  }

  #edgeKey(event, across, move) {
    if (event.key === 'Escape') return this.#port.leave();
    const by =
        across ? {ArrowLeft: -step, ArrowRight: step}[event.key] : {ArrowUp: -step, ArrowDown: step}[event.key];
    if (by === undefined) return;
    event.preventDefault();
    event.stopPropagation();
    move(by);
    this.#keep();
  }

  // Each answers by how much the edge went where it was moved to.
  #widen(by) {
    const before = this.#dock.offsetWidth;
    this.#state.dockWidth = this.#dockWidthWithin(before - by);
    this.#lay();
    return before - this.#dock.offsetWidth;
  }

  #heighten(name, by) {
    const {strip} = this.#strips.get(name);
    const before = strip.offsetHeight;
    this.#state.heights[name] = clampTo(before + by, leastStrip, this.#column.clientHeight - leastPage / 2);
    this.#lay();
    const went = strip.offsetHeight - before;
    return strips[name].place === 'above' ? went : -went;
  }

  #dockWidthWithin(width) {
    return clampTo(width, narrowestDock, this.element.clientWidth - leastPage);
  }

  // --- How large all of it is.

  #isTall() {
    return this.element.clientWidth < 0.9 * this.element.clientHeight;
  }

  #dockShown() {
    const {clientWidth, clientHeight} = this.element;
    return this.#state.dock ?? (this.#isTall() || firstDockWidth(clientWidth, clientHeight) > 0);
  }

  #lay() {
    const {clientWidth, clientHeight} = this.element;
    if (clientWidth === 0) return;
    const isShown = this.#dockShown(), tall = this.#isTall();
    this.element.classList.toggle('tall', tall);
    this.element.classList.toggle('with-dock', isShown);
    this.#dock.hidden = this.#edge.hidden = !isShown;
    const usualWidth = firstDockWidth(clientWidth, clientHeight) || narrowestDock;
    const width = this.#dockWidthWithin(this.#state.dockWidth ?? usualWidth);
    this.#dock.style.width = tall ? '' : `${width}px`;
    this.#edge.setAttribute('aria-valuenow', String(Math.round((100 * (clientWidth - width)) / clientWidth)));
    for (const name of this.#strips.keys()) this.#layStrip(name, clientHeight);
    for (const [name, {tab, page}] of this.#pages) this.#layTab(name, tab, page);
    this.#pages.get(this.#state.tab)?.tab.scrollIntoView({block: 'nearest', inline: 'nearest'});
    this.#port.turned();
  }

  #layStrip(name, whole) {
    const {strip, edge, frame} = this.#strips.get(name);
    const isAtPage = this.#isAtPage(name);
    const home = isAtPage ? strip : this.#pages.get(name).page;
    if (frame.parentElement !== home) home.prepend(frame);
    strip.hidden = edge.hidden = !isAtPage || !this.#state.open[name];
    const height = clampTo(this.#state.heights[name] ?? strips[name].height, leastStrip, 0.45 * whole);
    strip.style.height = `${height}px`;
    edge.setAttribute('aria-valuenow', String(Math.round((100 * height) / whole)));
  }

  #layTab(name, tab, page) {
    const isOpen = this.#state.tab === name && !this.#isAtPage(name);
    tab.hidden = this.#isAtPage(name);
    if (isOpen) this.#more.hidden = page.querySelector('.panel') === null;
    tab.setAttribute('aria-selected', String(isOpen));
    tab.tabIndex = isOpen ? 0 : -1;
    page.hidden = !isOpen;
  }

  // --- As it was before.

  #changed() {
    this.#lay();
    this.#keep();
  }

  // Where nothing can be kept, the next window has the first arrangement.
  async #keep() {
    try {
      await remember(key, JSON.stringify(this.#state));
    } catch {
      // Not worth a word.
    }
  }

  async #recall() {
    try {
      const known = JSON.parse(await remembered(key) ?? 'null');
      if (known) this.#state = {...usual(), ...known};
      for (const part of ['atPage', 'open', 'heights']) this.#state[part] = {...this.#state[part]};
    } catch {
      this.#state = usual();
    }
    const {tab} = this.#state;
    if (!this.#pages.has(tab) || this.#isAtPage(tab)) this.#state.tab = 'site';
    this.#lay();
  }
}
