import assert from 'node:assert/strict';
import {File} from 'node:buffer';
import {beforeEach, test} from 'node:test';

import {DiskFolder, mayWrite} from '../disk_folder.js';

// A disk: names to {text, time}. Time goes on with every change.
let disk, time, asked, answer, refuses;

const missing = () => Object.assign(new Error('not there'), {name: 'NotFoundError'});
const change = (name, text) => (disk[name] = {
  text,
  time: ++time
});

const handle = {
  async getFileHandle(name, {create}) {
    if (!(name in disk)) {
      if (!create) throw missing();
      change(name, '');
    }
    return {
      getFile: async () => new File([disk[name].text], name, {lastModified: disk[name].time}),
      async createWritable() {
        let text = '';
        return {
          write: async bytes => (text += new TextDecoder().decode(bytes)),
          close: async () => {
            if (refuses) throw new Error('the disk is full');
            change(name, text);
          },
          abort: async () => {}
        };
      }
    };
  },
  removeEntry: async name => delete disk[name]
};

const bytes = text => new TextEncoder().encode(text);
const folder = () => new DiskFolder(handle, async path => asked.push(path) && answer);
const learned = name => ({path: name, time: disk[name].time, bytes: bytes(disk[name].text)});

beforeEach(() => {
  [disk, time, asked, answer, refuses] = [{}, 0, [], 'leave', false];
});

test('a new file and one that nobody else changed are written without a question', async () => {
  change('a', 'before');
  const on = folder();
  on.learn(learned('a'));
  assert.equal(await on.write('a', bytes('now')), '');
  assert.equal(await on.write('a', bytes('again')), '');
  assert.equal(await on.write('b', bytes('new')), '');
  assert.deepEqual([disk.a.text, disk.b.text, asked], ['again', 'new', []]);
});

test('a file that somebody else changed is asked about', async () => {
  change('a', 'before');
  change('a.1', 'there already');
  const on = folder();
  on.learn(learned('a'));
  change('a', 'theirs');
  assert.equal(await on.write('a', bytes('mine')), '');
  assert.equal(disk.a.text, 'theirs');
  answer = 'beside';
  await on.write('a', bytes('mine'));
  assert.deepEqual([disk.a.text, disk['a.1'].text, disk['a.2'].text], ['theirs', 'there already', 'mine']);
  answer = 'overwrite';
  await on.write('a', bytes('mine'));
  assert.equal(disk.a.text, 'mine');
  assert.deepEqual(asked, ['a', 'a', 'a']);
});

test('a file that came meanwhile is asked about too', async () => {
  const on = folder();
  change('a', 'theirs');
  await on.write('a', bytes('mine'));
  assert.deepEqual([disk.a.text, asked], ['theirs', ['a']]);
});

test('what the disk does not take is said', async () => {
  refuses = true;
  assert.equal(await folder().write('a', bytes('mine')), 'a: the disk is full');
});

test('a file is removed unless somebody else changed it', async () => {
  change('a', 'one');
  change('b', 'two');
  const on = folder();
  on.learn(learned('a'));
  on.learn(learned('b'));
  change('b', 'theirs');
  assert.equal(await on.remove('a'), '');
  assert.match(await on.remove('b'), /changed by another program and stays/);
  assert.equal(await on.remove('none'), '');
  assert.deepEqual(Object.keys(disk), ['b']);
});

test('leave to write is asked for once more where it has gone', async () => {
  const gone = {queryPermission: async () => 'prompt', requestPermission: async () => 'granted'};
  assert.equal(await mayWrite(gone, true), true);
  assert.equal(await mayWrite(gone, false), false);
  assert.equal(await mayWrite({...gone, requestPermission: async () => 'denied'}, true), false);
  assert.equal(await mayWrite({queryPermission: async () => 'granted'}, false), true);
});
