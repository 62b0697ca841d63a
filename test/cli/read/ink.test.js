'use strict';

const assert = require('node:assert/strict');
const { test } = require('node:test');
const zlib = require('node:zlib');
const { read } = require('../../support/read-ink.js');

test('other kinds of input and damaged gzip data are reported', async () => {
  const line = '{"points":[[1,2]]}\n';
  const packed = zlib.gzipSync(line.repeat(20000));
  const cases = [
    [Buffer.from([0x89, 0x50, 0x4e, 0x47, 13, 10, 0, 1]), 0, /of no known format/],
    ['PK\u0003\u0004\n\u0000', 0, /of compressed files only gzip is read/],
    [
      '<html><body/></html>',
      0,
      /XML, but neither InkML, SVG nor Xournal\+\+: its root element is <html>/,
    ],
    [packed.subarray(0, packed.length / 2), 1, /ink\.dat: reading failed: unexpected end of file/],
    ['', 0, undefined],
    [' \n'.repeat(2e6), 0, undefined],
  ];
  for (const [content, least, message] of cases) {
    const { strokes, problems, damage } = await read(content);
    assert.ok(strokes.length >= least);
    assert.deepEqual(problems, []);
    if (message) assert.match(damage, message);
    else assert.equal(damage, undefined);
  }
});
