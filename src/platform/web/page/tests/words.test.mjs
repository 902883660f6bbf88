// What is told, typed and copied around the page.
import assert from 'node:assert/strict';
import test from 'node:test';
import {textOfTable} from '../clipboard.js';
import {oneLine} from '../dialogs.js';
import {tipOf} from '../journal.js';
import {notchesOf} from '../page_view.js';

const decision = {what: 'NOW19 moved by -7 years', before: '', after: '', note: '', wrote: '', final: false};

test('a decision tells what was before and after, its note, and what stays', () => {
  assert.equal(tipOf(decision, false), 'NOW19 moved by -7 years');
  const all = {...decision, before: '1815-2010', after: '1808-2003', note: 'fits', wrote: 'a.RWW', final: true};
  const lines = tipOf(all, true).split('\n').slice(1);
  assert.deepEqual(lines, [
    '1815-2010 → 1808-2003', 'Note: fits', 'a.RWW was written, and stays', 'Cannot be taken back', 'Taken back'
  ]);
});

test('before the first decision there is the beginning', () => {
  assert.equal(tipOf(undefined, false), 'As it was before the first decision');
});

test('a note is one line, however it was pasted', () => {
  assert.equal(oneLine('  fits\tbetter\r\n here '), 'fits better here');
});

test('a table keeps its lines and loses its control characters', () => {
  assert.equal(textOfTable('core,year\r\nNOW\u000719,1750\n'), 'core,year\r\nNOW19,1750\r\n');
});

test('a notch of the wheel is one in pixels, lines and pages', () => {
  assert.equal(notchesOf({deltaX: 0, deltaY: 100, deltaMode: 0}), 1);
  assert.equal(notchesOf({deltaX: 0, deltaY: -3, deltaMode: 1}), -1);
  assert.equal(notchesOf({deltaX: 0, deltaY: 1, deltaMode: 2}), 1);
  assert.equal(notchesOf({deltaX: -200, deltaY: 10, deltaMode: 0}), -2);
});
