'use strict';

const assert = require('node:assert/strict');
const { spawnSync } = require('node:child_process');
const fs = require('node:fs');
const path = require('node:path');
const { PassThrough } = require('node:stream');
const { after, describe, it } = require('node:test');
const fc = require('fast-check');
const { createProgress } = require('../../packages/cli/lib/progress.js');
const { formatTable } = require('../../packages/cli/lib/report.js');
const { strokeSheet } = require('../../packages/cli/lib/sheet.js');
const { pathData } = require('../../packages/cli/lib/svg.js');
const { resolveTemplates } = require('../../packages/cli/lib/template-files.js');
const { makeFolder } = require('../support/cli.js');

const folder = makeFolder(after);

/** Absolute points of path data as pathData writes it. */
function parsePath(data) {
  const [start, ...steps] = data.replace('h0', '').split(/(?=l)/);
  const numbers = (text) => (text.match(/-?(\d+\.?\d*|\.\d+)/g) ?? []).map(Number);
  let [x, y] = numbers(start);
  const points = [[x, y]];
  const deltas = steps.flatMap(numbers);
  for (let i = 0; i < deltas.length; i += 2) {
    x += deltas[i];
    y += deltas[i + 1];
    points.push([x, y]);
  }
  return points;
}

function distanceToPolyline({ x, y }, points) {
  const toSegment = ([ax, ay], [bx, by]) => {
    const [dx, dy] = [bx - ax, by - ay];
    const along = ((x - ax) * dx + (y - ay) * dy) / (dx * dx + dy * dy || 1);
    const share = Math.min(1, Math.max(0, along));
    return Math.hypot(x - ax - share * dx, y - ay - share * dy);
  };
  return Math.min(...points.map((point, i) => toSegment(points[Math.max(0, i - 1)], point)));
}

describe('SVG path data', () => {
  const coordinate = fc.double({ min: -500, max: 500, noNaN: true });
  const stroke = fc.array(fc.record({ x: coordinate, y: coordinate }), {
    minLength: 1,
    maxLength: 60,
  });

  it('stays within rounding of every point and keeps both ends', () => {
    fc.assert(
      fc.property(stroke, (points) => {
        const parsed = parsePath(pathData(points));
        for (const point of points) assert.ok(distanceToPolyline(point, parsed) < 0.2);
        for (const [point, [x, y]] of [
          [points[0], parsed[0]],
          [points.at(-1), parsed.at(-1)],
        ]) {
          assert.ok(Math.abs(point.x - x) < 0.051 && Math.abs(point.y - y) < 0.051);
        }
      }),
      { numRuns: 300 },
    );
  });

  it('is short: straight runs lose their inner points, but never a turning back', () => {
    const corners = { a: [0, 0], b: [100, 0], c: [50, 80] };
    const way = (names) =>
      [...names].slice(1).flatMap((to, i) => {
        const [[x0, y0], [x1, y1]] = [corners[names[i]], corners[to]];
        const at = (share) => ({ x: x0 + (x1 - x0) * share, y: y0 + (y1 - y0) * share });
        return Array.from({ length: 21 }, (_, k) => at(k / 20));
      });
    assert.equal(pathData(way('abca')), 'M0 0l100 0-50 80-50-80');
    assert.equal(pathData(way('aba')), 'M0 0l100 0-100 0');
  });

  it('draws a dot where all points are one, and nothing without a finite one', () => {
    assert.equal(pathData([{ x: 3, y: 4 }]), 'M3 4h0');
    assert.equal(pathData(new Array(5).fill({ x: 0.52, y: -0.5 })), 'M.5 -.5h0');
    assert.equal(pathData([{ x: NaN, y: 1 }]), '');
    assert.equal(pathData([]), '');
  });
});

