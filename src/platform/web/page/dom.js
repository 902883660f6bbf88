// Elements of the page, made without markup: whatever is told reaches them as text alone.

// `what`: members of the element, and under `aria`, `data` and `on` its attributes and listeners.
export function make(tag, what = {}, ...children) {
  const element = document.createElement(tag);
  const {aria = {}, role, data = {}, on = {}, ...members} = what;
  if (role) element.setAttribute('role', role);
  for (const [name, value] of Object.entries(aria)) element.setAttribute(`aria-${name}`, value);
  Object.assign(element.dataset, data);
  Object.assign(element, members);
  for (const [name, listener] of Object.entries(on)) element.addEventListener(name, listener);
  element.append(...children);
  return element;
}

export function button(text, pressed, what = {}) {
  return make('button', {type: 'button', textContent: text, ...what, on: {click: pressed, ...what.on}});
}

// Says something where it differs: a text that is set anew is read out anew.
export function say(element, text) {
  if (element.textContent !== text) element.textContent = text;
}

let names = 0;
export function freshId(what) {
  names += 1;
  return `${what}-${names}`;
}

// Whether keys are typed into the element, and are none of the program's.
export function takesTyping(element) {
  return element instanceof HTMLInputElement || element instanceof HTMLTextAreaElement ||
      element instanceof HTMLSelectElement || Boolean(element?.isContentEditable);
}

export const isMac = /^(Mac|iP)/.test(globalThis.navigator?.platform ?? '');
