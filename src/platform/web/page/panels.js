// The panels around the page: what they ask the studies' worker, and what is done in them.
import {copyText, textOfTable} from './clipboard.js';
import {askBeside} from './dialogs.js';
import {make} from './dom.js';
import {popUp} from './menus.js';
import {PanelArea} from './panel_area.js';

const highestPicture = 12_000;             // panel units
const sheetAcross = 210, sheetDown = 297;  // of a sheet of paper, upright
const underThePage = ['rings', 'pointers'];

export class Panels {
  #port;
  #areas = new Map();
  #frames = new Map();
  #asks = 0;
  #waiting = new Map();  // for the answers, by the number of the question
  #tables = new Map();   // for tables, by panel
  #needsWhole = false;   // a situation that builds on none before: the worker knows none

  // `port`: send(message) to the studies, palette, years() -> {left, right} in pixels of the window, leave(),
  // mention(text), picture(deed, marks, name), otherPlace(name) -> {text, act} or null.
  constructor(panels, port) {
    this.#port = port;
    for (const {name, title} of panels) this.#make(name, title);
  }

  names() {
    return [...this.#areas.keys()];
  }

  // A panel with its heading.
  frame(name) {
    return this.#frames.get(name);
  }

  area(name) {
    return this.#areas.get(name);
  }

  get anySeen() {
    return [...this.#areas.values()].some((area) => area.isSeen);
  }

  #make(name, title) {
    const area = new PanelArea(title, {
      palette: this.#port.palette,
      ask: (view) => this.#ask(name, view),
      click: (ask, spot) => this.#click(name, ask, spot),
      axis: () => (underThePage.includes(name) ? this.#port.years() : null),
      leave: () => this.#port.leave(),
      menu: (x, y) => this.#openMenu(name, x, y),
    });
    area.element.addEventListener('keydown', (event) => this.#key(event, name));
    this.#areas.set(name, area);
    this.#frames.set(name,
        make('section', {className: `panel-frame ${name}`, aria: {label: title}}, area.canvas, area.element,
            make('div', {className: 'focus-frame'})));
  }

  // --- What they show.

  // The session stands so now; null where nothing is new to study. Each situation builds on the ones before.
  stand(situation, isWhole) {
    if (!situation || (this.#needsWhole && !isWhole)) return;
    this.#needsWhole = false;
    this.#port.send({do: 'stand', situation});
    this.renew();
  }

  // Something new was found.
  renew() {
    for (const area of this.#areas.values()) area.renew();
  }

  // Some came into sight, or all may stand elsewhere.
  lookAgain() {
    for (const area of this.#areas.values()) area.lookAgain();
  }

  // The worker has gone, and another one knows nothing yet.
  forget() {
    this.#waiting.clear();
    this.#tables.clear();
    for (const area of this.#areas.values()) area.forget();
    this.#needsWhole = true;
  }

  #ask(name, view) {
    const ask = ++this.#asks;
    this.#port.send({do: 'panel', name, ask, ...view});
    return new Promise((resolve) => this.#waiting.set(ask, resolve));
  }

  // An answer that nobody waits for any more is dropped.
  answer(panel) {
    this.#waiting.get(panel.ask)?.(panel);
    this.#waiting.delete(panel.ask);
  }

  answerTable({name, text}) {
    this.#tables.get(name)?.(text);
    this.#tables.delete(name);
  }

  // --- What is done in them.

  #click(name, ask, spot) {
    this.#port.send({do: 'panel_click', name, ask, spot});
    this.renew();
  }

  stepCore(direction) {
    this.#port.send({do: 'step_core', direction});
  }

  #key(event, name) {
    const isCopy = (event.ctrlKey || event.metaKey) && event.shiftKey && event.key.toUpperCase() === 'C';
    const isMenu = event.key === 'ContextMenu' || (event.key === 'F10' && event.shiftKey);
    if (!isCopy && !isMenu) return;
    event.preventDefault();
    event.stopPropagation();
    isCopy ? this.#copyTable(name) : this.openMenu(name, this.area(name).element);
  }

  // What can be done with a panel, below a button for it or in the corner of the panel itself.
  openMenu(name, element) {
    const {left, bottom, top} = element.getBoundingClientRect();
    this.#openMenu(name, left, element.localName === 'button' ? bottom : top);
  }

  #openMenu(name, x, y) {
    const across = () => Math.floor((this.area(name).view().width * sheetDown) / sheetAcross);
    const place = this.#port.otherPlace(name);
    popUp('Panel',
        [
          ...(place ? [{id: 'other_place', ...place}] : []),
          {id: 'copy_csv', group: true, text: 'Copy as CSV', key: 'Ctrl+Shift+C', act: () => this.#copyTable(name)},
          {id: 'copy_picture', text: 'Copy as a Picture', act: () => this.#picture('copy', name, highestPicture)},
          {
            id: 'save_panel',
            text: 'Save the Panel as a Picture…',
            act: () => this.#picture('save', name, highestPicture)
          },
          {id: 'print_panel', text: 'Print the Panel…', act: () => this.#picture('print', name, across())},
        ],
        x, y);
  }

  async #copyTable(name) {
    const table = new Promise((resolve) => this.#tables.set(name, resolve));
    this.#port.send({do: 'csv', name});
    try {
      await copyText(table.then(textOfTable));
      this.#port.mention('Copied as CSV');
    } catch (trouble) {
      this.#port.mention(trouble.message);
    }
  }

  // All of the panel, and where it is higher than that, so much of it from what is looked at on.
  async #pictured(name, highest) {
    const view = this.area(name).view();
    const {content_height: all} = await this.#ask(name, view);
    const height = Math.min(Math.max(all, 2), highest);
    return this.#ask(name, {...view, height, scroll: height < highest ? 0 : view.scroll});
  }

  #picture(deed, name, highest) {
    const marks = this.#pictured(name, highest).then((panel) => panel.marks);
    this.#port.picture(deed, marks, name);
  }
}

// As what a picture is saved; `chosen` is not called where it is not.
export function askForKind(chosen) {
  const kinds = ['png', 'svg'];
  askBeside({
    text: 'Save as a picture',
    more: 'A drawing can be made larger without loss, and changed in other programs.',
    answers: ['PNG Picture', 'SVG Drawing', 'Cancel'],
    chosen: (answer) => kinds[answer] && chosen(kinds[answer]),
  });
}
