// measure_large.mjs [CORES]: how long the browser's worker takes with so many cores (10,000) from its start to the first
// wait, and vorn_replay in the same run; the best of three each, and their ratio.
import {spawnSync} from 'node:child_process';
import fs from 'node:fs';
import os from 'node:os';
import path from 'node:path';
import {Session, top} from './worker_bench.mjs';

const cores = Number(process.argv[2] || 10_000), rings = 110, firstYears = 150;
const replay = process.env.VORN_REPLAY || path.join(top, 'build/release/src/apps/vorn_replay');

// Cores of a made-up site, in the Tucson layout; the same each time.
function madeUp() {
  let state = 5;
  const below = most => (state = (state * 1103515245 + 12345) % 2147483648) % most;
  let text = '';
  for (let core = 0; core < cores; ++core) {
    const name = `C${String(core).padStart(5, '0')}`.padEnd(8), first = 1700 + below(firstYears), last = first + rings;
    for (let year = first; year <= last;) {
      text += name + String(year).padStart(4);
      do text += String(year === last ? 999 : 20 + below(280)).padStart(6);
      while (year++ < last && year % 10 !== 0);
      text += '\n';
    }
  }
  return text;
}

const folder = fs.mkdtempSync(path.join(os.tmpdir(), 'vorn-large-'));
fs.writeFileSync(path.join(folder, 'large.rwl'), madeUp());
fs.writeFileSync(path.join(folder, 'Vorn.fil'), 'large.rwl\n');
fs.writeFileSync(path.join(folder, 'page.vrs'), 'page page.txt\n');
const files = new Map(['large.rwl', 'Vorn.fil'].map(name => [name, fs.readFileSync(path.join(folder, name))]));

async function seconds(work) {
  let best = Infinity;
  for (let run = 0; run < 3; ++run) {
    const begun = performance.now();
    await work();
    best = Math.min(best, (performance.now() - begun) / 1000);
  }
  return best;
}
const native = await seconds(() => spawnSync(replay, ['page.vrs'], {cwd: folder}));
const expected = fs.readFileSync(path.join(folder, 'page.txt'), 'latin1');
const worker = await seconds(async () => {
  const session = await Session.begin(files);
  if (await session.pageText() !== expected) throw new Error('the pages differ');
});
fs.rmSync(folder, {recursive: true});
console.log(`${cores} cores: worker ${worker.toFixed(2)} s, vorn_replay ${native.toFixed(2)} s, ratio ${(worker / native).toFixed(1)}`);
process.exit(0);
