'use strict';

const assert = require('node:assert/strict');
const { describe, test } = require('node:test');
const zlib = require('node:zlib');
const { assertMessages, assertPoints, read } = require('../../support/read-ink.js');

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
    assert.deepEqual(problems, ['2: continues the trace c, which was not begun']);
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

  test('numbers without bounds, and names that every object has', async () => {
    const channels = ['X', 'Y', 'F', 'T'].map(
      (name) => `<channel name="${name}" units="toString"/>`,
    );
    const content =
      `<__proto__/><constructor/><traceFormat>${channels.join('')}</traceFormat>` +
      '<trace>1 2 0.5 7</trace><trace>1 2 1e999 7</trace><trace>1 2 0.5 1e999</trace>';
    const { strokes, problems, damage } = await read(ink(content));
    assertPoints({ strokes }, '[[[1,2,0.5,7]]]');
    assertMessages(problems, [/point 0 has a number that is too large/, /point 0 has a number/]);
    assert.equal(damage, undefined);
  });

  test('encodings by mark and by declaration', async () => {
    const text = ink(
      '<traceGroup><annotation type="who">Zoë</annotation><trace>1 2</trace></traceGroup>',
    );
    const utf16 = Buffer.from(`\uFEFF${text}`, 'utf16le');
    // A declaration may be longer than one chunk.
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
    assert.match(undeclared.damage, /not valid utf-8: declare its encoding/);
  });
});
