'use strict';

const assert = require('node:assert/strict');
const { spawnSync } = require('node:child_process');
const fs = require('node:fs');
const path = require('node:path');
const { after, describe, test } = require('node:test');
const {
  PROGRAM,
  drawStrokes,
  makeFolder,
  parseLines,
  run,
  toNdjson,
} = require('../support/cli.js');
const { readExamples } = require('../support/documents.js');

const STROKES = 120;

/** Why a test has to be skipped, or false. */
function skipUnless(program) {
  const isInstalled = spawnSync(program, ['--version']).status === 0;
  return !isInstalled && `${program} is not installed; tools/setup.js installs it on Debian`;
}

/** As a document with a page. */
function toXopp(strokes) {
  const elements = strokes.map(({ points }) => {
    const pairs = points.map(([x, y]) => `${x} ${y}`).join(' ');
    return `<stroke tool="pen" color="#000000ff" width="1">${pairs}</stroke>`;
  });
  return `<xournal><page width="1700" height="3000"><layer>${elements.join('')}</layer></page></xournal>`;
}

describe('the examples of the documents', () => {
  const folder = makeFolder(after);
  const inFolder = (name) => path.join(folder, name);
  const strokes = drawStrokes(STROKES);
  const fractions = strokes.map(({ points }) => ({
    points: points.map(([x, y]) => [x / 1000, y / 1000]),
  }));
  fs.writeFileSync(inFolder('ink.ndjson'), toNdjson(strokes));
  fs.writeFileSync(inFolder('labelled.ndjson'), toNdjson(strokes));
  fs.writeFileSync(inFolder('fractions.ndjson'), toNdjson(fractions));
  fs.writeFileSync(inFolder('notes.xopp'), toXopp(strokes));
  fs.mkdirSync(inFolder('bin'));
  fs.symlinkSync(PROGRAM, inFolder('bin/scrivo'));
  const env = { ...process.env, PATH: `${inFolder('bin')}:${process.env.PATH}` };

  const runShell = (commands) =>
    spawnSync('bash', ['-euo', 'pipefail', '-c', commands], { cwd: folder, env, encoding: 'utf8' });

  const examples = readExamples().commands;
  assert.ok(examples.length >= 11, `found only ${examples.length} examples`);
  for (const { place, code: commands } of examples) {
    const needs = commands.split(' ', 1)[0];
    const skip = needs === 'parallel' && skipUnless(needs);
    test(`${place}: ${commands.trim()}`, { skip }, async () => {
      if (!fs.existsSync(inFolder('page.inkml'))) {
        await run(folder, ['idealise', 'ink.ndjson', '-o', 'page.inkml']);
      }
      const { status, stdout, stderr } = runShell(commands);
      assert.equal(status, 0, stderr);
      const written = [...commands.matchAll(/(?:-o|>|--svg) (\w[\w.-]*)/g)].map(([, name]) => name);
      for (const name of written) assert.ok(fs.statSync(inFolder(name)).size > 100, name);
      assert.ok(written.length > 0 || stdout !== '', 'neither files nor text');
    });
  }

  test(
    'give the same strokes when GNU parallel spreads them',
    { skip: skipUnless('parallel') },
    () => {
      const { code } = examples.find((example) => example.code.startsWith('parallel'));
      const { status, stderr } = runShell(code.replace('10M', '80k'));
      assert.equal(status, 0, stderr);
      const [alone, spread] = ['ideal.ndjson', 'ideal-parallel.ndjson'].map((name) =>
        fs.readFileSync(inFolder(name), 'utf8'),
      );
      assert.equal(parseLines(spread).length, STROKES);
      assert.ok(spread === alone, 'other answers than one process gives');
    },
  );

  test('wrong and empty partitions of Spark do not fail a job', () => {
    const page = fs.readFileSync(path.join(PROGRAM, '../../docs/command-line.md'), 'utf8');
    const [, command] = /\.pipe\("([^"]+)"/.exec(page);
    // As Spark does: a process for each partition, whose exit code must be 0.
    for (const partition of [toNdjson(strokes), 'broken\n', '']) {
      const { status, stdout } = spawnSync(command, {
        ...{ cwd: folder, env, shell: true, encoding: 'utf8', input: partition },
      });
      assert.equal(status, 0);
      assert.equal(stdout.split('\n').length, partition.split('\n').length);
    }
  });
});
