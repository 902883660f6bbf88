// The workers of the browser edition, run by node: the same wasm and the same JavaScript as in a browser, with the
// test in the page's place.
import fs from 'node:fs';
import path from 'node:path';
import vm from 'node:vm';
import {fileURLToPath} from 'node:url';

export const top = path.resolve(path.dirname(fileURLToPath(import.meta.url)), '../..');
const built = path.join(top, 'build/web/src/apps');

const programs = {program: 'vorn_web', studies: 'vorn_web_studies'};
const compiled = {};
const moduleOf = role =>
  (compiled[role] ??= WebAssembly.compile(fs.readFileSync(path.join(built, `${programs[role]}.wasm`))));
const sourceOfWorker = role =>
  [path.join(built, `${programs[role]}.js`), path.join(top, 'src/platform/web/page/worker.js')]
    .map(file => fs.readFileSync(file, 'utf8'))
    .join('\n;');

// A worker in a context of its own, as a browser makes one. `heard` gets its messages.
export async function startWorker(role, files, help, heard) {
  const self = {location: {href: 'worker.js'}, addEventListener() {}, postMessage: message => setImmediate(heard, message)};
  const context = vm.createContext({
    self, location: self.location, importScripts() {}, console, performance, WebAssembly, TextDecoder, TextEncoder,
    MessageChannel, setTimeout, clearTimeout, crypto: globalThis.crypto, URL,
    Uint8Array, ArrayBuffer,  // of this side too, so that what is handed over is known for what it is
  });
  vm.runInContext(sourceOfWorker(role), context);
  const ask = message => self.onmessage({data: message});
  ask({do: 'start', module: await moduleOf(role), files, help});
  return ask;
}

// A session of the program on the files of a folder.
export class Session {
  constructor() {
    this.files = new Map();
    this.page = 0;
    this.standing = null;
    this.ended = null;
    this.places = new Map();  // of each button, by its number, where it was shown last
    this.waiting = [];        // for answers to page_text
  }

  static async begin(files, help = null) {
    const session = new Session();
    await session.start(files, help);
    return session;
  }

  async start(files, help = null) {
    for (const [name, bytes] of files) this.files.set(name, Buffer.from(bytes));
    const given = [...files].map(([name, bytes]) => ({path: name, bytes: new Uint8Array(bytes)}));
    this.over = new Promise((resolve, reject) => Object.assign(this, {resolve, reject}));
    this.over.catch(() => {});
    this.ask = await startWorker('program', given, help, message => this.heard(message));
  }

  heard(message) {
    const {is} = message;
    if (is === 'page') this.page = message.number;
    if (is === 'stand') this.stand(message);
    if (is === 'page_text') this.waiting.shift()(Buffer.from(message.bytes).toString('latin1'));
    if (is === 'failed') this.reject(new Error(message.text));
    if (is === 'files') {
      for (const {path: name, bytes} of message.changed) this.files.set(name, Buffer.from(bytes));
      for (const name of message.removed) this.files.delete(name);
    }
    if (is === 'ended') {
      this.ended = message;
      this.resolve(null);
    }
  }

  stand(standing) {
    this.standing = standing;
    for (const [x1, y1, x2, y2, , number] of standing.buttons || []) this.places.set(number, [x1, y1, x2, y2]);
  }

  // The text of the page at the program's next wait; null where it has ended.
  pageText() {
    if (this.ended) return Promise.resolve(null);
    const text = new Promise(resolve => this.waiting.push(resolve));
    this.ask({do: 'page_text'});
    return Promise.race([text, this.over]);
  }

  // What the user does; what is asked before work is lost is answered by going on.
  async act(message) {
    this.ask({...message, seen: this.page});
    for (let text = await this.pageText(); ; text = await this.pageText()) {
      const question = this.standing && this.standing.question;
      if (text === null || !question) return text;
      this.ask({do: 'choose', answer: question.answers.length - 2});
    }
  }
}

export const key = code => ({do: 'key', code, step: '', action: '', x: 0, y: 0});
