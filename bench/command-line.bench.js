'use strict';

// Strokes a second through `scrivo idealise`, from a file to a file, on one thread and on more,
// and what part of that the engine alone takes. Each is run several times in turn, since other
// work on the machine slows whatever runs beside it; the fastest of each counts.

const { spawnSync } = require('node:child_process');
const fs = require('node:fs');
const os = require('node:os');
const path = require('node:path');
const { createEngine } = require('../lib/cli/engines.js');
const { placeInArea } = require('../lib/cli/run/area.js');
const { FIGURES, drawInk } = require('../tools/ink/index.js');

const STROKES = 20000;
const ROUNDS = 5;
const BILLION = 1e9;
const HOURS = 1 / 3600;

const PROGRAM = path.join(__dirname, '..', 'bin', 'scrivo.js');

/** Every figure in turn, 100 to 300 units large, among as many strokes that are no figure. */
function drawStrokes(count) {
  const figures = Object.keys(FIGURES);
  return Array.from({ length: count }, (_, i) => {
    const size = 100 + ((i * 7) % 200);
    const { points } = drawInk({ figure: figures[i % figures.length], seed: i, size });
    // As a device gives them: to a tenth of a unit, pressure in 4096 steps.
    return points.map(([x, y, force]) => [round(x, 10), round(y, 10), round(force, 4096)]);
  });
}

function round(value, parts) {
  return Math.round(value * parts) / parts;
}

function timeProgram(folder, jobs) {
  const args = [PROGRAM, 'idealise', 'ink.ndjson', '-o', 'ideal.ndjson', '--force', '--json'];
  const start = process.hrtime.bigint();
  const { status, stderr } = spawnSync(process.execPath, [...args, '--jobs', String(jobs)], {
    cwd: folder,
  });
  if (status !== 0) throw new Error(`scrivo idealise failed: ${stderr}`);
  return seconds(start);
}

function timeEngine(strokes) {
  const engine = createEngine('exact');
  const placed = strokes.map((points) => placeInArea({ points }).placed);
  const start = process.hrtime.bigint();
  for (const stroke of placed) engine.answer(stroke);
  return seconds(start);
}

function seconds(start) {
  return Number(process.hrtime.bigint() - start) / 1e9;
}

function measure(folder, strokes) {
  const runs = [1, ...(os.availableParallelism() > 1 ? [2] : [])];
  const best = new Map();
  const keep = (name, time) => best.set(name, Math.min(time, best.get(name) ?? Infinity));
  for (let i = 0; i < ROUNDS; i += 1) {
    for (const jobs of runs) keep(`--jobs ${jobs}`, timeProgram(folder, jobs));
    keep('engine alone', timeEngine(strokes));
  }
  return best;
}

function main() {
  const folder = fs.mkdtempSync(path.join(os.tmpdir(), 'scrivo-bench-'));
  try {
    const strokes = drawStrokes(STROKES);
    const points = strokes.reduce((sum, stroke) => sum + stroke.length, 0);
    const text = strokes.map((stroke) => `${JSON.stringify({ points: stroke })}\n`).join('');
    fs.writeFileSync(path.join(folder, 'ink.ndjson'), text);
    console.log(
      `${STROKES} strokes of ${Math.round(points / STROKES)} points, ` +
        `${(text.length / 1e6).toFixed(0)} MB; best of ${ROUNDS} runs, Node ${process.version}`,
    );
    createEngine('exact').load({});
    for (const [name, time] of measure(folder, strokes)) {
      const rate = STROKES / time;
      const hours = (BILLION / rate) * HOURS;
      console.log(
        `${name.padEnd(12)} ${Math.round(rate).toString().padStart(7)} strokes/s, ` +
          `${(text.length / time / 1e6).toFixed(1).padStart(5)} MB/s, ` +
          `a billion in ${hours.toFixed(1)} h`,
      );
    }
  } finally {
    fs.rmSync(folder, { recursive: true });
  }
}

main();
