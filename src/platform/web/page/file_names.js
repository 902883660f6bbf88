// Names of files: which of them make a list, and which may be read at all.
//
// A folder is worked in through its list, Vorn.fil, one name a line. The rules are those of the desktop
// (platform/qt/file_opening.cpp and folder_choice.cpp).

export const listName = 'Vorn.fil';
export const mostNames = 100;
export const longestName = 60;       // bytes
export const largestFile = 2 ** 28;  // bytes
export const largestFolder = 2 ** 30;
// What no list names and no ending tells: beyond this it is not read, as it is hardly meant.
export const largestUnnamed = 2 ** 24;

const ringWidths = /\.(rwl|raw|rwm|fh)$/i;
const chronologies = /\.crn$/i;
const knownToTheProgram = /\.(fil|trw|prn|rww|txt|dat)$/i;

export const bytesOf = text => new TextEncoder().encode(text);

// The text of a file: UTF-8 where it is that, otherwise one character a byte.
export function textOf(bytes) {
  try {
    return new TextDecoder('utf-8', {fatal: true, ignoreBOM: true}).decode(bytes);
  } catch {
    return new TextDecoder('latin1').decode(bytes);
  }
}

export const lastPart = path => path.slice(path.lastIndexOf('/') + 1);

// "plots/a.rwl": no part is empty, "." or "..", and none holds a character that ends a name.
export function isPlainPath(path) {
  if (typeof path !== 'string' || path.length === 0) return false;
  return !path.includes('\0') && path.split('/').every(part => part !== '' && part !== '.' && part !== '..');
}

// What the program keeps for itself beside the files: the journal and what belongs to it.
export const isKept = path => path.startsWith('.vorn/');

const byUnits = (a, b) => (a < b ? -1 : a > b ? 1 : 0);

// Ring widths first, chronologies behind them.
export function inOrderOfList(names) {
  const sorted = [...new Set(names)].sort(byUnits);
  return [
    ...sorted.filter(name => !chronologies.test(name)), ...sorted.filter(name => chronologies.test(name))
  ];
}

// The names in a folder that look like ring widths and, behind them, those that look like chronologies, by
// their endings; a list may not take them all.
export function namesForList(names) {
  const fitting = names.filter(
      name => !name.startsWith('.') && !name.includes('/') && !name.includes('\n') &&
          (ringWidths.test(name) || chronologies.test(name)) && bytesOf(name).length <= longestName &&
          name.toLowerCase() !== 'edit.raw');
  return inOrderOfList(fitting);
}

// Why these names cannot stand in a list; empty where they can.
export function troubleWithNames(names) {
  if (names.length === 0) return 'There is no file among them.';
  if (names.length > mostNames) return `A list takes ${mostNames} files, and these are ${names.length}.`;
  const wrong = names.find(name => bytesOf(name).length > longestName || name.includes('\n'));
  if (wrong === undefined) return '';
  return `${wrong}: a name in the list has at most ${longestName} characters, on one line.`;
}

export const listBytes = names => bytesOf(names.join('\n') + '\n');

export function firstFreeName(name, taken) {
  for (let number = 1;; ++number) {
    if (!taken.has(`${name}.${number}`)) return `${name}.${number}`;
  }
}

// What a list names, be it a file that can be looked for or not.
export function linesOfList(bytes) {
  const lines = textOf(bytes).split(/\r\n|\r|\n/).slice(0, mostNames);
  return lines.map(line => line.trimEnd()).filter(line => line !== '');
}

// The names that a list holds, as far as a file can be looked for under them.
export const namesInList = bytes => linesOfList(bytes).filter(isPlainPath);

export function shownSize(bytes) {
  if (bytes < 1000) return bytes === 1 ? '1 byte' : `${bytes} bytes`;
  if (bytes < 999500) return `${(bytes / 1000).toPrecision(3)} kB`;
  return `${(bytes / 1e6).toPrecision(3)} MB`;
}

export function shownNames(names, most = 12) {
  if (names.length <= most) return names.join(', ');
  return `${names.slice(0, most).join(', ')} and ${names.length - most} more`;
}

// Which files of a folder are to be read, and why others are left out. `entries` have path and size; `named`
// are the paths that a list in the folder names. Files beside the list are taken, because the program may
// write there; files in folders below only where they are named, or kept by the program.
export function chooseEntries(entries, named) {
  const taken = [], leftOut = [];
  const seen = new Set();
  let total = 0;
  const rank = entry => (named.has(entry.path) ? 0 : isExpected(entry.path) ? 1 : 2);
  const likeliestFirst = [...entries].sort((a, b) => rank(a) - rank(b) || byUnits(a.path, b.path));
  for (const entry of likeliestFirst) {
    if (seen.has(entry.path) || !mayBeRead(entry.path, named)) continue;
    seen.add(entry.path);
    const why = reasonToLeave(entry, rank(entry), total);
    if (why) {
      leftOut.push({path: entry.path, why});
    } else {
      total += entry.size;
      taken.push(entry);
    }
  }
  return {taken, leftOut};
}

const isExpected = path =>
    ringWidths.test(path) || chronologies.test(path) || knownToTheProgram.test(path) || isKept(path);

function mayBeRead(path, named) {
  if (!isPlainPath(path)) return false;
  return !path.includes('/') || named.has(path) || isKept(path);
}

function reasonToLeave({size}, rank, total) {
  if (size > largestFile)
    return `it has ${shownSize(size)}, and no file may have more than ${shownSize(largestFile)}`;
  if (total + size > largestFolder)
    return `with it the files would take more than ${shownSize(largestFolder)} of memory`;
  if (rank === 2 && size > largestUnnamed)
    return `it has ${shownSize(size)}, and neither a list nor its ending says that it is meant`;
  return '';
}
