// The keys of the actions in a browser. Most are those of the table that comes with the program; the ones that
// browsers keep for themselves have another one here.

// Windows and tabs are the browser's: in Chromium and Firefox no page ever hears of these keys, or not in all of
// their versions and systems (Ctrl+Q ends Firefox on some). All others of the table reach the page in both, and it
// keeps the browser from acting on them. Alt with a letter is free where no menu here has that letter.
const inBrowser = {
  'Ctrl+N': 'Alt+N',
  'Ctrl+T': 'Alt+T',
  'Ctrl+W': 'Alt+W',
  'Ctrl+Q': 'Alt+Q',
  'Ctrl+Shift+N': 'Alt+Shift+N',
  'Ctrl+Shift+T': 'Alt+Shift+T',
  'Ctrl+Shift+W': 'Alt+Shift+W',
  'Ctrl+Shift+P': 'Alt+Shift+P',
  'Ctrl+Shift+Q': 'Alt+Shift+Q',
};

export function keyInBrowser(key) {
  return inBrowser[key] ?? key;
}

// What the page has beside what the program knows of.
export const ownActions = [
  {
    id: 'folder',
    menu: 'view',
    text: 'Folder',
    key: 'Alt+7',
    other_key: '',
    window: true,
    group: false,
    switches: true,
    after: 'journal'
  },
];

// The rows of the table as a browser can have them: its own among them, with keys that reach the page.
export function actionsInBrowser(actions) {
  const rows = actions.map((row) => ({
    ...row,
    key: keyInBrowser(row.key),
    other_key: keyInBrowser(row.other_key ?? ''),
  }));
  for (const own of ownActions) {
    const at = rows.findIndex((row) => row.id === own.after);
    rows.splice(at < 0 ? rows.length : at + 1, 0, own);
  }
  return rows;
}

const names = {
  ArrowLeft: 'Left',
  ArrowRight: 'Right',
  ArrowUp: 'Up',
  ArrowDown: 'Down',
  PageUp: 'PgUp',
  PageDown: 'PgDown',
  Insert: 'Ins',
  Delete: 'Del',
  Enter: 'Return',
  ' ': 'Space',
  Escape: 'Esc',
};

// The name of the key itself. With Alt or Shift a key may type something else than what stands on it: letters
// and digits are then told by their place.
function nameOf(event) {
  const key = event.key;
  if (/^[a-z]$/i.test(key)) return key.toUpperCase();
  const letter = /^Key([A-Z])$/.exec(event.code ?? ''), digit = /^Digit(\d)$/.exec(event.code ?? '');
  const turned = event.altKey || event.ctrlKey || event.metaKey;
  if (digit && (turned || event.shiftKey)) return digit[1];
  if (letter && turned) return letter[1];
  return names[key] ?? key;
}

// "Ctrl+Shift+T" as the table writes it. On a Mac Command does what Control does elsewhere, as well as Control.
export function shortcutOf(event, isMac = false) {
  const control = event.ctrlKey || (isMac && event.metaKey);
  if (event.metaKey && !isMac) return '';
  const held = [control && 'Ctrl', event.altKey && 'Alt', event.shiftKey && 'Shift'];
  return [...held.filter(Boolean), nameOf(event)].join('+');
}

// From key to the action that it starts.
export function shortcutTable(rows) {
  const table = new Map();
  for (const row of rows) {
    for (const key of [row.key, row.other_key])
      if (key && !table.has(key)) table.set(key, row.id);
  }
  return table;
}

// A letter alone, or an arrow: keys that only count where nothing is typed.
export function isPlainShortcut(key) {
  return !/^(Ctrl|Alt)\+/.test(key) && !/^(Shift\+)?F\d+$/.test(key);
}

// As a menu shows it.
export function shownKey(key, isMac = false) {
  if (!isMac) return key;
  return key.replace('Ctrl+', '⌘').replace('Alt+', '⌥').replace('Shift+', '⇧');
}

const keyColumns = 28;

function keysOf(row) {
  return row.other_key ? `${row.key} or ${row.other_key}` : row.key;
}

// The page of keys with the keys of the browser: each line of an action that has another one here.
export function keysPage(text, actions) {
  let page = text;
  for (const row of actions) {
    const own = {key: keyInBrowser(row.key), other_key: keyInBrowser(row.other_key ?? '')};
    if (keysOf(own) === keysOf(row)) continue;
    page = page.replace(`${padded(keysOf(row))}${row.text}\n`, () => `${padded(keysOf(own))}${row.text}\n`);
  }
  const added = ownActions.map((row) => `${padded(keysOf(row))}${row.text}\n`).join('');
  return `${page}\nIn the browser\n${padded('F10')}To the menus\n${added}`;
}

function padded(keys) {
  return keys.padEnd(Math.max(keys.length + 2, keyColumns));
}