describe('sheet of strokes', () => {
  it('gives every stroke a cell of its own, whatever its size or name', () => {
    const drawn = (size) => [
      { x: 0.5, y: 0.5 },
      { x: 0.5 + size, y: 0.5 + size / 2 },
    ];
    const cells = [1e-9, 0, 0.3, 5, 0.1, 0.2, 0.2, 0.2, 0.7].map((size, i) => ({
      label: `<${i}">`,
      answer: 'as drawn',
      source: 'a & b:1',
      drawn: drawn(size),
      redrawn: i === 2 ? drawn(0.31) : undefined,
    }));
    const sheet = strokeSheet(cells);
    const places = [...sheet.matchAll(/<g transform="translate\((\d+) (\d+)\)"/g)];
    assert.equal(new Set(places.map(([, x, y]) => `${x} ${y}`)).size, cells.length);
    const [, width, height] = sheet.match(/viewBox="0 0 (\d+) (\d+)"/).map(Number);
    assert.ok(places.every(([, x, y]) => Number(x) + 120 <= width && Number(y) + 120 <= height));
    assert.equal(sheet.match(/class="a"/g).length, 1);
    assert.ok(!/NaN|Infinity|undefined/.test(sheet));
    assert.match(sheet, /<title>a &amp; b:1<\/title>/);
    assert.match(sheet, />&lt;8&quot;&gt;</);
  });
});

describe('progress', () => {
  function collect(isTTY) {
    const stream = new PassThrough();
    stream.isTTY = isTTY;
    let text = '';
    stream.on('data', (chunk) => {
      text += chunk;
    });
    return { stream, text: () => text };
  }

  /** Starts a bar on standard error as if it were a terminal, and does something. */
  function runBar(then) {
    const file = JSON.stringify(require.resolve('../../packages/cli/lib/progress.js'));
    const source = `process.stderr.isTTY = true;
      require(${file}).createProgress({ totalBytes: 9 }); ${then}; setTimeout(() => {}, 5000)`;
    return spawnSync(process.execPath, ['-e', source], { encoding: 'utf8' });
  }

  function run(stream, totalBytes) {
    const progress = createProgress({ totalBytes, stream });
    progress.advance(50);
    progress.count(3);
    progress.stop();
  }

  it('is nothing but messages where there is no terminal', () => {
    const { stream, text } = collect(false);
    run(stream, 100);
    assert.equal(text(), '');
    createProgress({ stream }).log('a line');
    assert.equal(text(), 'a line\n');
  });

  it('is a bar on a terminal, a count where the end is unknown', () => {
    const terminal = collect(true);
    run(terminal.stream, 100);
    assert.match(terminal.text(), /\d+ %/);
    const pipe = collect(true);
    run(pipe.stream, undefined);
    assert.match(pipe.text(), /3 strokes/);
    assert.doesNotMatch(pipe.text(), /%/);
  });

  it('leaves the terminal as it was when the run is interrupted', () => {
    const { status, signal, stderr } = runBar(`process.kill(process.pid, 'SIGINT')`);
    assert.deepEqual([status, signal], [null, 'SIGINT']);
    const [off, on] = ['\u001b[?7l', '\u001b[?7h'].map((code) => stderr.lastIndexOf(code));
    assert.ok(off >= 0 && on > off, JSON.stringify(stderr));
  });
});

describe('tables', () => {
  it('align names left and figures right', () => {
    assert.equal(
      formatTable([
        ['', 'all', 'right'],
        ['dot', 7, '100.0 %'],
        ['quadrangle', 1234, '.'],
      ]),
      ['             all    right', 'dot            7  100.0 %', 'quadrangle  1234        .'].join(
        '\n',
      ),
    );
  });
});

describe('template arguments', () => {
  it('are files, or a folder of which the four names are taken', () => {
    const templates = path.join(folder, 'templates');
    fs.mkdirSync(templates);
    assert.throws(() => resolveTemplates([templates]), /holds none of rectangle\.template/);
    for (const name of ['ellipse.template', 'notes.txt', 'isosceles_triangle.template']) {
      fs.writeFileSync(path.join(templates, name), '0,0,1,1\n');
    }
    assert.deepEqual(
      resolveTemplates([templates]).map((file) => path.basename(file)),
      ['isosceles_triangle.template', 'ellipse.template'],
    );
    const own = path.join(folder, 'my.ellipse.template.txt');
    fs.writeFileSync(own, '0,0,1,1\n');
    assert.deepEqual(resolveTemplates([own]), [own]);
    assert.throws(() => resolveTemplates([templates, own]), /are both ellipse\.template: name one/);
    assert.deepEqual(resolveTemplates([]), []);
  });
});
