// The two workers: the program itself, and the studies for the panels, so that a click never waits for a study.

// Starts both from one module. Each is {send(message), end()}; `heard.program` and `heard.studies` are told what they say.
export async function startWorkers({ moduleBytes, workerSource, folder, heard }) {
  const module = moduleBytes instanceof WebAssembly.Module ? moduleBytes : await WebAssembly.compile(moduleBytes);
  const files = await folder.files();
  const start = (role) => startWorker({ role, module, workerSource, files, folder: folder.name, heard: heard[role] });
  return { program: start('program'), studies: start('studies'), module };
}

export function startWorker({ role, module, workerSource, files, folder, heard }) {
  const url = URL.createObjectURL(new Blob([workerSource], { type: 'text/javascript' }));
  const worker = new Worker(url, { name: role });
  const failed = (text) => heard({ is: 'failed', text });
  worker.addEventListener('message', (event) => heard(event.data));
  worker.addEventListener('messageerror', () => failed('A message could not be read.'));
  worker.addEventListener('error', (event) => failed(event.message || 'The worker could not be started.'));
  worker.postMessage({ do: 'start', role, module, files, folder });
  return {
    send: (message) => worker.postMessage(message),
    end: () => {
      worker.terminate();
      URL.revokeObjectURL(url);
    },
  };
}
