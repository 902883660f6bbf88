// Pages as they travel: read as they were written, and damaged ones told.
import assert from 'node:assert/strict';
import test from 'node:test';

import {marksOf, marksToPaint, roomOf} from '../marks.js';

import {bufferOf} from './buffer_for_tests.mjs';

const written = (text, more = {}) => ({kind: 'text', colour: 15, points: [100, 200], text, ...more});
const area = (...points) => ({kind: 'fill', colour: 14, points});

test('a page comes out as it went in', () => {
  const page = marksOf(bufferOf(
      [area(0, 0, 10, 0, 10, 5), written('Vörn ▶', {font: 1, align: 2, angle: 90, height: 26})], 1480, 600));
  assert.equal(page.across, 1480);
  assert.equal(page.down, 600);
  assert.deepEqual([...page.marks[0].points], [0, 0, 10, 0, 10, 5]);
  assert.equal(page.marks[0].kind, 'fill');
  const {kind, text, font, align, angle, height} = page.marks[1];
  assert.deepEqual({kind, text, font, align, angle, height},
      {kind: 'text', text: 'Vörn ▶', font: 'times', align: 'right', angle: 90, height: 26});
});

test('a text without any character leaves the marks behind it where they are', () => {
  const page = marksOf(bufferOf([written(''), written('12345678'), area(1, 2, 3, 4)]));
  assert.deepEqual(page.marks.map((mark) => mark.text ?? mark.kind), ['', '12345678', 'fill']);
});

test('a page cut short anywhere is told, and never read beyond its end', () => {
  const whole = bufferOf([area(0, 0, 10, 0, 10, 5), written('Crossdate')]);
  for (let bytes = 0; bytes < whole.byteLength; ++bytes)
    assert.throws(() => marksOf(whole.slice(0, bytes)), RangeError);
});

test('numbers that count nothing sensible are told', () => {
  for (const wrong of [-1, 0.5, NaN, Infinity, 1e300]) {
    assert.throws(() => marksOf(Float64Array.from([2970, 2100, wrong]).buffer), RangeError);
    assert.throws(() => marksOf(Float64Array.from([2970, 2100, 1, 0, 15, wrong, 0, 0]).buffer), RangeError);
    assert.throws(
        () => marksOf(Float64Array.from([2970, 2100, 1, 3, 15, 1, 0, 0, 20, 0, 0, 0, wrong]).buffer), RangeError);
  }
  assert.throws(() => marksOf(Float64Array.from([2970, 2100, 1, 5, 15, 0]).buffer), RangeError);
  assert.throws(() => marksOf(Float64Array.from([2970, 2100, 1, 3, 15, 0, 20, 0, 0, 0, 0]).buffer), RangeError);
});

// --- Texts over themselves.

const painted = (...marks) => marksToPaint(marksOf(bufferOf(marks))).map((mark) => mark.text ?? mark.kind);

test('a text over itself is painted once', () => {
  assert.deepEqual(painted(written('Quit'), written('Quit'), written('Quit', {colour: 4})), ['Quit', 'Quit']);
});

test('a text that an area may have covered since is painted again', () => {
  const button = area(90, 190, 300, 190, 300, 240, 90, 240);
  assert.deepEqual(painted(written('Quit'), button, written('Quit')), ['Quit', 'fill', 'Quit']);
  assert.deepEqual(painted(button, written('Quit'), written('Quit')), ['fill', 'Quit']);
});

test('an area far away covers nothing, nor does one without a width', () => {
  const away = area(2000, 1500, 2100, 1500, 2100, 1600), flat = area(110, 190, 110, 240);
  assert.deepEqual(painted(written('Quit'), away, flat, written('Quit')), ['Quit', 'fill', 'fill']);
});

test('plain letters reach as far as their height around them', () => {
  const mark = {kind: 'text', points: [100, 200], height: 20, align: 'left', angle: 0, text: '  ab'};
  const widthOf = (_, text) => 10 * text.length;
  assert.deepEqual(roomOf(mark, widthOf), {left: 100, top: 180, right: 160, bottom: 240});
});

test('turned letters may lie all around their place', () => {
  const mark = {kind: 'label', points: [100, 200], height: 20, align: 'left', angle: 90, text: 'abcd'};
  const widthOf = (_, text) => 10 * text.length;
  assert.deepEqual(roomOf(mark, widthOf), {left: 40, top: 140, right: 200, bottom: 280});
});
