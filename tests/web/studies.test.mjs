// The studies' worker beside the program's, both run by node, the test in the page's place: what became of the files,
// clean copies, corrected files, and what one worker tells the other of what it changed.
import assert from 'node:assert/strict';
import fs from 'node:fs';
import path from 'node:path';
import test from 'node:test';
import {changeFor} from '../../src/platform/web/page/workers.js';
import {Session, startWorker, top} from './worker_bench.mjs';

const example = name => fs.readFileSync(path.join(top, 'examples', name));
const examples = () => new Map(['Vorn.fil', 'nowhere.rwl', 'nearby.fh', 'yonder.rwl', 'anywhere.crn'].map(name => [name, example(name)]));
// An empty line ends what is read.
const broken = () => {
  const text = example('yonder.rwl').toString('latin1'), lines = text.split('\n');
  const second = lines.findIndex(line => line.slice(0, 8) !== lines[0].slice(0, 8));
  return Buffer.from([...lines.slice(0, second), '', ...lines.slice(second)].join('\n'), 'latin1');
};

// Both workers, and the page between them.
class Both extends Session {
  said = [];  // by the studies
  expected = [];
  toStudies = [];

  static async on(files) {
    const both = new Both();
    await both.start(files);
    const given = [...files].map(([name, bytes]) => ({path: name, bytes: new Uint8Array(bytes)}));
    both.studies = await startWorker('studies', given, null, message => both.heardOfStudies(message));
    both.toStudies.splice(0).forEach(message => both.studies(message));
    await both.pageText();
    return both;
  }

  heard(message) {
    super.heard(message);
    if (message.is === 'stand' && message.situation) this.tell({do: 'stand', situation: message.situation});
    const change = message.is === 'files' && changeFor('studies', message);
    if (change) this.tell(change);
  }

  heardOfStudies(sent) {
    const message = structuredClone(sent);  // as a browser hands it over
    this.said.push(message);
    if (message.is === 'files') {
      super.heard(message);
      this.ask(changeFor('program', message));
    }
    if (message.is === 'failed') this.reject(new Error(message.text));
    this.expected = this.expected.filter(({is, found}) => is !== message.is || found(message));
  }

  tell(message) {
    if (this.studies) this.studies(message);
    else this.toStudies.push(message);
  }

  // The next one of its kind that the studies say.
  next(is) {
    const next = new Promise(found => this.expected.push({is, found}));
    return Promise.race([next, this.over.then(() => assert.fail('the program has ended'))]);
  }
  asked(message, is) {
    const next = this.next(is);
    this.tell(message);
    return next;
  }
  panel(ask) {
    return this.asked({do: 'panel', name: 'files', ask, width: 1400, height: 2000, scroll: 0}, 'panel');
  }
  async offeredCopy() {
    const {spots} = await this.panel(9);
    return this.asked({do: 'panel_click', name: 'files', ask: 9, spot: spots.findIndex(({asks}) => asks)}, 'clean_copy');
  }
}

async function notice(both) {
  return both.said.find(({is}) => is === 'notice') ?? both.next('notice');
}
const textOf = (both, name) => both.files.get(name)?.toString('latin1');

test('what is lost is told, and a copy written that the program reads whole', async () => {
  const both = await Both.on(new Map([['Vorn.fil', Buffer.from('yonder.rwl\n')], ['yonder.rwl', broken()]]));
  const {text} = await notice(both);
  assert.equal(text, 'yonder.rwl is not read whole: the panel Files says what is missing');
  const offer = await both.offeredCopy();
  assert.deepEqual([offer.file, offer.name, offer.can], ['yonder.rwl', 'yonder-clean.rwl', true]);
  assert.equal(both.files.has('yonder-clean.rwl'), false);
  const {trouble} = await both.asked({do: 'use_clean_copy', number: offer.number}, 'used_clean_copy');
  assert.equal(trouble, '');
  // What was written was told before.
  assert.equal(textOf(both, 'yonder-clean.rwl'), example('yonder.rwl').toString('latin1'));
  assert.equal(textOf(both, 'Vorn.fil'), 'yonder-clean.rwl\n');
  assert.notEqual(await both.pageText(), null);
  const again = await Both.on(both.files);
  await again.next('found');
  for (let found; (found = await again.panel(1)).spots.length < 1;) await again.next('found');
  assert.deepEqual(again.said.filter(({is}) => is === 'notice'), []);
  assert.deepEqual((await again.panel(2)).spots.map(({file}) => file), ['yonder-clean.rwl']);
});

