// Pages as pictures: saved, copied and printed.
import {download} from './download.js';
import {marksOf} from './marks.js';
import {svgOf} from './picture_svg.js';

const unitsInPixel = 2;
const systemsAcross = 2970, systemsDown = 2100;  // the system's page, an A4 sheet across

// `tools` has the palette and paint(context, marks, {scale}), with pixels to a page unit.
function canvasOf(marks, tools) {
  const {across, down} = marksOf(marks);
  const canvas = document.createElement('canvas');
  canvas.width = Math.floor(across / unitsInPixel);
  canvas.height = Math.floor(down / unitsInPixel);
  tools.paint(canvas.getContext('2d'), marks, {scale: 1 / unitsInPixel});
  return canvas;
}

function pngOf(marks, tools) {
  const canvas = canvasOf(marks, tools);
  return new Promise((resolve, reject) => {
    canvas.toBlob(
        blob => (blob ? resolve(blob) : reject(new Error('The picture could not be made.'))), 'image/png');
  });
}

// `name` is without an ending.
export async function savePicture(marks, kind, name, tools) {
  if (kind === 'svg') return download(`${name}.svg`, svgOf(marks, tools.palette), 'image/svg+xml');
  return download(`${name}.png`, await pngOf(marks, tools), 'image/png');
}

export async function copyPicture(marks, tools) {
  if (!navigator.clipboard?.write || typeof ClipboardItem === 'undefined') {
    throw new Error('This browser lets no page copy pictures here. Save the picture instead.');
  }
  // Some browsers forget the click while the picture is made: they take the promise of one.
  await navigator.clipboard.write([new ClipboardItem({'image/png': pngOf(marks, tools)})]);
}

const isSystems = ({across, down}) => across === systemsAcross && down === systemsDown;

// The sheet's size can be told by a rule alone. Returns what takes it back.
function setSheet(size) {
  const sheet = document.styleSheets[0];
  const rule = sheet.cssRules[sheet.insertRule(`@page { size: ${size}; margin: 0 }`, sheet.cssRules.length)];
  return () => sheet.deleteRule([...sheet.cssRules].indexOf(rule));
}

function printedElement(marks, palette, isAcross) {
  const svg = new DOMParser().parseFromString(svgOf(marks, palette, true), 'image/svg+xml').documentElement;
  const element = document.createElement('div');
  element.className = isAcross ? 'printed-page across' : 'printed-page upright';
  element.append(document.importNode(svg, true));
  return element;
}

let forgetPrinted = () => {};
globalThis.addEventListener?.('afterprint', () => forgetPrinted());

// The page alone is printed: A4 across for the system's page, other pages upright.
export function printPicture(marks, tools) {
  forgetPrinted();
  const isAcross = isSystems(marksOf(marks));
  const element = printedElement(marks, tools.palette, isAcross);
  const forgetSheet = setSheet(isAcross ? 'A4 landscape' : 'A4 portrait');
  document.documentElement.classList.add('prints-page');
  document.body.append(element);
  forgetPrinted = () => {
    forgetPrinted = () => {};
    document.documentElement.classList.remove('prints-page');
    element.remove();
    forgetSheet();
  };
  print();
}
