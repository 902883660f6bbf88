// compare_sessions.mjs FOLDER SCRIPT...: plays each script on the files of FOLDER, by the programs of this system
// and by the worker of the browser edition, and holds every page on the way and every file against each other.
// A script may begin with what tests/sessions/README.md lets scripts prepare.
// compare_sessions.mjs --walk STEPS FOLDER...: walks at random over the files of each folder, likewise.
// Ends with 1 where anything differs.
import {execFileSync} from 'node:child_process';
import fs from 'node:fs';
import os from 'node:os';
import path from 'node:path';
import {Session, key, top} from './worker_bench.mjs';

const replay = process.env.VORN_REPLAY || path.join(top, 'build/release/src/apps/vorn_replay');
const acting = /^(click|help|press|key|type|enter|undo|redo|careful)\b/;
const button_list = fs.readFileSync(path.join(top, 'src/toolkit/button_list.inc'), 'utf8');
const numbers = new Map([...button_list.matchAll(/VORN_BUTTON\((\w+), (\d+)\)/g)].map(([, name, n]) => [name, +n]));

// --- The programs of this system.

const stepFile = step => `step-${step}.txt`;

// The statements that act, each followed by a picture of the page in words.
function statementsOf(script) {
  const lines = fs.readFileSync(script, 'utf8').split('\n').map(line => line.trim());
  return lines.filter(line => acting.test(line));
}

function prepare(folder, script) {
  for (const line of fs.readFileSync(script, 'utf8').split('\n')) {
    const [, verb, rest] = /^#: (\w+) (.*)$/.exec(line) || [];
    if (verb === 'remove') fs.rmSync(path.join(folder, rest));
    if (verb === 'folder') {
      fs.mkdirSync(path.join(folder, rest));
      fs.writeFileSync(path.join(folder, rest, 'inside'), '');
    }
    if (verb === 'write') fs.writeFileSync(path.join(folder, rest.split(' ')[0]), rest.slice(rest.indexOf(' ') + 1) + '\n');
    if (verb === 'run') {
      const other = path.join(path.dirname(script), rest);
      prepare(folder, other);
      fs.writeFileSync(path.join(folder, '.other.vrs'), statementsOf(other).join('\n') + '\n');
      runNatively(folder, '.other.vrs');
      fs.rmSync(path.join(folder, '.other.vrs'));
    }
  }
}

function runNatively(folder, script) {
  try {
    execFileSync(replay, [script], {cwd: folder, stdio: 'pipe'});
    return 0;
  } catch (failure) {
    return failure.status;
  }
}

function filesIn(folder, prefix = '') {
  const found = new Map();
  for (const name of fs.readdirSync(path.join(folder, prefix))) {
    const place = path.join(prefix, name);
    if (fs.statSync(path.join(folder, place)).isFile()) found.set(place, fs.readFileSync(path.join(folder, place)));
    else for (const [inside, bytes] of filesIn(folder, place)) found.set(inside, bytes);
  }
  return found;
}

// --- The worker.

function messageOf(statement, places) {
  const [word, ...rest] = statement.split(/\s+/);
  const numbers_of = rest.map(Number);
  if (word === 'click' || word === 'help') return [{do: word, x: numbers_of[0], y: numbers_of[1]}];
  if (word === 'key') return [key(numbers_of[0])];
  if (word === 'enter') return [key(13)];
  if (word === 'type') return [...statement.slice(5)].map(letter => key(letter.charCodeAt(0)));
  if (word === 'undo' || word === 'redo') return [{do: 'act', id: word}];
  if (word === 'careful') return [{do: 'act', id: `careful-${rest[0]}`}];  // the scripts switch nothing on twice
  const wanted = numbers.get(rest[0]) ?? Number(rest[0]);
  if (!places.has(wanted)) return null;
  const [x1, y1, x2, y2] = places.get(wanted);
  return [{do: 'click', x: Math.floor((x1 + x2) / 2), y: Math.floor((y1 + y2) / 2)}];
}

// --- Both.

// What became of the files in both.
function differentFiles(after, session) {
  const ours = new Map([...after].filter(([name]) => !/^step-\d+\.txt$/.test(name)));
  const theirs = new Map([...session.files].filter(([name]) => !name.startsWith('.vorn/')));
  const differences = [];
  for (const name of new Set([...ours.keys(), ...theirs.keys()])) {
    if (!ours.has(name) || !theirs.has(name)) differences.push(`${name}: only one of them wrote it`);
    else if (!ours.get(name).equals(theirs.get(name))) differences.push(`${name}: other bytes`);
  }
  return {files: ours.size, differences};
}

