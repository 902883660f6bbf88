// The start page, the list of a folder's files, and the ways to open others.
import {ask, tell} from './asking.js';
import {showText} from './dialogs.js';
import {canOpenFolders} from './disk_folder.js';
import {button, make} from './dom.js';
import {download} from './download.js';
import {isKept, lastPart, shownSize, textOf} from './file_names.js';
import {openExamples, openKept, openSource} from './opening.js';
import {droppedSource, filesSource, handleSource, inputFolderSource} from './sources.js';
import {forgetFolder, holdFolder, keptFiles, keptFolders, storeTrouble} from './store.js';
import {zipOf} from './zip.js';

const mostLines = 2000;
const mostRecent = 10;
const mostLetters = 2 ** 21;  // of a text that is shown
const kindsOfFiles = '.rwl,.raw,.rwm,.fh,.crn,.txt,.dat,.fil,.trw,.prn,.rww,.pos';

const shownTime = time => new Date(time).toLocaleString([], {dateStyle: 'medium', timeStyle: 'short'});

// --- Ways to open.

let endPicking = null;

// Some browsers do not tell that their dialog was closed without a choice: who asks anew gives up what was
// asked before.
function stopPicking() {
  endPicking?.([]);
  return new Promise(done => setTimeout(done));
}

function picked(properties) {
  return new Promise(resolve => {
    const input = make('input', {type: 'file', multiple: true, hidden: true, ...properties});
    const end = files => {
      if (endPicking === end) endPicking = null;
      input.remove();
      resolve(files);
    };
    endPicking?.([]);
    endPicking = end;
    input.addEventListener('change', () => end([...input.files]));
    input.addEventListener('cancel', () => end([]));
    document.body.append(input);
    input.click();
  });
}

// What cannot be opened is told, and null is the answer then.
async function orTold(promise) {
  try {
    return await promise;
  } catch (error) {
    await tell(`It could not be opened: ${error.message || error.name}.`);
    return null;
  }
}

const opened = promise => orTold(Promise.resolve(promise).then(source => source && openSource(source)));

export async function openFiles() {
  const files = await picked({accept: kindsOfFiles, className: 'pick-files'});
  return files.length > 0 ? opened(filesSource(files)) : null;
}

async function pickedHandle() {
  try {
    return handleSource(await showDirectoryPicker({mode: 'readwrite', id: 'vorn'}));
  } catch (error) {
    if (error.name === 'AbortError') return null;
    await tell(`This browser does not let this page write into folders (${
        error.message ||
        error
            .name}). The one that you choose now is read, and what Vorn writes is kept here for you to download.`);
    return pickedFolder();
  }
}

// Of a folder that is only read.
async function pickedFolder() {
  const files = await picked({webkitdirectory: true, className: 'pick-folder'});
  return files.length > 0 ? inputFolderSource(files) : null;
}

// `recent`: one of those that are kept in this browser.
export async function openFolder({recent = false} = {}) {
  if (recent) return openRecent();
  return opened(canOpenFolders() ? pickedHandle() : pickedFolder());
}

async function openRecent() {
  const rows = await keptFolders().catch(() => []);
  if (rows.length === 0) return tell('No folder is kept in this browser.').then(() => null);
  const names = rows.slice(0, mostRecent).map(row => row.name);
  const answer =
      await ask('Which folder?', 'They are kept in this browser, the latest first.', [...names, 'Cancel']);
  return answer < names.length ? orTold(openKept(rows[answer])) : null;
}

// Takes what is dropped anywhere on the window. `take` gets what opens it: a function that promises a folder
// or null. Returns what ends it.
export function takeDrops(take) {
  const over = event => {
    event.preventDefault();
    document.documentElement.classList.add('drops');
  };
  const away = event => {
    if (!event.relatedTarget) document.documentElement.classList.remove('drops');
  };
  const drop = event => {
    event.preventDefault();
    document.documentElement.classList.remove('drops');
    if (!event.dataTransfer?.types.includes('Files')) return;
    const source = droppedSource(event.dataTransfer);
    take(() => opened(source));
  };
  const listeners = {dragover: over, dragleave: away, drop};
  for (const [name, listener] of Object.entries(listeners)) addEventListener(name, listener);
  return () => {
    for (const [name, listener] of Object.entries(listeners)) removeEventListener(name, listener);
  };
}

