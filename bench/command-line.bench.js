'use strict';

// Strokes a second through `scrivo idealise`, from a file to a file, on one thread and on more,
// and what part of that the engine alone takes. Each is run several times in turn, since other
// work on the machine slows whatever runs beside it; the fastest of each counts.

const { spawnSync } = require('node:child_process');
const fs = require('node:fs');
const os = require('node:os');
const path = require('node:path');
const { createEngine } = require('../packages/cli/lib/engines.js');
const { placeInArea } = require('../packages/cli/lib/run/area.js');
const { FIGURES, drawInk } = require('../research/ink/index.js');

const DRAWN = 20000;
// The file holds the drawn strokes several times over, so that starting the threads counts little.
const REPEATS = 4;
const STROKES = DRAWN * REPEATS;
const ROUNDS = 3;
const BILLION = 1e9;
const HOURS = 1 / 3600;

const PROGRAM = path.join(__dirname, '..', 'packages', 'cli', 'bin', 'scrivo.js');

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

/** @returns {{wall: number, cpu: number}} seconds, of the whole program */
function timeProgram(folder, jobs) {
  const args = [PROGRAM, 'idealise', 'ink.ndjson', '-o', 'ideal.ndjson', '--force', '--json'];
  const start = process.hrtime.bigint();
  const { status, stdout, stderr } = spawnSync(
    process.execPath,
    [...args, '--jobs', String(jobs)],
    { cwd: folder, encoding: 'utf8' },
  );
  if (status !== 0) throw new Error(`scrivo idealise failed: ${stderr}`);
  return { wall: secondsSince(start), cpu: JSON.parse(stdout).cpu_seconds };
}

function timeEngine(strokes) {
  const engine = createEngine('exact');
  const placed = strokes.map((points) => placeInArea({ points }).placed);
  const cpuBefore = process.cpuUsage();
  const start = process.hrtime.bigint();
  for (let i = 0; i < REPEATS; i += 1) for (const stroke of placed) engine.answer(stroke);
  const { user, system } = process.cpuUsage(cpuBefore);
  return { wall: secondsSince(start), cpu: (user + system) / 1e6 };
}

function secondsSince(start) {
  return Number(process.hrtime.bigint() - start) / 1e9;
}

/** The least wall and processor time of each way. */
function measure(folder, strokes) {
  const ways = {
    '--jobs 1': () => timeProgram(folder, 1),
    ...(os.cpus().length > 1 && { '--jobs 2': () => timeProgram(folder, 2) }),
    'engine alone': () => timeEngine(strokes),
  };
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
      name.padEnd(12),
      `${Math.round(rate)} strokes/s`.padStart(16),
      `${(bytes / wall / 1e6).toFixed(1)} MB/s`.padStart(10),
      `${((cpu / STROKES) * 1e6).toFixed(0)} us of a core a stroke`.padStart(26),
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
    createEngine('exact').load({});
    report(measure(folder, strokes), text.length);
  } finally {
    fs.rmSync(folder, { recursive: true });
  }
}

main();
