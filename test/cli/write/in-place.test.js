'use strict';

const assert = require('node:assert/strict');
const fs = require('node:fs');
const path = require('node:path');
const { after, test } = require('node:test');
const zlib = require('node:zlib');
const { edgesOf } = require('../../../packages/cli/lib/boxes.js');
const { levelLine, makeFolder, parseLines, run } = require('../../support/cli.js');

const folder = makeFolder(after);
const inFolder = (name) => path.join(folder, name);
const idealise = (...args) => run(folder, ['idealise', ...args]);

const turned = (angle, points) =>
  points.map(([x, y]) => [
    300 + x * Math.cos(angle) - y * Math.sin(angle),
    300 + x * Math.sin(angle) + y * Math.cos(angle),
  ]);
const outline = (...corners) =>
  corners.flatMap(([x, y], i) => {
    const [nx, ny] = corners[(i + 1) % corners.length];
    return Array.from({ length: 20 }, (_, k) => [x + ((nx - x) * k) / 20, y + ((ny - y) * k) / 20]);
  });
const box = [...outline([-80, -40], [80, -40], [80, 40], [-80, 40]), [-80, -40]];
const rhombus = [...outline([-80, 0], [0, -50], [80, 0], [0, 50]), [-80, 0]];
const corner = [
  ...outline([0, 0], [100, 0]).slice(0, 20),
  ...outline([100, 0], [100, 90]).slice(0, 20),
];
const arc = (radii) =>
  Array.from({ length: 73 }, (_, i) => {
    const angle = (i * Math.PI) / 36;
    return [radii[0] * Math.cos(angle), radii[1] * Math.sin(angle)];
  });
const wave = Array.from({ length: 80 }, (_, i) => [3 * i, 40 * Math.sin(i / 5)]);

/** Strokes, and the shapes that they are: type, width, height, angle. */
const SHAPES = [
  [turned(0, arc([60, 60])), 'ellipse', 120, 120, 0],
  [turned(0.5, arc([90, 40])), 'ellipse', 180, 80, 0.5],
  [turned(0.5, box), 'rectangle', 160, 80, 0.5],
  [turned(0.5, rhombus), 'diamond', 160, 100, 0.5],
  [levelLine(0, 50), 'line', 200, 0, 0],
  [corner, 'line', 100, 85.5, 0],
  [wave, 'freedraw'],
];

/** How strokes stand in documents, and what has to stay. */
const DOCUMENTS = {
  'note.xopp': {
    make: (strokes) =>
      '<xournal><title>T</title><page width="600" height="800"><background type="solid"/><layer>' +
      '<text x="1">a &amp; b</text><stroke tool="eraser" width="8">1 2 3 4</stroke>' +
      `${strokes.map((points) => `<stroke tool="pen" color="#ff000080" width="2 1 3">${points.join(' ').replaceAll(',', ' ')}</stroke>`).join('\n')}` +
      '</layer></page><page width="600" height="800"/></xournal>',
    stays: /<text x="1">a &amp; b<\/text><stroke tool="eraser" width="8">1 2 3 4<\/stroke>/,
    fields: { page: 1, stroke: '#ff0000', 'stroke-width': 2, 'stroke-opacity': 0.502 },
  },
  'note.rnote': {
    make: (strokes) =>
      JSON.stringify({
        version: '0.9.0',
        data: {
          engine_snapshot: {
            document: { format: { dpi: 96 }, layout: 'infinite' },
            stroke_components: [
              ...strokes.map((points) => ({
                value: {
                  brushstroke: {
                    path: {
                      start: { pos: points[0], pressure: 0.25 },
                      segments: points.slice(1).map((pos) => ({ lineto: { end: { pos } } })),
                    },
                    style: {
                      smooth: { stroke_width: 2, stroke_color: { r: 1, g: 0, b: 0, a: 1 } },
                    },
                  },
                },
              })),
              { value: { textstroke: { text: 'hi' } } },
              { value: null },
            ],
          },
        },
      }),
    stays: /"layout":"infinite".*"textstroke":\{"text":"hi"\}/,
    fields: { stroke: '#ff0000', 'stroke-width': 2 },
  },
  'note.svg': {
    make: (strokes) =>
      '<svg><style>/* .ink{} */ path, .no { fill: none } .ink{stroke:red}</style><rect width="9"/>' +
      '<text>hi</text><g transform="translate(20 30) scale(0.5)">' +
      `${strokes.map((points) => `<path class="ink" d='M${points.map(([x, y]) => [2 * x - 40, 2 * y - 60]).join('L')}'><title>t</title></path>`).join('')}` +
      '</g><path class="no" style="fill:red" d="M0 0h9v9z"/></svg>',
    stays: /<rect width="9"\/><text>hi<\/text>.*<path class="no" style="fill:red" d="M0 0h9v9z"\/>/,
    fields: { stroke: 'red' },
  },
};

