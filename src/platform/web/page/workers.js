// The two workers: the program itself, and the studies for the panels, so that a click never waits for a study.

// What the studies know of the folder: the marks of its cores.
const isForStudies = ({path}) => path.startsWith('.vorn/marks');

// Starts both from one module. Each is {send(message), end()}; `heard.program` and `heard.studies` are told what they
// say. `startStudies(files)` starts studies anew.
export async function startWorkers({moduleBytes, workerSource, folder, help = null, heard}) {
  const module = await WebAssembly.compile(moduleBytes);
  const about = {module, workerSource, folder: folder.name, help};
  const startStudies = (files) =>
      startWorker({...about, role: 'studies', files: files.filter(isForStudies), heard: heard.studies});
  const files = await folder.files();
  return {
    program: startWorker({...about, role: 'program', files, heard: heard.program}),
    studies: startStudies(files),
    startStudies
  };
}

function startWorker({role, module, workerSource, files, folder, help, heard}) {
  const url = URL.createObjectURL(new Blob([workerSource], {type: 'text/javascript'}));
  const worker = new Worker(url, {name: role});
  const failed = (text) => heard({is: 'failed', text});
  worker.addEventListener('message', (event) => heard(event.data));
  worker.addEventListener('messageerror', () => failed('A message could not be read.'));
  worker.addEventListener('error', (event) => failed(event.message || 'The worker could not be started.'));
  worker.postMessage({do: 'start', role, module, files, folder, help});
  return {
    send: (message) => worker.postMessage(message),
    end: () => {
      worker.terminate();
      URL.revokeObjectURL(url);
    },
  };
}
