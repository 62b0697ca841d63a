'use strict';

const assert = require('node:assert/strict');
const fs = require('node:fs');
const os = require('node:os');
const path = require('node:path');
const { after, describe, test } = require('node:test');

const { createWarnings } = require('../../lib/warnings.js');
const { FigureType, initScrivo, optimizeAStroke, templates } = require('scrivo');

// Letters within the code page of some Windows systems and of none.
const folder = fs.mkdtempSync(path.join(os.tmpdir(), 'scrivo Jörg 図-'));
after(() => fs.rmSync(folder, { recursive: true }));

/** What `body` returns, and the warnings meanwhile. */
function warningsOf(body) {
  const { emitWarning } = process;
  const warnings = [];
  process.emitWarning = (message, { code }) => warnings.push({ code, message });
  try {
    return { result: body(), warnings };
  } finally {
    process.emitWarning = emitWarning;
  }
}

const circle = Array.from({ length: 65 }, (_, i) => ({
  x: 0.5 + 0.4 * Math.cos((i * Math.PI) / 32),
  y: 0.5 + 0.4 * Math.sin((i * Math.PI) / 32),
}));
const line = (length) => Array.from({ length: 40 }, (_, i) => ({ x: (length * i) / 39, y: 0.5 }));

describe('the process is warned', () => {
  const inFolder = (name) => path.join(folder, name);

  test('of template files from which nothing was loaded, once a call', () => {
    fs.writeFileSync(inFolder('rectangle.template'), 'no,numbers 1 ,2\n');
    fs.mkdirSync(inFolder('ellipse.template'));
    const [rectangle, triangle, isosceles] = templates;
    const { result, warnings } = warningsOf(() =>
      initScrivo([
        ...[rectangle, inFolder('rectangle.template')], // the later one counts
        ...[inFolder('triangle.template'), triangle, isosceles],
        ...[inFolder('ellipse.template'), inFolder('other.txt')],
      ]),
    );
    assert.equal(result, true);
    assert.equal(warnings.length, 1);
    const [{ code, message }] = warnings;
    assert.equal(code, 'SCRIVO_NO_TEMPLATES');
    assert.ok(message.includes(`${inFolder('rectangle.template')} (no outlines)`), message);
    assert.ok(message.includes(`${inFolder('ellipse.template')} (`), message);
    assert.ok(!message.includes(`triangle.template`), message);
    fs.rmdirSync(inFolder('ellipse.template'));
  });

  test('of no files that are loaded, whatever letters their path has', () => {
    const typeOfCircle = () => optimizeAStroke(circle, 400, 400, []).type;
    assert.notEqual(typeOfCircle(), FigureType.ELLIPSE);
    const copies = templates.map((file) => inFolder(path.basename(file)));
    templates.forEach((file, i) => fs.copyFileSync(file, copies[i]));
    assert.deepEqual(warningsOf(() => initScrivo(copies)).warnings, []);
    assert.equal(typeOfCircle(), FigureType.ELLIPSE);
  });

  test('of points in pixels, once', () => {
    const { warnings } = warningsOf(() => {
      for (const length of [1, 49, 60, 400]) optimizeAStroke(line(length), 400, 400, []);
    });
    assert.deepEqual(
      warnings.map(({ code }) => code),
      ['SCRIVO_PIXELS'],
    );
  });

  test('of a figure without a size', () => {
    const codes = [];
    const { checkProportion } = createWarnings((message, code) => codes.push(code));
    checkProportion({ type: FigureType.NONE, path: [{ x: NaN, y: 0 }] });
    assert.deepEqual(codes, []);
    const { path, type } = optimizeAStroke(line(1), 5e-324, 400, []);
    checkProportion({ path, type });
    assert.deepEqual([type === FigureType.NONE, codes], [false, ['SCRIVO_PIXELS']]);
  });
});
