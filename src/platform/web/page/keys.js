// Which keys mean what, as far as that can be told without a window.

const enter = 13, backspace = 8, escape = 27;
const named = {
  Enter: enter,
  Backspace: backspace,
  Escape: escape
};
const firstPrintable = 32, lastPrintable = 126;

const steps = {
  ArrowLeft: 'left',
  ArrowRight: 'right',
  ArrowUp: 'up',
  ArrowDown: 'down',
  PageUp: 'page_left',
  PageDown: 'page_right',
};

function isFunctionKey(key) {
  return /^F\d+$/.test(key);
}

// Without Control and its like, and no function key: what stands for a letter or a move.
export function isPlain(event) {
  return !event.ctrlKey && !event.altKey && !event.metaKey && !isFunctionKey(event.key);
}

// The code under which the program knows a key; 0 for keys that it is not to see. What was typed, not the key:
// so every keyboard layout is served. With AltGr some type what others type plainly.
export function keyCode(event) {
  const isTyped = event.key.length === 1 && (isPlain(event) || event.getModifierState?.('AltGraph'));
  if (!isTyped) return isPlain(event) ? named[event.key] ?? 0 : 0;
  const code = event.key.charCodeAt(0);
  return code >= firstPrintable && code <= lastPrintable ? code : 0;
}

// Where the cursor of the page goes by it; empty where nowhere.
export function stepOf(event) {
  if (!isPlain(event)) return '';
  if (event.key === 'Tab') return event.shiftKey ? 'previous' : 'next';
  return steps[event.key] ?? '';
}
