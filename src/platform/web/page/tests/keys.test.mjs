// Which keys reach the program, and which start actions.
import assert from 'node:assert/strict';
import {readFileSync} from 'node:fs';
import test from 'node:test';

import {isPlain, keyCode, stepOf} from '../keys.js';
import {actionsInBrowser, isPlainShortcut, keyInBrowser, keysPage, shortcutOf, shortcutTable, shownKey} from '../shortcuts.js';

const pressed = (key, held = {}) =>
    ({key, code: '', ctrlKey: false, altKey: false, shiftKey: false, metaKey: false, ...held});

test('Return, Backspace and Escape have their codes, printable characters their own', () => {
  assert.deepEqual(['Enter', 'Backspace', 'Escape', 'a', 'A', ' ', '~'].map((key) => keyCode(pressed(key))),
      [13, 8, 27, 97, 65, 32, 126]);
});

test('no key can pose as a click or as a request for help, and none outside ASCII is handed on', () => {
  for (const key of ['\u0005', '\u0006', 'ü', '€', '\u007f', 'F5', 'Tab', 'Dead', 'Shift'])
    assert.equal(keyCode(pressed(key)), 0, key);
  assert.equal(keyCode(pressed('a', {ctrlKey: true})), 0);
  assert.equal(keyCode(pressed('Enter', {altKey: true})), 0);
});

test('what is typed with AltGr is typed', () => {
  const altGr = {ctrlKey: true, altKey: true, getModifierState: (name) => name === 'AltGraph'};
  assert.equal(keyCode(pressed('@', altGr)), 64);
});

test('Tab and arrows are steps of the cursor', () => {
  assert.equal(stepOf(pressed('Tab')), 'next');
  assert.equal(stepOf(pressed('Tab', {shiftKey: true})), 'previous');
  assert.equal(stepOf(pressed('PageDown')), 'page_right');
  assert.equal(stepOf(pressed('ArrowLeft', {altKey: true})), '');
  assert.ok(!isPlain(pressed('F5')));
});

test('a key is named as the table of actions names it', () => {
  assert.equal(shortcutOf(pressed('t', {ctrlKey: true, shiftKey: true})), 'Ctrl+Shift+T');
  assert.equal(shortcutOf(pressed('ArrowLeft', {altKey: true, shiftKey: true})), 'Alt+Shift+Left');
  assert.equal(shortcutOf(pressed('PageDown', {altKey: true})), 'Alt+PgDown');
  assert.equal(shortcutOf(pressed('Enter', {ctrlKey: true})), 'Ctrl+Return');
  assert.equal(shortcutOf(pressed('Insert')), 'Ins');
  assert.equal(shortcutOf(pressed('n')), 'N');
  assert.equal(shortcutOf(pressed('F5')), 'F5');
});

test('with Alt letters and digits are told by their place, whatever they type', () => {
  assert.equal(shortcutOf(pressed('˜', {altKey: true, code: 'KeyN'})), 'Alt+N');
  assert.equal(shortcutOf(pressed('¡', {altKey: true, code: 'Digit1'})), 'Alt+1');
  assert.equal(shortcutOf(pressed('&', {ctrlKey: true, code: 'Digit1'})), 'Ctrl+1');
});

test('Command is Control on a Mac, and nothing elsewhere', () => {
  assert.equal(shortcutOf(pressed('z', {metaKey: true}), true), 'Ctrl+Z');
  assert.equal(shortcutOf(pressed('z', {metaKey: true}), false), '');
  assert.equal(shownKey('Ctrl+Shift+Z', true), '⌘⇧Z');
  assert.equal(shownKey('Ctrl+Shift+Z', false), 'Ctrl+Shift+Z');
});

// The program's own table, as it is written.
function tableOfProgram() {
  const source = readFileSync(new URL('../../../../desk/action_table.cpp', import.meta.url), 'utf8');
  const rows = [];
  for (const [, id, menu, text, rest] of source.matchAll(/\{\{"(\w+)", Menu::(\w+), "([^"]+)"([^}]*)\}/g)) {
    const [key = '', other = ''] = [...rest.matchAll(/"([^"]*)"/g)].map(([, words]) => words);
    rows.push({id, menu, text, key, other_key: other, window: false, group: false, switches: false});
  }
  return rows;
}

const reserved = [
  'Ctrl+N', 'Ctrl+T', 'Ctrl+W', 'Ctrl+Q', 'Ctrl+Shift+N', 'Ctrl+Shift+T', 'Ctrl+Shift+W', 'Ctrl+Shift+P',
  'Ctrl+Shift+Q', 'Ctrl+Tab', 'Ctrl+Shift+Tab', 'Alt+F4', 'Ctrl+PgUp', 'Ctrl+PgDown'
];

test('no action has a key that browsers keep for themselves, none that opens a menu, and none has that of another',
    () => {
      const rows = actionsInBrowser(tableOfProgram());
      assert.ok(rows.length > 80);
      const keys = rows.flatMap((row) => [row.key, row.other_key]).filter(Boolean);
      for (const key of keys) {
        assert.ok(!reserved.includes(key), key);
        assert.ok(!/^Alt\+[FEVCH]$/.test(key), key);
      }
      assert.equal(new Set(keys).size, keys.length);
      assert.equal(shortcutTable(rows).size, keys.length);
    });

test('a key that browsers leave to the page stays what it is', () => {
  assert.equal(keyInBrowser('Ctrl+S'), 'Ctrl+S');
  assert.equal(keyInBrowser('Ctrl+N'), 'Alt+N');
  assert.equal(keyInBrowser(''), '');
});

test('what is plain counts only where nothing is typed', () => {
  for (const key of ['Left', 'Shift+Left', 'N', 'Ins', 'PgUp']) assert.ok(isPlainShortcut(key), key);
  for (const key of ['Ctrl+Left', 'Alt+1', 'F5', 'Ctrl+Shift+T']) assert.ok(!isPlainShortcut(key), key);
});

test('the page of keys has those of the browser', () => {
  const actions = [
    {id: 'note', menu: 'edit', text: 'Note on the Last Decision…', key: 'Ctrl+N', other_key: ''},
    {id: 'redo', menu: 'edit', text: 'Redo', key: 'Ctrl+Y', other_key: 'Ctrl+Shift+Z'},
  ];
  const text =
      `Edit\n${'Ctrl+N'.padEnd(28)}Note on the Last Decision…\n${'Ctrl+Y or Ctrl+Shift+Z'.padEnd(28)}Redo\n`;
  const page = keysPage(text, actions);
  assert.ok(page.includes(`${'Alt+N'.padEnd(28)}Note on the Last Decision…\n`));
  assert.ok(page.includes(`${'Ctrl+Y or Ctrl+Shift+Z'.padEnd(28)}Redo\n`));
  assert.ok(!page.includes('Ctrl+N'));
  assert.ok(page.includes(`${'Alt+7'.padEnd(28)}Folder\n`));
});
