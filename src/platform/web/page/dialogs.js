// Dialogs in front of everything else. The browser keeps the keyboard in them.
import {copyText} from './clipboard.js';
import {button, freshId, make} from './dom.js';

// A dialog that is open: `close()` takes it away without an answer, as does the end of what `until` stands for.
function open({title, content, buttons, onEscape, wide = false, until}) {
  const heading = make('h2', {textContent: title, id: freshId('title')});
  const row = make('div', {className: 'answers'}, ...buttons);
  const dialog =
      make('dialog', {className: wide ? 'wide' : '', aria: {labelledby: heading.id}}, heading, ...content, row);
  const before = document.activeElement;
  const close = () => {
    until?.removeEventListener('abort', close);
    if (!dialog.isConnected) return;
    dialog.close();
    dialog.remove();
    if (document.activeElement === document.body || document.activeElement === null) before?.focus?.();
  };
  dialog.addEventListener('cancel', (event) => {
    event.preventDefault();
    onEscape();
  });
  dialog.addEventListener('keydown', (event) => stepInRow(event, row));
  document.body.append(dialog);
  dialog.showModal();
  until?.addEventListener('abort', close);
  return {dialog, close};
}

// Left and Right go from answer to answer.
function stepInRow(event, row) {
  const by = {ArrowLeft: -1, ArrowRight: 1}[event.key];
  const all = [...row.querySelectorAll('button')];
  const at = all.indexOf(document.activeElement);
  if (!by || at < 0) return;
  event.preventDefault();
  all[(at + by + all.length) % all.length].focus();
}

function paragraphs(text) {
  return text.split('\n').filter((line) => line !== '').map((line) => make('p', {textContent: line}));
}

// Asks beside the program: `chosen` is told the number of the answer, from 0. Escape gives the last one.
export function askBeside({text, more = '', answers, chosen, until}) {
  let box = null;
  const answer = (number) => {
    box.close();
    chosen(number);
  };
  const buttons =
      answers.map((words, number) => button(words, () => answer(number), {className: number === 0 ? 'first' : ''}));
  box = open({title: text, content: paragraphs(more), buttons, onEscape: () => answer(answers.length - 1), until});
  buttons[0].focus();
  return box;
}

export function tell(text, more = '') {
  return askBeside({text, more, answers: ['OK'], chosen: () => {}});
}

// Asks for something in a field; `given` gets what was typed, and is not called where it is nothing.
export function askInField({title, label, field, read, given, until}) {
  let box = null;
  field.id = freshId('field');
  const accept = () => {
    const value = read(field);
    field.setAttribute('aria-invalid', String(value === null));
    if (value === null) return field.focus();
    box.close();
    given(value);
  };
  const cancel = () => box.close();
  field.addEventListener('keydown', (event) => {
    if (event.key !== 'Enter' || event.isComposing) return;
    event.preventDefault();
    accept();
  });
  const buttons = [button('OK', accept, {className: 'first'}), button('Cancel', cancel)];
  const words = make('label', {textContent: label, htmlFor: field.id});
  box = open({title, content: [words, field], buttons, onEscape: cancel, until});
  field.focus();
  field.select();
  return box;
}

const furthest = 99_999;

export function askForNumber({title, label, value, given, until}) {
  const field = make(
      'input', {type: 'number', step: '1', min: String(-furthest), max: String(furthest), value: String(value)});
  const read = () => {
    const number = Number(field.value);
    return field.value !== '' && Number.isInteger(number) && Math.abs(number) <= furthest ? number : null;
  };
  return askInField({title, label, field, read, given, until});
}

export function askForText({title, label, value, given, until}) {
  const field = make('input', {type: 'text', value, maxLength: 1000, autocomplete: 'off'});
  return askInField({title, label, field, read: () => oneLine(field.value), given, until});
}

export function oneLine(text) {
  return text.replace(/\s+/gu, ' ').trim();
}

// A text to read, to copy, and where it is given a name to save.
export function showText({title, text, name = '', save}) {
  const field =
      make('textarea', {readOnly: true, value: text, wrap: 'off', spellcheck: false, aria: {label: title}});
  let box = null;
  const copied = make('span', {className: 'said', role: 'status'});
  const copy = async () => {
    try {
      await copyText(text);
      copied.textContent = 'Copied';
    } catch (trouble) {
      copied.textContent = trouble.message;
    }
  };
  const buttons = [copied, button('Copy', copy)];
  if (name !== '') buttons.push(button('Save…', () => save(name, text)));
  buttons.push(button('Close', () => box.close(), {className: 'first'}));
  box = open({title, content: [field], buttons, onEscape: () => box.close(), wide: true});
  field.setSelectionRange(0, 0);
  field.focus();
  field.scrollTop = 0;
  return box;
}

// --- What the program asks.

function isSame(a, b) {
  return a.text === b.text && a.more === b.more && a.answers.join('\n') === b.answers.join('\n');
}

// The question that the program stands at: there are never two at once, and one that goes on standing stays open.
export class QuestionBox {
  #chosen;
  #question = null;
  #box = null;

  // `chosen(answer, stays)`: the number of the answer, and whether it is the one by which nothing is done.
  constructor(chosen) {
    this.#chosen = chosen;
  }

  get isOpen() {
    return this.#box !== null;
  }

  show(question) {
    if (!question || question.answers.length === 0) return this.close();
    if (this.#box && isSame(this.#question, question)) return;
    this.close();
    this.#question = question;
    const last = question.answers.length - 1;
    this.#box = askBeside({
      ...question,
      chosen: (answer) => {
        this.#box = null;
        this.#chosen(answer, answer === last);
      },
    });
  }

  // It went without an answer.
  close() {
    this.#box?.close();
    this.#box = null;
  }
}

export function isDialogOpen() {
  return document.querySelector('dialog[open]') !== null;
}
