import assert from 'node:assert/strict';
import {test} from 'node:test';

import {svgOf} from '../picture_svg.js';

const palette = {
  areas: Array.from({length: 28}, (_, i) => `#0000${(i + 16).toString(16)}`),
  letters: Array.from({length: 28}, (_, i) => `#${(i + 16).toString(16)}0000`),
  grey_line: '#8c8c8c'
};
const fill = 0, outline = 1, line = 2, text = 3, label = 4;

const drawn = (kind, colour, ...points) => [kind, colour, points.length / 2, ...points];

function written(kind, colour, x, y, {height = 30, font = 0, align = 0, angle = 0, words}) {
  const bytes = new TextEncoder().encode(words);
  const padded = new Uint8Array(8 * Math.ceil(bytes.length / 8));
  padded.set(bytes);
  return [
    kind, colour, 1, x, y, height, font, align, angle, bytes.length, ...new Float64Array(padded.buffer)
  ];
}

const page = (marks, across = 2970, down = 2100) =>
    new Float64Array([across, down, marks.length, ...marks.flat()]).buffer;
const linesOf = marks => svgOf(page(marks), palette).split('\n').slice(3, -2);

test('the sheet is as large as the page, in millimetres', () => {
  assert.match(
      svgOf(page([]), palette),
      /^<svg xmlns="http:\/\/www.w3.org\/2000\/svg" width="297mm" height="210mm" viewBox="0 0 2970 2100">\n<title>Vorn<\/title>\n<rect width="2970" height="2100" fill="#000010"\/>\n<\/svg>\n$/);
  assert.match(svgOf(page([], 605, 1200), palette), /width="60.5mm" height="120mm" viewBox="0 0 605 1200"/);
});

test('areas, borders and lines become elements of their own', () => {
  assert.deepEqual(
      linesOf([
        drawn(fill, 1, 0, 0, 10, 0, 10, 10.128), drawn(outline, 2, 1, 1, 5, 5),
        drawn(line, 3, 0, 0, 1, 1, 2, 0)
      ]),
      [
        '<polygon points="0,0 10,0 10,10.13" fill="#000011"/>',
        '<polygon points="1,1 5,5" fill="none" stroke="#120000" stroke-width="2" stroke-linecap="round" stroke-linejoin="round"/>',
        '<polyline points="0,0 1,1 2,0" fill="none" stroke="#130000" stroke-width="2" stroke-linecap="round" stroke-linejoin="round"/>'
      ]);
});

test('the reference is drawn wider, and grey lines are lighter than letters', () => {
  const [reference, border, grey] =
      linesOf([drawn(line, 12, 0, 0, 1, 1), drawn(outline, 12, 0, 0, 1, 1), drawn(line, 7, 0, 0, 1, 1)]);
  assert.match(reference, /stroke-width="4"/);
  assert.match(border, /stroke-width="2"/);
  assert.match(grey, /stroke="#8c8c8c"/);
});

test('an area without width is to be seen all the same', () => {
  assert.deepEqual(
      linesOf([drawn(fill, 1, 5, 0, 5, 10)]),
      ['<rect x="4.75" y="0" width="0.5" height="10" fill="#000011"/>']);
});

test('texts stay texts, at their place, by the height of a capital', () => {
  const [plain, turned] = linesOf([
    written(text, 15, 100, 200, {height: 1409 / 20.48, words: 'a  <b> & "ä"'}),
    written(label, 15, 5, 6, {height: 1341 / 20.48, font: 1, align: 1, angle: 90, words: 'mm'})
  ]);
  assert.equal(
      plain,
      '<text transform="translate(100 200)" y="68.8" font-family="&quot;Liberation Sans&quot;, Arial, Helvetica, sans-serif" ' +
          'font-size="100" text-anchor="start" fill="#1f0000" xml:space="preserve">a  &lt;b&gt; &amp; &quot;ä&quot;</text>');
  assert.match(
      turned,
      /^<text transform="translate\(5 6\) rotate\(-90\)" y="65.48" font-family="&quot;Liberation Serif&quot;, .* font-size="100" text-anchor="middle"/);
});

test('letters that XML cannot hold are left out', () => {
  assert.match(
      linesOf([written(text, 15, 0, 0, {words: 'a\u0001b\uffffc\u{1f333}'})])[0], />abc\u{1f333}<\/text>$/u);
});

test('a text written again over itself is drawn once, unless something was filled over it', () => {
  const words = written(text, 15, 0, 0, {words: 'NOW07'});
  assert.equal(linesOf([words, words]).length, 1);
  assert.equal(linesOf([words, drawn(fill, 0, 0, 0, 20, 0, 20, 20), words]).length, 3);
  assert.equal(linesOf([words, drawn(fill, 0, 2000, 2000, 2020, 2000, 2020, 2020), words]).length, 2);
});
