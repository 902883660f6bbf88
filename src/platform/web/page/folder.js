// A folder that is open: its files in memory, and behind them the browser's store and, where there is one,
// the folder of the disk.
//
// What the program writes is in memory at once. It then goes to the store, in order, each step whole or not
// at all; and to the disk. What the store does not take stays in memory and is tried again with the next
// step; until then `trouble` says so. What the program keeps for itself, in ".vorn", goes to the store alone:
// the user's folder is not cluttered.
import {isKept, isPlainPath, listName} from './file_names.js';
import {changeFolder} from './store.js';

const sizes = files =>
    ({files: files.size, bytes: [...files.values()].reduce((sum, file) => sum + file.bytes.length, 0)});

export class Folder extends EventTarget {
  // `hold` is {holder, letGo} of the store; null for a folder that lives in memory alone, whose trouble says
  // why. `disk` is a DiskFolder or null; `change` puts a step into the store.
  constructor({id, name, files, hold, disk = null, trouble = '', change = changeFolder}) {
    super();
    this.id = id;
    this.name = name;
    this.disk = disk;
    this.hold = hold;
    this.change = change;
    this.kept = new Map(files.map(file => [file.path, file]));
    this.waiting = new Map();  // path to what the store lacks: a file, or null for one that is gone
    this.isStoring = false;    // some of it is on its way
    this.storing = Promise.resolve();
    this.onDisk = Promise.resolve();
    this.storeTrouble = trouble;
    this.diskTroubles = new Map();  // path to what went wrong
  }

  get writable() { return this.disk !== null; }

  get trouble() {
    const parts = [];
    if (this.storeTrouble) {
      parts.push(
          `What you do now is not kept in this browser: ${
              this.storeTrouble}. It lives in memory alone: download the ` +
          'files before you close this page.');
    }
    if (this.diskTroubles.size > 0) {
      const why = [...this.diskTroubles.values()].join('; ');
      parts.push(`The folder on the disk did not take everything (${why}). It is kept here; download it.`);
    }
    return parts.join(' ');
  }

  // Whether something would be lost with this page.
  get isAtRisk() { return this.waiting.size > 0 || this.isStoring; }

  async files() { return [...this.kept.values()].map(({path, bytes}) => ({path, bytes})); }

  // All of them as they stand: path, bytes, time, written. The kept ones of the program are left out.
  shown() { return [...this.kept.values()].filter(file => !isKept(file.path)); }

  // Everything, for a download.
  all() { return [...this.kept.values()]; }

  // Returns when the store has taken it, or has said why not; the disk may take longer, or ask.
  async apply({changed = [], removed = []}) {
    const now = Date.now();
    const files =
        changed.filter(({path}) => isPlainPath(path))
            .map(
                ({path, bytes}) => (
                    {path, bytes, time: now, written: !isKept(path), waits: this.writable && !isKept(path)}));
    const gone = removed.filter(isPlainPath);
    for (const path of gone) this.#take(path, null);
    for (const file of files) this.#take(file.path, file);
    this.dispatchEvent(new Event('changed'));
    const stored = (this.storing = this.storing.then(() => this.#store()));
    if (this.disk) this.onDisk = this.onDisk.then(() => this.#toDisk(files, gone));
    await stored;
  }

  #take(path, file) {
    if (file)
      this.kept.set(path, file);
    else
      this.kept.delete(path);
    this.waiting.set(path, file);
  }

  async #store() {
    if (!this.hold || this.waiting.size === 0) return;
    const step = this.waiting;
    this.waiting = new Map();
    const changed = [...step.values()].filter(Boolean);
    const removed = [...step.keys()].filter(path => step.get(path) === null);
    this.isStoring = true;
    try {
      await this.change(this.id, this.hold.holder, {changed, removed, sums: sizes(this.kept)});
      this.#setTrouble('');
    } catch (error) {
      // What came meanwhile is newer.
      this.waiting = new Map([...step, ...this.waiting]);
      this.#setTrouble(error.message);
    } finally {
      this.isStoring = false;
    }
  }

  #setTrouble(text) {
    if (this.storeTrouble === text) return;
    this.storeTrouble = text;
    this.dispatchEvent(new Event('trouble'));
  }

  async #toDisk(files, gone) {
    const paths = gone.filter(path => !isKept(path));
    for (const path of paths) this.#tellDisk(path, await this.disk.remove(path));
    for (const file of files.filter(({path}) => !isKept(path))) {
      const failure = await this.disk.write(file.path, file.bytes);
      this.#tellDisk(file.path, failure);
      if (!failure) this.#isWritten(file);
    }
    this.storing = this.storing.then(() => this.#store());
    await this.storing;
  }

  // The disk has it: the store need not remember that it waits.
  #isWritten(file) {
    const now = this.kept.get(file.path);
    if (now === file) this.#take(file.path, {...file, waits: false});
  }

  #tellDisk(path, failure) {
    const before = this.diskTroubles.get(path) ?? '';
    if (before === failure) return;
    if (failure)
      this.diskTroubles.set(path, failure);
    else
      this.diskTroubles.delete(path);
    this.dispatchEvent(new Event('trouble'));
  }

  get list() { return this.kept.get(listName)?.bytes ?? null; }

  // Waits until everything is where it belongs, tries once more what the store did not take, and lets go of
  // the folder.
  async close() {
    await Promise.all([this.storing, this.onDisk]);
    await this.#store();
    await this.hold?.letGo();
  }
}
