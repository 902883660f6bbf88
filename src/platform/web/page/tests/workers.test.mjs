// The two workers, and what one tells the other of the files.
import assert from 'node:assert/strict';
import test from 'node:test';
import {changeFor, startWorkers} from '../workers.js';

const file = (path) => ({path, bytes: new Uint8Array([1])});

test('the studies are told of files and marks, not of journals', () => {
  const changed = ['a.rwl', '.vorn/journal-1', '.vorn/marks'].map(file);
  const told = changeFor('studies', {changed, removed: ['b.rwl', '.vorn/journal-0']});
  assert.equal(told.do, 'files');
  assert.deepEqual(told.changed.map(({path}) => path), ['a.rwl', '.vorn/marks']);
  assert.deepEqual(told.removed, ['b.rwl']);
  assert.equal(changeFor('studies', {changed: [file('.vorn/journal-1')], removed: []}), null);
});

test('the program is told of everything', () => {
  assert.deepEqual(changeFor('program', {changed: [file('.vorn/marks')], removed: []}).changed.length, 1);
  assert.equal(changeFor('program', {changed: [], removed: []}), null);
});

// Workers that do nothing but remember what they are told.
class FakeWorker extends EventTarget {
  static all = [];
  told = [];
  isOver = false;

  constructor(source, {name}) {
    super();
    this.name = name;
    FakeWorker.all.push(this);
  }

  postMessage(message) {
    this.told.push(message);
  }

  terminate() {
    this.isOver = true;
  }

  say(data) {
    this.dispatchEvent(Object.assign(new Event('message'), {data}));
  }
}

const emptyModule = Uint8Array.of(0, 97, 115, 109, 1, 0, 0, 0);
const sources = {
  program: {module: emptyModule, source: ''},
  studies: {module: emptyModule, source: ''}
};

async function started() {
  FakeWorker.all.length = 0;
  globalThis.Worker = FakeWorker;
  const heard = [];
  const hears = (role) => (message) => heard.push(`${role}: ${message.is}`);
  const files = ['a.rwl', 'Vorn.fil', '.vorn/journal-1', '.vorn/marks'].map(file);
  const workers = await startWorkers({
    sources,
    folder: {name: 'site', files: async () => files},
    heard: {program: hears('program'), studies: hears('studies')}
  });
  const [program, studies] = FakeWorker.all;
  return {workers, program, studies, heard, files};
}

const paths = (files) => files.map(({path}) => path);

test('each begins with the files that it works with', async () => {
  const {program, studies} = await started();
  assert.deepEqual([program.name, studies.name], ['program', 'studies']);
  assert.deepEqual(paths(program.told[0].files), ['a.rwl', 'Vorn.fil', '.vorn/journal-1', '.vorn/marks']);
  assert.deepEqual(paths(studies.told[0].files), ['a.rwl', 'Vorn.fil', '.vorn/marks']);
});

test('what one of them changes reaches the other one, and the page', async () => {
  const {program, studies, heard} = await started();
  studies.say({is: 'files', changed: [file('a-clean.rwl')], removed: []});
  program.say({is: 'files', changed: [file('Stats.prn')], removed: ['b']});
  program.say({is: 'files', changed: [file('.vorn/journal-1')], removed: []});
  program.say({is: 'progress', text: ''});
  assert.deepEqual(program.told.slice(1), [{do: 'files', changed: [file('a-clean.rwl')], removed: []}]);
  assert.deepEqual(studies.told.slice(1), [{do: 'files', changed: [file('Stats.prn')], removed: ['b']}]);
  assert.deepEqual(heard, ['studies: files', 'program: files', 'program: files', 'program: progress']);
});

test('studies that begin anew take the place of those before', async () => {
  const {workers, program, studies, files} = await started();
  workers.startStudies(files);
  const anew = FakeWorker.all[2];
  assert.ok(studies.isOver);
  program.say({is: 'files', changed: [file('Stats.prn')], removed: []});
  assert.equal(studies.told.length, 1);
  assert.deepEqual(paths(anew.told[1].changed), ['Stats.prn']);
});
