// Opening: from a source of files, or from what is kept in this browser, to a folder to work in.
import {ask, tell} from './asking.js';
import {canOpenFolders, DiskFolder, mayWrite} from './disk_folder.js';
import {firstFreeName, inOrderOfList, isKept, lastPart, linesOfList, listBytes, listName, mostNames, namesForList, namesInList, shownNames, troubleWithNames} from './file_names.js';
import {Folder} from './folder.js';
import {handleSource, readSource} from './sources.js';
import {askToPersist, holdFolder, keepFolder, keptFiles, keptFolders, locksAreSure} from './store.js';

const examplesName = 'Examples';

// What a list names and is not among the files, in words; empty where all is there.
export function wordsOnMissing(files) {
  const list = files.find(file => file.path === listName);
  if (!list) return '';
  const paths = files.map(file => file.path), there = new Set(paths);
  const missing = linesOfList(list.bytes).filter(name => !there.has(name));
  if (missing.length === 0) return '';
  const alike = name => paths.find(path => path.toLowerCase() === name.toLowerCase());
  const shown = missing.map(name => (alike(name) ? `${name} (there is ${alike(name)})` : name));
  const more = missing.some(alike) ? ' Capital and small letters are told apart.' : '';
  return `${listName} names files that are not here: ${shownNames(shown)}.${
      more} The program goes on without them.`;
}

const topNames = files => files.map(file => file.path).filter(path => lastPart(path) === path);
const shownLeftOut = leftOut => shownNames(leftOut.map(({path, why}) => `${path} (${why})`), 5);

// --- The list.

function withList(files, names) {
  const now = Date.now();
  const list = {path: listName, bytes: listBytes(names), time: now};
  const before = files.find(file => file.path === listName);
  const others = files.filter(file => file !== before);
  if (!before) return {files: [...others, list], made: [list]};
  const taken = new Set(files.map(file => file.path));
  const kept = {path: firstFreeName(listName, taken), bytes: before.bytes, time: now};
  return {files: [...others, kept, list], made: [kept, list]};
}

// Where a list stands there, it is used, unless it names none of the files that were picked.
async function useList(source, files, names) {
  const bytes = files.find(file => file.path === listName).bytes;
  const listed = new Set(namesInList(bytes));
  const picked = inOrderOfList(names.filter(name => name !== listName));
  if (source.kind !== 'files' || names.some(name => listed.has(name))) return {files, made: []};
  if (picked.length === 0) {
    await tell(`${listName} alone was opened. Open the files that it names together with it, or the folder.`);
    return null;
  }
  const more = `${shownNames(picked)}.\n\nNone of them is named in it. The list that stands there, ${
                   listName}, is kept as ` +
      `${firstFreeName(listName, new Set(names))}.`;
  const answers = ['Work with the List as It Is', 'Replace the List', 'Cancel'];
  const answer = await ask(`${listName} is a list of other files. Replace it?`, more, answers);
  if (answer === 0) return {files, made: []};
  return answer === 1 ? withList(files, picked) : null;
}

async function makeList(source, files, names, leftOut) {
  const fitting = source.kind === 'files' ? inOrderOfList(names) : namesForList(names);
  const picked = source.kind === 'files' ? fitting : fitting.slice(0, mostNames);
  if (source.kind !== 'files' && picked.length === 0) {
    await tell(`${source.name} holds neither ${
        listName}, the list of the files to read, nor ring-width files that are known by their endings.`);
    return null;
  }
  const trouble = troubleWithNames(picked);
  if (trouble) {
    await tell(leftOut.length > 0 ? `${trouble} Not read: ${shownLeftOut(leftOut)}.` : trouble);
    return null;
  }
  const where = source.handle ? 'is made there, and reports and saved files are written there' :
                                'is made of them, in the order given';
  const out = leftOut.length > 0 ? `\n\nNot read: ${shownLeftOut(leftOut)}.` : '';
  const behind = fitting.length - picked.length;
  const tooMany = behind > 0 ? `\n\nA list takes ${mostNames} files. These stay out of it: ${
                                   shownNames(fitting.slice(mostNames), 5)}.` :
                               '';
  const more =
      `${shownNames(picked)}.\n\n${listName}, the list of the files to read, ${where}.${tooMany}${out}`;
  const answer = await ask(`Work in ${source.name}?`, more, ['Make the List', 'Cancel']);
  return answer === 0 ? withList(files, picked) : null;
}

// --- What stands in the way of keeping and holding.

async function held(id) {
  for (let allTheSame = false;; allTheSame = true) {
    const hold = await holdFolder(id, allTheSame);
    if (hold) return hold;
    if (locksAreSure()) {
      await tell(
          'This folder is open already, in this window or another one of this browser. Work goes on there, or close it there first.');
      return null;
    }
    const more =
        'If that window was closed by force, it can be opened here: the other one, should it still be there, keeps nothing from then on.';
    if ((await ask('This folder seems to be open in another window.', more, ['Open It Here', 'Cancel'])) !==
        0)
      return null;
  }
}

async function askAboutConflict(path) {
  const more = 'Vorn has something newer to write. What another program has written would be lost.';
  const answers =
      ['Keep Both (the New One Gets a Number)', 'Overwrite', 'Leave the File on the Disk as It Is'];
  return [
    'beside', 'overwrite', 'leave'
  ][await ask(`${path} was changed on the disk by another program.`, more, answers)];
}

function diskOf(handle, files) {
  if (!handle) return null;
  const disk = new DiskFolder(handle, askAboutConflict);
  files.forEach(file => disk.learn(file));
  return disk;
}

