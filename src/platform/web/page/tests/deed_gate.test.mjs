// What is sent to a program that may still be at work.
import assert from 'node:assert/strict';
import test from 'node:test';

import {DeedGate} from '../deed_gate.js';

function gate() {
  const made = {sent: [], time: 0};
  made.gate = new DeedGate((message) => made.sent.push(message), () => made.time);
  return made;
}
const key = (repeated, step = '') => ({do: 'key', repeated, step});

test('keys that repeat are dropped until the program stands anew, others never', () => {
  const {gate: g, sent} = gate();
  for (const repeated of [false, true, true, false]) g.put(key(repeated));
  assert.equal(sent.length, 2);
  g.stood();
  g.put(key(true));
  assert.equal(sent.length, 3);
});

test('a cursor that goes on is answered by the status line alone', () => {
  const {gate: g, sent} = gate();
  g.put(key(false, 'next'));
  g.told();
  g.put(key(true, 'next'));
  assert.equal(sent.length, 2);
});

test('the status line is no answer to a click', () => {
  const {gate: g, sent} = gate();
  g.put({do: 'click'});
  g.told();
  g.put(key(true));
  assert.deepEqual(sent, [{do: 'click'}]);
});

test('turns of the wheel are gathered, and lost when they cancel out', () => {
  const {gate: g, sent} = gate();
  for (const years of [10, 10, 5]) g.put({do: 'scroll', years});
  assert.deepEqual(sent, [{do: 'scroll', years: 10}]);
  g.stood();
  assert.deepEqual(sent.at(-1), {do: 'scroll', years: 15});
  for (const years of [3, -3]) g.put({do: 'scroll', years});
  g.stood();
  assert.equal(sent.length, 2);
});

test('of the places of the mouse the last one is told, when the one before was answered', () => {
  const {gate: g, sent} = gate();
  for (const x of [1, 2, 3]) g.put({do: 'mouse', x});
  assert.deepEqual(sent, [{do: 'mouse', x: 1}]);
  g.told();
  g.told();
  assert.deepEqual(sent.map(({x}) => x), [1, 3]);
});

test('what is never answered holds nothing up for long', () => {
  const made = gate();
  made.gate.put({do: 'act'});
  made.gate.put({do: 'scroll', years: 1});
  made.time = 5000;
  made.gate.put({do: 'scroll', years: 1});
  assert.deepEqual(made.sent.at(-1), {do: 'scroll', years: 2});
});

// As the window does: what cannot be done yet is held as long as the program may turn.
function typist() {
  const made = {sent: [], waits: [], can: false, saidWhyNot: 0};
  made.gate = new DeedGate((message) => made.sent.push(message.do), () => 0, (work) => made.waits.push(work));
  made.act = () => {
    if (!made.can && made.gate.mayTurn) return made.gate.hold(made.act);
    made.can ? made.gate.put({do: 'act'}) : (made.saidWhyNot += 1);
  };
  return made;
}

test('who types ahead gets it done in the order typed', () => {
  const t = typist();
  t.gate.put(key(false));
  t.gate.put(key(false));
  t.act();
  t.gate.put({do: 'click'});
  assert.deepEqual(t.sent, ['key', 'key']);
  t.gate.stood();  // after the first key, where the action cannot be done
  assert.deepEqual(t.sent, ['key', 'key']);
  t.can = true;
  t.gate.stood();
  assert.deepEqual(t.sent, ['key', 'key', 'act', 'click']);
});

test('what cannot be done after all is told, and holds nothing up', () => {
  const t = typist();
  t.act();
  assert.equal(t.saidWhyNot, 1);
  t.gate.put(key(false));
  t.act();
  t.gate.put({do: 'click'});
  t.gate.stood();
  assert.equal(t.saidWhyNot, 2);
  assert.deepEqual(t.sent, ['key', 'click']);
});

test('where the program does not stand anew for long, the wait ends', () => {
  const t = typist();
  t.gate.put({do: 'methods'});
  t.act();
  t.gate.put(key(false));
  t.waits.forEach((end) => end());
  assert.equal(t.saidWhyNot, 1);
  assert.deepEqual(t.sent, ['methods', 'key']);
});
