// The beginning: unpacks what the file carries, lets the user choose a folder, starts the program in it, and
// comes back to the start page when the program has ended.
import {startApp} from './app.js';
import {ask} from './asking.js';
import {showText} from './dialogs.js';
import {button, make} from './dom.js';
import {chooseFolder, downloadZip, takeDrops} from './files.js';
import {showGuide} from './guide.js';
import {loadFonts} from './painter.js';
import {unpackedBytes, unpackedExamples, unpackedText} from './parts.js';

// What a worker runs: its module, and the script around it.
async function unpackedWorker(role) {
  const [module, source] = await Promise.all([unpackedBytes(role), unpackedText(`${role}-worker`)]);
  return {module, source};
}

async function unpack() {
  const [program, studies, guide, examples] = await Promise.all([
    unpackedWorker('program'), unpackedWorker('studies'), unpackedText('guide'), unpackedExamples(),
    Promise.all([unpackedBytes('font-sans'), unpackedBytes('font-serif')]).then(fonts => loadFonts(...fonts))
  ]);
  return {sources: {program, studies}, guide, examples};
}

// A strip above everything while something of the folder is not kept. Returns what is to be called when the
// program has ended: then the strip goes, but where files would be lost with the page it stays until the user
// lets them go.
function showTroubles(folder) {
  const text = make('span');
  const save = button('Download everything', () => downloadZip(folder.name, folder.all()));
  const strip = make('div', {className: 'not-kept', hidden: true}, text, save);
  strip.setAttribute('role', 'alert');
  document.body.prepend(strip);
  const show = () => {
    text.textContent = folder.trouble;
    strip.hidden = folder.trouble === '';
  };
  const warn = event => {
    if (!folder.isAtRisk) return;
    event.preventDefault();
    event.returnValue = true;  // what older ones heed
  };
  const end = () => {
    folder.removeEventListener('trouble', show);
    removeEventListener('beforeunload', warn);
    strip.remove();
  };
  const letGo = async () => {
    const more = 'What is not downloaded is lost then.';
    if ((await ask(`Forget the files of ${folder.name}?`, more, ['Forget Them', 'Cancel'])) === 0) end();
  };
  folder.addEventListener('trouble', show);
  addEventListener('beforeunload', warn);
  show();
  return () => {
    if (!folder.isAtRisk) return end();
    strip.prepend(make('b', {textContent: `${folder.name}: `}));
    strip.append(button('Forget them…', letGo, {className: 'forget'}));
  };
}

// What is dropped while the program runs is opened after a yes; the program asks itself about what is
// unsaved.
function takeDropsInto(element) {
  return takeDrops(async way => {
    const folder = await way();
    if (!folder) return;
    const answer =
        await ask(`Open ${folder.name} now?`, 'The program begins anew with it.', ['Open It', 'Cancel']);
    if (answer === 0)
      element.dispatchEvent(new CustomEvent('open-folder', {detail: folder}));
    else
      await folder.close();
  });
}

async function work(element, folder, parts) {
  const endTroubles = showTroubles(folder);
  const endDrops = takeDropsInto(element);
  try {
    return (await startApp(element, {...parts, folder})) ?? {};
  } finally {
    endDrops();
    await folder.close();
    endTroubles();
  }
}

// What the start page leads to beside folders.
function linksOf(parts) {
  let notices = null;
  const showNotices = async () => {
    notices ??= unpackedText('notices');
    showText({title: 'Whose work is in this file', text: await notices});
  };
  return [button('User’s guide', () => showGuide(parts.guide)), button('Licences', showNotices)];
}

async function main() {
  const element = document.getElementById('vorn');
  const parts = await unpack();
  const links = linksOf(parts);
  let last = null, next = null;
  for (;;) {
    const folder = next ?? (await chooseFolder(element, {examples: parts.examples, last, links}));
    element.replaceChildren();
    const ended = await work(element, folder, parts);
    element.replaceChildren();
    if (ended.trouble) await ask('Vorn', ended.trouble, ['OK']);
    [last, next] = [folder, ended.next ?? null];
  }
}

// A page that comes back out of the browser's memory no longer holds its folder.
addEventListener('pageshow', event => {
  if (event.persisted) location.reload();
});

main().catch(error => {
  const text = `Vorn cannot start here: ${
      error.message || error.name}. It needs Chromium 97, Firefox 113, Safari 16.4 or a newer one.`;
  document.getElementById('vorn').replaceChildren(make('p', {className: 'trouble', textContent: text}));
  throw error;
});
