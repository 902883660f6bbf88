// Pages as a worker would send them, for tests.

const kinds = ['fill', 'outline', 'line', 'text', 'label'];

function numbersOf(mark) {
  const {kind, colour = 15, points = [], height = 20, font = 0, align = 0, angle = 0, text = ''} = mark;
  const head = [kinds.indexOf(kind), colour, points.length / 2, ...points];
  if (kind !== 'text' && kind !== 'label') return head;
  const bytes = new TextEncoder().encode(text);
  const padded = new Uint8Array(Math.ceil(bytes.length / 8) * 8);
  padded.set(bytes);
  return [...head, height, font, align, angle, bytes.length, ...new Float64Array(padded.buffer)];
}

export function bufferOf(marks, across = 2970, down = 2100) {
  const numbers = [across, down, marks.length];
  for (const mark of marks) numbers.push(...numbersOf(mark));
  return Float64Array.from(numbers).buffer;
}
