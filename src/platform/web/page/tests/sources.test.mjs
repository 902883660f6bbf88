import assert from 'node:assert/strict';
import {File} from 'node:buffer';
import {test} from 'node:test';

import {droppedSource, filesSource, handleSource, inputFolderSource, readSource} from '../sources.js';

const file = (name, text, path = '') =>
    Object.assign(new File([text], name.split('/').pop(), {lastModified: 5}), {webkitRelativePath: path});
const pathsOf = files => files.map(({path}) => path).sort();

// A folder of the disk as a browser gives it: names to texts, or to folders.
function folderHandle(name, tree) {
  const missing = () => Object.assign(new Error('not there'), {name: 'NotFoundError'});
  const of = (key, value) => typeof value === 'string' ?
      {kind: 'file', name: key, getFile: async () => new File([value], key)} :
      folderHandle(key, value);
  const find = async (key, kind) => {
    const found = key in tree ? of(key, tree[key]) : null;
    if (found?.kind !== kind) throw missing();
    return found;
  };
  return {
    kind: 'directory',
    name,
    async *
        values() {
          for (const [key, value] of Object.entries(tree)) yield of (key, value);
        },
    getDirectoryHandle: key => find(key, 'directory'),
    getFileHandle: key => find(key, 'file')
  };
}

test('files that were picked are all read, whatever their ending', async () => {
  const source = filesSource([file('b.rwl', 'b'), file('c', 'c'), file('ä.dat', 'd')]);
  assert.equal(source.name, 'b and 2 more');
  const {files} = await readSource(source);
  assert.deepEqual(pathsOf(files), ['b.rwl', 'c', 'ä.dat']);
  assert.equal(files.find(({path}) => path === 'b.rwl').time, 5);
});

test('a folder loses its own name, and gives what its lists name further down', async () => {
  const source = inputFolderSource([
    file('Vorn.fil', 'plots/a.rwl\n', 'site/Vorn.fil'), file('a.rwl', 'a', 'site/plots/a.rwl'),
    file('b.rwl', 'b', 'site/plots/b.rwl'), file('c.rwl', 'c', 'site/c.rwl')
  ]);
  assert.equal(source.name, 'site');
  const {files} = await readSource(source);
  assert.deepEqual(pathsOf(files), ['Vorn.fil', 'c.rwl', 'plots/a.rwl']);
});

test('a folder of the disk is read beside its list, and where the list leads', async () => {
  const tree = {
    'Vorn.fil': 'a.rwl\nplots/b.rwl\nplots/none.rwl\n../out.rwl\n',
    'a.rwl': 'a',
    plots: {'b.rwl': 'b', 'c.rwl': 'c'},
    '.vorn': {journal: 'x', kept: {one: '1'}}
  };
  const {files} = await readSource(handleSource(folderHandle('site', tree)));
  assert.deepEqual(
      pathsOf(files), ['.vorn/journal', '.vorn/kept/one', 'Vorn.fil', 'a.rwl', 'plots/b.rwl']);
});

test('what of a folder of the disk cannot be read is told', async () => {
  const handle = folderHandle('site', {'a.rwl': 'a', 'b.rwl': 'b'});
  const values = handle.values;
  handle.values = async function*() {
    for await (const item of values())
      yield item.name === 'a.rwl' ? {...item, getFile: async () => Promise.reject(new Error('locked'))} : item;
  };
  const {files, leftOut} = await readSource(handleSource(handle));
  assert.deepEqual(pathsOf(files), ['b.rwl']);
  assert.deepEqual(leftOut, [{path: 'a.rwl', why: 'it cannot be read (locked)'}]);
});

test('of files from several folders that are named alike the first is read, and the other is told', async () => {
  const source = filesSource([file('a.rwl', 'first'), file('b.rwl', 'b'), file('a.rwl', 'second')]);
  assert.equal(source.name, 'a and 1 more');
  const {files, leftOut} = await readSource(source);
  assert.deepEqual(files.map(({path, bytes}) => [path, String.fromCharCode(...bytes)]), [
    ['a.rwl', 'first'], ['b.rwl', 'b']
  ]);
  assert.deepEqual(leftOut, [{path: 'a.rwl', why: 'another file of this name was opened with it'}]);
});

test('a file that is named by its ending alone has a name all the same', () => {
  assert.equal(filesSource([file('.rwl', 'a')]).name, '.rwl');
  assert.equal(filesSource([]).name, '');
});

test('of a folder beyond measure it is told that its end was not read', async () => {
  const many = Array.from({length: 20001}, (_, i) => file(`${i}.rwl`, '', `site/${i}.rwl`));
  const {leftOut} = await readSource(inputFolderSource(many));
  assert.equal(leftOut.length, 1);
  assert.match(leftOut[0].why, /up to its 20000th file/);
});

// What is dropped, as browsers without handles tell it.
function dropped(...items) {
  return {
    files: items.map(item => item.file),
    items: items.map(item => ({kind: 'file', webkitGetAsEntry: () => item.entry}))
  };
}

const fileEntry = (name, text) =>
    ({name, isFile: true, isDirectory: false, file: resolve => resolve(file(name, text))});

function folderEntry(name, batches) {
  const readers = () => {
    const left = [...batches];
    return {
      readEntries: (resolve, reject) => {
        const batch = left.shift() ?? [];
        return batch === 'locked' ? reject(new Error('locked')) : resolve(batch);
      }
    };
  };
  return {name, isFile: false, isDirectory: true, createReader: readers};
}

test('a dropped folder is read although a folder in it cannot be', async () => {
  const locked = folderEntry('secret', ['locked']);
  const site = folderEntry('site', [[fileEntry('a.rwl', 'a'), locked], [fileEntry('b.rwl', 'b')]]);
  const {files, leftOut} = await readSource(await droppedSource(dropped({file: file('site', ''), entry: site})));
  assert.deepEqual(pathsOf(files), ['a.rwl', 'b.rwl']);
  assert.deepEqual(leftOut, [{path: 'secret/', why: 'it cannot be read (locked)'}]);
});

test('a folder that was dropped among files is told', async () => {
  const one = {file: file('a.rwl', 'a'), entry: fileEntry('a.rwl', 'a')};
  const other = {file: file('site', ''), entry: folderEntry('site', [])};
  const {files, leftOut} = await readSource(await droppedSource(dropped(one, other)));
  assert.deepEqual(pathsOf(files), ['a.rwl']);
  assert.deepEqual(leftOut.map(({path}) => path), ['site']);
});

test('a file that cannot be read is left out, and it is said why', async () => {
  const broken =
      Object.assign(file('b.rwl', 'b'), {arrayBuffer: async () => Promise.reject(new Error('gone'))});
  const {files, leftOut} = await readSource(filesSource([file('a.rwl', 'a'), broken]));
  assert.deepEqual(pathsOf(files), ['a.rwl']);
  assert.deepEqual(leftOut, [{path: 'b.rwl', why: 'it cannot be read (gone)'}]);
});
