'use strict';

const assert = require('node:assert/strict');
const fs = require('node:fs');
const path = require('node:path');
const { after, describe, test } = require('node:test');
const zlib = require('node:zlib');
const { readInk } = require('../../packages/cli/lib/read/ink.js');
const { parseBlock, readBlocks } = require('../../packages/cli/lib/read/ndjson.js');
const { makeFolder } = require('../support/cli.js');

const folder = makeFolder(after);

/** All that an input of this content holds; its name tells nothing. */
async function read(content, options = {}) {
  const file = path.join(folder, 'ink.dat');
  fs.writeFileSync(file, content);
  const found = { strokes: [], problems: [], damage: undefined, passedOver: [] };
  for await (const job of readInk(file, { step: 4, onBytes: () => {}, ...options })) {
    if (job.damage) found.damage = job.damage;
    else take(found, job.records ? job : { ...parseBlock(job), passedOver: [] });
  }
  return found;
}

function take(found, { records, passedOver }) {
  found.passedOver.push(...passedOver);
  for (const { line, stroke, problem } of records) {
    if (stroke) found.strokes.push(stroke);
    else found.problems.push(`${line}: ${problem}`);
  }
}

/** Compares values with their JSON text. */
function assertJson(actual, expected) {
  assert.deepEqual(actual, JSON.parse(expected));
}

function assertPoints({ strokes }, expected) {
  const points = strokes.map((stroke) => stroke.points);
  assertJson(points, expected);
}

