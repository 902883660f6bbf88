// Where lines and areas come out on whole pixels.
import assert from 'node:assert/strict';
import test from 'node:test';

import {isUpright, pageToArea, paintPage, penPixels, sharpLine} from '../painter.js';

import {bufferOf} from './buffer_for_tests.mjs';

test('a page fills as much of an area as it can, in the middle', () => {
  assert.deepEqual(pageToArea(2970, 2100), {scale: 1, x: 0, y: 0});
  assert.deepEqual(pageToArea(2970, 1050), {scale: 0.5, x: 742.5, y: 0});
  assert.deepEqual(pageToArea(297, 410), {scale: 0.1, x: 0, y: 100});
});

test('a pen is never thinner than a pixel, and of whole ones where it is sharp', () => {
  assert.equal(penPixels(2, 0.1, false), 1);
  assert.equal(penPixels(2, 0.8, false), 1.6);
  assert.equal(penPixels(2, 0.8, true), 2);
  assert.equal(penPixels(2, 0.7, true), 1);
});

test('upright is what runs across or up, side by side', () => {
  assert.ok(isUpright([0, 0, 10, 0, 10, 5, 3, 5]));
  assert.ok(!isUpright([0, 0, 10, 1]));
  assert.ok(isUpright([5, 5]));
});

test('a sharp line has its pen in whole pixels everywhere, and ends with half of it', () => {
  for (let place = 0; place < 3; place += 0.07) {
    const across = sharpLine(10.3, place, 20.3, place, 1);
    assert.equal(across.height, 1);
    assert.ok(Number.isInteger(across.top) && Math.abs(across.top + 0.5 - place) <= 0.5 + 1e-9);
    assert.equal(sharpLine(place, 3, place, 30, 2).width, 2);
  }
  assert.deepEqual(sharpLine(10, 5, 20, 5, 2), {left: 9, top: 4, width: 12, height: 2});
  assert.deepEqual(sharpLine(20, 5, 10, 5, 2), sharpLine(10, 5, 20, 5, 2));
});

// A context that remembers what was painted on which pixels, as far as it is upright.
class Recorder {
  rects = [];
  strokes = 0;
  #path = [];
  #matrix;
  #saved = [];
  constructor(scale, x, y) {
    this.#matrix = {a: scale, b: 0, c: 0, d: scale, e: x, f: y};
  }
  getTransform() {
    return this.#matrix;
  }
  setTransform(a, b, c, d, e, f) {
    this.#matrix = typeof a === 'object' ? a : {a, b, c, d, e, f};
  }
  save() {
    this.#saved.push(this.#matrix);
  }
  restore() {
    this.#matrix = this.#saved.pop();
  }
  beginPath() {
    this.#path = [];
  }
  closePath() {}
  clip() {}
  moveTo() {}
  lineTo(x, y) {
    this.#path.push([x, y]);
  }
  fill() {
    const xs = this.#path.map(([x]) => x), ys = this.#path.map(([, y]) => y);
    this.fillRect(
        Math.min(...xs), Math.min(...ys), Math.max(...xs) - Math.min(...xs), Math.max(...ys) - Math.min(...ys));
  }
  stroke() {
    this.strokes += 1;
  }
  fillRect(x, y, width, height) {
    const {a, e, f} = this.#matrix;
    this.rects.push({shade: this.fillStyle, left: x * a + e, top: y * a + f, width: width * a, height: height * a});
  }
}

const palette = {
  areas: Array(28).fill('area'),
  letters: Array(28).fill('letter'),
  grey_line: 'grey'
};

function painted(marks, scale = 0.3, x = 17.25, y = 3.5) {
  const context = new Recorder(scale, x, y);
  paintPage(context, bufferOf(marks), palette);
  return {...context, rects: context.rects.slice(1)};  // the first is the paper
}

test('upright areas and lines stand on whole pixels, wherever the page stands', () => {
  const {rects, strokes} = painted([
    {kind: 'fill', colour: 14, points: [101, 203, 333, 203, 333, 297, 101, 297]},
    {kind: 'outline', colour: 12, points: [101, 203, 333, 203, 333, 297, 101, 297]},
    {kind: 'line', colour: 7, points: [101, 203, 101, 501]},
  ]);
  assert.equal(strokes, 0);
  assert.equal(rects.length, 1 + 4 + 1);
  for (const {left, top, width, height} of rects)
    for (const place of [left, top, width, height]) assert.equal(place, Math.round(place));
  assert.equal(rects.at(-1).shade, 'grey');
  assert.equal(rects.at(-1).width, 1);
});

test('what slants is one stroke', () => {
  assert.equal(painted([{kind: 'line', colour: 9, points: [0, 0, 10, 7, 20, 3]}]).strokes, 1);
});

test('an area without width is seen all the same', () => {
  const [rect] = painted([{kind: 'fill', colour: 9, points: [100, 100, 100, 200]}], 0.3, 0, 0).rects;
  assert.ok(Math.abs(rect.width - 1) < 1e-9);
  assert.ok(Math.abs(rect.left - 29.5) < 1e-9);
});

test('marks without points do nothing', () => {
  assert.deepEqual(painted([{kind: 'fill'}, {kind: 'line'}, {kind: 'outline'}]).rects, []);
});
