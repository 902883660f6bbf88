// Plays a page on a canvas. What is upright comes out sharp on whole pixels of the device, whatever the size.
import {boxOf, capitals, isWriting, marksOf, marksToPaint} from './marks.js';
import {marksOnPixels} from './pixel_marks.js';

export const pageAcross = 2970, pageDown = 2100;

const penWidth = 2;        // page units: 0.2 mm on paper
const thinnestFill = 0.5;  // page units: what is thinner would be lost in print
const lightGrey = 7;

const families = {
  arial: '"Vorn Sans", "Liberation Sans", Arial, Helvetica, sans-serif',
  times: '"Vorn Serif", "Liberation Serif", "Times New Roman", Times, serif',
};

// --- Fonts.

// To be waited for before the first page is painted: its texts are made for the widths of these letters.
export async function loadFonts(bytesSans, bytesSerif) {
  const load = async (family, bytes) => document.fonts.add(await new FontFace(family, bytes).load());
  await Promise.all([load('Vorn Sans', bytesSans), load('Vorn Serif', bytesSerif)]);
}

function setFont(context, mark) {
  context.font = `${mark.height / capitals[mark.font]}px ${families[mark.font]}`;
}

// --- Colours.

export function areaShade(palette, colour) {
  return palette.areas[colour % palette.areas.length];
}

export function letterShade(palette, colour) {
  return palette.letters[colour % palette.letters.length];
}

// Lines in grey, the axes and grids, are lighter than letters.
export function lineShade(palette, colour) {
  return colour === lightGrey ? palette.grey_line : letterShade(palette, colour);
}

// --- Where things stand.

// Page units to the units of an area whose corner is the origin: a page of that size keeps its proportions,
// fills as much of the area as it can and stands in the middle.
export function pageToArea(width, height, across = pageAcross, down = pageDown) {
  const scale = Math.min(width / across, height / down);
  return {scale, x: (width - scale * across) / 2, y: (height - scale * down) / 2};
}

// Whether all its sides run across or up.
export function isUpright(points) {
  for (let i = 2; i < points.length; i += 2) {
    if (points[i] !== points[i - 2] && points[i + 1] !== points[i - 1]) return false;
  }
  return true;
}

// How wide a pen is in pixels: never thinner than one, and of whole ones where the line is to be sharp.
export function penPixels(width, scale, sharp) {
  const pixels = Math.max(1, width * scale);
  return sharp ? Math.round(pixels) : pixels;
}

// The whole pixels that an upright line covers, with square ends: its places are in pixels.
export function sharpLine(x1, y1, x2, y2, pen) {
  const from = (a, b) => Math.round(Math.min(a, b) - pen / 2);
  const to = (a, b) => Math.round(Math.max(a, b) - pen / 2) + pen;
  const left = from(x1, x2), top = from(y1, y2);
  return {left, top, width: to(x1, x2) - left, height: to(y1, y2) - top};
}

// --- The painter.

class PagePainter {
  #context;
  #palette;
  #place;  // page units to pixels

  constructor(context, palette) {
    const {a, b, c, d, e, f} = context.getTransform();
    this.#context = context;
    this.#palette = palette;
    this.#place = {scale: Math.sqrt(Math.abs(a * d - b * c)), x: e, y: f};
  }

  paint(page) {
    const context = this.#context;
    context.save();
    this.#layPaper(page);
    context.fontKerning = 'none';
    context.textRendering = 'geometricPrecision';
    context.textBaseline = 'alphabetic';
    context.direction = 'ltr';
    const widthOf = (mark, text) => this.#widthOf(mark, text);
    const {scale, x} = this.#place;
    for (const mark of marksOnPixels(marksToPaint(page, widthOf), scale, x)) this.#play(mark);
    context.restore();
  }

