// The line at the lower edge.
import {make, say} from './dom.js';

const mentionStays = 6000;  // ms

export class StatusLine {
  element;
  #fields = {};
  #mention;
  #timer = 0;

  constructor() {
    const field = (name, what) => {
      this.#fields[name] = make('span', {className: `field ${name}`, aria: {label: what}, role: 'group'});
      return this.#fields[name];
    };
    this.#mention = make('span', {className: 'mention', role: 'status'});
    this.element = make('footer', {className: 'status', aria: {label: 'Status'}},
        field('waits_for', 'What the program waits for'), field('year', 'Year under the mouse and of the bar'),
        field('values', 'Values of that year'), field('written', 'What was written last'),
        field('changes', 'Changes not written'), field('careful', 'What is done carefully'), field('warning', 'Warning'), this.#mention);
  }

  show(status, journalTrouble) {
    const {waits_for = '', year = '', values = '', written = '', changes = '', warning = '', careful = ''} = status ?? {};
    const warnings = [warning, journalTrouble && `no journal: ${journalTrouble}`].filter(Boolean);
    this.#say('waits_for', waits_for && `Waits for ${waits_for}`);
    this.#say('year', year);
    this.#say('values', values);
    this.#say('written', written);
    this.#say('changes', changes);
    this.#say('careful', careful);
    this.#fields.careful.hidden = careful === '';
    this.#say('warning', warnings.length === 0 ? '' : `⚠ ${warnings.join('; ')}`);
    this.#fields.warning.hidden = warnings.length === 0;
  }

  // For a moment in place of the rest.
  mention(text) {
    say(this.#mention, text);
    this.element.classList.toggle('mentions', text !== '');
    clearTimeout(this.#timer);
    if (text !== '') this.#timer = setTimeout(() => this.mention(''), mentionStays);
  }

  #say(name, text) {
    say(this.#fields[name], text);
    this.#fields[name].title = text;
  }
}
