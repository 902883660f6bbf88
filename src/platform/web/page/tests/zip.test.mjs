// The archive is made by the bundled code and judged by other programs.
import assert from 'node:assert/strict';
import {execFileSync} from 'node:child_process';
import {mkdtempSync, readFileSync, rmSync, writeFileSync} from 'node:fs';
import {tmpdir} from 'node:os';
import {dirname, join} from 'node:path';
import {test} from 'node:test';
import {fileURLToPath, pathToFileURL} from 'node:url';

const page = dirname(dirname(fileURLToPath(import.meta.url)));

async function bundled(folder) {
  const none = join(page, 'no_stream.cjs'), out = join(folder, 'zip.mjs');
  const options =
      ['--bundle', '--format=esm', '--platform=neutral', '--main-fields=main', '--log-level=error'];
  const aliases = [`--alias:stream=${none}`, `--alias:readable-stream=${none}`];
  execFileSync(
      'esbuild', [join(page, 'zip.js'), ...options, ...aliases, `--outfile=${out}`],
      {env: {...process.env, NODE_PATH: '/usr/share/nodejs'}});
  return import(pathToFileURL(out));
}

test('python reads the archive as it was meant', async t => {
  const folder = mkdtempSync(join(tmpdir(), 'vorn-zip-'));
  t.after(() => rmSync(folder, {recursive: true}));
  const {zipOf} = await bundled(folder);
  const time = Date.UTC(2020, 4, 6, 12, 0, 0);
  const all = Uint8Array.from({length: 256}, (_, i) => i);
  const files = [
    {path: 'Stats.prn', bytes: Buffer.from('core\n'.repeat(1000)), time},
    {path: 'plots/Bärenwald.rwl', bytes: all, time: 0}, {path: 'empty', bytes: new Uint8Array(), time}
  ];
  writeFileSync(join(folder, 'a.zip'), await zipOf('site', files));
  const script = `
import sys, zipfile, json
with zipfile.ZipFile(sys.argv[1]) as z:
    assert z.testzip() is None
    print(json.dumps([[i.filename, i.file_size, i.date_time[0], z.read(i).hex()[:20]] for i in z.infolist()]))`;
  const told = JSON.parse(execFileSync('python3', ['-c', script, join(folder, 'a.zip')]));
  assert.deepEqual(told, [
    ['site/Stats.prn', 5000, 2020, Buffer.from('core\ncore\n').toString('hex')],
    ['site/plots/Bärenwald.rwl', 256, 1980, '00010203040506070809'], ['site/empty', 0, 2020, '']
  ]);
  assert.ok(readFileSync(join(folder, 'a.zip')).length < 1200);
});
