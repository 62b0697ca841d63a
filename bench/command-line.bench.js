'use strict';

// Strokes per second through `scrivo idealise`, from a file to a file, by both engines, on one
// thread and on two, and through the engines alone. Each runs several times in turn, and the
// fastest run counts, since other work on the machine slows single runs.

const { spawnSync } = require('node:child_process');
const fs = require('node:fs');
const os = require('node:os');
const path = require('node:path');
const { ENGINE_NAMES, createEngine } = require('../packages/cli/lib/engines.js');
const { placeStroke } = require('../packages/cli/lib/placement.js');
const { drawEach } = require('../research/ink/index.js');

const DRAWN = 20000;
// The file holds the drawn strokes several times, so that the start of the threads hardly counts.
const REPEATS = 4;
const STROKES = DRAWN * REPEATS;
const ROUNDS = 3;
const BILLION = 1e9;
const HOURS = 1 / 3600;

const PROGRAM = path.join(__dirname, '..', 'packages', 'cli', 'bin', 'scrivo.js');

const ENGINES = Object.fromEntries(ENGINE_NAMES.map((name) => [name, createEngine(name)]));

/** Every figure in turn, 100 to 300 units large, as [x, y, force]. */
function drawStrokes(count) {
  const strokes = drawEach(count, { optionsOf: (i) => ({ size: 100 + ((i * 7) % 200) }) });
  // At a device's resolution: tenths of a unit, 4096 steps of pressure.
  return strokes.map(({ points }) =>
    points.map(([x, y, force]) => [round(x, 10), round(y, 10), round(force, 4096)]),
  );
}

function round(value, parts) {
  return Math.round(value * parts) / parts;
}

/** @returns {{wall: number, cpu: number}} seconds of the whole program */
function timeProgram(folder, name, jobs) {
  const args = [PROGRAM, 'idealise', 'ink.ndjson', '-o', 'ideal.ndjson', '--force', '--json'];
  const start = process.hrtime.bigint();
  const { status, stdout, stderr } = spawnSync(
    process.execPath,
    [...args, '--engine', name, '--jobs', String(jobs)],
    { cwd: folder, encoding: 'utf8' },
  );
  if (status !== 0) throw new Error(`scrivo idealise failed: ${stderr}`);
  return { wall: secondsSince(start), cpu: JSON.parse(stdout).cpu_seconds };
}

function timeEngine(strokes, name) {
  const placed = strokes.map((points) => placeStroke({ points }, 'natural'));
  const cpuBefore = process.cpuUsage();
  const start = process.hrtime.bigint();
  for (let i = 0; i < REPEATS; i += 1) for (const stroke of placed) ENGINES[name].answer(stroke);
  const { user, system } = process.cpuUsage(cpuBefore);
  return { wall: secondsSince(start), cpu: (user + system) / 1e6 };
}

function secondsSince(start) {
  return Number(process.hrtime.bigint() - start) / 1e9;
}

/** The shortest wall and processor time of each run. */
function measure(folder, strokes) {
  const ways = {};
  for (const name of ENGINE_NAMES) {
    ways[`${name} --jobs 1`] = () => timeProgram(folder, name, 1);
    if (os.cpus().length > 1) ways[`${name} --jobs 2`] = () => timeProgram(folder, name, 2);
    ways[`${name} alone`] = () => timeEngine(strokes, name);
  }
  const best = {};
  for (let i = 0; i < ROUNDS; i += 1) {
    for (const [name, run] of Object.entries(ways)) {
      const { wall, cpu } = run();
      const before = best[name] ?? { wall: Infinity, cpu: Infinity };
      best[name] = { wall: Math.min(wall, before.wall), cpu: Math.min(cpu, before.cpu) };
    }
  }
  return best;
}

function report(best, bytes) {
  for (const [name, { wall, cpu }] of Object.entries(best)) {
    const rate = STROKES / wall;
    const hours = (BILLION / rate) * HOURS;
    const columns = [
      name.padEnd(20),
      `${Math.round(rate)} strokes/s`.padStart(16),
      `${(bytes / wall / 1e6).toFixed(1)} MB/s`.padStart(10),
      `${((cpu / STROKES) * 1e6).toFixed(0)} us of a core per stroke`.padStart(28),
      `a billion in ${hours.toFixed(1)} h`,
    ];
    console.log(columns.join('  '));
  }
}

function main() {
  const folder = fs.mkdtempSync(path.join(os.tmpdir(), 'scrivo-bench-'));
  try {
    const strokes = drawStrokes(DRAWN);
    const points = strokes.reduce((sum, stroke) => sum + stroke.length, 0);
    const drawn = strokes.map((stroke) => `${JSON.stringify({ points: stroke })}\n`).join('');
    const text = drawn.repeat(REPEATS);
    fs.writeFileSync(path.join(folder, 'ink.ndjson'), text);
    console.log(
      `${STROKES} strokes of ${Math.round(points / DRAWN)} points, ` +
        `${(text.length / 1e6).toFixed(0)} MB; best of ${ROUNDS} runs, Node ${process.version}`,
    );
    for (const engine of Object.values(ENGINES)) engine.load({});
    report(measure(folder, strokes), text.length);
  } finally {
    fs.rmSync(folder, { recursive: true });
  }
}

main();
