// One of the two workers of the page: the program, or the studies (see messages.md). This is the JavaScript
// around the wasm of either, which createVorn of the code before this makes.

const folder = '/work';
const installed = '/installed';

// Files that nobody is to see outside: they last as long as this worker.
const isPassing = path => path.endsWith('.vorn-part') || path === '.vorn/lock';

// --- Requests.

const requests = [];
let arrived = null;
let taken = {};

self.onmessage = ({data}) => {
  if (data.do === 'start') return start(data);
  if (data.do === 'files') return takeFiles(data);
  requests.push(data);
  if (arrived) arrived();
};

const oneArrives = () => new Promise(resolve => (arrived = resolve));
const breath = new MessageChannel();
// Lets messages that wait come in.
const takeBreath = () =>
  new Promise(resolve => {
    breath.port1.onmessage = resolve;
    breath.port2.postMessage(0);
  });

// What the page acts on at once: it is to know by then what was written.
const settles = new Set(['ended', 'used_corrected', 'used_clean_copy', 'saved_over']);

// What the wasm calls.
const around = files => ({
  takeRequest: async waits => {
    files.send();
    if (!waits) await takeBreath();
    while (waits && requests.length === 0) await oneArrives();
    arrived = null;
    taken = requests.shift() || {};
    return taken.do !== undefined;
  },
  fields: () => JSON.stringify(taken, (name, value) => (value instanceof ArrayBuffer ? undefined : value)),
  bytes: () => new Uint8Array(Object.values(taken).find(value => value instanceof ArrayBuffer) || 0),
  tell: (fields, name, bytes) => {
    const message = JSON.parse(fields);
    if (settles.has(message.is)) files.send();
    if (name) message[name] = bytes.buffer;
    self.postMessage(message, name ? [bytes.buffer] : []);
  },
});

// --- Files.

// Tells the page what changed in the folder since it was told last.
class Files {
  constructor(FS) {
    this.FS = FS;
    this.known = new Map();
    this.changed = new Set();
    const calls = FS.filesystems.MEMFS.ops_table.file;
    const write = calls.stream.write, setattr = calls.node.setattr;
    calls.stream.write = (stream, ...rest) => {
      this.changed.add(stream.node);
      return write(stream, ...rest);
    };
    calls.node.setattr = (node, attributes) => {
      if (attributes.size !== undefined) this.changed.add(node);
      return setattr(node, attributes);
    };
  }

  put(path, bytes) {
    const slash = path.lastIndexOf('/');
    if (slash > 0) this.FS.mkdirTree(path.slice(0, slash));
    this.FS.writeFile(path, bytes);
  }

  // What was changed elsewhere, of which the page knows. To who is reading a file it stays as it was.
  take({changed, removed}) {
    for (const path of [...removed, ...changed.map(({path}) => path)]) {
      if (this.known.delete(path)) this.FS.unlink(`${folder}/${path}`);
    }
    for (const {path, bytes} of changed) {
      this.put(`${folder}/${path}`, bytes);
      const {node} = this.FS.lookupPath(`${folder}/${path}`);
      this.known.set(path, node);
      this.changed.delete(node);
    }
  }

  // All that is there now is known to the page.
  begin() {
    this.known = this.list();
    this.changed.clear();
  }

  list(prefix = '', all = new Map()) {
    for (const name of this.FS.readdir(`${folder}/${prefix}`)) {
      if (name === '.' || name === '..') continue;
      const path = prefix + name;
      const {node} = this.FS.lookupPath(`${folder}/${path}`);
      if (this.FS.isDir(node.mode)) this.list(path + '/', all);
      else if (!isPassing(path)) all.set(path, node);
    }
    return all;
  }

  send() {
    const now = this.list();
    const changed = [...now].filter(([path, node]) => this.known.get(path) !== node || this.changed.has(node));
    const removed = [...this.known.keys()].filter(path => !now.has(path));
    this.known = now;
    this.changed.clear();
    if (changed.length + removed.length === 0) return;
    const read = changed.map(([path]) => ({path, bytes: this.FS.readFile(`${folder}/${path}`)}));
    self.postMessage({is: 'files', changed: read, removed}, read.map(({bytes}) => bytes.buffer));
  }
}

let tree = null;
const early = [];  // what came before there was a file system

// While the wasm waits: nothing comes in between.
function takeFiles(change) {
  if (tree) tree.take(change);
  else early.push(change);
}

// --- The start.

// What the wasm said last, where it stops itself: the mistake and its place.
let said = '';
const fail = what => {
  const text = String((what && what.message) || what);
  self.postMessage({is: 'failed', text: said ? `${text}: ${said}` : text});
};

// What fails where nobody waits for it is no error of the worker to the browser.
self.addEventListener('unhandledrejection', ({reason}) => fail(reason));

async function start({module, files, help}) {
  try {
    const made = await createVorn({
      noInitialRun: true,
      printErr: line => (said = line),
      onAbort: fail,
      instantiateWasm: (imports, received) => {
        WebAssembly.instantiate(module, imports).then(instance => received(instance, module), fail);
        return {};
      },
      preRun: [
        Module => {
          const made = new Files(Module.FS);
          Module.FS.mkdirTree(folder);
          for (const {path, bytes} of files) made.put(`${folder}/${path}`, bytes);
          if (help) made.put(`${installed}/Help.prn`, help);
          Module.FS.chdir(folder);
          made.begin();
          early.splice(0).forEach(change => made.take(change));
          tree = made;
          Module.vorn = around(made);
        },
      ],
    });
    await made.callMain([]);
  } catch (failure) {
    fail(failure);
  }
}
