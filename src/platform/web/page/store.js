// What is kept in this browser, on this machine: folders with their files, and settings.
//
// One database with three tables:
//   folders   id, name, kind ("copy" "examples" "disk"), handle (of a folder on the disk), used (time), files
//   and bytes (how
//             many), holder and beat (who has it open, and when that was last said)
//   files     folder, path, bytes, time, written (whether the program wrote it)
//   settings  key, value
//
// Where the browser keeps nothing (some private windows, a disk that is full) everything here fails with a
// StoreTrouble that says so in words; who holds the files goes on in memory.

const databaseName = 'vorn';
const version = 1;
const beatEvery = 10000;  // milliseconds
const beatLasts = 90000;  // a page in the background may be let run once a minute alone

export class StoreTrouble extends Error {}

function wordsOf(error) {
  if (error instanceof StoreTrouble) return error.message;
  if (error?.name === 'QuotaExceededError') return 'the room that this browser gives to pages is used up';
  return error?.message || 'this browser does not say why';
}

const troubleOf = error => (error instanceof StoreTrouble ? error : new StoreTrouble(wordsOf(error)));

function makeTables(database) {
  database.createObjectStore('folders', {keyPath: 'id', autoIncrement: true});
  const files = database.createObjectStore('files', {keyPath: ['folder', 'path']});
  files.createIndex('folder', 'folder');
  database.createObjectStore('settings', {keyPath: 'key'});
}

function openDatabase() {
  return new Promise((resolve, reject) => {
    const request = indexedDB.open(databaseName, version);
    request.onupgradeneeded = () => makeTables(request.result);
    request.onsuccess = () => resolve(request.result);
    request.onerror = () => reject(request.error);
    request.onblocked = () => reject(new StoreTrouble('another window with an older Vorn is open'));
  });
}

let opened = null;

// Opened once; where it failed it is tried again, and so after the browser has closed it.
async function database() {
  opened ??= openDatabase().then(found => {
    found.onversionchange = () => found.close();
    found.onclose = () => (opened = null);
    return found;
  });
  try {
    return await opened;
  } catch (error) {
    opened = null;
    throw troubleOf(error);
  }
}

function begin(found, tables, mode) {
  try {
    return found.transaction(tables, mode, {durability: 'strict'});
  } catch (error) {
    opened = null;
    throw error;
  }
}

// Does `work`, which gets the tables and puts requests, in one transaction, whole or not at all. What `work`
// answers may be a request: then its result is the answer.
async function within(tables, mode, work) {
  const found = await database();
  return new Promise((resolve, reject) => {
    let answer, failure = null;
    try {
      const transaction = begin(found, tables, mode);
      transaction.oncomplete = () => resolve(answer instanceof IDBRequest ? answer.result : answer);
      transaction.onabort = () => reject(troubleOf(failure || transaction.error));
      const stop = error => {
        failure = error;
        transaction.abort();
      };
      answer = work(Object.fromEntries(tables.map(name => [name, transaction.objectStore(name)])), stop);
    } catch (error) {
      reject(troubleOf(error));
    }
  });
}

// --- Settings.

export async function remember(key, value) {
  await within(['settings'], 'readwrite', ({settings}) => settings.put({key, value}));
}

export async function remembered(key) {
  const row = await within(['settings'], 'readonly', ({settings}) => settings.get(key));
  return row?.value;
}

// --- Folders.

// The latest first.
export async function keptFolders() {
  const all = await within(['folders'], 'readonly', ({folders}) => folders.getAll());
  return all.sort((a, b) => b.used - a.used);
}

const rangeOf = id => IDBKeyRange.only(id);

export function keptFiles(id) {
  return within(['files'], 'readonly', ({files}) => files.index('folder').getAll(rangeOf(id)));
}

// Returns the folder's id. `files` have path, bytes, time and written.
export async function keepFolder({name, kind, handle = null}, files) {
  const folder =
      {name, kind, handle, used: Date.now(), files: files.length, bytes: sumOf(files), holder: '', beat: 0};
  let id;
  await within(['folders', 'files'], 'readwrite', tables => {
    tables.folders.add(folder).onsuccess = event => {
      id = event.target.result;
      for (const file of files) tables.files.put({...file, folder: id});
    };
  });
  return id;
}

