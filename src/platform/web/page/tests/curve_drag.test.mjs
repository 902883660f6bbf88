// The sample's curve under the mouse.
import assert from 'node:assert/strict';
import test from 'node:test';

import {mayDrag, wordsOf, yearsBetween} from '../curve_drag.js';

const graph = [200, 450, 2700, 1300];
const stand = {
  may_drag: true,
  buttons: [[2000, 460, 2200, 500, 'OK']]
};

test('a curve is taken where there is no button, within the graph', () => {
  assert.ok(mayDrag(stand, graph, 1000, 800));
  assert.ok(!mayDrag(stand, graph, 2100, 480));
  assert.ok(!mayDrag(stand, graph, 1000, 1400));
  assert.ok(!mayDrag({...stand, may_drag: false}, graph, 1000, 800));
  assert.ok(!mayDrag(null, graph, 1000, 800));
});

test('it goes by whole years of those shown', () => {
  assert.equal(yearsBetween(1000, 1000 + 75, graph, 100), 3);
  assert.equal(yearsBetween(1000, 1000 - 130, graph, 100), -5);
  assert.ok(Object.is(yearsBetween(1000, 999, graph, 100), 0));
  assert.equal(yearsBetween(1000, 3500, graph, 0), 1);
});

test('words tell by how many, and which years it takes then', () => {
  assert.equal(wordsOf(3, {first: 1700, last: 1800}), '+3 years, 1703-1803');
  assert.equal(wordsOf(-1, {first: 1700, last: 1800}), '-1 year, 1699-1799');
  assert.equal(wordsOf(0, {first: 1, last: 0}), '0 years');
});
