// What the one file carries beside the page: packed with gzip, written in base64, in blocks that are no
// script.

function packed(id) {
  const block = document.getElementById(`part-${id}`);
  if (!block) throw new Error(`a part of this file is missing (${id})`);
  const letters = atob(block.textContent.trim());
  return Uint8Array.from(letters, letter => letter.charCodeAt(0));
}

// The block is given up once it is read: it is large.
export async function unpackedBytes(id) {
  const bytes = packed(id);
  document.getElementById(`part-${id}`).remove();
  const stream = new Blob([bytes]).stream().pipeThrough(new DecompressionStream('gzip'));
  return new Uint8Array(await new Response(stream).arrayBuffer());
}

export const unpackedText = async id => new TextDecoder().decode(await unpackedBytes(id));

// {name: base64} of the files.
export async function unpackedExamples() {
  const files = JSON.parse(await unpackedText('examples'));
  return Object.entries(files).map(
      ([path, letters]) => ({path, bytes: Uint8Array.from(atob(letters), letter => letter.charCodeAt(0))}));
}