const sumOf = files => files.reduce((sum, file) => sum + file.bytes.length, 0);

export async function forgetFolder(id) {
  await within(['folders', 'files'], 'readwrite', ({folders, files}) => {
    folders.delete(id);
    files.index('folder').openKeyCursor(rangeOf(id)).onsuccess = event => {
      const cursor = event.target.result;
      if (!cursor) return;
      files.delete(cursor.primaryKey);
      cursor.continue();
    };
  });
}

const takenAway =
    'this folder was opened in another window or deleted there, and that window keeps it now; what is done here is not kept';

// All of it or nothing, and only while this window holds the folder.
export async function changeFolder(id, holder, {changed, removed, sums}) {
  await within(['folders', 'files'], 'readwrite', ({folders, files}, stop) => {
    folders.get(id).onsuccess = event => {
      const folder = event.target.result;
      if (!folder || folder.holder !== holder) return stop(new StoreTrouble(takenAway));
      for (const path of removed) files.delete([id, path]);
      for (const file of changed) files.put({...file, folder: id});
      folders.put({...folder, ...sums, used: Date.now()});
    };
  });
}

// --- One window for a folder.

const newHolder = () =>
    Array.from(crypto.getRandomValues(new Uint32Array(4)), part => part.toString(36)).join('-');

async function changeRow(id, change) {
  return within(['folders'], 'readwrite', ({folders}) => {
    folders.get(id).onsuccess = event => {
      const row = event.target.result && change(event.target.result);
      if (row) folders.put(row);
    };
  });
}

// A lock of the browser's, held until it is let go of. Null where another has it; undefined where the browser
// has none to give.
function browsersLock(id) {
  if (!navigator.locks) return undefined;
  return new Promise(resolve => {
    const taken = navigator.locks.request(`vorn folder ${id}`, {ifAvailable: true}, lock => {
      if (!lock) return resolve(null);
      return new Promise(letGo => resolve(letGo));
    });
    taken.catch(() => resolve(undefined));
  });
}

// Takes a folder for this window: {holder, letGo}, or null where another window has it. `all_the_same` takes
// it even then, where only time can tell whether that window still lives.
export async function holdFolder(id, allTheSame = false) {
  const lock = await browsersLock(id);
  if (lock === null) return null;
  const holder = newHolder();
  let isTaken = false, isThere = false;
  const takeOver = row => {
    isThere = true;
    const lives = lock === undefined && row.holder !== '' && Date.now() - row.beat < beatLasts;
    isTaken = lives && !allTheSame;
    return isTaken ? null : {...row, holder, beat: Date.now(), used: Date.now()};
  };
  try {
    await changeRow(id, takeOver);
  } catch (error) {
    lock?.();
    throw error;
  }
  if (!isThere) {
    lock?.();
    throw new StoreTrouble('it is no longer kept in this browser: it was deleted in another window');
  }
  if (isTaken) return null;
  return {holder, letGo: keepSaying(id, holder, lock)};
}

// Says from time to time that the folder is held, where the browser has no locks. Returns what ends it.
function keepSaying(id, holder, lock) {
  const ifMine = change =>
      changeRow(id, row => (row.holder === holder ? {...row, ...change} : null)).catch(() => {});
  const timer = lock ? 0 : setInterval(() => ifMine({beat: Date.now()}), beatEvery);
  const letGo = async () => {
    clearInterval(timer);
    removeEventListener('pagehide', letGo);
    await ifMine({holder: '', beat: 0});
    lock?.();
  };
  addEventListener('pagehide', letGo);
  return letGo;
}

// Whether another window could be told to have a folder open for certain.
export const locksAreSure = () => Boolean(navigator.locks);

// --- Whether anything can be kept here.

// Empty, or why not.
export async function storeTrouble() {
  try {
    await database();
    return '';
  } catch (error) {
    return wordsOf(error);
  }
}

// Asks the browser not to clear away what is kept when the disk runs short. It may say no.
export function askToPersist() { navigator.storage?.persist?.().catch(() => {}); }
