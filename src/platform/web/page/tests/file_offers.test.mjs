// What is asked before files are written.
import assert from 'node:assert/strict';
import test from 'node:test';
import {correctedName, questionOnCopy, questionOnSave} from '../file_offers.js';

const copy = {number: 1, file: 'oaks.rwl', name: 'oaks-clean.rwl', words: ['line 3, empty, left out'], can: true};
const save = {
  number: 1,
  file: 'oaks.rwl',
  refused: [],
  is_changed: true,
  changes: ['OAK1: ring of 1994 deleted'],
  done: ['OAK1: two lines written anew'],
  not_yet: [],
  oldest: ''
};

test('a copy is asked about with what is done for it', () => {
  const {text, more, answers, trouble} = questionOnCopy(copy);
  assert.equal(trouble, undefined);
  assert.equal(text, 'Write oaks-clean.rwl and work with it?');
  assert.equal(more,
      'What is done for it to be read whole:\nline 3, empty, left out\n\noaks.rwl stays as it is. The copy takes its ' +
          'place in Vorn.fil, the list as it was is kept, and the program begins anew.');
  assert.deepEqual(answers, ['Write and Use It', 'Cancel']);
});

test('why there is no copy is told', () => {
  assert.deepEqual(questionOnCopy({...copy, name: '', words: ['oaks.rwl is read whole'], can: false}),
      {trouble: 'No copy of oaks.rwl', more: 'oaks.rwl is read whole'});
});

test('a corrected file is asked about with what changed, and what becomes of the old one', () => {
  const {text, more, answers} = questionOnSave(save);
  assert.equal(text, 'Put the corrected cores back into oaks.rwl?');
  assert.deepEqual(more.split('\n').filter(Boolean), [
    'OAK1: ring of 1994 deleted', 'OAK1: two lines written anew',
    'All other lines stay as they are. Where oaks.rwl itself is written, it is kept before as oaks.rwl.orig.'
  ]);
  assert.deepEqual(answers, ['Save as a New File…', 'Save over oaks.rwl', 'Cancel']);
  assert.match(questionOnSave({...save, oldest: 'oaks.rwl.orig'}).more,
      /is written, oaks\.rwl\.orig, its oldest self, stays as it is\.$/);
});

test('what cannot be saved is told, and what need not be', () => {
  assert.deepEqual(questionOnSave({...save, refused: ['OAK1: too wide']}),
      {trouble: 'The cores cannot be put back into oaks.rwl.', more: 'OAK1: too wide'});
  assert.equal(questionOnSave({...save, is_changed: false}).trouble,
      'The cores are as they stand in oaks.rwl: there is nothing to save.');
  assert.equal(questionOnSave({...save, is_changed: false, not_yet: ['OAK1']}).trouble,
      'The change on the page is not saved yet: Save Change comes first.');
});

test('a question has room for so many sentences', () => {
  const words = Array.from({length: 40}, (_, line) => `line ${line}`);
  const lines = questionOnCopy({...copy, words}).more.split('\n');
  assert.deepEqual(lines.slice(11, 15), ['line 10', 'line 11', 'and 28 more', '']);
});

test('a corrected file has a name of its own', () => {
  const names = ['site.rwl', 'plots/site.rwl', 'site', '.rwl', 'a.b.fh', 'plots.old/site'];
  assert.deepEqual(names.map(correctedName), [
    'site-corrected.rwl', 'site-corrected.rwl', 'site-corrected', '.rwl-corrected', 'a.b-corrected.fh',
    'site-corrected'
  ]);
});