/** Each message, in its order, matches its pattern. */
function assertMessages(messages, patterns) {
  assert.equal(messages.length, patterns.length, messages.join('\n'));
  patterns.forEach((pattern, i) => assert.match(messages[i], pattern));
}

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

  test('each wrong line is named by its number and what is wrong', async () => {
    const cases = [
      ['{"points":[[1,2]', /not JSON/],
      ['{"a":"\xe9","points":[[1,2]]}', /not UTF-8: convert/],
      ['[[1,2]]', /an object was expected, found an array .jq/],
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

  test('a line too long to hold costs itself only', async () => {
    const megabyte = Buffer.alloc(1 << 20, 'x');
    const chunks = [Buffer.from('{"points":[[1,2]]}\n'), ...Array(70).fill(megabyte)];
    chunks.push(Buffer.from('\n{"points":[[3,4]]}\n'));
    const records = [];
    let lines = 0;
    for await (const block of readBlocks(chunks)) {
      const parsed = parseBlock(block);
      records.push(...parsed.records.map((record) => ({ ...record, line: lines + record.line })));
      lines += parsed.lines;
    }
    assertJson(
      records.map(({ line, stroke, problem }) => [line, stroke?.points ?? problem.slice(0, 11)]),
      '[[1,[[1,2]]],[2,"longer than"],[3,[[3,4]]]]',
    );
  });
});

describe('InkML', () => {
  const ink = (content) => `<?xml version="1.0"?>\n<ink>${content}</ink>`;

  test('plain traces, prefixed elements, gzip', async () => {
    const plain = '<ink><trace>1 2, 3 4,\n5.5 -6e1</trace><trace id="b">7,8\n</trace></ink>';
    const expected = '[[[1,2],[3,4],[5.5,-60]]]';
    const found = await read(plain);
    assertPoints(found, expected);
    assert.match(found.problems[0], /^2: point 0 has 1 values where its format has 2/);
    const prefixed = plain
      .replace(/<(\/?)(\w)/g, '<$1i:$2')
      .replace('<i:ink', '<i:ink xmlns:i="u"');
    assertPoints(await read(zlib.gzipSync(prefixed)), expected);
  });

  test('first and second differences, wildcards, values without white space', async () => {
    // The worked example of the InkML recommendation.
    const trace = `<trace>1125 18432,'23'43,"7"-8,3-5,7 -3,6 2,6 8,3 6,2 4</trace>`;
    assertPoints(
      await read(ink(trace)),
      `[[[1125,18432],[1148,18475],[1178,18510],[1211,18540],[1251,18567],
         [1297,18596],[1349,18633],[1404,18676],[1461,18723]]]`,
    );
    const wild = `<trace>10 20,* 21,'1 *,* 5,!7 !8,#0A .5</trace>`;
    assertPoints(await read(ink(wild)), '[[[10,20],[10,21],[11,21],[12,5],[7,8],[10,0.5]]]');
  });

  test('channels of the format that the trace refers to, else of the latest', async () => {
    const format = (id, names, extra = '') =>
      `<context xml:id="${id}"><inkSource><traceFormat>${names
        .map(
          (name) => `<channel name="${name}" ${{ F: 'max="1000"', T: 'units="s"' }[name] ?? ''}/>`,
        )
        .join('')}</traceFormat>${extra}</inkSource></context>`;
    const resolution =
      '<channelProperties><channelProperty channel="X" name="resolution" value="1000" units="1/cm"/></channelProperties>';
    const { strokes } = await read(
      ink(
        `<definitions>${format('a', ['F', 'Y', 'T', 'X'])}${format('b', ['X', 'Y'], resolution)}` +
          '</definitions><trace>1 2</trace><trace contextRef="#a">500 2 3 1</trace>' +
          '<traceGroup contextRef="#a"><annotation type="truth">x &lt; y</annotation>' +
          '<trace xml:id="t">? 2 3 1</trace></traceGroup><trace type="penUp">1 2</trace>',
      ),
    );
    assertPoints({ strokes }, '[[[1,2]],[[1,2,0.5,3000]],[[1,2,null,3000]]]');
    assert.deepEqual(strokes[2].fields, { truth: 'x < y', id: 't' });
    assert.ok(Math.abs(strokes[0].scale - 96 / 2540) < 1e-12, 'a unit is a hundredth of a mm');
    assert.equal(strokes[1].scale, undefined);
  });

  test('colour and width of the brush that a trace, its group or its context refers to', async () => {
    const brush = (id, color, width) =>
      `<brush xml:id="${id}"><brushProperty name="color" value="${color}"/>` +
      `<brushProperty name="width" value="${width}"/></brush>`;
    const { strokes } = await read(
      ink(
        `<definitions>${brush('r', 'red', 3)}${brush('b', '#00f', 5)}` +
          `<context xml:id="by" brushRef="#b"/><context xml:id="in">${brush('x', 'lime', 1)}` +
          '</context></definitions><trace brushRef="#r">1 2</trace>' +
          '<traceGroup brushRef="#b"><trace>1 2</trace><trace brushRef="#r">1 2</trace></traceGroup>' +
          '<trace contextRef="#by">1 2</trace><trace contextRef="#in">1 2</trace><trace>1 2</trace>',
      ),
    );
    const [red, blue, lime] = [
      ['red', '3'],
      ['#00f', '5'],
      ['lime', '1'],
    ].map(([stroke, width]) => ({ stroke, 'stroke-width': width }));
    assert.deepEqual(
      strokes.map(({ fields }) => fields),
      [red, blue, red, blue, lime, {}],
    );
  });

  test('traces that continue each other are one stroke, also when its end is missing', async () => {
    const { strokes, problems } = await read(
      ink(
        '<trace id="a" continuation="begin">1 2</trace><trace id="b">9 9</trace>' +
          `<trace id="c" continuation="middle" priorRef="#a">3 4,'1 '1</trace>` +
          '<trace continuation="end" priorRef="#c">5 6</trace>' +
          '<trace continuation="end" priorRef="#c">7 8</trace>' +
          '<trace id="d" continuation="begin">0 0</trace>',
      ),
    );
    assertPoints({ strokes }, '[[[9,9]],[[1,2],[3,4],[4,5],[5,6]],[[0,0]]]');
    assert.equal(strokes[1].fields.id, 'a');
    assert.deepEqual(problems, ['2: continues the trace c, which has not been begun']);
  });

  test('optional channels, wrong traces and a document that breaks off', async () => {
    const content =
      '<traceFormat><channel name="X"/><channel name="Y"/><intermittentChannels>' +
      '<channel name="F"/></intermittentChannels></traceFormat>\n' +
      '<trace>1 2, 3 4 0.5</trace>\n<trace>1 2 3 4</trace>\n<trace></trace>\n<trace>? 1</trace>\n' +
      '<trace>1 2</trace><trace>3';
    const { strokes, problems, damage } = await read(ink(content).replace('</ink>', ''));
    assertPoints({ strokes }, '[[[1,2],[3,4,0.5]],[[1,2]]]');
    assertMessages(problems, [
      /^4: point 0 cannot be/,
      /^5: a trace without p/,
      /^6: point 0 has no X/,
    ]);
    assert.match(damage, /ink\.dat: not well-formed XML: .*unclosed tag/);
  });

  test('encodings by mark and by declaration', async () => {
    const text = ink(
      '<traceGroup><annotation type="who">Zoë</annotation><trace>1 2</trace></traceGroup>',
    );
    const utf16 = Buffer.from(`\uFEFF${text}`, 'utf16le');
    // A declaration may be longer than what arrives at once.
    const latin1 = ['', ' '.repeat(1e5)].map((space) =>
      Buffer.from(text.replace('1.0"', `1.0"${space} encoding="ISO-8859-1"`), 'latin1'),
    );
    for (const bytes of [Buffer.from(text), utf16, Buffer.from(utf16).swap16(), ...latin1]) {
      const { strokes, damage } = await read(bytes);
      assert.equal(damage, undefined);
      assert.equal(strokes[0].fields.who, 'Zoë');
    }
    const { damage } = await read('<?xml version="1.0" encoding="klingon"?><ink/>');
    assert.match(damage, /encoding klingon is unknown/);
    const undeclared = await read(Buffer.from(text, 'latin1'));
    assert.match(undeclared.damage, /not in its encoding utf-8: declare another/);
  });
});

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

  test('what no pen drew is passed over', async () => {
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

  test('coordinates without bounds are named, and cost no memory', async () => {
    const { strokes, problems } = await read(
      svg(
        '<path d="M1e999 0L1 1"/>\n<path transform="scale(1e300)" d="M1e100 0L1 1"/>\n' +
          '<path transform="turn(1)" d="M0 0L1 1"/><path d="M0 0C1e6 0 2e9 3e9 1 1"/>',
      ),
    );
    assert.deepEqual(problems, [
      '1: coordinates that are no finite numbers in "M1e999 0L1 1"',
      '2: coordinates that are no finite numbers in "M1e100 0L1 1"',
      '3: the transform "turn(1)" cannot be read',
    ]);
    assert.equal(strokes.length, 1);
    assert.ok(strokes[0].points.length <= 10001);
  });

  test('wrong path data is named by its line; entities of drawing programs are known', async () => {
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

test('inputs of another kind and broken gzip data are named', async () => {
  const line = '{"points":[[1,2]]}\n';
  const packed = zlib.gzipSync(line.repeat(20000));
  const cases = [
    [Buffer.from([0x89, 0x50, 0x4e, 0x47, 13, 10, 0, 1]), 0, /neither NDJSON \(in UTF-8\), InkML/],
    ['PK\u0003\u0004\n', 0, /packed with zip, but only gzip is read/],
    ['<html><body/></html>', 0, /XML, but neither InkML nor SVG: its root element is <html>/],
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
