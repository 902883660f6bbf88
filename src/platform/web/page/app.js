// Vorn in the browser: page, panels and menus around the two workers.
import {Arrangement} from './arrangement.js';
import {DeedGate} from './deed_gate.js';
import {askBeside, askForNumber, askForText, isDialogOpen, QuestionBox, showText, tell} from './dialogs.js';
import {isMac, make, takesTyping} from './dom.js';
import {download} from './download.js';
import {correctedName, questionOnCopy, questionOnSave} from './file_offers.js';
import {filesPanel, openFiles, openFolder} from './files.js';
import {showGuide} from './guide.js';
import {JournalPanel} from './journal.js';
import {MenuBar} from './menus.js';
import {NoticeStrip} from './notices.js';
import {PageView} from './page_view.js';
import {paintingTools} from './painter.js';
import {askForKind, Panels} from './panels.js';
import {copyPicture, printPicture, savePicture} from './pictures.js';
import {actionsInBrowser, isPlainShortcut, keysPage, shortcutOf, shortcutTable} from './shortcuts.js';
import {StatusLine} from './status_line.js';
import {startWorkers} from './workers.js';

export {startWorkers} from './workers.js';

const programTitle = 'Vorn';
const mostRestarts = 3;  // of the studies, before they are left alone

const afterFailure =
    'All that was written is kept. Begin again with it? The journal then offers to take up what was done.';
const afterCorrection =
    "Its name takes the other's place in Vorn.fil, and the list as it was is kept. The program begins anew with it.";
const aboutVorn = `Cross-dating of tree-ring series.
MIT License, the Vorn developers.
Everything is done in this browser: no data leave it.`;

function baseName(file) {
  return file.replace(/^.*[\\/]/, '').replace(/\.[^.]*$/, '');
}

// What the program's help says, where the folder has no such file of its own.
function helpOf(examples) {
  return examples?.find(({path}) => path === 'Help.prn')?.bytes ?? null;
}

// "*nowhere.rwl - Vorn" while something is not written, during long work "Stats.prn 45 % - nowhere.rwl - Vorn".
export function titleOf({unsaved, progress, subject}) {
  return (unsaved ? '*' : '') + [progress, subject, programTitle].filter(Boolean).join(' - ');
}

// One run of the program in one folder. Ends by `over({next, trouble, again})`; with `again` it is to begin anew in
// the same folder.
class Run {
  #root;
  #parts;
  #over;
  #ended = new AbortController();  // of everything that listens beyond its own elements
  #workers = null;
  #gate = new DeedGate((message) => this.#workers?.program.send(message));
  #restarts = 0;
  #saving = Promise.resolve();  // one change of the folder's files after the other

  #hello = null;
  #stand = null;
  #progress = '';
  #subject = '';
  #notices = [];  // of the program
  #said = [];     // of the page itself, behind them
  #closeAskedAt;  // the standing at which closing was asked for
  #next = null;   // what is opened when the program has ended: {folder} or {again: true}
  #offer = null;
  #wasOffered = false;
  #offeredFile = null;

  #page;
  #menus;
  #status;
  #journal;
  #panels;
  #arrangement;
  #strip;
  #question;
  #tools;
  #shortcuts;
  #rows;
  #files;

  constructor(root, parts, over) {
    this.#root = root;
    this.#parts = parts;
    this.#over = over;
  }

