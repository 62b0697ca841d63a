'use strict';

const assert = require('node:assert/strict');
const { describe, it } = require('node:test');
const { boundingBox } = require('../../packages/cli/lib/boxes.js');
const { placeStroke } = require('../../packages/cli/lib/placement.js');
const { Score } = require('../../packages/cli/lib/score.js');
const { strokeSheet } = require('../../packages/cli/lib/sheet.js');

describe('placement of a stroke', () => {
  const boxOf = (stroke, unit) => {
    const { points, width, height } = placeStroke(stroke, unit);
    return boundingBox(points.map(({ x, y }) => [x * width, y * height]));
  };

  it('scales the longer side, dots excepted, and stays inside the area', () => {
    const points = JSON.parse('[[-50,4000],[-30,4000],[-30,4010]]');
    const triangle = { family: 'triangle', points };
    const box = boxOf(triangle, 200);
    assert.ok(Math.abs(box.width - 200) < 1e-9 && Math.abs(box.height - 100) < 1e-9);
    assert.ok(Math.abs(boxOf({ ...triangle, family: 'dot' }, 200).width - 20) < 1e-9);
    assert.ok(Math.abs(boxOf(triangle, 'natural').width - 20) < 1e-9);
    for (const unit of [200, 5000]) {
      const placed = placeStroke(triangle, unit);
      const values = placed.points.flatMap(({ x, y }) => [x, y]);
      assert.ok(Math.min(...values) > 0 && Math.max(...values) < 1, `unit ${unit}`);
    }
  });

  it('hands force and time on only where they were recorded', () => {
    const drawn = JSON.parse('[[0,0,0,null],[1,1,0.5,7]]');
    const { points } = placeStroke({ family: 'line', points: drawn }, 200);
    assert.deepEqual(Object.keys(points[0]), ['x', 'y']);
    assert.equal(points[1].force, 0.5);
    assert.equal(points[1].time, 7);
  });
});

describe('score', () => {
  it('counts a polygon as a change, but not as a figure; has no recall without figures', () => {
    const score = new Score();
    score.add({ family: 'none', label: 'wave' }, { family: 'none', type: 0 }, 1n);
    assert.equal(score.summary().recall, null);
    const polygon = { family: 'polygon', type: 6 };
    assert.equal(score.add({ family: 'none', label: 'star' }, polygon, 1000n), false);
    assert.equal(score.add({ family: 'quadrangle', label: 'square' }, polygon, 3000n), false);
    const { families, recall, negatives } = score.summary();
    assert.deepEqual(families.quadrangle, { n: 1, right: 0 });
    assert.equal(recall, 0);
    const by_label = { star: { n: 1, changed: 1 }, wave: { n: 1, changed: 0 } };
    assert.deepEqual(negatives, { n: 2, changed: 1, by_label });
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
