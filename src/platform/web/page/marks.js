// A page as it travels from a worker: marks in drawing order, as numbers in one buffer.
//
//   across, down, count of marks; then for each mark
//   kind, colour, count of points, x, y per point; for texts and labels further
//   height, font, align, angle, count of bytes, the bytes of the text, filled up to whole numbers.

const kinds = ['fill', 'outline', 'line', 'text', 'label'];
const fonts = ['arial', 'times'];
const alignments = ['left', 'centre', 'right'];
const bytesInNumber = 8, leastNumbersInMark = 3;

// The height of a capital letter, as a part of the size of the font.
export const capitals = {
  arial: 1409 / 2048,
  times: 1341 / 2048
};

// Reads number after number, and says so where the buffer ends too early: what follows would be nonsense.
class Reader {
  #numbers;
  #bytes;
  #at = 0;

  constructor(buffer) {
    this.#numbers = new Float64Array(buffer, 0, Math.floor(buffer.byteLength / bytesInNumber));
    this.#bytes = new Uint8Array(buffer);
  }

  number() {
    this.#need(1);
    return this.#numbers[this.#at++];
  }

  // How many of something follow that takes `each` numbers.
  count(each) {
    const count = this.number();
    if (!Number.isInteger(count) || count < 0) throw new RangeError(`a page counts ${count} of something`);
    this.#need(Math.ceil(count * each));
    return count;
  }

  oneOf(names) {
    const name = names[this.number()];
    if (name === undefined) throw new RangeError(`a page has something else than ${names.join(', ')}`);
    return name;
  }

  numbers(count) {
    const begin = this.#at;
    this.#at += count;
    return this.#numbers.subarray(begin, this.#at);
  }

  text() {
    const length = this.count(1 / bytesInNumber);
    const begin = this.#at * bytesInNumber;
    this.#at += Math.ceil(length / bytesInNumber);
    return new TextDecoder().decode(this.#bytes.subarray(begin, begin + length));
  }

  #need(count) {
    if (this.#at + count > this.#numbers.length) throw new RangeError('a page ends too early');
  }
}

export const isWriting = (mark) => mark.kind === 'text' || mark.kind === 'label';

function readMark(reader) {
  const mark = {kind: reader.oneOf(kinds), colour: reader.number()};
  mark.points = reader.numbers(2 * reader.count(2));
  if (!isWriting(mark)) return mark;
  if (mark.points.length < 2) throw new RangeError('a page has writing without a place');
  mark.height = reader.number();
  mark.font = reader.oneOf(fonts);
  mark.align = reader.oneOf(alignments);
  mark.angle = reader.number();
  mark.text = reader.text();
  return mark;
}

// The size of the page and its marks: {kind, colour, points: [x0, y0, x1, y1, ...]}, of texts and labels further
// {height, font, align, angle, text}. Throws a RangeError where the buffer holds no page.
export function marksOf(buffer) {
  const reader = new Reader(buffer);
  const page = {across: reader.number(), down: reader.number(), marks: []};
  const count = reader.count(leastNumbersInMark);
  for (let k = 0; k < count; ++k) page.marks.push(readMark(reader));
  return page;
}

// --- What is to be painted.

export function boxOf(points) {
  const box = {left: Infinity, top: Infinity, right: -Infinity, bottom: -Infinity};
  for (let i = 0; i + 1 < points.length; i += 2) {
    box.left = Math.min(box.left, points[i]);
    box.right = Math.max(box.right, points[i]);
    box.top = Math.min(box.top, points[i + 1]);
    box.bottom = Math.max(box.bottom, points[i + 1]);
  }
  return box;
}

// Whether two boxes have more than an edge in common. What has no width or no height meets nothing.
export function meet(a, b) {
  const left = Math.max(a.left, b.left), right = Math.min(a.right, b.right);
  const top = Math.max(a.top, b.top), bottom = Math.min(a.bottom, b.bottom);
  return left < right && top < bottom;
}

// The widest letter is half as wide again as a capital is high.
const widestOf = (mark, text) => 1.5 * mark.height * text.length;

// All the room that the letters may take. They reach below their line; turned writing, or writing that ends at
// its place, lies elsewhere around it.
export function roomOf(mark, widthOf = widestOf) {
  const [x, y] = mark.points;
  const blanks = mark.text.slice(0, mark.text.length - mark.text.trimStart().length);
  const begin = widthOf === widestOf ? 0 : widthOf(mark, blanks);
  const width = widthOf(mark, mark.text);
  const plain = mark.angle === 0 && mark.align === 'left';
  const reach = plain ? mark.height : mark.height + width - begin;
  return {left: x + begin - reach, top: y - reach, right: x + width + reach, bottom: y + mark.height + reach};
}

// The marks that are to be painted. A text written again over itself would come out bolder, because its edges
// are soft; what a fill may have covered since, if only in part, is painted again. `widthOf(mark, text)` tells
// how wide a text comes out; without it the room of texts is reckoned generously.
export function marksToPaint(page, widthOf = widestOf) {
  const written = new Map();  // and how many areas had been filled before
  const fills = [];
  return page.marks.filter((mark) => {
    if (mark.kind === 'fill') fills.push(boxOf(mark.points));
    if (!isWriting(mark)) return true;
    const {kind, colour, height, font, align, angle, text, points} = mark;
    const key = JSON.stringify([kind, colour, height, font, align, angle, points[0], points[1], text]);
    const before = written.get(key);
    written.set(key, fills.length);
    if (before === undefined) return true;
    if (before === fills.length) return false;
    const room = roomOf(mark, widthOf);
    return fills.slice(before).some((fill) => meet(fill, room));
  });
}
