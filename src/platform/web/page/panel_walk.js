// How the keyboard goes from spot to spot of a panel: places are [left, top, right, bottom] in panel units.

const middle = (from, to) => from + Math.trunc((to - from) / 2);
const middleAcross = (spot) => middle(spot.place[0], spot.place[2]);
const middleDown = (spot) => middle(spot.place[1], spot.place[3]);

// How far a spot is from another one above or below it: rows count more than columns.
const weightOfRows = 4;
function distance(from, to) {
  return weightOfRows * Math.abs(middleDown(to) - middleDown(from)) +
      Math.abs(middleAcross(to) - middleAcross(from));
}

function nearest(from, spots) {
  let found = null;
  for (const spot of spots)
    if (!found || distance(from, spot) < distance(from, found)) found = spot;
  return found;
}

// Where several meet, the last one is hit; -1 for none.
export function spotAt(panel, x, y) {
  return panel.spots.map((spot) => holds(spot, x, y)).lastIndexOf(true);
}

function holds({place: [left, top, right, bottom]}, x, y) {
  return x >= left && x < right && y >= top && y < bottom;
}

// What stands at the upper edge is not scrolled.
export function isScrolled(spot, panel) {
  return spot.place[3] > panel.head;
}

// The number of the spot that follows on the part that is looked at; -1 where there is none. `way`: 'next',
// 'previous', 'up', 'down'. From what is scrolled none at the upper edge follows before all is scrolled back.
export function following(panel, from, way, scroll) {
  const spots = panel.spots, spot = spots[from];
  const back = way === 'previous' || way === 'up';
  if (!spot) return back ? spots.length - 1 : Math.min(0, spots.length - 1);
  const mayFollow = (other) => !back || !isScrolled(spot, panel) || isScrolled(other, panel) || scroll === 0;
  if (way === 'next' || way === 'previous') {
    const to = from + (way === 'next' ? 1 : -1);
    return spots[to] && mayFollow(spots[to]) ? to : -1;
  }
  const isThere = (other) => (back ? middleDown(other) < spot.place[1] : middleDown(other) >= spot.place[3]);
  return spots.indexOf(nearest(spot, spots.filter((other) => isThere(other) && mayFollow(other))));
}

const isSameSpot = (a, b) => a.tip === b.tip && a.core === b.core && a.file === b.file;

// The mark stays at what it was at: what says the same, the nearest of them where several do; else what stands
// where it was. `scrolled`: by how much more than before.
export function followMark(panel, before, scrolled) {
  if (!before) return -1;
  const by = isScrolled(before, panel) ? scrolled : 0;
  const [left, top, right, bottom] = before.place;
  const expected = {place: [left, top - by, right, bottom - by]};
  const same = nearest(expected, panel.spots.filter((spot) => isSameSpot(spot, before)));
  return same ? panel.spots.indexOf(same) : spotAt(panel, middleAcross(expected), middleDown(expected));
}

// By how much is to be scrolled so that a spot is seen. What reaches beyond the edges, or to the upper one, may be
// larger than is seen: it is brought into sight.
export function scrollTo(panel, spot, height) {
  if (!isScrolled(spot, panel)) return 0;
  const [, top, , bottom] = spot.place;
  if (bottom > height) return Math.min(bottom - height, top - panel.head);
  return top <= panel.head ? -height / 4 : 0;
}

// How far within a spot of that size its ring is: rows meet, and reach from edge to edge. What is small is better
// seen whole.
export function inset(size, pixel) {
  const ringWithin = 4, leastInside = 14;  // pixels
  return size >= (leastInside + 2 * ringWithin) * pixel ? ringWithin * pixel : 0;
}