for (const [name, { make, stays, fields }] of Object.entries(DOCUMENTS)) {
  test(`figures replace the strokes of ${name}, the rest of it stays`, async () => {
    const strokes = SHAPES.map(([points]) => points);
    const text = make(strokes);
    fs.writeFileSync(inFolder(name), name.endsWith('.svg') ? text : zlib.gzipSync(text));
    const figuresIn = async (file) => {
      const answers = parseLines((await idealise(file)).stdout);
      for (const answer of answers) {
        const kept = Object.keys(fields).map((field) => [field, answer[field]]);
        assert.deepEqual(Object.fromEntries(kept), fields);
      }
      return answers.map(({ figure, points }) => ({ figure, points }));
    };
    const read = await figuresIn(name);
    const families = ['ellipse', 'ellipse', 'quadrangle', 'quadrangle', 'line', 'angle', 'none'];
    assert.deepEqual(
      read.map(({ figure }) => figure),
      families,
    );
    const { code, stderr } = await idealise(name, '-o', `new-${name}`);
    assert.deepEqual([code, stderr], [0, '']);
    const bytes = fs.readFileSync(inFolder(`new-${name}`));
    assert.match(bytes[0] === 0x1f ? zlib.gunzipSync(bytes).toString() : bytes.toString(), stays);
    const written = await figuresIn(`new-${name}`);
    written.forEach(({ figure, points }, i) => {
      assert.equal(figure, families[i]);
      // A figure that is recognised again may begin elsewhere.
      const edges = [edgesOf(points), edgesOf(read[i].points)];
      edges[0].forEach((edge, k) => assert.ok(Math.abs(edge - edges[1][k]) < 1, families[i]));
    });
  });
}

test('figures are shapes in Excalidraw', async () => {
  const common = { strokeColor: '#1e1e1e', strokeWidth: 2, seed: 7, isDeleted: false, version: 3 };
  const elements = SHAPES.map(([points], i) => ({
    ...{ id: `e${i}`, type: 'freedraw', x: 10, y: 20, ...common, pressures: [] },
    points: points.map(([x, y]) => [x - 10, y - 20]),
  }));
  const others = [
    { id: 't', type: 'text', text: 'hi' },
    { type: 'freedraw', isDeleted: true },
  ];
  const scene = { type: 'excalidraw', elements: [...others, ...elements], files: {} };
  fs.writeFileSync(inFolder('a.excalidraw'), JSON.stringify(scene, null, 2));
  assert.equal((await idealise('a.excalidraw', '-o', 'b.excalidraw')).code, 0);
  const written = JSON.parse(fs.readFileSync(inFolder('b.excalidraw'), 'utf8'));
  assert.deepEqual(written.elements.splice(0, 2), others);
  written.elements.forEach(({ id, type, width, height, angle, points, seed, ...element }, i) => {
    const [drawn, ...shape] = SHAPES[i];
    assert.deepEqual([id, type, seed], [`e${i}`, shape[0], 7]);
    if (type === 'freedraw') return;
    const near = (a, b, tolerance) => assert.ok(Math.abs(a - b) < tolerance, `${id}: ${a}, ${b}`);
    const sides = [width, height];
    // A rhombus may be turned by a right angle, with its diagonals exchanged.
    const isTurned = Math.abs(angle - shape[3]) > 1;
    near(angle, shape[3] + (isTurned ? Math.PI / 2 : 0), 0.1);
    near(sides[isTurned ? 1 : 0], shape[1], 2);
    near(sides[isTurned ? 0 : 1], shape[2], 2);
    assert.equal(points?.length, { 4: 2, 5: 3 }[i]);
    const centre = points ? drawn[0] : [element.x + width / 2, element.y + height / 2];
    const expected = points ? [element.x, element.y] : [300, 300];
    near(Math.hypot(centre[0] - expected[0], centre[1] - expected[1]), 0, 2);
  });
  const other = await idealise('a.excalidraw', '-o', 'b.xopp');
  assert.equal(other.code, 2);
  assert.match(other.stderr, /xopp is written from one document of this format only/);
});