// --- The start page.

export async function chooseFolder(element, {examples, last = null, links = []}) {
  let endDrops = () => {};
  const folder = await new Promise(resolve => {
    let isBusy = false;
    // One way at a time: the next one begins when nothing of the one before is left.
    const take = async way => {
      await stopPicking();
      if (isBusy) return;
      isBusy = true;
      const found = await orTold(way());
      isBusy = false;
      if (found)
        resolve(found);
      else
        drawStart(element, {examples, last, links, take});
    };
    endDrops = takeDrops(take);
    drawStart(element, {examples, last, links, take});
  });
  endDrops();
  element.replaceChildren();
  return folder;
}

function ways(examples, take) {
  return make(
      'div', {className: 'ways'},
      button('Try the examples', () => take(() => openExamples(examples)), {className: 'examples'}),
      button('Open files…', () => take(openFiles), {className: 'open-files'}),
      button('Open a folder…', () => take(() => openFolder()), {className: 'open-folder'}),
      make('p', {className: 'drop-zone', textContent: 'or drop files or a folder anywhere in this window'}));
}

const aboutFolders = () => canOpenFolders() ?
    'A folder that you open is read and, if you allow it, written to: reports and saved files go there, and are kept here as well.' :
    'This browser gives pages no way to write into your folders: a folder that you open is read, and what Vorn writes is kept here for you to download.';

async function drawStart(element, {examples, last, links, take}) {
  const kept = make('section', {className: 'kept'});
  const header = make(
      'header', {}, make('h1', {textContent: 'Vorn'}), make('p', {
        textContent:
            'Cross-dates tree-ring series: it finds the years in which a ring is missing, false or measured wrongly.'
      }),
      make('p', {
        className: 'stays',
        textContent:
            'Your data stay on this machine. This page sends nothing anywhere; it works without a network.'
      }));
  const page = make(
      'div', {className: 'start-page'}, header, ways(examples, take),
      make('p', {className: 'hint', textContent: aboutFolders()}), kept);
  if (last) page.append(lastFolder(last));
  page.append(make('p', {className: 'links'}, ...links));
  element.replaceChildren(page);
  await drawKept(kept, take);
}

function lastFolder(last) {
  const section = make('section', {className: 'last'}, make('h2', {textContent: `${last.name}: its files`}));
  const panel = make('div');
  section.append(panel);
  filesPanel(panel, last, {});
  return section;
}

// A browser keeps by where a page comes from, some by the very place of the file.
function keptHow() {
  const how =
      'They stay until you delete them here or clear the browser’s data; a private window forgets them when it is ' +
      'closed. Download what matters.';
  const place =
      ' They belong to this file at its present place: moved elsewhere, or opened in another browser, it may not find them.';
  return location.protocol === 'file:' ? how + place : how;
}

async function drawKept(section, take) {
  const trouble = await storeTrouble();
  if (trouble) {
    const text = `This browser keeps nothing for this page (${
        trouble}). You can work all the same: everything lives in memory then, and must be downloaded before the page is closed.`;
    section.replaceChildren(make('p', {className: 'trouble', textContent: text}));
    return;
  }
  const folders = await keptFolders();
  if (folders.length === 0) return section.replaceChildren();
  const again = () => drawKept(section, take);
  section.replaceChildren(
      make('h2', {textContent: 'Kept in this browser'}),
      make('ul', {}, ...folders.map(row => keptRow(row, take, again))),
      make('p', {className: 'hint', textContent: keptHow()}));
}

function keptRow(row, take, again) {
  const about = [
    row.handle ? 'a folder on the disk' : `${row.files} files, ${shownSize(row.bytes)}`, shownTime(row.used)
  ];
  return make(
      'li', {}, make('span', {className: 'name', textContent: row.name}),
      make('span', {className: 'about', textContent: about.join('; ')}),
      button('Open', () => take(() => openKept(row)), {className: 'open'}),
      button('Download', () => downloadKept(row), {className: 'download'}),
      button('Delete…', () => deleteKept(row).then(again), {className: 'delete'}));
}

