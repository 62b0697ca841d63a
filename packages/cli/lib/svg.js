'use strict';

const ESCAPES = { '&': '&amp;', '<': '&lt;', '>': '&gt;', '"': '&quot;' };

/** Text as it stands between SVG tags or inside an attribute. */
function escapeText(text) {
  return String(text).replace(/[&<>"]/g, (character) => ESCAPES[character]);
}

/**
 * Path data of a polyline, short: rounded to tenths of a unit, relative, without the points that
 * lie on the straight way between their neighbours.
 *
 * Rounding is done before the differences are taken, so errors do not add up along the path.
 *
 * @param {Array<{x: number, y: number}>} points in SVG units
 * @returns {string} empty when no point is finite
 */
function pathData(points) {
  const grid = dropCollinear(toGrid(points));
  if (grid.length === 0) return '';
  const [first, ...rest] = grid;
  // A lone point is drawn as a line of no length: a round cap makes a dot of it.
  if (rest.length === 0) return `M${tenths(first.x)} ${tenths(first.y)}h0`;
  let previous = first;
  const steps = rest.map((point) => {
    const step = joinNumbers(tenths(point.x - previous.x), tenths(point.y - previous.y));
    previous = point;
    return step;
  });
  return `M${joinNumbers(tenths(first.x), tenths(first.y))}l${steps.reduce(joinNumbers)}`;
}

function toGrid(points) {
  const grid = points
    .map(({ x, y }) => ({ x: Math.round(x * 10), y: Math.round(y * 10) }))
    .filter(({ x, y }) => Number.isFinite(x) && Number.isFinite(y));
  return grid.filter(({ x, y }, i) => i === 0 || x !== grid[i - 1].x || y !== grid[i - 1].y);
}

// Half a tenth of a unit: what rounding alone moves a point.
const COLLINEAR = 0.75;

function dropCollinear(points) {
  const kept = [];
  let skipped = [];
  for (const point of points) {
    const start = kept.at(-1);
    if (!start || skipped.every((between) => liesBetween(start, between, point))) {
      if (start) skipped.push(point);
      else kept.push(point);
      continue;
    }
    kept.push(skipped.at(-1));
    skipped = [point];
  }
  return skipped.length > 0 ? [...kept, skipped.at(-1)] : kept;
}

function liesBetween(start, between, end) {
  const [dx, dy] = [end.x - start.x, end.y - start.y];
  const length = Math.hypot(dx, dy);
  const [ux, uy] = [between.x - start.x, between.y - start.y];
  const along = (ux * dx + uy * dy) / length;
  return along >= 0 && along <= length && Math.abs(ux * dy - uy * dx) / length < COLLINEAR;
}

function tenths(value) {
  return String(value / 10).replace(/^(-?)0\./, '$1.');
}

function joinNumbers(left, right) {
  return right.startsWith('-') ? `${left}${right}` : `${left} ${right}`;
}

module.exports = { escapeText, pathData };
