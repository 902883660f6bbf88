// The keyboard in a panel: from spot to spot.
import assert from 'node:assert/strict';
import test from 'node:test';

import {following, followMark, inset, scrollTo, spotAt} from '../panel_walk.js';

// A heading that is not scrolled, and two rows of two spots.
const spot = (tip, ...place) => ({tip, place, does: true});
const panel = {
  head: 100,
  spots: [
    spot('heading', 0, 0, 400, 100), spot('a1', 0, 100, 200, 200), spot('a2', 200, 100, 400, 200),
    spot('b1', 0, 200, 200, 300), spot('b2', 200, 200, 400, 300)
  ],
};
const from = (tip) => panel.spots.findIndex((one) => one.tip === tip);
const to = (tip, way, scroll = 0) => panel.spots[following(panel, from(tip), way, scroll)]?.tip;

test('next and previous go as one reads', () => {
  assert.equal(to('a1', 'next'), 'a2');
  assert.equal(to('a2', 'next'), 'b1');
  assert.equal(to('b1', 'previous'), 'a2');
  assert.equal(to('b2', 'next'), undefined);
  assert.equal(to('heading', 'previous'), undefined);
});

test('up and down go to the nearest above and below', () => {
  assert.equal(to('a2', 'down'), 'b2');
  assert.equal(to('b1', 'up'), 'a1');
  assert.equal(to('b1', 'down'), undefined);
});

test('from what is scrolled nothing at the upper edge follows before all is scrolled back', () => {
  assert.equal(to('a1', 'up', 40), undefined);
  assert.equal(to('a1', 'up', 0), 'heading');
  assert.equal(to('a1', 'previous', 40), undefined);
});

test('without a mark the first comes, or backwards the last', () => {
  assert.equal(following(panel, -1, 'next', 0), 0);
  assert.equal(following(panel, -1, 'up', 0), 4);
  assert.equal(following({head: 0, spots: []}, -1, 'next', 0), -1);
});

test('of those that meet the last is hit, and an edge belongs to one alone', () => {
  const both = {spots: [spot('below', 0, 0, 100, 100), spot('above', 50, 50, 80, 80)]};
  assert.equal(spotAt(both, 60, 60), 1);
  assert.equal(spotAt(both, 80, 80), 0);
  assert.equal(spotAt(both, 100, 20), -1);
});

test('the mark stays with what says the same when all is scrolled, or moved', () => {
  const scrolled = {
    head: 100,
    spots: [spot('heading', 0, 0, 400, 100), spot('b1', 0, 140, 200, 240), spot('b2', 200, 140, 400, 240)]
  };
  assert.equal(scrolled.spots[followMark(scrolled, panel.spots[from('b2')], 60)].tip, 'b2');
  assert.equal(followMark(scrolled, panel.spots[0], 60), 0);
  assert.equal(followMark(scrolled, null, 0), -1);
});

test('what says nothing that was said before is found by its place', () => {
  const other = {
    head: 100,
    spots: [spot('heading', 0, 0, 400, 100), spot('c1', 0, 100, 200, 200), spot('c2', 200, 100, 400, 200)]
  };
  assert.equal(followMark(other, panel.spots[from('a2')], 0), 2);
});

test('a spot beyond the lower edge is scrolled into sight, but never behind the heading', () => {
  assert.equal(scrollTo(panel, panel.spots[from('b1')], 400), 0);
  assert.equal(scrollTo(panel, spot('low', 0, 380, 200, 480), 400), 80);
  assert.equal(scrollTo(panel, spot('high', 0, 180, 200, 900), 400), 80);
  assert.equal(scrollTo(panel, spot('over the edge', 0, 60, 200, 160), 400), -100);
  assert.equal(scrollTo(panel, panel.spots[0], 50), 0);
});

test('rings lie within large spots and around small ones', () => {
  assert.equal(inset(100, 2), 8);
  assert.equal(inset(20, 2), 0);
});
