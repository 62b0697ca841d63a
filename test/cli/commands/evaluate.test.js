'use strict';

const assert = require('node:assert/strict');
const fs = require('node:fs');
const path = require('node:path');
const { after, describe, it } = require('node:test');
const zlib = require('node:zlib');
const { drawInk } = require('../../../research/ink/index.js');
const { makeFolder, run, runProcess } = require('../../support/cli.js');

const FIGURES = ['dot', 'line', 'line', 'circle', 'ellipse', 'wave', 'zigzag'];
const STROKES = FIGURES.map((figure, i) => drawInk({ figure, seed: i }));
const LINES = STROKES.map((stroke) => JSON.stringify(stroke));

const folder = makeFolder(after);
const write = (name, content) => fs.writeFileSync(path.join(folder, name), content);
const evaluate = (args, stdin) => run(folder, ['evaluate', ...args], stdin);

async function reportOf(args, stdin, expectedCode = 0) {
  const { code, stdout, stderr } = await evaluate(['--json', ...args], stdin);
  assert.equal(code, expectedCode, stderr);
  const { microseconds, ...report } = JSON.parse(stdout);
  assert.ok(microseconds.median > 0 && microseconds.p99 >= microseconds.median);
  return { report, stderr };
}

describe('evaluate', () => {
  for (const engine of ['beautifier', 'template']) {
    it(`counts the answers of the ${engine} by family`, async () => {
      const args = engine === 'beautifier' ? [] : ['--engine', engine];
      const { report } = await reportOf(args, `${LINES.join('\n')}\n`);
      const { families, recall, negatives, ...counts } = report;
      assert.deepEqual(counts, { engine, strokes: 7, skipped: 0 });
      const right = Object.entries(families).map(
        ([name, { n, right: some }]) => `${name} ${some}/${n}`,
      );
      assert.equal(
        right.join(', '),
        'dot 1/1, line 2/2, angle 0/0, triangle 0/0, quadrangle 0/0, ellipse 2/2, none 2/2',
      );
      assert.equal(recall, 1);
      const by_label = { wave: { n: 1, changed: 0 }, zigzag: { n: 1, changed: 0 } };
      assert.deepEqual(negatives, { n: 2, changed: 0, by_label });
    });
  }

  it('prints a table', async () => {
    const { code, stdout } = await evaluate([], LINES.join('\n'));
    assert.equal(code, 0);
    assert.match(stdout, /Engine beautifier, 7 strokes scaled to 200 units/);
    assert.match(stdout, /^line +\. +2 .* 2 +100\.0 %$/m);
    assert.match(stdout, /No figure, but changed: 0 of 2 \(0\.0 %\)/);
  });

  it('reads gzip, several files and standard input alike', async () => {
    write('a.ndjson', LINES.slice(0, 3).join('\n'));
    // Two gzip members one after the other are one file.
    const members = [`${LINES[3]}\n`, LINES[4]].map((text) => zlib.gzipSync(text));
    write('b.ndjson', Buffer.concat(members));
    const args = ['evaluate', '--json', 'a.ndjson', 'b.ndjson', '-'];
    const { stdout } = await runProcess(folder, args, zlib.gzipSync(LINES.slice(5).join('\r\n')));
    const { microseconds, ...report } = JSON.parse(stdout);
    assert.ok(microseconds.median > 0);
    assert.deepEqual(report, (await reportOf([], `\uFEFF${LINES.join('\n\n')}`)).report);
  });

  it('reports wrong lines and damaged archives, counts them and goes on', async () => {
    const wrong = [
      ['{"family":', /not JSON/],
      ['{"points":[[1,2]]}', /"family" is missing/],
      ['{"family":"cube","points":[[1,2]]}', /"family" must be one of .*, found "cube"/],
      ['{"family":"dot"}', /"points" is missing/],
    ];
    write('wrong.ndjson', [LINES[0], ...wrong.map(([line]) => line), LINES[1]].join('\n'));
    const { report, stderr } = await reportOf(['wrong.ndjson'], undefined, 1);
    assert.deepEqual([report.strokes, report.skipped], [2, wrong.length]);
    const messages = stderr.trimEnd().split('\n');
    wrong.forEach(([, message], i) => {
      assert.match(messages[i], message);
      assert.ok(messages[i].startsWith(`wrong.ndjson:${i + 2}: `), messages[i]);
    });
    assert.match((await evaluate(['wrong.ndjson'])).stdout, /4 lines skipped/);

    const packed = zlib.gzipSync(`${LINES[2]}\n`.repeat(200));
    write('cut.ndjson.gz', packed.subarray(0, packed.length / 2));
    const cut = await reportOf(['cut.ndjson.gz'], undefined, 1);
    assert.match(cut.stderr, /cut\.ndjson\.gz: reading failed: unexpected end .*, after line \d/);
    assert.ok(cut.report.strokes > 10);
  });

  it('draws the wrong answers on a sheet, which it overwrites only with --force', async () => {
    // A line labelled as a wave is answered wrongly.
    const mislabelled = { ...STROKES[1], family: 'none', label: '<wave> & co' };
    write('sheet.ndjson', [...LINES, JSON.stringify(mislabelled)].join('\n'));
    const sheet = path.join(folder, 'sheet.svg');
    assert.equal((await evaluate(['sheet.ndjson', '--svg', 'sheet.svg'])).code, 0);
    const drawn = fs.readFileSync(sheet, 'utf8');
    assert.equal(drawn.match(/<g /g).length, 1);
    assert.match(drawn, />&lt;wave&gt; &amp; co<.*>line</);

    fs.writeFileSync(sheet, 'precious');
    const refused = await evaluate(['sheet.ndjson', '--svg', 'sheet.svg']);
    assert.equal(refused.code, 2);
    assert.match(refused.stderr, /sheet\.svg exists; --force overwrites it/);
    assert.equal(fs.readFileSync(sheet, 'utf8'), 'precious');
    assert.equal((await evaluate(['sheet.ndjson', '--svg', 'sheet.svg', '--force'])).code, 0);
    assert.equal(fs.readFileSync(sheet, 'utf8'), drawn);
    assert.ok(!fs.readdirSync(folder).some((name) => name.endsWith('.tmp')));
  });
});
