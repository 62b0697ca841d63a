'use strict';

const { findingsOf } = require('./findings.js');
const { curve, fit, label, line, point, sheet, spots } = require('./sheet.js');

const WIDTH = 880;
const TITLE = { anchor: 'middle' };

const middle = (a, b) => ({ x: (a.x + b.x) / 2, y: (a.y + b.y) / 2 });
const closed = (corners) => [...corners, corners[0]];

const QUADRANGLES = [
  {
    title: 'rectangle',
    corners: [[40, 150], [62, 34], [238, 66], [228, 176]], // prettier-ignore
  },
  {
    title: 'parallelogram',
    corners: [[30, 150], [80, 50], [240, 62], [200, 166]], // prettier-ignore
  },
  {
    title: 'one pair parallel',
    corners: [[30, 160], [70, 60], [170, 46], [250, 150]], // prettier-ignore
    hasMidlines: false,
  },
];

/** Beside a corner, on the side away from the middle of the figure. */
function nameCorner(corner, centre, name) {
  const isLeft = corner.x < centre.x;
  const y = corner.y + (corner.y < centre.y ? -7 : 17);
  return label(corner.x + (isLeft ? -7 : 7), y, name, {
    anchor: isLeft ? 'end' : 'start',
    kind: 'small',
  });
}

function drawQuadrangle({ title, corners, hasMidlines = true }, finding, i) {
  const column = WIDTH / QUADRANGLES.length;
  const place = { x: i * column + 50, y: 56, width: column - 100, height: 130 };
  const drawn = corners.map(point);
  const made = finding.corners.map(point);
  const toSheet = fit([...drawn, ...made], place);
  const [q, r] = [drawn.map(toSheet), made.map(toSheet)];
  const centre = middle(middle(r[0], r[2]), middle(r[1], r[3]));
  const midline = (a, b, c, d) => line(middle(q[a], q[b]), middle(q[c], q[d]), 'help');
  return [
    label((i + 0.5) * column, 30, title, TITLE),
    ...(hasMidlines ? [midline(0, 1, 2, 3), midline(1, 2, 3, 0)] : []),
    curve(closed(q), 'ink dashed'),
    curve(closed(r), 'shape'),
    spots([r[0]], 5, 'shape'),
    ...r.map((corner, k) => nameCorner(corner, centre, `Q${k}`)),
  ].join('\n');
}

/** Drawn quadrangles, their midlines, and what they become. */
function drawQuadrangles() {
  const findings = findingsOf(QUADRANGLES.map(({ corners }) => ({ corners })));
  return sheet({
    width: WIDTH,
    height: 216,
    title: 'Drawn quadrangles and what they become',
    parts: QUADRANGLES.map((quadrangle, i) => drawQuadrangle(quadrangle, findings[i], i)),
  });
}

/** A wavering stroke, units. */
const WANDERING = Array.from({ length: 40 }, (_, i) => [
  430 + 5.6 * i,
  500 - 1.2 * i + 4 * Math.sin(i / 3.2),
]);
const ANCHOR_PAIRS = [
  { title: 'ends near the anchors', anchors: [[438, 491], [636, 459]] }, // prettier-ignore
  { title: 'ends beyond the anchors', anchors: [[480, 497], [580, 463]] }, // prettier-ignore
];

const RADIUS = 5;

/** A stroke whose centroid is this anchor: a small ring of 12 points. */
const ring = ([x, y]) =>
  Array.from({ length: 12 }, (_, i) => [
    x + RADIUS * Math.cos((i * Math.PI) / 6),
    y + RADIUS * Math.sin((i * Math.PI) / 6),
  ]);

function drawPair({ title, anchors }, finding, i) {
  const column = WIDTH / ANCHOR_PAIRS.length;
  const place = { x: i * column + 40, y: 52, width: column - 80, height: 110 };
  const made = finding.path.map(point);
  const toSheet = fit(
    [...WANDERING.map(point), ...made, ...anchors.flatMap(ring).map(point)],
    place,
  );
  const placed = anchors.map(point).map(toSheet);
  return [
    label((i + 0.5) * column, 30, title, TITLE),
    curve(WANDERING.map(point).map(toSheet), 'ink dashed'),
    curve([made[0], made.at(-1)].map(toSheet), 'shape'),
    spots(placed, 5, 'mark'),
    ...placed.map(({ x, y }, k) => label(x, y + 26, 'AB'[k], { anchor: 'middle', kind: 'small' })),
  ].join('\n');
}

/** Where the line and the ends of a stroke along two others go. */
function drawAnchorPair() {
  const tasks = ANCHOR_PAIRS.map(({ anchors }) => ({
    stroke: WANDERING,
    others: anchors.map(ring),
  }));
  const findings = findingsOf(tasks);
  return sheet({
    width: WIDTH,
    height: 186,
    title: 'A stroke laid along two nearby strokes',
    parts: ANCHOR_PAIRS.map((pair, i) => drawPair(pair, findings[i], i)),
  });
}

module.exports = { drawAnchorPair, drawQuadrangles };
