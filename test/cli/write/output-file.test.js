'use strict';

const assert = require('node:assert/strict');
const { spawn, spawnSync } = require('node:child_process');
const fs = require('node:fs');
const path = require('node:path');
const { text: readText } = require('node:stream/consumers');
const { after, describe, test } = require('node:test');
const {
  drawStrokes,
  makeFolder,
  parseLines,
  run,
  start,
  toNdjson,
  until,
} = require('../../support/cli.js');

const folder = makeFolder(after);
const inFolder = (name) => path.join(folder, name);
const write = (name, content) => fs.writeFileSync(inFolder(name), content);
const read = (name) => fs.readFileSync(inFolder(name), 'utf8');
const idealise = (args, stdin) => run(folder, ['idealise', ...args], stdin);

describe('the output file', () => {
  /** Starts a run that has begun to write and waits for more. */
  async function interruptible(name) {
    const child = start(folder, ['idealise', '-o', name, '--jobs', '2']);
    child.stdin.write(toNdjson(drawStrokes(100)));
    const begun = () => fs.readdirSync(folder).filter((file) => file.endsWith('.tmp'));
    await until(() => begun().some((file) => fs.statSync(inFolder(file)).size > 0));
    return child;
  }

  test('an interrupted run leaves no output, and temporary files only if it was killed', async () => {
    const before = fs.readdirSync(folder);
    for (const [signal, name, leftovers] of [
      ['SIGINT', 'cut.ndjson', 0],
      ['SIGTERM', 'cut.svg', 0],
      ['SIGKILL', 'cut.svg', 2],
    ]) {
      const child = await interruptible(name);
      child.kill(signal);
      assert.equal((await child.ended).signal, signal);
      const left = fs.readdirSync(folder).filter((file) => !before.includes(file));
      assert.equal(left.filter((file) => file.endsWith('.tmp')).length, leftovers, left.join());
      assert.equal(left.length, leftovers, left.join());
      for (const file of left) fs.rmSync(inFolder(file));
    }
  });

  test('a file that appears during the run is not overwritten', async () => {
    const child = await interruptible('contested.ndjson');
    write('contested.ndjson', 'mine');
    child.stdin.end();
    const { code, stderr } = await child.ended;
    assert.equal(code, 2);
    assert.match(stderr, /contested\.ndjson cannot be written: .*has appeared/);
    assert.equal(read('contested.ndjson'), 'mine');
    const leftovers = fs.readdirSync(folder).filter((file) => file.startsWith('.contested'));
    assert.deepEqual(leftovers, []);
  });

  test('--force replaces what a link leads to, keeps its permissions, also onto its input', async () => {
    write('real.ndjson', '{"points":[[1,2]]}\n');
    fs.chmodSync(inFolder('real.ndjson'), 0o640);
    fs.symlinkSync('real.ndjson', inFolder('link.ndjson'));
    const args = ['link.ndjson', '-o', 'link.ndjson', '--force'];
    assert.equal((await idealise(args)).code, 0);
    assert.ok(fs.lstatSync(inFolder('link.ndjson')).isSymbolicLink());
    assert.equal(fs.statSync(inFolder('real.ndjson')).mode & 0o777, 0o640);
    assert.equal(parseLines(read('real.ndjson'))[0].figure, 'dot');
  });

  test('a device is written to directly, and a full one is an error', async () => {
    const ink = '{"points":[[1,2]]}\n';
    const nowhere = await idealise(['-o', '/dev/null'], ink);
    assert.deepEqual([nowhere.code, nowhere.stderr], [0, '']);
    const full = await idealise(['-o', '/dev/full'], ink);
    assert.equal(full.code, 2);
    assert.match(full.stderr, /\/dev\/full cannot be written: ENOSPC/);
    assert.ok(fs.statSync('/dev/null').isCharacterDevice());
    spawnSync('mkfifo', [inFolder('pipe')]);
    const reader = spawn('cat', [inFolder('pipe')]);
    const [drawing, { code }] = await Promise.all([
      readText(reader.stdout),
      idealise(['-o', 'pipe', '--format', 'svg'], ink),
    ]);
    assert.equal(code, 0);
    assert.match(drawing, /^<svg [^]*<\/svg>\n$/);
  });
});