test('coordinates are copied into a file that the program reads, and workbooks are said not to be read here', async () => {
  const points = '#DENDRO\nDATED 1992\n' + [...Array(40)].map((_, k) => `${k}.000,0.000\n`).join('');
  const both = await Both.on(new Map([
    ['Vorn.fil', Buffer.from('yonder.rwl\nbeam.pos\nbook.xlsx\n')], ['yonder.rwl', example('yonder.rwl')],
    ['beam.pos', Buffer.from(points)], ['book.xlsx', Buffer.from('PK\x03\x04' + '\0'.repeat(60), 'latin1')]]));
  await both.next('found');
  while ((await both.panel(1)).spots.length < 4) await both.next('found');
  const {text} = await both.asked({do: 'csv', name: 'files'}, 'csv');
  assert.match(text, /this edition of the program cannot read workbooks: save the sheet as CSV/);
  const offer = await both.offeredCopy();
  assert.deepEqual([offer.file, offer.name, offer.can], ['beam.pos', 'beam.rwl', true]);
  await both.asked({do: 'use_clean_copy', number: offer.number}, 'used_clean_copy');
  assert.match(textOf(both, 'beam.rwl'), /^beam {4}1954   100/);
});

async function mended() {
  const both = await Both.on(examples());
  await both.act({do: 'act', id: 'crossdate'});
  await both.act({do: 'move_sample', years: -7});
  await both.act({do: 'act', id: 'save_sample'});
  return both;
}

test('what was changed is told, and put back into the file', async () => {
  const both = await mended();
  const {lines} = await both.asked({do: 'changes'}, 'changes');
  assert.match(lines[2], /^NOW01: /);
  const offer = await both.asked({do: 'corrected'}, 'corrected');
  assert.deepEqual([offer.file, offer.refused, offer.is_changed, offer.oldest], ['nowhere.rwl', [], true, '']);
  const corrected = Buffer.from(offer.bytes).toString('latin1');
  assert.notEqual(corrected, textOf(both, 'nowhere.rwl'));
  const saved = await both.asked({do: 'save_over', number: offer.number}, 'saved_over');
  assert.deepEqual([saved.file, saved.trouble], ['nowhere.rwl', '']);
  assert.equal(textOf(both, 'nowhere.rwl'), corrected);
  assert.equal(textOf(both, 'nowhere.rwl.orig'), example('nowhere.rwl').toString('latin1'));
  assert.notEqual(await both.pageText(), null);
});

test('what the program writes the studies know, and what is changed elsewhere is not written over', async () => {
  const both = await mended();
  await both.act({do: 'act', id: 'back'});
  await both.act({do: 'act', id: 'save_raw'});
  const offer = await both.asked({do: 'corrected'}, 'corrected');
  both.tell({do: 'files', changed: [{path: 'nowhere.rwl', bytes: both.files.get('nowhere.RWW')}], removed: []});
  const {trouble} = await both.asked({do: 'save_over', number: offer.number}, 'saved_over');
  assert.equal(trouble, 'nowhere.rwl: was changed by somebody else meanwhile');
  both.tell({do: 'files', changed: [], removed: ['nowhere.rwl']});
  const {refused} = await both.asked({do: 'corrected'}, 'corrected');
  assert.deepEqual(refused, ['nowhere.rwl cannot be read any more']);
  assert.equal(both.said.some(({is}) => is === 'files'), false);  // what it was told it does not tell
});

test('the program reads what was changed elsewhere, and does not tell it again', async () => {
  const both = await Both.on(examples());
  const before = [...both.files.keys()];
  both.ask({do: 'files', changed: [{path: 'plots/new.rwl', bytes: new Uint8Array([65])}], removed: ['anywhere.crn']});
  assert.notEqual(await both.pageText(), null);
  await both.act({do: 'act', id: 'stats_report'});
  const came = [...both.files.keys()].filter(name => !before.includes(name) && !name.startsWith('.vorn/'));
  assert.deepEqual(came, ['Stats.prn']);
});

test.after(() => setTimeout(() => process.exit(), 100));
