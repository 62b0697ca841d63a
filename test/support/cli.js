'use strict';

const { spawn } = require('node:child_process');
const fs = require('node:fs');
const os = require('node:os');
const path = require('node:path');
const { Writable } = require('node:stream');
const { main } = require('../../packages/cli/lib/main.js');
const { drawEach } = require('../../research/ink/index.js');
const { shakyLine } = require('./strokes.js');

const PROGRAM = path.join(__dirname, '..', '..', 'packages', 'cli', 'bin', 'scrivo.js');

/** A folder that is removed when the tests of the file are done. */
function makeFolder(after) {
  const folder = fs.mkdtempSync(path.join(os.tmpdir(), 'scrivo-cli-'));
  after(() => fs.rmSync(folder, { recursive: true, force: true }));
  return folder;
}

/** Collects what is written, as a stream. */
function collect() {
  const stream = new Writable({
    write(chunk, encoding, done) {
      stream.text += chunk;
      done();
    },
  });
  return Object.assign(stream, { text: '' });
}

/**
 * Runs the program to its end in this process, which takes milliseconds. Standard input is a file
 * here, named last; work is done in this thread unless the arguments say otherwise.
 *
 * @param {string} folder to run in
 * @param {string[]} args
 * @param {string|Buffer} [stdin]
 * @returns {Promise<{code: number, stdout: string, stderr: string}>}
 */
async function run(folder, args, stdin) {
  const [stdout, stderr] = [collect(), collect()];
  const isOnInk = ['idealise', 'render'].includes(args[0]);
  const jobs = isOnInk && !args.includes('--jobs') ? ['--jobs', '1'] : [];
  const input = stdin === undefined ? [] : ['stdin'];
  process.chdir(folder);
  if (stdin !== undefined) fs.writeFileSync('stdin', stdin);
  const code = await main([...args, ...jobs, ...input], { stdout, stderr });
  if (stdin !== undefined) fs.rmSync('stdin');
  return { code, stdout: stdout.text, stderr: stderr.text };
}

/** Starts the program as a process, with flags for Node. */
function start(folder, args, flags = []) {
  const child = spawn(process.execPath, [...flags, PROGRAM, ...args], { cwd: folder });
  // It may end before it has read everything.
  child.stdin.on('error', () => {});
  child.ended = new Promise((resolve) => {
    const output = { stdout: '', stderr: '' };
    for (const name of ['stdout', 'stderr']) {
      child[name].setEncoding('utf8').on('data', (text) => {
        output[name] += text;
      });
    }
    child.on('close', (code, signal) => resolve({ code, signal, ...output }));
  });
  return child;
}

/** Runs the program to its end as a process. */
function runProcess(folder, args, stdin = '') {
  const child = start(folder, args);
  child.stdin.end(stdin);
  return child.ended;
}

/** Waits until a condition holds, for up to 30 seconds. */
async function until(isSo) {
  for (let i = 0; !isSo(); i += 1) {
    if (i === 6000) throw new Error(`did not happen: ${isSo}`);
    await new Promise((resolve) => setTimeout(resolve, 5));
  }
}

/** Lines of NDJSON as values. */
function parseLines(text) {
  return text.split('\n').filter(Boolean).map(JSON.parse);
}

/** Generated strokes of every figure in turn, side by side. */
function drawStrokes(count, seed = 1) {
  const optionsOf = (i) => ({
    size: 150,
    at: { x: 150 + 200 * (i % 8), y: 150 + 200 * Math.floor(i / 8) },
  });
  return drawEach(count, { seed, optionsOf }).map((stroke, i) => ({ id: `s${i}`, ...stroke }));
}

function toNdjson(strokes) {
  return strokes.map((stroke) => `${JSON.stringify(stroke)}\n`).join('');
}

/** A level line, 200 units long, with a tremor of half a unit. */
const levelLine = (left, y) => shakyLine([left, y], [left + 200, y]);

module.exports = {
  PROGRAM,
  collect,
  drawStrokes,
  levelLine,
  makeFolder,
  parseLines,
  run,
  runProcess,
  start,
  toNdjson,
  until,
};
