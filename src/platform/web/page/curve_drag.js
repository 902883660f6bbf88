// The sample's curve under the mouse or a finger: how far it is taken along, and how that is shown.
import {areaShade, letterShade} from './painter.js';

const lightBlue = 9, ink = 15, paper = 0;

function within(area, x, y) {
  return x >= area[0] && x <= area[2] && y >= area[1] && y <= area[3];
}

export function onButton(buttons, x, y) {
  return buttons.some((button) => within(button, Math.floor(x), Math.floor(y)));
}

// Whether a press there may become a move of the curve.
export function mayDrag(stand, graph, x, y) {
  return Boolean(stand?.may_drag) && within(graph, x, y) && !onButton(stand.buttons ?? [], x, y);
}

// By how many years a curve is moved that is taken from one place to another.
export function yearsBetween(from, to, graph, yearsShown) {
  const years = Math.round(((to - from) / (graph[2] - graph[0])) * Math.max(1, yearsShown));
  return years === 0 ? 0 : years;  // never a zero with a minus
}

// "+3 years, 1703-1803"
export function wordsOf(years, sample) {
  const by = `${years > 0 ? '+' : ''}${years} ${Math.abs(years) === 1 ? 'year' : 'years'}`;
  if (!sample || sample.last < sample.first) return by;
  return `${by}, ${sample.first + years}-${sample.last + years}`;
}

function isSampleCurve(mark, graph) {
  if (mark.kind !== 'line' || mark.colour !== lightBlue) return false;
  for (let i = 0; i < mark.points.length; i += 2) {
    if (!within(graph, mark.points[i], mark.points[i + 1])) return false;
  }
  return true;
}

function trace(context, points, shift) {
  context.beginPath();
  for (let i = 0; i < points.length; i += 2) context.lineTo(points[i] + shift, points[i + 1]);
  context.stroke();
}

function drawArrow(context, from, to, y, pixel) {
  const head = Math.sign(to - from) * 9 * pixel, half = (9 * pixel) / 2;
  context.beginPath();
  for (const [x1, y1, x2, y2] of [[from, y, to, y], [to, y, to - head, y - half], [to, y, to - head, y + half]]) {
    context.moveTo(x1, y1);
    context.lineTo(x2, y2);
  }
  context.stroke();
}

// On a label of paper, so that it can be read over the curves.
function writeWords(context, words, x, y, {graph, palette, pixel}) {
  const size = 13 * pixel, margin = 6 * pixel, high = size + 2 * margin;
  context.font = `bold ${size}px system-ui, sans-serif`;
  const wide = context.measureText(words).width + 2 * margin;
  const left = Math.min(Math.max(x - wide / 2, graph[0]), Math.max(graph[0], graph[2] - wide));
  const above = y - 2.5 * high;
  const top = above >= graph[1] ? above : y + 1.5 * high;
  context.lineWidth = pixel;
  context.fillStyle = areaShade(palette, paper);
  context.fillRect(left, top, wide, high);
  context.strokeRect(left, top, wide, high);
  context.fillStyle = letterShade(palette, ink);
  context.textBaseline = 'middle';
  context.fillText(words, left + margin, top + high / 2);
}

// The move that is under way, over the page: in page units, `pixel` of which are one of the screen.
export function paintDrag(context, drag, page, stand, {graph, palette, pixel}) {
  const yearsShown = Math.max(1, stand.years_shown);
  const by = yearsBetween(drag.from.x, drag.to.x, graph, yearsShown);
  const shift = (by * (graph[2] - graph[0])) / yearsShown;
  context.save();
  context.beginPath();
  context.rect(graph[0], graph[1], graph[2] - graph[0], graph[3] - graph[1]);
  context.clip();
  context.strokeStyle = letterShade(palette, lightBlue);
  context.lineWidth = 1.5 * pixel;
  context.setLineDash([4 * pixel, 2 * pixel]);
  for (const mark of page.marks)
    if (isSampleCurve(mark, graph)) trace(context, mark.points, shift);
  context.setLineDash([]);
  context.strokeStyle = letterShade(palette, ink);
  context.lineWidth = 2 * pixel;
  if (by !== 0) drawArrow(context, drag.from.x, drag.from.x + shift, drag.from.y, pixel);
  writeWords(context, wordsOf(by, stand.sample), drag.from.x + shift, drag.from.y, {graph, palette, pixel});
  context.restore();
}
