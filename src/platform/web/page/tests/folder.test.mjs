// A folder against a store that is played: what it takes, in which order, and what becomes of what it does
// not.
import assert from 'node:assert/strict';
import {test} from 'node:test';

import {Folder} from '../folder.js';

const bytes = text => new TextEncoder().encode(text);
const change = (path, text) => ({changed: [{path, bytes: bytes(text)}]});

function opened({disk = null} = {}) {
  const steps = [];
  const store = {fails: '', steps};
  const change = async (id, holder, {changed, removed}) => {
    await null;
    if (store.fails) throw new Error(store.fails);
    steps.push([changed.map(({path}) => path), removed]);
  };
  const folder = new Folder({
    id: 7,
    name: 'site',
    files: [{path: 'a.rwl', bytes: bytes('a'), time: 1}],
    hold: {holder: 'me', letGo: async () => {}},
    disk,
    change
  });
  return {folder, store};
}

test('what is written is kept, in order, and is marked as written', async () => {
  const {folder, store} = opened();
  folder.apply(change('Stats.prn', '1'));
  folder.apply({changed: [{path: 'b', bytes: bytes('2')}], removed: ['a.rwl', '../out']});
  await folder.close();
  assert.deepEqual(store.steps.flatMap(([changed]) => changed), ['Stats.prn', 'b']);
  assert.deepEqual(store.steps.flatMap(([, removed]) => removed), ['a.rwl']);
  assert.deepEqual((await folder.files()).map(({path}) => path), ['Stats.prn', 'b']);
  assert.ok(folder.shown().every(({written}) => written));
  assert.equal(folder.isAtRisk, false);
});

test('what the program keeps for itself is not shown, and paths that lead out are not taken', async () => {
  const {folder} = opened();
  await folder.apply({
    changed: [
      {path: '.vorn/journal', bytes: bytes('j')}, {path: '../out', bytes: bytes('x')},
      {path: '/abs', bytes: bytes('x')}
    ]
  });
  assert.deepEqual(folder.shown().map(({path}) => path), ['a.rwl']);
  assert.deepEqual(folder.all().map(({path}) => path), ['a.rwl', '.vorn/journal']);
});

test('what the store does not take stays in memory, is told, and is tried again', async () => {
  const {folder, store} = opened();
  let told = 0;
  folder.addEventListener('trouble', () => ++told);
  store.fails = 'no room';
  await folder.apply(change('Stats.prn', 'old'));
  await folder.apply({...change('Stats.prn', 'new'), removed: ['a.rwl']});
  assert.match(folder.trouble, /not kept in this browser: no room\..*download/);
  assert.ok(folder.isAtRisk);
  assert.equal(told, 1);
  assert.equal(new TextDecoder().decode((await folder.files())[0].bytes), 'new');
  store.fails = '';
  await folder.apply(change('b', 'x'));
  assert.deepEqual(store.steps, [[['Stats.prn', 'b'], ['a.rwl']]]);
  assert.equal(folder.trouble, '');
  assert.equal(folder.isAtRisk, false);
});

test('a folder in memory alone says so from the beginning', async () => {
  const folder = new Folder({id: null, name: 'x', files: [], hold: null, trouble: 'a private window'});
  await folder.apply(change('b', 'x'));
  assert.match(folder.trouble, /a private window/);
  assert.ok(folder.isAtRisk);
});

test('the disk gets what is written, but not what the program keeps for itself', async () => {
  const written = [];
  const disk = {
    write: async path => written.push(path) && '',
    remove: async path => written.push('-' + path) && ''
  };
  const {folder} = opened({disk});
  await folder.apply({
    changed: [{path: 'b', bytes: bytes('x')}, {path: '.vorn/journal', bytes: bytes('j')}],
    removed: ['a.rwl', '.vorn/old']
  });
  await folder.onDisk;
  assert.deepEqual(written, ['-a.rwl', 'b']);
  assert.equal(folder.trouble, '');
  assert.ok(folder.all().every(({waits}) => !waits));
});

test('what the disk does not take is told and waits', async () => {
  let failure = 'b: the disk is full';
  const {folder, store} = opened({disk: {write: async () => failure, remove: async () => ''}});
  await folder.apply(change('b', 'x'));
  await folder.onDisk;
  assert.match(folder.trouble, /did not take everything \(b: the disk is full\)/);
  assert.equal(folder.all().find(({path}) => path === 'b').waits, true);
  failure = '';
  await folder.apply(change('b', 'y'));
  await folder.onDisk;
  assert.equal(folder.trouble, '');
  assert.equal(folder.all().find(({path}) => path === 'b').waits, false);
  assert.ok(store.steps.length >= 3);
});

test('a question about the disk keeps nothing from the store', async () => {
  let answer;
  const {folder, store} =
      opened({disk: {write: () => new Promise(resolve => (answer = resolve)), remove: async () => ''}});
  await folder.apply(change('b', 'x'));
  await folder.apply(change('.vorn/journal', 'j'));
  assert.deepEqual(store.steps.flatMap(([changed]) => changed), ['b', '.vorn/journal']);
  answer('');
  await folder.close();
});

test('what is on its way to the store is at risk until it is there', async () => {
  const {folder} = opened();
  const kept = folder.apply(change('Stats.prn', '1'));
  assert.equal(folder.isAtRisk, true);
  await Promise.resolve();
  assert.equal(folder.isAtRisk, true);
  await kept;
  assert.equal(folder.isAtRisk, false);
});

test('what the store did not take is tried once more when the folder is closed', async () => {
  const {folder, store} = opened();
  store.fails = 'no room';
  await folder.apply(change('Stats.prn', '1'));
  store.fails = '';
  await folder.close();
  assert.deepEqual(store.steps, [[['Stats.prn'], []]]);
  assert.equal(folder.trouble, '');
  assert.equal(folder.isAtRisk, false);
});
