'use strict';

const assert = require('node:assert/strict');
const { once } = require('node:events');
const fs = require('node:fs');
const path = require('node:path');
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

const STROKES = 600;

const folder = makeFolder(after);
const inFolder = (name) => path.join(folder, name);
const write = (name, content) => fs.writeFileSync(inFolder(name), content);

describe('many strokes', () => {
  const ink = toNdjson(drawStrokes(STROKES));
  write('ink.ndjson', ink);

  test('give the same bytes with any number of threads', async () => {
    const [alone, ...others] = await Promise.all(
      ['1', '2', '5'].map((jobs) => run(folder, ['idealise', 'ink.ndjson', '--jobs', jobs])),
    );
    const ids = parseLines(alone.stdout).map(({ id }) => id);
    assert.equal(ids.join(), Array.from({ length: STROKES }, (_, i) => `s${i}`).join());
    for (const { code, stdout, stderr } of others) {
      assert.deepEqual([code, stderr], [0, '']);
      assert.ok(stdout === alone.stdout, 'other answers than one thread gives');
    }
  });

  test('give the same answers in every form of JSON', async () => {
    const numbers = ['-0', '12', '0.1', '1.25e2', '1E-7', '3.141592653589793', '12345678901234567'];
    const points = drawStrokes(60).map((stroke, i) => [
      ...stroke.points,
      [numbers[i % 7], numbers[(i + 3) % 7], null, 4, 5].map((value) => value && Number(value)),
    ]);
    const plain = points.map((each) => `{"points":${JSON.stringify(each)}}\n`);
    const spaced = points.map((each) => {
      const text = JSON.stringify(each, null, 1).replaceAll('\n', ' \t\r');
      return `  {"a":{"points":["\\"{",1]},"points" : ${text} , "é":"\ud800" }\n`;
    });
    const objects = points.map(
      (each) => `${JSON.stringify({ points: each.map(([x, y, force]) => ({ x, y, force })) })}\n`,
    );
    const answers = [];
    for (const lines of [plain, spaced, objects]) {
      const { code, stdout } = await run(folder, ['idealise', '--jobs', '2'], lines.join(''));
      assert.equal(code, 0);
      answers.push(parseLines(stdout));
    }
    const pairs = (stroke) =>
      stroke.points.map((point) => (Array.isArray(point) ? point.slice(0, 2) : [point.x, point.y]));
    answers[0].forEach((answer, i) => {
      for (const other of [answers[1][i], answers[2][i]]) {
        assert.deepEqual(pairs(other), pairs(answer));
        assert.deepEqual(other.parameters, answer.parameters);
      }
    });
  });

  test('a worker that is killed ends the run with a message and no output file', async () => {
    const child = start(folder, ['idealise', '--snap', '--engine', 'template', '-j', '2']);
    child.stdin.write(ink);
    const list = `/proc/${child.pid}/task/${child.pid}/children`;
    const workers = () => fs.readFileSync(list, 'utf8').split(' ').filter(Boolean);
    await until(() => workers().length > 0);
    for (const worker of workers()) process.kill(Number(worker), 'SIGKILL');
    child.stdin.end();
    const { code, stdout, stderr } = await child.ended;
    assert.deepEqual([code, stdout], [2, '']);
    assert.match(stderr, /^scrivo idealise: a worker was ended by SIGKILL; if memory/);
  });

  test('need no more memory than a few', async () => {
    // More than a heap of 16 MB can hold.
    write('large.ndjson', ink.repeat(10));
    const runs = ['1', '2'].map((jobs) => {
      const args = ['idealise', 'large.ndjson', '-o', `large${jobs}.svg`, '--jobs', jobs];
      return start(folder, args, ['--max-old-space-size=16']).ended;
    });
    for (const { code, stderr } of await Promise.all(runs))
      assert.deepEqual([code, stderr], [0, '']);
  });

  test('a reader that closes the pipe ends the run, also while input is pending', async () => {
    const child = start(folder, ['idealise']);
    child.stdout.once('data', () => child.stdout.destroy());
    const feeding = setInterval(() => child.stdin.write(ink), 20);
    const { code, stderr } = await child.ended;
    clearInterval(feeding);
    assert.deepEqual([code, stderr], [0, '']);
  });

  test('an answer does not wait for the next line', async () => {
    for (const jobs of ['1', '2']) {
      const child = start(folder, ['idealise', '--jobs', jobs]);
      for (let i = 0; i < 3; i += 1) {
        child.stdin.write(`{"id":${i},"points":[[1,2]]}\n`);
        const [text] = await once(child.stdout, 'data');
        assert.equal(JSON.parse(text).id, i);
      }
      child.stdin.end();
      assert.equal((await child.ended).code, 0);
    }
  });
});