  #play(mark) {
    if (isWriting(mark)) return this.#write(mark);
    if (mark.kind === 'fill') return this.#fill(mark);
    this.#draw(mark, mark.kind === 'outline');
  }

  // What lies off the paper is not painted.
  #layPaper(page) {
    const corners = [0, 0, page.across, 0, page.across, page.down, 0, page.down];
    this.#onPixels(() => {
      this.#tracePixels(corners);
      this.#context.clip();
    });
    this.#fillSharp(corners, 0);
  }

  #fill(mark) {
    const box = boxOf(mark.points);
    if (mark.points.length === 0) return;
    const thinnest = Math.max(thinnestFill, 1 / this.#place.scale);
    if (Math.min(box.right - box.left, box.bottom - box.top) < thinnest)
      return this.#fillThin(box, thinnest, mark.colour);
    if (isUpright(mark.points)) return this.#fillSharp(mark.points, mark.colour);
    this.#context.fillStyle = areaShade(this.#palette, mark.colour);
    this.#trace(mark.points);
    this.#context.fill();
  }

  // As thin as a line, or without any width at all: it is to be seen all the same.
  #fillThin(box, thinnest, colour) {
    const width = Math.max(thinnest, box.right - box.left), height = Math.max(thinnest, box.bottom - box.top);
    this.#context.fillStyle = areaShade(this.#palette, colour);
    this.#context.fillRect((box.left + box.right - width) / 2, (box.top + box.bottom - height) / 2, width, height);
  }

  #fillSharp(points, colour) {
    this.#onPixels(() => {
      this.#context.fillStyle = areaShade(this.#palette, colour);
      this.#tracePixels(points);
      this.#context.fill();
    });
  }

  #draw(mark, closed) {
    const points = closed ? [...mark.points, ...mark.points.slice(0, 2)] : mark.points;
    const shade = lineShade(this.#palette, mark.colour);
    isUpright(points) ? this.#drawSharp(points, shade) : this.#stroke(points, shade);
  }

  #drawSharp(points, shade) {
    const {scale, x, y} = this.#place;
    const pen = penPixels(penWidth, scale, true);
    this.#onPixels(() => {
      this.#context.fillStyle = shade;
      for (let i = 2; i < points.length; i += 2) {
        const line = sharpLine(points[i - 2] * scale + x, points[i - 1] * scale + y, points[i] * scale + x,
            points[i + 1] * scale + y, pen);
        this.#context.fillRect(line.left, line.top, line.width, line.height);
      }
    });
  }

  // In pieces, whose square ends overlap: a long line with joins takes many times longer.
  #stroke(points, shade) {
    const context = this.#context;
    context.strokeStyle = shade;
    context.lineWidth = penPixels(penWidth, this.#place.scale, false) / this.#place.scale;
    context.lineCap = 'square';
    context.beginPath();
    for (let i = 2; i < points.length; i += 2) {
      context.moveTo(points[i - 2], points[i - 1]);
      context.lineTo(points[i], points[i + 1]);
    }
    context.stroke();
  }

  #write(mark) {
    const context = this.#context;
    context.save();
    context.translate(mark.points[0], mark.points[1]);
    context.rotate((-mark.angle * Math.PI) / 180);
    setFont(context, mark);
    context.textAlign = mark.align === 'centre' ? 'center' : mark.align;
    context.fillStyle = letterShade(this.#palette, mark.colour);
    context.fillText(mark.text, 0, mark.height);
    context.restore();
  }

  #widthOf(mark, text) {
    setFont(this.#context, mark);
    return this.#context.measureText(text).width;
  }

  #onPixels(work) {
    const context = this.#context;
    const before = context.getTransform();
    context.setTransform(1, 0, 0, 1, 0, 0);
    work();
    context.setTransform(before);
  }

  #trace(points) {
    this.#tracePoints(points, (value) => value, (value) => value);
  }

  #tracePixels(points) {
    const {scale, x, y} = this.#place;
    this.#tracePoints(points, (value) => Math.round(value * scale + x), (value) => Math.round(value * scale + y));
  }

  #tracePoints(points, across, down) {
    const context = this.#context;
    context.beginPath();
    for (let i = 0; i < points.length; i += 2) context.lineTo(across(points[i]), down(points[i + 1]));
    context.closePath();
  }
}

// Paints the white paper and every mark of a page, given as it was decoded or as it travels. The transform of
// the context must map page units to pixels by a scale and a shift alone.
export function paintPage(context, page, palette) {
  new PagePainter(context, palette).paint(page instanceof ArrayBuffer ? marksOf(page) : page);
}

const ringBlue = '#0038B8', ringWhite = '#FFFFFF';

// Around what the keyboard is at. `pixel` is a pixel of the screen in units of the context.
export function paintFocusRing(context, box, pixel) {
  const away = 3 * pixel;
  const ring = (shade, width) => {
    context.strokeStyle = shade;
    context.lineWidth = width * pixel;
    context.lineJoin = 'round';
    context.strokeRect(
        box.left - away, box.top - away, box.right - box.left + 2 * away, box.bottom - box.top + 2 * away);
  };
  ring(ringWhite, 7);
  ring(ringBlue, 3);
}

// What those need who paint pages elsewhere, into pictures: `scale` is in pixels to a page unit.
export function paintingTools(palette) {
  const paint = (context, marks, {scale = 1} = {}) => {
    context.save();
    context.scale(scale, scale);
    paintPage(context, marks, palette);
    context.restore();
  };
  return {palette, paint};
}
