'use strict';

const assert = require('node:assert/strict');
const { test } = require('node:test');

const { LineIdealiser, loadTemplates } = require('../../lib/lines.js');

const LINE = '{"id":1,"points":[[0,0],[50,1],[100.5,0]]}';

test('options are checked by name', () => {
  for (const [options, name] of [
    [{ engine: 'other' }, 'engine'],
    [{ scale: 0 }, 'scale'],
    [{ scale: '1' }, 'scale'],
    [{ decimals: 16 }, 'decimals'],
    [{ decimals: 0.5 }, 'decimals'],
    [{ area: { x: 0, y: 0, width: 1 } }, 'area.height'],
    [{ area: { x: NaN, y: 0, width: 1, height: 1 } }, 'area.x'],
    [{ beautifier: { minSize: -1 } }, 'minSize'],
  ]) {
    assert.throws(() => new LineIdealiser(options), new RegExp(`options\\.${name}`));
  }
  assert.throws(() => loadTemplates('a.template'), /paths must be an array of strings/);
});

test('lines of another form are left to the caller, with their places', () => {
  const lines = [LINE, '', 'not JSON', `${LINE}\r`, '{"points":[{"x":1,"y":2},[3,4]]}', LINE];
  const block = Buffer.from(lines.join('\n'));
  const { bytes, others, families, lines: count } = new LineIdealiser().idealise(block, 'a "b"');
  const answers = Buffer.from(bytes).toString().trimEnd().split('\n');
  assert.equal(answers.length, 2);
  assert.equal(answers[0], answers[1]);
  assert.match(answers[0], /^\{"id":1,"points":\[\[.*\]\],"source":"a \\"b\\"","type":2,/);
  assert.deepEqual(families, { line: 2 });
  assert.equal(count, lines.length);
  const length = answers[0].length + 1;
  assert.deepEqual(
    others.map(({ line, start, end, at }) => [line, block.toString('utf8', start, end), at]),
    [
      [3, lines[2], length],
      [5, lines[4], 2 * length],
      [6, LINE, 2 * length],
    ],
  );
});

test('points that are objects are answered with objects', () => {
  const idealiser = new LineIdealiser();
  const answer = (points) => {
    const { bytes, others } = idealiser.idealise(Buffer.from(`{"points":[${points.join()}]}\n`));
    return others.length > 0 ? undefined : JSON.parse(Buffer.from(bytes).toString());
  };
  const ink = Array.from({ length: 20 }, (_, i) => [5 * i, 100 + (i % 2), 0.5, i]);
  const { points, ...figure } = answer(ink.map((point) => JSON.stringify(point)));
  const asObjects = ink.map(
    ([x, y, force, time]) => `{"y":${y}, "x" :${x},"time":${time},"force":${force}}`,
  );
  assert.deepEqual(answer(asObjects), { points: points.map(([x, y]) => ({ x, y })), ...figure });

  const dot = { x: 1, y: 2, force: null, time: null };
  assert.equal(answer(Array(12).fill(JSON.stringify(dot))).figure, 'dot');
  const other = ['{"x":1}', '{"x":1,"y":2,"x":3}', '{"x":1,"y":null}', '{"x":1,"y":2,"z":3}', '{}'];
  for (const point of other) assert.equal(answer([point, '{"x":1,"y":2}']), undefined, point);
});

test('other members are passed on as JSON.stringify writes them, longer integers whole', () => {
  const passedOn = (text) => {
    const block = Buffer.from(`{ "a" : ${text}, "points": [[0, 0], [50, 1], [100.5, 0]] }\r\n`);
    const { bytes, others } = new LineIdealiser().idealise(block);
    assert.equal(others.length, 0, text);
    return /^\{"a":(.*),"points":/.exec(Buffer.from(bytes).toString())[1];
  };
  const usual = [
    '"caf\u00e9 \\u00e9 \\ud83d\\ude00 \\/ \\" \\\\ \\n\\u000A\\u001F\\u0041\\u0022"',
    '1.50',
    '-0.0',
    '1e3',
    '0.30000000000000004',
    '[ 1 , [ ] , { } , true , null ]',
    '{ "b" : { "c" : "d" } }',
  ];
  for (const text of usual) assert.equal(passedOn(text), JSON.stringify(JSON.parse(text)));
  assert.equal(passedOn('12345678901234567890'), '12345678901234567890');
});

test('members that JavaScript would move, replace or change are left to the caller', () => {
  const idealiser = new LineIdealiser();
  const isLeft = (members, ...source) => {
    const line = Buffer.from(`{${members},"points":[[0,0],[50,1],[100.5,0]]}\n`, 'latin1');
    return idealiser.idealise(line, ...source).others.length === 1;
  };
  const odd = [
    '"1":0',
    '"a":1,"a":2',
    '"points":[[0,0]]',
    '"type":6',
    '"others":[]',
    '"a\\u0062":1',
  ];
  const wrong = [
    '"a":"\\ud800"',
    '"a":"\xff"',
    '"a":"\\u0000"',
    '"a":"\t"',
    '"a":tru',
    '"a":1e400',
  ];
  const sizes = ['"width":5', '"width":0,"height":1', '"width":"5","height":1', '"a":[1,]'];
  for (const members of [...odd, ...wrong, ...sizes]) assert.ok(isLeft(members), members);
  assert.ok(!isLeft('"source":"b"'));
  assert.ok(isLeft('"source":"b"', 'a.ndjson'));
});
