// What is left out of a page because pixels do not show it: as src/plot/pixel_marks_test.cpp has it.
import assert from 'node:assert/strict';
import test from 'node:test';

import {marksOnPixels} from '../pixel_marks.js';

const line = (points, colour = 12) => ({kind: 'line', colour, points: points.flat()});
const inPieces = (points, colour) => points.slice(1).map((point, k) => line([points[k], point], colour));

test('what has three points in half a column stays as it is', () => {
  const points = Array.from({length: 300}, (_, k) => [k * 0.34, k % 7]);
  const marks = [...inPieces(points), {kind: 'fill', colour: 0, points: [0, 0, 9, 0, 9, 9]}];
  assert.deepEqual(marksOnPixels(marks, 0.5, 0), marks);
  assert.deepEqual(marksOnPixels([], 0.5, 0), []);
});

test('of more there are the lowest and the highest, in their order', () => {
  const points = [[0, 5], [0.1, 9], [0.2, 6], [0.4, 1], [0.6, 4], [0.7, 2], [0.8, 6],
    [2, 7.2], [2.1, 7.3], [2.2, 7.4], [2.3, 7.1], [2.5, 7.3]];
  assert.deepEqual(marksOnPixels(inPieces(points), 0.5, 0),
      [line([[0, 5], [0.1, 9], [0.4, 1], [2.2, 7.4], [2.3, 7.1], [2.5, 7.3]])]);
});

test('a chain is of one colour and end to end', () => {
  const points = Array.from({length: 8}, (_, k) => [k * 0.2, k]);
  const thin = [0, 4, 5, 7].map((k) => points[k]);
  assert.deepEqual(marksOnPixels([...inPieces(points), ...inPieces(points, 9)], 0.5, 0), [line(thin), line(thin, 9)]);
  const parted = [...inPieces(points.slice(0, 4)), ...inPieces(points.slice(5))];
  assert.deepEqual(marksOnPixels(parted, 0.5, 0), parted);
});

test('half a column has one tick of a kind, unless something may have covered it', () => {
  const tick = (x, top, colour = 15) => line([[x, 1300], [x, top]], colour);
  const a = tick(10, 1288), taller = tick(10.1, 1276), again = tick(10.2, 1288), red = tick(10.3, 1288, 12), b = tick(10.6, 1288);
  assert.deepEqual(marksOnPixels([a, taller, again, red, b, tick(10.9, 1288)], 1, 0), [a, taller, red, b]);
  assert.deepEqual(marksOnPixels([a, again], 1, 0.35), [a, again]);
  const cover = {kind: 'fill', colour: 0, points: [0, 0, 99, 0, 99, 2000, 0, 2000]};
  assert.deepEqual(marksOnPixels([a, cover, again], 1, 0), [a, cover, again]);
});
