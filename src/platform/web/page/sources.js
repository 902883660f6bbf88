// Where files come from: the browser's dialogs, and what is dropped on the window.
//
// A source has a name, entries() that lists files {path, size, time, read()}, and at(path) that finds one
// further down. A folder of the disk that can be written to has its handle too.
import {chooseEntries, isPlainPath, lastPart, namesInList} from './file_names.js';

const mostEntries = 20000;  // of a folder: beyond that somebody's whole disk was picked
const deepest = 8;          // folders in folders
const lists = ['Vorn.fil', 'TRW.fil'];

const entryOf = (path, file) => ({
  path,
  size: file.size,
  time: file.lastModified,
  read: async () => new Uint8Array(await file.arrayBuffer())
});

const sourceOf = (name, list, kind) => ({
  name,
  kind,
  handle: null,
  entries: async () => list,
  at: async path => list.find(entry => entry.path === path) ?? null
});

// Files picked one by one.
export function filesSource(files) {
  const list = [...files].map(file => entryOf(file.name, file));
  const stem = list.length > 0 ? list[0].path.replace(/\.[^.]*$/, '') : '';
  const name = list.length > 1 ? `${stem} and ${list.length - 1} more` : stem;
  return sourceOf(name, list, 'files');
}

// A folder as an input of the page gives it: all files in it, however deep, "folder/plots/a.rwl".
export function inputFolderSource(files) {
  const list = [...files].slice(0, mostEntries).map(file => {
    const path = file.webkitRelativePath || file.name;
    return entryOf(path.slice(path.indexOf('/') + 1), file);
  });
  const first = files[0]?.webkitRelativePath ?? '';
  return sourceOf(first.slice(0, Math.max(0, first.indexOf('/'))) || 'folder', list, 'folder');
}

// A folder of the disk by its handle.
export function handleSource(handle) {
  return {
    name: handle.name,
    kind: 'folder',
    handle,
    entries: () => handleEntries(handle),
    at: path => handleEntry(handle, path)
  };
}

async function handleEntries(handle) {
  const list = [];
  for await (const item of handle.values()) {
    if (item.kind !== 'file' || list.length === mostEntries) continue;
    const file = await item.getFile().catch(() => null);
    if (file) list.push(entryOf(item.name, file));
  }
  return list;
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

async function walk(directory, path, list, depth) {
  const reader = directory.createReader();
  for (;;) {
    const batch = await promised(reader, 'readEntries');
    if (batch.length === 0) return;
    for (const item of batch) {
      if (list.length >= mostEntries) return;
      if (item.isFile) list.push(entryOf(path + item.name, await promised(item, 'file')));
      if (item.isDirectory && depth < deepest) await walk(item, `${path}${item.name}/`, list, depth + 1);
    }
  }
}

async function entrySource(directory) {
  const list = [];
  await walk(directory, '', list, 0);
  return sourceOf(directory.name, list, 'folder');
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
  return filesSource(entries.length === files.length ? files.filter((_, i) => !isFolder[i]) : files);
}

// --- Reading.

async function read(entry, files, leftOut) {
  try {
    files.push({path: entry.path, bytes: await entry.read(), time: entry.time});
  } catch (error) {
    leftOut.push({path: entry.path, why: `it cannot be read (${error.message || error.name})`});
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
  return {files, leftOut};
}
