'use strict';

const assert = require('node:assert/strict');
const { describe, test } = require('node:test');
const { assertPoints, read } = require('../../support/read-ink.js');

describe('SVG', () => {
  const svg = (content, attributes = '') => `<svg ${attributes}>${content}</svg>`;

  test('polylines, polygons and every part of a path, transformed', async () => {
    const { strokes, problems } = await read(
      svg(
        '<g transform="translate(10 20)" style="stroke: red; fill:none">' +
          '<path id="p" transform="scale(2)" stroke-width="3" d="M0 0h5v5zm10 10l1-1"/></g>' +
          '<polyline points="0,0 1,2 3,4"/><polygon points="0 0 4 0 4 4"/>' +
          '<path d="M1 1h2zzl3 3M9 9"/><polyline points=" "/><line x1="1in" y2="-3px"/>',
      ),
    );
    assert.deepEqual(problems, []);
    assertPoints(
      { strokes },
      `[[[10,20],[20,20],[20,30],[10,20]],[[30,40],[32,38]],
        [[0,0],[1,2],[3,4]],[[0,0],[4,0],[4,4],[0,0]],
        [[1,1],[3,1],[1,1],[1,1]],[[1,1],[4,4]],[[96,0],[0,-3]]]`,
    );
    // The pen is scaled with the shape.
    assert.deepEqual(strokes[1].fields, { id: 'p', stroke: 'red', 'stroke-width': '6' });
  });

  test('inner drawing areas, transforms of styles, lines', async () => {
    const inner = (attributes) =>
      `<svg x="10" y="20" width="40" height="20" ${attributes}><line x2="100" y2="100"/></svg>`;
    const cases = [
      ['', 10, 20, 110, 120],
      ['viewBox="0 0 100 100"', 20, 20, 40, 40],
      ['viewBox="-100 0 200 200" preserveAspectRatio="xMaxYMin"', 40, 20, 50, 30],
      ['viewBox="0 0 100 100" preserveAspectRatio="none"', 10, 20, 50, 40],
      ['viewBox="0 0 100 100" preserveAspectRatio="xMinYMin slice"', 10, 20, 50, 60],
    ];
    for (const [attributes, ...expected] of cases) {
      const { strokes } = await read(svg(inner(attributes)));
      assert.deepEqual(strokes[0].points.flat(), expected, attributes);
    }
    const turned = '<path style="transform: translate(3px,4px) scale(2)" d="M0 0L1 1"/>';
    assertPoints(await read(svg(turned)), '[[[3,4],[5,6]]]');
  });

  test('curves and arcs are sampled at the step, in drawing units', async () => {
    const circle = '<path d="M200 100A100 100 0 0 1 0 100A100 100 0 0 1 200 100"/>';
    for (const [attributes, scale] of [
      ['', undefined],
      ['width="600" viewBox="0 0 200 200"', 3],
    ]) {
      const { strokes } = await read(svg(circle, attributes), { step: 6 });
      assert.equal(strokes.length, 1);
      const [{ points }] = strokes;
      for (const [x, y] of points) {
        assert.ok(Math.abs(Math.hypot(x - 100, y - 100) - 100) < 0.1, `${x}, ${y}`);
      }
      const gaps = points.slice(1).map(([x, y], i) => {
        const gap = Math.hypot(x - points[i][0], y - points[i][1]);
        return gap * (scale ?? 1);
      });
      assert.ok(Math.max(...gaps) <= 6 && Math.min(...gaps) > 4, `gaps ${gaps}`);
      assert.equal(strokes[0].scale, scale);
    }
  });

  test('shapes that are not ink are skipped', async () => {
    const shape = (attributes) => `<path ${attributes} d="M0 0L9 9"/>`;
    const { strokes, passedOver } = await read(
      svg(
        [
          `<defs>${shape('')}</defs><g display="none">${shape('')}</g><text>a</text>`,
          '<g visibility="hidden"><rect width="9" height="9"/></g><rect width="9" height="9"/>',
          shape('fill="black"'),
          shape('stroke="none"'),
          shape('fill="#fff" stroke="#000"'),
        ].join(''),
      ),
    );
    assert.equal(strokes.length, 1);
    assert.equal(passedOver.length, 3);
  });

  test('drawing areas and lengths', async () => {
    const areaOf = async (attributes) => {
      const { strokes } = await read(svg('<path d="M0 0L1 1"/>', attributes));
      return [strokes[0].area, strokes[0].scale && Number(strokes[0].scale.toFixed(4))];
    };
    const box = { x: -5, y: 5, width: 210, height: 297 };
    assert.deepEqual(await areaOf('viewBox="-5,5 210 297" width="210mm"'), [box, 3.7795]);
    assert.deepEqual(await areaOf('viewBox="-5 5 210 297" width="100%"'), [box, undefined]);
    const sheet = { x: 0, y: 0, width: 96, height: 48 };
    assert.deepEqual(await areaOf('width="1in" height="48px"'), [sheet, 1]);
    for (const unknown of ['width="1em"', 'viewBox="a 0 9 9"']) {
      assert.deepEqual(await areaOf(unknown), [undefined, undefined]);
    }
  });

  test('huge coordinates are reported, and take no memory', async () => {
    const { strokes, problems } = await read(
      svg(
        '<path d="M1e999 0L1 1"/>\n<path transform="scale(1e300)" d="M1e100 0L1 1"/>\n' +
          '<path transform="turn(1)" d="M0 0L1 1"/><path d="M0 0C1e6 0 2e9 3e9 1 1"/>',
      ),
    );
    assert.deepEqual(problems, [
      '1: coordinates that are not finite in "M1e999 0L1 1"',
      '2: coordinates that are not finite in "M1e100 0L1 1"',
      '3: the transform "turn(1)" cannot be read',
    ]);
    assert.equal(strokes.length, 1);
    assert.ok(strokes[0].points.length <= 10001);
  });

  test('wrong path data is reported with its line; entities are expanded', async () => {
    const { strokes, problems, damage } = await read(
      [
        '<!DOCTYPE svg [<!ENTITY ns "http://www.w3.org/2000/svg">]>',
        '<svg xmlns="&ns;">',
        '<path d="M0 0 X"/>',
        '<polyline points="1 2 3"/>',
        '<path d="M0 0L1 1"/></svg>',
      ].join('\n'),
    );
    assert.equal(damage, undefined);
    assert.equal(strokes.length, 1);
    assert.deepEqual(problems, [
      '3: bad command X (at pos 5) in "M0 0 X"',
      '4: missed param (at pos 6) in "M1 2 3"',
    ]);
  });
});
