// The journal beside the page: what was decided, the way back and on, and the notes.
import {oneLine} from './dialogs.js';
import {button, make, say} from './dom.js';

export function tipOf(decision, isTakenBack) {
  if (!decision) return 'As it was before the first decision';
  const lines = [decision.what];
  if (decision.before || decision.after) lines.push(`${decision.before} → ${decision.after}`);
  if (decision.note) lines.push(`Note: ${decision.note}`);
  if (decision.wrote) lines.push(`${decision.wrote} was written, and stays`);
  if (decision.final) lines.push('Cannot be taken back');
  if (isTakenBack) lines.push('Taken back');
  return lines.join('\n');
}

// One row: a place in time, and the decision that led there. The first has none.
class Row {
  element;
  #what = make('td', {role: 'gridcell', className: 'what'});
  #note = make('td', {role: 'gridcell', className: 'note'});

  constructor() {
    this.element = make('tr', {role: 'row', tabIndex: -1}, this.#what, this.#note);
  }

  get noteCell() {
    return this.#note;
  }

  show(decision, place, taken) {
    const isTakenBack = place > taken, isHere = place === taken;
    say(this.#what, `${isHere ? '▶ ' : ''}${decision ? decision.what : 'The beginning'}`);
    if (!this.#note.firstElementChild) say(this.#note, decision?.note ?? '');
    this.element.title = tipOf(decision, isTakenBack);
    this.element.classList.toggle('taken-back', isTakenBack);
    this.element.classList.toggle('here', isHere);
    isHere ? this.element.setAttribute('aria-current', 'step') : this.element.removeAttribute('aria-current');
    this.element.setAttribute('aria-description', isTakenBack ? 'taken back' : '');
  }
}

export class JournalPanel {
  element;
  #port;
  #rows = [];
  #body = make('tbody');
  #list;
  #buttons = {};
  #stand = null;
  #at = 0;  // the row at which the keyboard is

  // `port`: act(id), goTo(decisions), note(decision, text), methods(), leave().
  constructor(port) {
    this.#port = port;
    const head = make('thead', {},
        make('tr', {}, make('th', {textContent: 'Decision', scope: 'col'}),
            make('th', {textContent: 'Note', scope: 'col'})));
    const table = make('table', {role: 'grid', aria: {label: 'Decisions'}}, head, this.#body);
    this.#list = make('div', {className: 'list', on: {keydown: (event) => this.#key(event)}}, table);
    this.#body.addEventListener('click', (event) => this.#press(event));
    this.#body.addEventListener('dblclick', (event) => this.#pressTwice(event));
    const row = make('div', {className: 'answers'},
        this.#button('undo', 'Undo', 'Takes the last decision back', () => port.act('undo')),
        this.#button('redo', 'Redo', 'Takes again what was taken back last', () => port.act('redo')),
        this.#button('methods', 'Methods…', 'The text for the methods section of a paper', () => port.methods()));
    this.element = make('div', {className: 'journal'}, this.#list, row);
  }

  #button(name, text, what, pressed) {
    this.#buttons[name] = button(text, pressed, {disabled: true, title: what});
    return this.#buttons[name];
  }

  show(stand) {
    const moved = this.#stand?.taken !== stand?.taken || this.#rows.length !== (stand?.decisions.length ?? -1) + 1;
    this.#stand = stand;
    this.#buttons.undo.disabled = !stand?.can_undo;
    this.#buttons.undo.title = stand?.undo_says || 'Takes the last decision back';
    this.#buttons.redo.disabled = !stand?.can_redo;
    this.#buttons.methods.disabled = !stand?.wait;
    this.#fitRows(stand ? stand.decisions.length + 1 : 0);
    this.#rows.forEach((row, place) => row.show(stand.decisions[place - 1], place, stand.taken));
    if (stand && moved) this.#mark(stand.taken, false);
  }

  enter() {
    (this.#rows[this.#at]?.element ?? this.#buttons.methods).focus();
  }

  #fitRows(count) {
    while (this.#rows.length > count) this.#rows.pop().element.remove();
    while (this.#rows.length < count) {
      this.#rows.push(new Row());
      this.#body.append(this.#rows.at(-1).element);
    }
  }

  #mark(place, withFocus) {
    this.#at = Math.min(Math.max(place, 0), this.#rows.length - 1);
    this.#rows.forEach((row, k) => {
      row.element.tabIndex = k === this.#at ? 0 : -1;
      row.element.setAttribute('aria-selected', String(k === this.#at));
    });
    const element = this.#rows[this.#at]?.element;
    element?.scrollIntoView?.({block: 'nearest'});
    if (withFocus) element?.focus();
  }

  #placeOf(event) {
    return this.#rows.findIndex((row) => row.element.contains(event.target));
  }

  // A click on the note of the row that is marked begins to edit it, as in other lists.
  #press(event) {
    const place = this.#placeOf(event);
    if (place < 0 || event.target instanceof HTMLInputElement) return;
    const wasMarked = place === this.#at && this.#list.contains(document.activeElement);
    const onNote = this.#rows[place].noteCell.contains(event.target);
    if (onNote && place > 0 && wasMarked && this.#pressed === place) return this.#edit(place);
    this.#pressed = place;
    this.#mark(place, true);
  }

  #pressed = -1;  // the row that was clicked last

  #pressTwice(event) {
    const place = this.#placeOf(event);
    if (place < 0 || event.target instanceof HTMLInputElement) return;
    const onNote = this.#rows[place].noteCell.contains(event.target);
    onNote && place > 0 ? this.#edit(place) : this.#goTo(place);
  }

  #goTo(place) {
    if (this.#stand && place !== this.#stand.taken) this.#port.goTo(place);
  }

  #key(event) {
    if (event.target instanceof HTMLInputElement) return;
    const last = this.#rows.length - 1;
    const to = {
      ArrowUp: this.#at - 1,
      ArrowDown: this.#at + 1,
      Home: 0,
      End: last,
      PageUp: this.#at - 10,
      PageDown: this.#at + 10
    }[event.key];
    if (to !== undefined) this.#mark(to, true);
    else if (event.key === 'Enter') this.#goTo(this.#at);
    else if (event.key === 'F2' && this.#at > 0) this.#edit(this.#at);
    else if (event.key === 'Escape') this.#port.leave();
    else return;
    event.preventDefault();
    event.stopPropagation();
  }

  #edit(place) {
    const cell = this.#rows[place].noteCell;
    if (cell.firstElementChild) return;
    const before = this.#stand.decisions[place - 1].note;
    const field = make('input', {type: 'text', value: before, maxLength: 1000, aria: {label: 'Note'}});
    let isOver = false;
    const end = (keep) => {
      if (isOver) return;
      isOver = true;
      const hadFocus = document.activeElement === field;
      const note = keep ? oneLine(field.value) : before;
      cell.textContent = note;
      if (note !== before) this.#port.note(place - 1, note);
      if (hadFocus) this.#mark(place, true);
    };
    field.addEventListener('blur', () => end(true));
    field.addEventListener('keydown', (event) => {
      if (event.key === 'Enter' && !event.isComposing) end(true);
      if (event.key === 'Escape') end(false);
      event.stopPropagation();
    });
    cell.replaceChildren(field);
    field.focus();
    field.select();
  }
}