async function downloadKept(row) {
  const files = await keptFiles(row.id).catch(() => []);
  if (files.length === 0)
    return tell(`Nothing of ${row.name} is kept in this browser; its files are on the disk.`);
  await downloadZip(row.name, files);
}

const downloadZip = async (name, files) =>
    download(`${name}.zip`, await zipOf(name, files), 'application/zip');

async function deleteKept(row) {
  const more = row.handle ?
      'What is kept of it in this browser goes, with the journal of your changes. The folder on the disk stays as it is.' :
      `Its ${
          row.files} files and the journal of your changes go for good. Download them first if you may need them.`;
  if ((await ask(`Delete ${row.name}?`, more, ['Delete', 'Cancel'])) !== 0) return;
  const hold = await holdFolder(row.id).catch(() => null);
  if (!hold) return tell(`${row.name} is open in another window; it was not deleted.`);
  await forgetFolder(row.id).catch(error => tell(error.message));
  await hold.letGo();
}

// --- The files of a folder.

// What the program wrote comes first, the newest at the top; then the others by name.
function inOrderShown(files) {
  const written =
      files.filter(file => file.written).sort((a, b) => b.time - a.time || (a.path < b.path ? -1 : 1));
  const others = files.filter(file => !file.written).sort((a, b) => (a.path < b.path ? -1 : 1));
  return [...written, ...others];
}

// Keeps itself up to date. Returns {close()}.
export function filesPanel(element, folder, {act} = {}) {
  const draw = () => drawFiles(element, folder, act ?? (() => {}));
  folder.addEventListener('changed', draw);
  draw();
  return {
    close() {
      folder.removeEventListener('changed', draw);
      element.replaceChildren();
    }
  };
}

function drawFiles(element, folder, act) {
  const files = inOrderShown(folder.shown());
  const written = files.filter(file => file.written);
  const zip = (name, chosen) =>
      downloadZip(name, chosen).then(() => act('mention', `${name}.zip was downloaded`));
  const bar = make('div', {className: 'bar'});
  if (written.length > 0)
    bar.append(button(
        'Download what was written', () => zip(`${folder.name} written`, written),
        {className: 'zip-written'}));
  bar.append(button('Download everything', () => zip(folder.name, folder.all()), {className: 'zip-all'}));
  const rows = files.map(file => fileRow(file, act));
  element.replaceChildren(make(
      'div', {className: 'files'}, bar, make('ul', {}, ...rows),
      make('p', {className: 'hint', textContent: noteOn(folder)})));
}

function noteOn(folder) {
  const journal = folder.all().some(file => isKept(file.path)) ?
      ' “Download everything” has the journal of your changes with it, in “.vorn”.' :
      '';
  return folder.writable ?
      `What Vorn writes goes into the folder on the disk and is kept in this browser; the journal in this browser alone.${
          journal}` :
      journal.trim();
}

function fileRow(file, act) {
  const about = [shownSize(file.bytes.length), shownTime(file.time)];
  const save = () => {
    download(lastPart(file.path), file.bytes);
    act('mention', `${file.path} was downloaded`);
  };
  const row = make(
      'li', {className: file.written ? 'written' : ''},
      make('span', {className: 'name', textContent: file.path}), make('span', {
        className: 'about',
        textContent: file.written ? `written ${about[1]}; ${about[0]}` : about.join('; ')
      }),
      button('View', () => viewFile(file), {className: 'view'}),
      button('Download', save, {className: 'download'}));
  row.querySelector('.view').setAttribute('aria-label', `View ${file.path}`);
  row.querySelector('.download').setAttribute('aria-label', `Download ${file.path}`);
  return row;
}

// The first lines of a text, and whether there are more.
export function firstLines(bytes, most = mostLines) {
  const text = textOf(bytes.subarray(0, mostLetters));
  const lines = text.split('\n');
  const isCut = lines.length > most + 1 || (lines.length === most + 1 && lines[most] !== '') ||
      bytes.length > mostLetters;
  return {text: lines.slice(0, most).join('\n'), isCut};
}

function viewFile(file) {
  const {text, isCut} = firstLines(file.bytes);
  showText({title: isCut ? `${file.path}: its beginning, ${mostLines} lines at most` : file.path, text});
}

export {downloadZip};
