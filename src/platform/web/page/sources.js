// Where files come from: the browser's dialogs, and what is dropped on the window.
//
// A source has a name, entries() that lists files {path, size, time, read()}, at(path) that finds one further
// down, and `passedOver`, what of it is not listed and why {path, why}. A folder of the disk that can be
// written to has its handle too.
import {chooseEntries, isKept, isPlainPath, lastPart, namesInList} from './file_names.js';

const mostEntries = 20000;  // of a folder: beyond that somebody's whole disk was picked
const deepest = 8;          // folders in folders
const lists = ['Vorn.fil', 'TRW.fil'];

const entryOf = (path, file) => ({
  path,
  size: file.size,
  time: file.lastModified,
  read: async () => new Uint8Array(await file.arrayBuffer())
});

const tooMany = {
  path: 'what lies behind them',
  why: `a folder is read up to its ${mostEntries}th file`
};
const unreadable = (path, error) => ({path, why: `it cannot be read (${error.message || error.name})`});

const sourceOf = (name, list, kind, passedOver = []) => ({
  name,
  kind,
  handle: null,
  passedOver,
  entries: async () => list,
  at: async path => list.find(entry => entry.path === path) ?? null
});

// Files picked one by one. They may come from several folders: of those named alike the first is read.
export function filesSource(files, passedOver = []) {
  const list = new Map(), twice = [];
  for (const file of files) {
    const why = 'another file of this name was opened with it';
    if (list.has(file.name))
      twice.push({path: file.name, why});
    else
      list.set(file.name, entryOf(file.name, file));
  }
  const [first = ''] = list.keys();
  const stem = first.replace(/(.)\.[^.]*$/, '$1');
  const name = list.size > 1 ? `${stem} and ${list.size - 1} more` : stem;
  return sourceOf(name, [...list.values()], 'files', [...passedOver, ...twice]);
}

// A folder as an input of the page gives it: all files in it, however deep, "folder/plots/a.rwl".
export function inputFolderSource(files) {
  const list = [...files].slice(0, mostEntries).map(file => {
    const path = file.webkitRelativePath || file.name;
    return entryOf(path.slice(path.indexOf('/') + 1), file);
  });
  const first = files[0]?.webkitRelativePath ?? '';
  const name = first.slice(0, Math.max(0, first.indexOf('/'))) || 'folder';
  return sourceOf(name, list, 'folder', files.length > mostEntries ? [tooMany] : []);
}

// A folder of the disk by its handle.
export function handleSource(handle) {
  const passedOver = [];
  return {
    name: handle.name,
    kind: 'folder',
    handle,
    passedOver,
    entries: () => handleEntries(handle, passedOver),
    at: path => handleEntry(handle, path)
  };
}

// The files of the folder, and all that the program keeps beside them.
async function handleEntries(handle, passedOver) {
  const list = [];
  passedOver.length = 0;
  await gather(handle, '', list, passedOver);
  return list;
}

async function gather(handle, path, list, passedOver) {
  for await (const item of handle.values()) {
    const here = path + item.name;
    if (item.kind === 'directory' && isKept(`${here}/`)) await gather(item, `${here}/`, list, passedOver);
    if (item.kind !== 'file') continue;
    if (list.length >= mostEntries) return passedOver.push(tooMany);
    const file = await item.getFile().catch(error => passedOver.push(unreadable(here, error)) && null);
    if (file) list.push(entryOf(here, file));
  }
}

// The handle of a file of a folder, by its path; null where there is none.
export async function fileHandle(handle, path, create = false) {
  const parts = path.split('/');
  try {
    let folder = handle;
    for (const part of parts.slice(0, -1)) folder = await folder.getDirectoryHandle(part, {create});
    return await folder.getFileHandle(parts[parts.length - 1], {create});
  } catch (error) {
    if (error.name === 'NotFoundError') return null;
    throw error;
  }
}

async function handleEntry(handle, path) {
  const found = await fileHandle(handle, path).catch(() => null);
  const file = await found?.getFile().catch(() => null);
  return file ? entryOf(path, file) : null;
}

// --- What is dropped.

const promised = (object, method) => new Promise((resolve, reject) => object[method](resolve, reject));

// What cannot be read is passed over, be it a file or a folder.
async function walk(directory, path, found, depth) {
  const reader = directory.createReader();
  const failed = at => error => found.passedOver.push(unreadable(at, error)) && null;
  for (;;) {
    const batch = await promised(reader, 'readEntries').catch(failed(path || directory.name));
    if (!batch?.length) return;
    for (const item of batch) {
      const here = path + item.name;
      if (found.list.length >= mostEntries) return (found.isCut = true);
      const file = item.isFile ? await promised(item, 'file').catch(failed(here)) : null;
      if (file) found.list.push(entryOf(here, file));
      if (item.isDirectory && depth < deepest) await walk(item, `${here}/`, found, depth + 1);
    }
  }
}

async function entrySource(directory) {
  const found = {list: [], passedOver: [], isCut: false};
  await walk(directory, '', found, 0);
  return sourceOf(
      directory.name, found.list, 'folder', [...found.passedOver, ...(found.isCut ? [tooMany] : [])]);
}

// One folder, or the files among what was dropped. The event tells only while it is handled, so everything is
// asked of it at once.
export function droppedSource(transfer) {
  const items = [...(transfer.items ?? [])].filter(item => item.kind === 'file');
  const files = [...transfer.files];
  const entries = items.map(item => item.webkitGetAsEntry?.() ?? null);
  const handles = items.map(item => item.getAsFileSystemHandle?.().catch(() => null) ?? null);
  return settle(files, entries, handles);
}

async function settle(files, entries, promisedHandles) {
  const [handle] = await Promise.all(promisedHandles);
  if (entries.length === 1 && entries[0]?.isDirectory) {
    return handle?.kind === 'directory' ? handleSource(handle) : entrySource(entries[0]);
  }
  // Folders among several things are passed over.
  const isFolder = entries.map(entry => Boolean(entry?.isDirectory));
  if (entries.length !== files.length) return filesSource(files);
  const folders = files.filter((_, i) => isFolder[i]);
  return filesSource(
      files.filter((_, i) => !isFolder[i]),
      folders.map(({name}) => ({path: name, why: 'a folder is opened alone, without files beside it'})));
}

// --- Reading.

async function read(entry, files, leftOut) {
  try {
    files.push({path: entry.path, bytes: await entry.read(), time: entry.time});
  } catch (error) {
    leftOut.push(unreadable(entry.path, error));
  }
}

async function namedBy(list, source) {
  const entry = await source.at(list);
  return entry && entry.size < 2 ** 20 ? namesInList(await entry.read().catch(() => new Uint8Array())) : [];
}

// All files of a source that may be needed: {files [{path, bytes, time}], leftOut [{path, why}]}.
export async function readSource(source) {
  const entries = [...(await source.entries())].filter(entry => isPlainPath(entry.path));
  const named = new Set(source.kind === 'files' ? entries.map(entry => entry.path) : []);
  for (const list of lists) {
    for (const name of await namedBy(list, source)) named.add(name);
  }
  for (const path of named) {
    if (lastPart(path) === path) continue;
    const deeper = await source.at(path);
    if (deeper) entries.push(deeper);
  }
  const {taken, leftOut} = chooseEntries(entries, named);
  const files = [];
  for (const entry of taken) await read(entry, files, leftOut);
  return {files, leftOut: [...source.passedOver, ...leftOut]};
}
