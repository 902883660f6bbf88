import assert from 'node:assert/strict';
import {File} from 'node:buffer';
import {test} from 'node:test';

import {filesSource, handleSource, inputFolderSource, readSource} from '../sources.js';

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
    '.vorn': {journal: 'x'}
  };
  const {files} = await readSource(handleSource(folderHandle('site', tree)));
  assert.deepEqual(pathsOf(files), ['Vorn.fil', 'a.rwl', 'plots/b.rwl']);
});

test('a file that cannot be read is left out, and it is said why', async () => {
  const broken =
      Object.assign(file('b.rwl', 'b'), {arrayBuffer: async () => Promise.reject(new Error('gone'))});
  const {files, leftOut} = await readSource(filesSource([file('a.rwl', 'a'), broken]));
  assert.deepEqual(pathsOf(files), ['a.rwl']);
  assert.deepEqual(leftOut, [{path: 'b.rwl', why: 'it cannot be read (gone)'}]);
});