  async start() {
    const {signal} = this.#ended;
    this.#root.replaceChildren(
        make('p', {className: 'starting', textContent: 'Vorn is starting…', role: 'status'}));
    this.#root.addEventListener('open-folder', (event) => this.#openIn(event.detail), {signal});
    document.addEventListener('keydown', (event) => this.#key(event), {signal});
    document.addEventListener('fullscreenchange', () => this.#showSwitches(), {signal});
    window.addEventListener('beforeunload', (event) => this.#keepOpen(event), {signal});
    try {
      const {sources, folder, examples} = this.#parts;
      const heard = {program: (message) => this.#hear(message), studies: (message) => this.#hearStudies(message)};
      this.#workers = await startWorkers({sources, folder, help: helpOf(examples), heard});
    } catch (trouble) {
      this.#fail(trouble.message || String(trouble));
    }
  }

  // The browser asks before work is lost that no file has.
  #keepOpen(event) {
    if (!this.#stand?.unsaved) return;
    event.preventDefault();
    event.returnValue = true;  // what older ones heed
  }

  // --- What the workers say.

  #hear(message) {
    if (this.#ended.signal.aborted) return;
    this.#heard[message.is]?.(message);
  }

  #hearStudies(message) {
    if (this.#ended.signal.aborted || !this.#panels) return;
    this.#heardOfStudies[message.is]?.(message);
  }

  #heard = {
    hello: (message) => this.#build(message),
    page: (message) => this.#page.show(message),
    stand: (stand) => this.#showStand(stand),
    status: (told) => this.#showStatus(told),
    progress: ({text}) => this.#show({progress: text}),
    subject: ({file}) => this.#show({subject: file}),
    notices: ({all}) => this.#showNotices(all, this.#said),
    files: (change) => this.#keepFiles(change),
    act: ({id}) => this.#act(id, false),
    methods: ({text}) => this.#showToSave('Text for the methods section', text, 'methods.txt'),
    used_corrected: ({trouble}) => (trouble ? tell(trouble) : this.#beginAgain()),
    page_text: () => {},
    ended: ({status, log}) => this.#end(status, log),
    failed: ({text}) => this.#fail(text),
  };

  #heardOfStudies = {
    found: () => this.#panels.renew(),
    panel: (panel) => this.#panels.answer(panel),
    play: ({play}) => this.#toProgram({do: 'play', play}),
    notice: ({text}) => this.#say(text),
    mention: ({text}) => this.#status.mention(text),
    csv: (table) => this.#panels.answerTable(table),
    clean_copy: (offer) => this.#offerCopy(offer),
    used_clean_copy: ({trouble}) => (trouble ? tell(trouble) : this.#beginAgain()),
    corrected: (offer) => this.#offerSave(offer),
    saved_over: ({file, trouble}) => (trouble ? tell(trouble) : this.#status.mention(`${file} is written`)),
    changes: ({lines}) => this.#showToSave('What did I change?', lines.join('\n'), 'changes.txt'),
    files: (change) => this.#keepFiles(change),
    failed: ({text}) => this.#restartStudies(text),
  };

  #toProgram(message) {
    this.#gate.put(message);
  }

  #toStudies(message) {
    this.#workers?.studies.send(message);
  }

  // --- What there is around the page.

  #build(hello) {
    this.#hello = hello;
    this.#rows = actionsInBrowser(hello.actions);
    this.#shortcuts = shortcutTable(this.#rows);
    this.#tools = paintingTools(hello.palette);
    this.#page = this.#makePage();
    this.#menus = new MenuBar(this.#rows, {
      chosen: (id) => this.#act(id, false),
      leave: () => this.#page.focus(),
      opening: () => this.#showSwitches(),
    });
    this.#status = new StatusLine();
    this.#strip = new NoticeStrip({leave: () => this.#page.focus(), turned: () => this.#turned()});
    this.#journal = new JournalPanel({
      act: (id) => this.#act(id, false),
      goTo: (decisions) => this.#toProgram({do: 'go_to', decisions}),
      note: (decision, text) => this.#toProgram({do: 'note', decision, text}),
      methods: () => this.#act('methods', false),
      leave: () => this.#page.focus(),
    });
    this.#question = new QuestionBox((answer, stays) => this.#choose(answer, stays));
    this.#panels = this.#makePanels();
    this.#arrangement = this.#arrange();
    this.#root.replaceChildren(
        make('div', {className: 'program'}, this.#menus.element, this.#arrangement.element, this.#status.element));
    this.#menus.show({});
    this.#showSwitches();
    this.#page.focus();
  }

  #makePage() {
    const plainKeys = new Map([...this.#shortcuts].filter(([key]) => isPlainShortcut(key)));
    const {palette, graph} = this.#hello;
    return new PageView({palette, graph, plainKeys}, {
      send: (message) => this.#toProgram(message),
      placed: () => this.#panels?.lookAgain(),
    });
  }

  #makePanels() {
    const [left, , right] = this.#hello.graph;
    return new Panels(this.#hello.panels, {
      palette: this.#hello.palette,
      send: (message) => this.#toStudies(message),
      leave: () => this.#page.focus(),
      years: () => ({left: this.#page.acrossOf(left), right: this.#page.acrossOf(right)}),
      mention: (text) => this.#status.mention(text),
      otherPlace: (name) => this.#arrangement.otherPlace(name),
      picture: (deed, marks, name) => this.#picture(deed, marks, this.#nameOfPanel(name)),
    });
  }

  #arrange() {
    const room = make('div', {className: 'room'}, this.#page.element, this.#strip.element);
    const panel = ({name, title}) =>
        ({name, title, body: this.#panels.frame(name), enter: () => this.#panels.area(name).focus()});
    const folder = make('div', {
      className: 'files-list',
      tabIndex: -1,
      on: {keydown: (event) => event.key === 'Escape' && this.#page.focus()}
    });
    this.#files = filesPanel(folder, this.#parts.folder,
        {act: (id, text) => (id === 'mention' ? this.#status.mention(text) : this.#act(id, false))});
    const lists = [
      ...this.#hello.panels.map(panel),
      {name: 'journal', title: 'Journal', body: this.#journal.element, enter: () => this.#journal.enter()},
      {name: 'folder', title: 'Folder', body: folder, enter: () => folder.focus()},
    ];
    return new Arrangement({room, lists}, {
      turned: () => this.#turned(),
      leave: () => this.#page.focus(),
      openMenu: (name, opener) => this.#panels.openMenu(name, opener),
    });
  }

  // Something came, went or moved.
  #turned() {
    if (!this.#arrangement) return;
    this.#panels.lookAgain();
    this.#showSwitches();
  }

  // What the page itself knows of the things that it switches.
  #showSwitches() {
    if (!this.#arrangement) return;
    for (const name of [...this.#panels.names(), 'journal', 'folder'])
      this.#menus.check(name, this.#arrangement.isShown(name));
    this.#menus.check('notices', this.#strip.isShown);
    this.#menus.check('full_screen', document.fullscreenElement !== null);
  }

  // --- How the session stands.

  #showStand(stand) {
    // The program waits again behind a question: what it asked before is not going to be done.
    if (!stand.question && this.#stand?.question) this.#dropNext();
    this.#stand = stand;
    this.#page.stand(stand);
    this.#status.mention('');  // it was said of what stood before
    this.#status.show(stand.status, stand.journal_trouble);
    this.#menus.show(stand.actions);
    this.#showSwitches();
    this.#journal.show(stand);
    this.#panels.stand(stand.situation, stand.whole);
    this.#question.show(stand.question);
    this.#offerToTakeUp(stand.to_take_up);
    this.#show({});
    this.#gate.stood();
  }

  // Of a place of the mouse, or of the cursor on the page.
  #showStatus({status, mark, description}) {
    this.#status.show(status, this.#stand?.journal_trouble);
    this.#page.mark(mark, description);
    this.#gate.told();
  }

  #show({progress = this.#progress, subject = this.#subject}) {
    this.#progress = progress;
    this.#subject = subject;
    document.title = titleOf({unsaved: this.#stand?.unsaved, progress, subject});
  }

  #showNotices(all, said) {
    this.#notices = all;
    this.#said = said;
    this.#strip.show([...all, ...said]);
  }

  #say(text) {
    this.#showNotices(this.#notices, [...this.#said, text]);
  }

  #choose(answer, stays) {
    if (stays) this.#dropNext();
    this.#toProgram({do: 'choose', answer});
  }

  // The offer goes when there is nothing to take up any more.
  #offerToTakeUp(journal) {
    if (!journal) {
      this.#offer?.close();
      this.#offer = null;
      return;
    }
    if (this.#wasOffered || this.#question.isOpen || isDialogOpen()) return;
    this.#wasOffered = true;
    this.#offer = askBeside({
      text: 'The work of an earlier session was not written. Take it up?',
      more: 'All that was done then is done again, up to where it ended.',
      answers: ['Take It Up', 'Not Now'],
      chosen: (answer) => answer === 0 && this.#toProgram({do: 'take_up', journal}),
    });
  }

  // --- Keys.

  #key(event) {
    if (event.defaultPrevented || isDialogOpen() || !this.#menus) return;
    if (this.#menus.serve(event) || takesTyping(event.target)) return;
    if (event.getModifierState?.('AltGraph') && event.key.length === 1) return;
    const key = shortcutOf(event, isMac), id = this.#shortcuts.get(key);
    // Without Control and its like a key is the page's, or of a panel where it steps from core to core.
    if (event.target === document.body && (!id || isPlainShortcut(key))) return this.#page.key(event);
    if (!id || (isPlainShortcut(key) && !this.#isOfPanel(event, id))) return;
    if (id === 'copy_page' && !window.getSelection()?.isCollapsed) return;
    event.preventDefault();
    if (id === 'help_here' || !event.repeat || !this.#isOwn(id)) this.#act(id, event.repeat);
  }

  #isOfPanel(event, id) {
    return (id === 'next_core' || id === 'previous_core') && event.target.closest?.('.panel') !== null;
  }

  // --- Actions.

  #isOwn(id) {
    return this.#rows.find((row) => row.id === id)?.window === true;
  }

  #act(id, repeated) {
    if (this.#ended.signal.aborted) return undefined;
    const own = this.#isOwn(id);
    if (id === 'quit' && !this.#stand) return this.#close();
    const state = this.#stand?.actions[id];
    if (state && !state.can && !repeated && this.#gate.mayTurn)
      return this.#gate.hold(() => this.#act(id, repeated));  // it may be done when what was typed before is
    if (state ? !state.can : !own) return this.#sayWhyNot(id, state);
    if (!own) return this.#toProgram({do: 'act', id, repeated});
    this.#deeds[id]?.();
    return this.#showSwitches();
  }

  #sayWhyNot(id, state) {
    const row = this.#rows.find((one) => one.id === id);
    if (row && state?.why_not)
      this.#status.mention(`${(state.now || row.text).replaceAll('…', '')}: ${state.why_not}`);
  }

  #deeds = {
    open_folder: () => this.#open(openFolder()),
    recent_folders: () => this.#open(openFolder({recent: true})),
    open_files: () => this.#open(openFiles()),
    save_corrected: () => this.#toStudies({do: 'corrected'}),
    what_changed: () => this.#toStudies({do: 'changes'}),
    use_corrected: () => this.#useCorrected(),
    save_page: () => this.#picture('save', this.#page.marks, baseName(this.#subject) || 'page'),
    print_page: () => this.#picture('print', this.#page.marks, baseName(this.#subject) || 'page'),
    copy_page: () => this.#picture('copy', this.#page.marks, 'page'),
    full_screen: () => this.#turnFullScreen(),
    guide: () => showGuide(this.#parts.guide),
    help_here: () => this.#page.askForHelp(),
    move_sample: () => this.#askForMove(),
    begin_sample: () => this.#askForBeginning(),
    note: () => this.#askForNote(),
    methods: () => this.#toProgram({do: 'methods'}),
    journal: () => this.#arrangement.toggle('journal'),
    folder: () => this.#arrangement.toggle('folder'),
    site: () => this.#arrangement.toggle('site'),
    rings: () => this.#arrangement.toggle('rings'),
    dates: () => this.#arrangement.toggle('dates'),
    around: () => this.#arrangement.toggle('around'),
    pointers: () => this.#arrangement.toggle('pointers'),
    files: () => this.#arrangement.toggle('files'),
    recipe: () => this.#arrangement.toggle('recipe'),
    moving: () => this.#arrangement.toggle('moving'),
    next_core: () => this.#stepCore(+1),
    previous_core: () => this.#stepCore(-1),
    notices: () => this.#strip.toggle(),
    keys: () => showText({title: 'Keys', text: keysPage(this.#hello.keys, this.#hello.actions)}),
    about: () => this.#showAbout(),
  };

  // Where what is known grows while it is studied.
  #stepCore(direction) {
    if (!this.#panels.anySeen) this.#arrangement.show('site');
    this.#panels.stepCore(direction);
  }

  async #turnFullScreen() {
    try {
      await (document.fullscreenElement ? document.exitFullscreen() : document.documentElement.requestFullscreen());
    } catch {
      this.#status.mention('This browser does not let the page fill the screen');
    }
  }

  #nameOfPanel(name) {
    const file = baseName(this.#subject).replaceAll('.', '-');
    return file ? `${file}-${name}` : name;
  }

  // `marks` may still be on their way.
  async #picture(deed, marks, name) {
    if (!marks) return;
    try {
      if (deed === 'save') return askForKind((kind) => this.#save(marks, kind, name));
      if (deed === 'print') return printPicture(await marks, this.#tools);
      await copyPicture(await marks, this.#tools);
      this.#status.mention('Copied as a picture');
    } catch (trouble) {
      tell(trouble.message || String(trouble));
    }
  }

  async #save(marks, kind, name) {
    try {
      await savePicture(await marks, kind, name, this.#tools);
    } catch (trouble) {
      tell(trouble.message || String(trouble));
    }
  }

  #askForMove() {
    askForNumber({
      title: 'Move the sample',
      label: 'Move the sample by so many years (earlier with a minus):',
      value: 0,
      until: this.#ended.signal,
      given: (years) => years !== 0 && this.#toProgram({do: 'move_sample', years}),
    });
  }

  #askForBeginning() {
    askForNumber({
      title: 'Begin the sample',
      label: 'Move the sample so that it begins in the year:',
      value: this.#stand?.sample?.first ?? 0,
      until: this.#ended.signal,
      given: (year) => this.#toProgram({do: 'begin_sample', year}),
    });
  }

  #askForNote() {
    const last = (this.#stand?.taken ?? 0) - 1, decision = this.#stand?.decisions[last];
    if (!decision) return;
    askForText({
      title: 'Note',
      label: `Why? ${decision.what}`,
      value: decision.note,
      until: this.#ended.signal,
      given: (text) => this.#toProgram({do: 'note', decision: last, text}),
    });
  }

  #useCorrected() {
    const {file, raw_output: corrected} = this.#stand ?? {};
    if (!file) return;
    askBeside({
      text: `Work with ${corrected} in place of ${file}?`,
      more: afterCorrection,
      answers: ['Use It', 'Cancel'],
      until: this.#ended.signal,
      chosen: (answer) => answer === 0 && this.#toProgram({do: 'use_corrected'}),
    });
  }

  // The newest offer takes the place of one before it, which is no longer good.
  #offerFile({trouble, more, ...question}, chosen) {
    this.#offeredFile?.close();
    const until = this.#ended.signal;
    const told = {text: trouble, more, answers: ['OK'], chosen: () => {}};
    this.#offeredFile = askBeside({...(trouble ? told : {...question, more, chosen}), until});
  }

  #offerCopy(offer) {
    const {number} = offer;
    this.#offerFile(
        questionOnCopy(offer), (answer) => answer === 0 && this.#toStudies({do: 'use_clean_copy', number}));
  }

  #offerSave(offer) {
    const {number, file, bytes} = offer;
    const saveAsNew = () => {
      download(correctedName(file), bytes);
      this.#status.mention(`${correctedName(file)} was downloaded`);
    };
    this.#offerFile(questionOnSave(offer), (answer) => {
      if (answer === 0) saveAsNew();
      if (answer === 1) this.#toStudies({do: 'save_over', number});
    });
  }

  #showToSave(title, text, name) {
    showText({title, text, name, save: (as, words) => download(as, words, 'text/plain')});
  }

  #showAbout() {
    tell(`Vorn ${this.#hello.version}`, aboutVorn);
  }

  // --- Opening, closing, ending.

  async #open(promise) {
    try {
      const folder = await promise;
      if (folder) this.#openIn(folder);
    } catch (trouble) {
      tell(trouble.message || String(trouble));
    }
  }

  #openIn(folder) {
    this.#close();
    this.#next = {folder};
  }

  // In the same folder, with files that have changed.
  #beginAgain() {
    this.#close();
    this.#next = {again: true};
  }

  #dropNext() {
    this.#next?.folder?.close();
    this.#next = null;
  }

  // Asked once, however often the user asks while the program is busy.
  #close() {
    this.#dropNext();
    if (this.#closeAskedAt !== undefined && this.#closeAskedAt === this.#stand) return;
    this.#closeAskedAt = this.#stand;
    this.#toProgram({do: 'close'});
  }

  #keepFiles({changed, removed}) {
    const keep = () => this.#parts.folder.apply({changed, removed});
    this.#saving = this.#saving.then(keep).catch((trouble) => this.#say(trouble.message || String(trouble)));
  }

  async #end(status, log) {
    this.#stop();
    await this.#saving;
    const next = this.#next ?? {};
    this.#leave({
      next: next.folder ?? null,
      again: next.again === true,
      trouble: status === 0 ? '' : log || `The program ended with status ${status}.`
    });
  }

  // It cannot go on: what it wrote is kept, and what was done since stands in the journal.
  async #fail(text) {
    this.#stop();
    await this.#saving;
    askBeside({
      text: 'Vorn cannot go on',
      more: `${text}\n${afterFailure}`,
      answers: ['Begin Again', 'To the Start Page'],
      chosen: (answer) => this.#leave({next: null, again: answer === 0, trouble: ''}),
    });
  }

  #stop() {
    if (this.#workers)
      for (const role of ['program', 'studies']) this.#workers[role].end();
    this.#workers = null;
    this.#offer?.close();
    this.#question?.close();
    this.#ended.abort();
  }

  #leave(how) {
    this.#files?.close();
    document.title = programTitle;
    this.#root.replaceChildren();
    this.#over(how);
  }

  // The program goes on without them in the meantime.
  async #restartStudies(text) {
    this.#workers.studies.end();
    this.#offeredFile?.close();
    this.#panels.forget();
    this.#restarts += 1;
    const again = this.#restarts <= mostRestarts;
    this.#say(`The panels could not go on: ${text}${again ? '. They begin again.' : ''}`);
    if (!again) return;
    await this.#saving;
    const files = await this.#parts.folder.files();
    if (!this.#workers) return;
    this.#workers.startStudies(files);
    this.#workers.program.send({do: 'situation'});
    this.#panels.lookAgain();
  }
}

// Runs the program in a folder, drawn into `element`, until it has ended: then `next` is the folder that is to be
// opened, if one was chosen, and `trouble` says what went wrong, if anything did.
export async function startApp(element, parts) {
  for (;;) {
    const ended = await new Promise((over) => new Run(element, parts, over).start());
    if (!ended.again) return {next: ended.next, trouble: ended.trouble};
  }
}
