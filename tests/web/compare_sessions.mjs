// compare_sessions.mjs FOLDER SCRIPT...: plays each script on the files of FOLDER, by the programs of this system
// and by the worker of the browser edition, and holds every page on the way and every file against each other.
// A script may begin with what tests/sessions/README.md lets scripts prepare. Ends with 1 where anything differs.
import {execFileSync} from 'node:child_process';
import fs from 'node:fs';
import os from 'node:os';
import path from 'node:path';
import {Session, key, top} from './worker_bench.mjs';

const replay = process.env.VORN_REPLAY || path.join(top, 'build/release/src/apps/vorn_replay');
const acting = /^(click|help|press|key|type|enter|undo|redo)\b/;
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
    if (verb === 'folder') fs.mkdirSync(path.join(folder, rest));
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

function filesIn(folder) {
  const names = fs.readdirSync(folder).filter(name => fs.statSync(path.join(folder, name)).isFile());
  return new Map(names.map(name => [name, fs.readFileSync(path.join(folder, name))]));
}

// --- The worker.

function messageOf(statement, standing) {
  const [word, ...rest] = statement.split(/\s+/);
  const numbers_of = rest.map(Number);
  if (word === 'click' || word === 'help') return [{do: word, x: numbers_of[0], y: numbers_of[1]}];
  if (word === 'key') return [key(numbers_of[0])];
  if (word === 'enter') return [key(13)];
  if (word === 'type') return [...statement.slice(5)].map(letter => key(letter.charCodeAt(0)));
  if (word === 'undo' || word === 'redo') return [{do: 'act', id: word}];
  const wanted = numbers.get(rest[0]) ?? Number(rest[0]);
  const button = standing.buttons.find(([, , , , , number]) => number === wanted);
  if (!button) return null;
  return [{do: 'click', x: Math.floor((button[0] + button[2]) / 2), y: Math.floor((button[1] + button[3]) / 2)}];
}

// --- Both.

async function compare(folder, script) {
  const native = fs.mkdtempSync(path.join(os.tmpdir(), 'vorn-compare-'));
  fs.cpSync(folder, native, {recursive: true});
  prepare(native, script);
  const before = filesIn(native);
  const statements = statementsOf(script);
  const played = statements.flatMap((statement, step) => [statement, `page ${stepFile(step)}`]).join('\n') + '\n';
  fs.writeFileSync(path.join(native, '.played.vrs'), played);
  runNatively(native, '.played.vrs');
  fs.rmSync(path.join(native, '.played.vrs'));
  const after = filesIn(native);
  const differences = [];
  let pages = 0;

  const session = await Session.begin(before);
  await session.pageText();
  for (let step = 0; step < statements.length && !session.ended; ++step) {
    const messages = messageOf(statements[step], session.standing);
    if (messages === null) {
      differences.push(`${statements[step]}: no such button is shown`);
      break;
    }
    let text = null;
    for (const message of messages) text = await session.act(message);
    const expected = after.get(stepFile(step));
    if ((text === null) !== (expected === undefined)) {
      differences.push(`${statements[step]} (${step}): only one of them has ended`);
      break;
    }
    if (text === null) break;
    ++pages;
    if (text !== expected.toString('latin1')) differences.push(`${statements[step]} (${step}): another page`);
  }
  if (session.ended === null) await session.pageText();
  const ours = new Map([...after].filter(([name]) => !/^step-\d+\.txt$/.test(name)));
  const theirs = new Map([...session.files].filter(([name]) => !name.startsWith('.vorn/')));
  for (const name of new Set([...ours.keys(), ...theirs.keys()])) {
    if (!ours.has(name) || !theirs.has(name)) differences.push(`${name}: only one of them wrote it`);
    else if (!ours.get(name).equals(theirs.get(name))) differences.push(`${name}: other bytes`);
  }
  fs.rmSync(native, {recursive: true});
  return {pages, files: ours.size, differences};
}

const [folder, ...scripts] = process.argv.slice(2);
let pages = 0, files = 0, worse = 0;
for (const script of scripts) {
  const result = await compare(folder, script).catch(failure => ({pages: 0, files: 0, differences: [String(failure)]}));
  pages += result.pages;
  files += result.files;
  worse += result.differences.length;
  for (const difference of result.differences) console.error(`${path.basename(script)}: ${difference}`);
}
console.log(`${scripts.length} sessions: ${pages} pages and ${files} files compared, ${worse} differences`);
process.exit(worse > 0 || pages === 0 ? 1 : 0);
