'use strict';

const assert = require('node:assert/strict');
const { describe, test } = require('node:test');
const { parseBlock, readBlocks } = require('../../../packages/cli/lib/read/ndjson.js');
const { assertJson, assertMessages, assertPoints, read } = require('../../support/read-ink.js');

describe('NDJSON', () => {
  test('points in both forms, forces and times, fields and area', async () => {
    const lines = [
      '\uFEFF{"points":[[1,2,0.5,10],[3,4]],"id":7}\r',
      '{"points":[{"x":1,"y":2,"time":5},{"x":3,"y":4,"force":1}],"width":800,"height":600}',
      '',
      '{"points":[[1e3,-2]],"others":[[[1,2],[3,4]],[{"x":5,"y":6}]]}',
    ];
    const found = await read(lines.join('\n'));
    const { strokes, problems } = found;
    assert.deepEqual(problems, []);
    assertPoints(found, '[[[1,2,0.5,10],[3,4]],[[1,2,null,5],[3,4,1]],[[1000,-2]]]');
    assert.deepEqual(
      strokes.map(({ asObjects }) => asObjects),
      [false, true, false],
    );
    assert.equal(strokes[0].fields.id, 7);
    assert.deepEqual(strokes[1].area, { x: 0, y: 0, width: 800, height: 600 });
    assertJson(strokes[2].others, '[[[1,2],[3,4]],[[5,6]]]');
  });

  test('each wrong line is reported with its number and what is wrong', async () => {
    const cases = [
      ['{"points":[[1,2]', /not JSON/],
      ['{"a":"\xe9","points":[[1,2]]}', /not UTF-8: convert/],
      ['[[1,2]]', /expected an object, found an array .jq/],
      ['{"stroke":[]}', /"points" is missing/],
      ['{"points":[]}', /"points" is empty/],
      ['{"points":[[1,2],[1]]}', /points\[1\] y must be a finite number, found nothing/],
      ['{"points":[[1,1e999]]}', /points\[0\] y must be a finite number, found Infinity/],
      ['{"points":[[1,2,"hard"]]}', /points\[0\] force must be a finite number, found "hard"/],
      ['{"points":[{"x":1}]}', /points\[0\] y must be/],
      ['{"points":[null]}', /points\[0\] must be \[x, y, force, time\]/],
      ['{"points":[[1,2]],"width":10}', /"height" must be a positive number, found nothing/],
      ['{"points":[[1,2]],"width":0,"height":1}', /"width" must be a positive number, found 0/],
      ['{"points":[[1,2]],"others":[[]]}', /"others\[0\]" is empty/],
    ];
    const text = cases.map(([line]) => `${line}\n{"points":[[1,2]]}\n`).join('');
    const { strokes, problems } = await read(Buffer.from(text, 'latin1'));
    assert.equal(strokes.length, cases.length);
    assertMessages(
      problems,
      cases.map(([, { source }], i) => new RegExp(`^${2 * i + 1}: .*${source}`)),
    );
  });

  test('lines are whole wherever the chunks are cut, also inside a character', async () => {
    const text = '{"a":"ä\u2028"}\n\n{"b":1}\n{"c":"𝄞"}';
    const bytes = Buffer.from(text);
    for (let size = 1; size <= bytes.length; size += 1) {
      const chunks = [];
      for (let i = 0; i < bytes.length; i += size) chunks.push(bytes.subarray(i, i + size));
      let joined = '';
      for await (const block of readBlocks(chunks)) {
        const part = Buffer.from(block.bytes).toString();
        assert.ok(part.endsWith('\n') || joined.length + part.length === text.length);
        joined += part;
      }
      assert.equal(joined, text, `chunks of ${size} bytes`);
    }
  });

  test('a long chunk is cut into blocks of whole lines', async () => {
    const lines = [10, 900000, 10, 1000000, 400000, 20].map((n) => `${'x'.repeat(n)}\n`);
    const blocks = [];
    for await (const { bytes } of readBlocks([Buffer.from(lines.join(''))])) {
      blocks.push(Buffer.from(bytes).toString());
    }
    assert.equal(blocks.join(''), lines.join(''));
    assert.ok(blocks.length > 2);
    for (const block of blocks) assert.ok(block.endsWith('\n') && block.length < 1.1e6);
  });

  test('a line that is too long costs only itself', async () => {
    const MB = 1 << 20;
    const long = '{"points":[[1,2]]}'.padStart(MB);
    const chunks = [`{"points":[[0,0]]}\n${' '.repeat(MB + 1)}\n${long}\n`];
    for (let i = 0; i < 70; i += 1) chunks.push('x'.repeat(MB));
    chunks.push('\n{"points":[[3,4]]}\n');
    const records = [];
    let lines = 0;
    for await (const block of readBlocks(chunks.map((text) => Buffer.from(text)))) {
      const parsed = parseBlock(block);
      records.push(...parsed.records.map((record) => ({ ...record, line: lines + record.line })));
      lines += parsed.lines;
    }
    assertJson(
      records.map(({ line, stroke, problem }) => [line, stroke?.points ?? problem.slice(0, 11)]),
      '[[1,[[0,0]]],[2,"longer than"],[3,[[1,2]]],[4,"longer than"],[5,[[3,4]]]]',
    );
  });

  test('drawings by coordinate, arrays and pretty-printed values', async () => {
    const drawing = '[[[1,3],[2,4]],[[5,6],[7,8],[0,9]],[[1],[]]]';
    const quick = await read(`{"word":"cat","drawing":${drawing}}\n`);
    assertPoints(quick, '[[[1,2],[3,4]],[[5,7,null,0],[6,8,null,9]]]');
    assert.deepEqual(quick.strokes[1].fields, { word: 'cat', stroke_index: 1 });
    assert.deepEqual(quick.problems, ['1: drawing[2] must be [[x, ...], [y, ...]]']);
    const values = [{ points: [[1, 2]] }, { points: [{ x: 3, y: 4 }] }];
    for (const text of [values, values[0]].map((value) => JSON.stringify(value, null, 2))) {
      assertPoints(await read(text), text.startsWith('[') ? '[[[1,2]],[[3,4]]]' : '[[[1,2]]]');
    }
    assertPoints(await read('[1]\n{"points":[[1,2]]}\n'), '[[[1,2]]]');
    assert.match((await read('{\n"points": 1\n}\n{\n}')).damage, /jq -c \. writes each on a line/);
  });
});
