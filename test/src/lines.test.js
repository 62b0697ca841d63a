'use strict';

const assert = require('node:assert/strict');
const { test } = require('node:test');

const { loadNative } = require('../../lib/native.js');

const { LineIdealiser, loadTemplates } = loadNative('beautifier');

const OPTIONS = [[1], 0, 4, 0.5, true, true, true, true, []];
const SETTINGS = Float64Array.of(1, 3);
const LINE = '{"points":[[0,0],[50,1],[100.5,0]]}\n';

const native = new LineIdealiser(SETTINGS, ...OPTIONS);

/** Bytes in memory of their own, so that a read beyond the end is noticed by a sanitizer. */
const bytesOf = (text) => Uint8Array.from(Buffer.from(text, 'latin1'));

test('wrong arguments throw', () => {
  const lines = bytesOf(LINE);
  const shared = new Uint8Array(new SharedArrayBuffer(lines.length));
  const detached = new Uint8Array(8);
  structuredClone(detached, { transfer: [detached.buffer] });
  const wrong = [
    detached,
    undefined,
    null,
    {},
    'a',
    1,
    [10],
    new Uint16Array(4),
    new Float64Array(4),
    shared,
  ];
  for (const value of wrong) assert.throws(() => native.idealise(value, ''), Error);
  for (const value of [undefined, null, 1, {}, lines]) {
    assert.throws(() => native.idealise(lines, value), Error);
    assert.throws(() => loadTemplates(value), Error);
    assert.throws(() => loadTemplates([value]), Error);
    assert.throws(() => new LineIdealiser(value), Error);
  }
  for (const settings of [[], [1], [1, -1], [1, 16], [1, NaN], [1, 3, 0, 0, 1]]) {
    assert.throws(() => new LineIdealiser(Float64Array.from(settings)), Error);
  }
  const [size] = native.idealise(lines, '');
  for (const target of [...wrong, bytesOf(' '.repeat(size - 1))]) {
    assert.throws(() => native.copy(target), Error);
  }
  for (const i of OPTIONS.keys()) {
    const changed = Object.assign([...OPTIONS], { [i]: {} });
    assert.throws(() => new LineIdealiser(SETTINGS, ...changed), Error);
  }
  assert.throws(() => LineIdealiser(SETTINGS), /needs new/);
  for (const self of [undefined, {}, Object.create(native)]) {
    assert.throws(() => native.idealise.call(self, lines, ''), Error);
  }
});

test('a line cut off at any byte, or with any byte changed, is read no further than its end', () => {
  const line =
    '{"id":"a\\u00e9\\n","t":[1.25,{"b":null}],"points":[[0,-0.5,0.25],[1e2,1,null]],"z":true}\n';
  const whole = native.idealise(bytesOf(line), '');
  assert.deepEqual(whole.slice(1), [[], { line: 1 }, 1]);
  for (let length = 0; length < line.length; length += 1) {
    const [size, others] = native.idealise(bytesOf(line.slice(0, length)), '');
    assert.equal(size, 0);
    assert.equal(others.length, Math.min(length, 1));
    const ended = native.idealise(bytesOf(`${line.slice(0, length)}\n`), '');
    // Without its line feed the line is whole.
    const isWhole = length === line.length - 1;
    assert.equal(ended[0], isWhole ? whole[0] : 0);
    for (const byte of ['\n', '\xff', '"', '\\', '[', '9', 'e']) {
      const changed = line.slice(0, length) + byte + line.slice(length + 1);
      assert.ok(native.idealise(bytesOf(changed), '')[3] <= 2);
    }
  }
});