// A folder that the store does not take lives in memory, and says so.
async function keptFolder(name, kind, handle, files) {
  const stored = kind === 'disk' ? files.filter(file => isKept(file.path)) : files;
  const disk = diskOf(handle, kind === 'disk' ? files : []);
  try {
    const id = await keepFolder({name, kind, handle}, stored);
    askToPersist();
    return new Folder({id, name, files, hold: await held(id), disk});
  } catch (error) {
    return new Folder({id: null, name, files, hold: null, disk, trouble: error.message});
  }
}

async function freeFolderName(name) {
  const taken = new Set((await keptFolders().catch(() => [])).map(folder => folder.name));
  if (!taken.has(name)) return name;
  for (let number = 2;; ++number) {
    if (!taken.has(`${name} ${number}`)) return `${name} ${number}`;
  }
}

// --- Folders of the disk.

async function sameOnDisk(handle) {
  for (const folder of await keptFolders().catch(() => [])) {
    if (folder.handle && (await folder.handle.isSameEntry(handle).catch(() => false))) return folder;
  }
  return null;
}

// What the disk lacked the last time is written now, after a yes.
async function writeLate(folder, late) {
  if (late.length === 0) return;
  const names = shownNames(late.map(file => file.path));
  const more = `${names}.\n\nThey are kept in this browser.`;
  const text = 'These files could not be written to the folder on the disk the last time.';
  if ((await ask(text, more, ['Write Them Now', 'Leave Them Out'])) === 0)
    await folder.apply({changed: late});
}

async function openDisk(row, handle, files, made) {
  const hold = await held(row.id);
  if (!hold) return null;
  const stored = await keptFiles(row.id);
  const writtenBefore = new Map(stored.filter(file => file.written).map(file => [file.path, file]));
  const marked =
      files.map(file => ({...file, written: writtenBefore.get(file.path)?.time >= file.time - 5000}));
  const own = marked.filter(file => !isKept(file.path));
  const all = [...own, ...stored.filter(file => isKept(file.path))];
  const late = stored.filter(file => file.waits);
  const disk = diskOf(handle, files.filter(file => !isNewerThan(file, late)));
  const folder = new Folder({id: row.id, name: row.name, files: all, hold, disk});
  if (made.length > 0) await folder.apply({changed: made});
  await writeLate(folder, late);
  return folder;
}

// Somebody has written it since: it is not written over without a question.
const isNewerThan = (file, late) => late.some(other => other.path === file.path && other.time < file.time);

// --- The ways to open.

// A folder that was dropped may be read, but not yet written to; in some browsers never.
async function withLeave(source) {
  if (source.handle && !canOpenFolders()) return {...source, handle: null};
  if (!source.handle || (await mayWrite(source.handle, false).catch(() => false))) return source;
  const more =
      'Then reports and saved files go there, and the browser asks for leave. A copy is kept in this ' +
      'browser alone, and what is written is downloaded from there.';
  const answer =
      await ask(`Write into the folder ${source.name}?`, more, ['Write into the Folder', 'Work on a Copy']);
  const mayBe = answer === 0 && (await mayWrite(source.handle, true).catch(() => false));
  return mayBe ? source : {...source, handle: null};
}

// Resolves to a folder, or null where the user thought better of it or there is nothing to open.
export async function openSource(found) {
  const source = await withLeave(found);
  const {files, leftOut} = await readSource(source);
  const names = topNames(files);
  const hasList = names.includes(listName);
  const settled =
      hasList ? await useList(source, files, names) : await makeList(source, files, names, leftOut);
  if (!settled) return null;
  if (hasList && leftOut.length > 0) await tell(`Not read: ${shownLeftOut(leftOut)}.`);
  const missing = wordsOnMissing(settled.files);
  if (missing) await tell(missing);
  if (source.handle) return openOnDisk(source, files, settled.made);
  return keptFolder(await freeFolderName(source.name), 'copy', null, settled.files);
}

async function openOnDisk(source, files, made) {
  const {name, handle} = source;
  const row = await sameOnDisk(handle);
  if (row) return openDisk(row, handle, files, made);
  const folder = await keptFolder(await freeFolderName(name), 'disk', handle, files);
  if (made.length > 0) await folder.apply({changed: made});
  return folder;
}

// A copy that is kept already stays as it is.
export async function openExamples(examples) {
  const kept = (await keptFolders().catch(() => [])).find(folder => folder.kind === 'examples');
  if (kept) return openKept(kept);
  const now = Date.now();
  return keptFolder(
      examplesName, 'examples', null, examples.map(file => ({...file, time: now, written: false})));
}

export async function openKept(row) {
  if (row.handle) return openKeptDisk(row);
  const hold = await held(row.id);
  if (!hold) return null;
  return new Folder({id: row.id, name: row.name, files: await keptFiles(row.id), hold});
}

const tellGone = (row, error) =>
    tell(
        `${row.name} cannot be read on the disk (${
            error.message ||
            error
                .name}). Was it moved or deleted? What Vorn wrote there is kept here too and can be downloaded.`)
        .then(() => null);

async function openKeptDisk(row) {
  if (!(await mayWrite(row.handle, true).catch(() => false))) {
    await tell(`The browser was not allowed to open ${
        row.name} on the disk. What Vorn wrote there is kept here too and can be downloaded.`);
    return null;
  }
  const source = handleSource(row.handle);
  const read = await readSource(source).catch(error => tellGone(row, error));
  if (!read) return null;
  const {files, leftOut} = read;
  const names = topNames(files);
  if (!names.includes(listName)) {
    const settled = await makeList(source, files, names, leftOut);
    return settled && openDisk(row, row.handle, files, settled.made);
  }
  return openDisk(row, row.handle, files, []);
}
