import assert from 'node:assert/strict';
import {test} from 'node:test';

import {bytesOf, chooseEntries, firstFreeName, inOrderOfList, isPlainPath, largestFile, largestFolder, largestUnnamed, listBytes, namesForList, namesInList, shownNames, shownSize, textOf, troubleWithNames} from '../file_names.js';

const empty = new Set();
const entry = (path, size = 1) => ({path, size});
const pathsOf = entries => entries.map(({path}) => path);

test('a list has ring widths first and chronologies behind them', () => {
  assert.deepEqual(
      inOrderOfList(['z.rwl', 'a.CRN', 'B.rwl', 'b.fh', 'z.rwl']), ['B.rwl', 'b.fh', 'z.rwl', 'a.CRN']);
});

test('what goes into a list is told by its ending', () => {
  const names = [
    'notes.txt', 'a.crn', 'b.fh', 'c.RWM', 'edit.RAW', 'z.rwl', '.hidden.rwl', 'rwl', 'plots/deep.rwl',
    'two\nlines.rwl'
  ];
  assert.deepEqual(namesForList(names), ['b.fh', 'c.RWM', 'z.rwl', 'a.crn']);
});

test('a list takes 100 names of 60 bytes', () => {
  const many = Array.from({length: 120}, (_, i) => `${String(i).padStart(3, '0')}.rwl`);
  assert.equal(namesForList(many).length, 120);
  const fits = 'ä'.repeat(28) + '.rwl', tooLong = 'ä'.repeat(29) + '.rwl';
  assert.equal(bytesOf(fits).length, 60);
  assert.deepEqual(namesForList([fits, tooLong]), [fits]);
  assert.equal(troubleWithNames([]), 'There is no file among them.');
  assert.equal(troubleWithNames(many), 'A list takes 100 files, and these are 120.');
  assert.match(troubleWithNames([tooLong]), /at most 60 characters, on one line\.$/);
  assert.match(troubleWithNames(['a\nb']), /on one line/);
  assert.equal(troubleWithNames([fits]), '');
});

test('a list is names as UTF-8, one a line, and is read back with any ends of lines', () => {
  assert.deepEqual(
      listBytes(['ä.rwl', 'b.crn']), new Uint8Array([0xc3, 0xa4, ...Buffer.from('.rwl\nb.crn\n')]));
  assert.deepEqual(
      namesInList(bytesOf('a.rwl  \r\nplots/b.rwl\n\n../c.rwl\n/etc/d\rlast')),
      ['a.rwl', 'plots/b.rwl', 'last']);
  const long = Array.from({length: 101}, (_, i) => `${i}.rwl`).join('\n');
  assert.equal(namesInList(bytesOf(long)).length, 100);
});

test('bytes that are no UTF-8 are read a letter each', () => {
  assert.equal(textOf(new Uint8Array([0x62, 0xe4])), 'bä');
  assert.equal(textOf(bytesOf('ä')), 'ä');
});

test('a path stays in its folder', () => {
  for (const path of ['a', 'a/b', '.vorn/journal', 'a..b']) assert.ok(isPlainPath(path), path);
  for (const path of ['', '/a', 'a/', 'a//b', '.', '..', '../a', 'a/../b', 'a/./b', 'a\0b', null, 3])
    assert.ok(!isPlainPath(path), String(path));
});

test('the first free name is counted from 1', () => {
  assert.equal(firstFreeName('Vorn.fil', empty), 'Vorn.fil.1');
  assert.equal(firstFreeName('Vorn.fil', new Set(['Vorn.fil.1', 'Vorn.fil.2'])), 'Vorn.fil.3');
});

test('files below the folder are read where they are named or kept by the program', () => {
  const entries =
      ['a.rwl', 'plots/b.rwl', 'plots/c.rwl', '.vorn/journal', '../d.rwl'].map(path => entry(path));
  const {taken, leftOut} = chooseEntries(entries, new Set(['plots/b.rwl']));
  assert.deepEqual(pathsOf(taken).sort(), ['.vorn/journal', 'a.rwl', 'plots/b.rwl']);
  assert.deepEqual(leftOut, []);
});

test('what is too large is left out, and it is said why', () => {
  const {taken, leftOut} = chooseEntries(
      [
        entry('a.rwl', largestFile), entry('b.rwl', largestFile + 1), entry('film.mp4', largestUnnamed + 1),
        entry('note.doc', largestUnnamed)
      ],
      empty);
  assert.deepEqual(pathsOf(taken), ['a.rwl', 'note.doc']);
  assert.deepEqual(pathsOf(leftOut), ['b.rwl', 'film.mp4']);
  assert.match(leftOut[0].why, /no file may have more than 268 MB/);
  assert.match(leftOut[1].why, /neither a list nor its ending/);
  assert.deepEqual(
      pathsOf(chooseEntries([entry('film.mp4', largestUnnamed + 1)], new Set(['film.mp4'])).taken),
      ['film.mp4']);
});

test('all together take no more memory than there may be, and what is named comes first', () => {
  const each = largestFile;
  const entries = ['a.rwl', 'b.rwl', 'c.rwl', 'd.rwl', 'named'].map(path => entry(path, each));
  const {taken, leftOut} = chooseEntries(entries, new Set(['named']));
  assert.equal(taken.length * each, largestFolder);
  assert.equal(taken[0].path, 'named');
  assert.deepEqual(pathsOf(leftOut), ['d.rwl']);
});

test('sizes and names are shown short', () => {
  assert.deepEqual(
      [0, 1, 999, 1000, 4500, 999499, 999500, 268435456].map(shownSize),
      ['0 bytes', '1 byte', '999 bytes', '1.00 kB', '4.50 kB', '999 kB', '1.00 MB', '268 MB']);
  assert.equal(shownNames(['a', 'b', 'c'], 2), 'a, b and 1 more');
  assert.equal(shownNames(['a', 'b'], 2), 'a, b');
});
