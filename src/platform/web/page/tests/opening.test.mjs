// What is said about a list before the program starts with it.
import assert from 'node:assert/strict';
import {test} from 'node:test';

import {bytesOf} from '../file_names.js';
import {wordsOnMissing} from '../opening.js';

const files = (list, ...names) =>
    [{path: 'Vorn.fil', bytes: bytesOf(list)}, ...names.map(path => ({path, bytes: bytesOf('x')}))];

test('nothing is said where all is there that the list names, however its lines end', () => {
  assert.equal(wordsOnMissing(files('a.rwl\r\nplots/b.rwl  \r\n\r\n', 'a.rwl', 'plots/b.rwl')), '');
  assert.equal(wordsOnMissing([{path: 'a.rwl', bytes: bytesOf('x')}]), '');
});

test('files that the list names and that are not there are told', () => {
  assert.equal(
      wordsOnMissing(files('a.rwl\nb.rwl\n/far/c.rwl\n', 'a.rwl')),
      'Vorn.fil names files that are not here: b.rwl, /far/c.rwl. The program goes on without them.');
});

test('a name that differs in capital letters alone is pointed at', () => {
  assert.equal(
      wordsOnMissing(files('YONDER.RWL\n', 'yonder.rwl')),
      'Vorn.fil names files that are not here: YONDER.RWL (there is yonder.rwl). ' +
          'Capital and small letters are told apart. The program goes on without them.');
});
