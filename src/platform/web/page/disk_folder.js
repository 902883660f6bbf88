// A folder of the disk that is written to, where the browser lets pages do so.
//
// A file that somebody else has changed since it was read or written here is not written over without a word:
// `ask` says what is to become of it, "overwrite", "beside" (under the first free name) or "leave".
import {fileHandle} from './sources.js';

export const canOpenFolders = () => typeof globalThis.showDirectoryPicker === 'function';

export async function mayWrite(handle, isAsked) {
  const how = {mode: 'readwrite'};
  if ((await handle.queryPermission(how)) === 'granted') return true;
  return isAsked && (await handle.requestPermission(how)) === 'granted';
}

const stateOf = file => `${file.lastModified} ${file.size}`;
const absent = '';

export class DiskFolder {
  constructor(handle, ask) {
    this.handle = handle;
    this.ask = ask;
    this.known = new Map();  // path to the state in which the file was read or written last
  }

  // Tells in which state a file was when it was read.
  learn({path, time, bytes}) { this.known.set(path, stateOf({lastModified: time, size: bytes.length})); }

  async #state(path) {
    const found = await fileHandle(this.handle, path);
    return found ? stateOf(await found.getFile()) : absent;
  }

  async #isOurs(path) {
    const state = await this.#state(path);
    return state === absent || state === this.known.get(path);
  }

  async #put(path, bytes) {
    const target = await fileHandle(this.handle, path, true);
    const out = await target.createWritable();
    try {
      await out.write(bytes);
      await out.close();  // only now the file changes
    } catch (error) {
      await out.abort().catch(() => {});
      throw error;
    }
    this.known.set(path, stateOf(await target.getFile()));
  }

  async #freeName(path) {
    for (let number = 1;; ++number) {
      if ((await this.#state(`${path}.${number}`)) === absent) return `${path}.${number}`;
    }
  }

  // Returns what went wrong; empty where the disk has the file, or has another by the user's choice.
  async write(path, bytes) {
    try {
      const answer = (await this.#isOurs(path)) ? 'overwrite' : await this.ask(path);
      if (answer === 'overwrite') await this.#put(path, bytes);
      if (answer === 'beside') await this.#put(await this.#freeName(path), bytes);
      return '';
    } catch (error) {
      return `${path}: ${error.message || error.name}`;
    }
  }

  // A file that somebody else has changed stays.
  async remove(path) {
    try {
      if ((await this.#state(path)) === absent) return '';
      if (!(await this.#isOurs(path))) return `${path} was changed by another program and stays on the disk`;
      const parts = path.split('/');
      let folder = this.handle;
      for (const part of parts.slice(0, -1)) folder = await folder.getDirectoryHandle(part);
      await folder.removeEntry(parts[parts.length - 1]);
      this.known.delete(path);
      return '';
    } catch (error) {
      return `${path}: ${error.message || error.name}`;
    }
  }
}
