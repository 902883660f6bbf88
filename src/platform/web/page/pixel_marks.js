// What of the lines of a page can be told apart on pixels: a page of thousands of years has many in each column of pixels,
// most of which change nothing. As src/plot/pixel_marks.h has it.

const mostInAHalfColumn = 3;

const isShortLine = (mark) => mark.kind === 'line' && mark.points.length === 4;
const isTick = (mark) => isShortLine(mark) && mark.points[0] === mark.points[2];
const goesOn = (before, mark) => isShortLine(before) && isShortLine(mark) && mark.colour === before.colour &&
    mark.points[0] === before.points[2] && mark.points[1] === before.points[3];

// Behind the last of the short lines from `first` on of which each begins where the one before ends.
function endOfChain(marks, first) {
  let end = first + 1;
  while (end < marks.length && goesOn(marks[end - 1], marks[end])) ++end;
  return end;
}

function joined(chain) {
  const points = [chain[0].points[0], chain[0].points[1]];
  for (const {points: [, , x, y]} of chain) points.push(x, y);
  return points;
}

function isDense(points, columns) {
  let left = Infinity, right = -Infinity;
  for (let i = 0; i < points.length; i += 2) {
    left = Math.min(left, points[i]);
    right = Math.max(right, points[i]);
  }
  return points.length / 2 > mostInAHalfColumn * ((right - left) * columns + 1);
}

// The lowest and the highest point of each stay in a column, in their order, with both ends of the line.
function thinned(points, columns) {
  const kept = [], last = points.length - 2;
  const keep = (i) => kept.push(points[i], points[i + 1]);
  for (let first = 0, end = 0; first < points.length; first = end) {
    const column = Math.floor(points[first] * columns);
    let low = first, high = first;
    for (end = first + 2; end < points.length && Math.floor(points[end] * columns) === column; end += 2) {
      if (points[end + 1] < points[low + 1]) low = end;
      if (points[end + 1] >= points[high + 1]) high = end;
    }
    const [one, other] = low < high ? [low, high] : [high, low];
    if (first === 0 && one !== 0) keep(0);
    keep(one);
    if (other !== one) keep(other);
    if (end > last && other !== last) keep(last);
  }
  return kept;
}

// The marks that change something where a page unit has so many columns of pixels and the page begins at the column `left`:
// in half columns, curves have their lowest and highest point, and of ticks of one colour and height there is one.
export function marksOnPixels(marks, columns, left) {
  const kept = [], ticks = new Map();
  for (let first = 0, end = 0; first < marks.length; first = end) {
    end = endOfChain(marks, first);
    const mark = marks[first];
    if (end === first + 1 && isTick(mark)) {
      const key = `${mark.colour} ${mark.points[1]} ${mark.points[3]}`;
      const half = Math.floor(2 * (mark.points[0] * columns + left));
      if (ticks.get(key) !== half) kept.push(mark);
      ticks.set(key, half);
      continue;
    }
    ticks.clear();
    const chain = marks.slice(first, end), points = end > first + 1 ? joined(chain) : [];
    if (points.length > 0 && isDense(points, 2 * columns))
      kept.push({kind: 'line', colour: mark.colour, points: thinned(points, 2 * columns)});
    else
      kept.push(...chain);
  }
  return kept;
}
