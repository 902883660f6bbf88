// A page as SVG: every mark an element, texts as texts, sizes in millimetres.
import {boxOf, capitals, isWriting, marksOf, marksToPaint} from './marks.js';

const unitsInMillimetre = 10;
const penWidth = 2;        // page units: 0.2 mm on paper
const referenceWidth = 4;  // of the reference's curve: in greys the curves are told apart by their width
const thinnestFill = 0.5;  // what is thinner would be lost in print
const lightGrey = 7, lightRed = 12, paper = 0;
const families = {
  arial: '"Liberation Sans", Arial, Helvetica, sans-serif',
  times: '"Liberation Serif", "Times New Roman", Times, serif'
};
const ownFamilies = {
  arial: '"Vorn Sans", ',
  times: '"Vorn Serif", '
};  // which the page has loaded
const anchors = {
  left: 'start',
  centre: 'middle',
  right: 'end'
};

// Two decimals are a hundredth of a millimetre's tenth.
const short = number => String(Math.round(100 * number) / 100);

// Letters that XML cannot hold are left out.
function escaped(text) {
  return text.replace(/[^\t\n\r\u{20}-\u{D7FF}\u{E000}-\u{FFFD}\u{10000}-\u{10FFFF}]/gu, '')
      .replace(/[&<>"]/g, letter => ({'&': '&amp;', '<': '&lt;', '>': '&gt;', '"': '&quot;'})[letter]);
}

function placesOf(points) {
  const places = [];
  for (let i = 0; i + 1 < points.length; i += 2) places.push(`${short(points[i])},${short(points[i + 1])}`);
  return places.join(' ');
}

function area(mark, palette) {
  const colour = palette.areas[mark.colour];
  const {left, top, right, bottom} = boxOf(mark.points);
  const width = right - left, height = bottom - top;
  if (Math.min(width, height) >= thinnestFill)
    return `<polygon points="${placesOf(mark.points)}" fill="${colour}"/>`;
  const wide = Math.max(width, thinnestFill), high = Math.max(height, thinnestFill);
  return (
      `<rect x="${short(left - (wide - width) / 2)}" y="${short(top - (high - height) / 2)}" ` +
      `width="${short(wide)}" height="${short(high)}" fill="${colour}"/>`);
}

const lineShade = (colour, palette) => (colour === lightGrey ? palette.grey_line : palette.letters[colour]);

function stroke(mark, palette) {
  const isReference = mark.kind === 'line' && mark.colour === lightRed;
  const name = mark.kind === 'line' ? 'polyline' : 'polygon';
  return (
      `<${name} points="${placesOf(mark.points)}" fill="none" stroke="${lineShade(mark.colour, palette)}" ` +
      `stroke-width="${
          isReference ? referenceWidth : penWidth}" stroke-linecap="round" stroke-linejoin="round"/>`);
}

function writing(mark, palette, isHere) {
  const [x, y] = mark.points;
  const family = (isHere ? ownFamilies[mark.font] : '') + families[mark.font];
  const turn = mark.angle === 0 ? '' : ` rotate(${short(-mark.angle)})`;
  return (
      `<text transform="translate(${short(x)} ${short(y)})${turn}" y="${short(mark.height)}" ` +
      `font-family="${escaped(family)}" font-size="${short(mark.height / capitals[mark.font])}" ` +
      `text-anchor="${anchors[mark.align]}" fill="${palette.letters[mark.colour]}" xml:space="preserve">` +
      `${escaped(mark.text)}</text>`);
}

function element(mark, palette, isHere) {
  if (mark.points.length < 2) return '';
  if (mark.kind === 'fill') return area(mark, palette);
  return isWriting(mark) ? writing(mark, palette, isHere) : stroke(mark, palette);
}

// `isHere`: to be shown in this page, with its own fonts.
export function svgOf(buffer, palette, isHere = false) {
  const page = marksOf(buffer);
  const {across, down} = page;
  const lines = [
    `<svg xmlns="http://www.w3.org/2000/svg" width="${short(across / unitsInMillimetre)}mm" ` +
        `height="${short(down / unitsInMillimetre)}mm" viewBox="0 0 ${short(across)} ${short(down)}">`,
    '<title>Vorn</title>',
    `<rect width="${short(across)}" height="${short(down)}" fill="${palette.areas[paper]}"/>`,
    ...marksToPaint(page).map(mark => element(mark, palette, isHere)), '</svg>'
  ];
  return lines.filter(line => line !== '').join('\n') + '\n';
}
