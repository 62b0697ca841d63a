'use strict';

const { spawn } = require('node:child_process');
const fs = require('node:fs');
const os = require('node:os');
const path = require('node:path');
const { FIGURES, drawInk } = require('../../research/ink/index.js');

const PROGRAM = path.join(__dirname, '..', '..', 'packages', 'cli', 'bin', 'scrivo.js');

/** A folder that goes when the tests of the file are done. */
function makeFolder(after) {
  const folder = fs.mkdtempSync(path.join(os.tmpdir(), 'scrivo-cli-'));
  after(() => fs.rmSync(folder, { recursive: true, force: true }));
  return folder;
}

/** Starts the program in a folder, with flags for Node and variables of the environment. */
function start(folder, args, flags = [], variables = {}) {
  const env = { ...process.env, ...variables };
  const child = spawn(process.execPath, [...flags, PROGRAM, ...args], { cwd: folder, env });
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

/**
 * Runs the program to its end.
 *
 * @param {string} folder to run in
 * @param {string[]} args
 * @param {string|Buffer} [stdin]
 * @returns {Promise<{code: number, signal: string, stdout: string, stderr: string}>}
 */
function run(folder, args, stdin = '') {
  const child = start(folder, args);
  child.stdin.end(stdin);
  return child.ended;
}

/** Waits until something can be observed, but not for ever. */
async function until(isSo) {
  for (let i = 0; !isSo(); i += 1) {
    if (i === 6000) throw new Error(`waited in vain: ${isSo}`);
    await new Promise((resolve) => setTimeout(resolve, 5));
  }
}

/** Lines of NDJSON as values. */
function parseLines(text) {
  return text.split('\n').filter(Boolean).map(JSON.parse);
}

/** Strokes as a person would draw them: every figure in turn, one beside the other. */
function drawStrokes(count, seed = 1) {
  const figures = Object.keys(FIGURES);
  return Array.from({ length: count }, (_, i) => {
    const at = { x: 150 + 200 * (i % 8), y: 150 + 200 * Math.floor(i / 8) };
    const figure = figures[i % figures.length];
    return { id: `s${i}`, ...drawInk({ figure, seed: seed + i, size: 150, at }) };
  });
}

function toNdjson(strokes) {
  return strokes.map((stroke) => `${JSON.stringify(stroke)}\n`).join('');
}

module.exports = { PROGRAM, drawStrokes, makeFolder, parseLines, run, start, toNdjson, until };