// Plays statements natively on a copy of the folder, prepared by `prepared`; each with the page behind it.
function playNatively(folder, prepared, statements) {
  const native = fs.mkdtempSync(path.join(os.tmpdir(), 'vorn-compare-'));
  fs.cpSync(folder, native, {recursive: true});
  prepared(native);
  const before = filesIn(native);
  const played = statements.flatMap((statement, step) => [statement, `page ${stepFile(step)}`]).join('\n') + '\n';
  fs.writeFileSync(path.join(native, '.played.vrs'), played);
  runNatively(native, '.played.vrs');
  fs.rmSync(path.join(native, '.played.vrs'));
  const after = filesIn(native);
  fs.rmSync(native, {recursive: true});
  return {before, after};
}

// Up to the first button that the program never shows: where it would be only the other programs know.
async function compareScript(folder, script, statements = statementsOf(script)) {
  const {before, after} = playNatively(folder, copy => prepare(copy, script), statements);
  const differences = [];
  let pages = 0;
  const session = await Session.begin(before);
  await session.pageText();
  for (let step = 0; step < statements.length && !session.ended; ++step) {
    const messages = messageOf(statements[step], session.places);
    if (messages === null) return compareScript(folder, script, statements.slice(0, step));
    let text = null;
    for (const message of messages) text = await session.act(message);
    const expected = after.get(stepFile(step));
    if (text !== null && expected !== undefined) ++pages;
    if (text !== (expected === undefined ? null : expected.toString('latin1')))
      differences.push(`${statements[step]} (${step}): another page`);
  }
  const {files, differences: others} = differentFiles(after, session);
  return {pages, files, differences: [...differences, ...others]};
}

// --- Walks.

// A generator that gives the same numbers everywhere.
const seeded = seed => () => {
  seed = (seed + 0x6d2b79f5) | 0;
  let t = Math.imul(seed ^ (seed >>> 15), 1 | seed);
  t = (t + Math.imul(t ^ (t >>> 7), 61 | t)) ^ t;
  return ((t ^ (t >>> 14)) >>> 0) / 4294967296;
};
const oneOf = (random, all) => all[Math.floor(random() * all.length)];
const onPage = random => ({do: 'click', x: Math.floor(random() * 2971), y: Math.floor(random() * 2101)});

function nextOf(random, standing) {
  const {wait, buttons} = standing;
  if (wait === 'message') return key(13);
  if (wait === 'number' || wait === 'name') return key(random() < 0.35 ? 13 : oneOf(random, [...'0123456789AX -']).charCodeAt(0));
  if (random() < 0.05) return key(oneOf(random, [13, 27, 65, 113]));
  if (random() < 0.12 || buttons.length === 0) return onPage(random);
  const [x1, y1, x2, y2, label] = oneOf(random, buttons);
  if (label === 'Quit') return onPage(random);  // seldom enough by chance
  return {do: 'click', x: Math.floor(x1 + random() * (x2 - x1)), y: Math.floor(y1 + random() * (y2 - y1))};
}
const statementOf = message => (message.do === 'click' ? `click ${message.x} ${message.y}` : `key ${message.code}`);

async function compareWalk(folder, seed, steps) {
  const random = seeded(seed);
  const session = await Session.begin(filesIn(folder));
  await session.pageText();
  const texts = [], statements = [];
  for (let step = 0; step < steps && !session.ended; ++step) {
    const message = nextOf(random, session.standing);
    statements.push(statementOf(message));
    texts.push(await session.act(message));
  }
  const {after} = playNatively(folder, () => {}, statements);
  const differences = [];
  texts.forEach((text, step) => {
    const expected = after.get(stepFile(step));
    if (text !== (expected === undefined ? null : expected.toString('latin1')))
      differences.push(`${statements[step]} (${step}): another page`);
  });
  const {files, differences: others} = differentFiles(after, session);
  return {pages: texts.filter(text => text !== null).length, files, differences: [...differences, ...others]};
}

// --- All.

const given = process.argv.slice(2);
const walks = given[0] === '--walk';
const runs = walks
    ? given.slice(2).map((folder, seed) => [path.basename(folder), () => compareWalk(folder, seed + 1, Number(given[1]))])
    : given.slice(1).map(script => [path.basename(script), () => compareScript(given[0], script)]);
let pages = 0, files = 0, worse = 0;
for (const [name, run] of runs) {
  const result = await run().catch(failure => ({pages: 0, files: 0, differences: [String(failure)]}));
  pages += result.pages;
  files += result.files;
  worse += result.differences.length;
  for (const difference of result.differences.slice(0, 5)) console.error(`${name}: ${difference}`);
}
console.log(`${runs.length} sessions: ${pages} pages and ${files} files compared, ${worse} differences`);
process.exit(worse > 0 || pages === 0 ? 1 : 0);
