// The two workers: the program itself, and the studies for the panels, so that a click never waits for a study.
import {isKept} from './file_names.js';

// What the studies know of the folder: its files, and of what is kept beside them the marks of its cores.
const isForStudies = (path) => !isKept(path) || path.startsWith('.vorn/marks');

const others = {
  program: 'studies',
  studies: 'program'
};

// What one of them changed among the files, as the other one is told of it; null where it has no use for it.
export function changeFor(role, {changed, removed}) {
  const isMeant = (path) => role !== 'studies' || isForStudies(path);
  const change = {changed: changed.filter(({path}) => isMeant(path)), removed: removed.filter(isMeant)};
  return change.changed.length + change.removed.length > 0 ? {do: 'files', ...change} : null;
}

// Starts both. `sources` holds for each role the bytes of its module and the text of its script. Each is
// {send(message), end()}; `heard.program` and `heard.studies` are told what they say. What one changes among the files
// reaches the other. `startStudies(files)` starts studies anew, in place of those before.
export async function startWorkers({sources, folder, help = null, heard}) {
  const workers = {};
  const hears = (role) => (message) => {
    const change = message.is === 'files' ? changeFor(others[role], message) : null;
    if (change) workers[others[role]]?.send(change);
    heard[role](message);
  };
  const modules = await Promise.all(Object.keys(others).map((role) => WebAssembly.compile(sources[role].module)));
  const start = (role, files) => startWorker({
    role,
    files,
    folder: folder.name,
    help,
    module: modules[Object.keys(others).indexOf(role)],
    source: sources[role].source,
    heard: hears(role)
  });
  workers.startStudies = (files) => {
    workers.studies?.end();
    workers.studies = start('studies', files.filter(({path}) => isForStudies(path)));
  };
  const files = await folder.files();
  workers.program = start('program', files);
  workers.startStudies(files);
  return workers;
}

function startWorker({role, module, source, files, folder, help, heard}) {
  const url = URL.createObjectURL(new Blob([source], {type: 'text/javascript'}));
  const worker = new Worker(url, {name: role});
  const failed = (text) => heard({is: 'failed', text});
  worker.addEventListener('message', (event) => heard(event.data));
  worker.addEventListener('messageerror', () => failed('A message could not be read.'));
  worker.addEventListener('error', (event) => failed(event.message || 'The worker could not be started.'));
  worker.postMessage({do: 'start', module, files, folder, help});
  return {
    send: (message) => worker.postMessage(message),
    end: () => {
      worker.terminate();
      URL.revokeObjectURL(url);
    },
  };
}
