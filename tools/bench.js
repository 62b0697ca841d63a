'use strict';

// `npm run bench`: builds the release preset and runs every benchmark in
// bench/: the programs made from bench/*.cpp, then the scripts bench/*.js.
//
//   npm run bench -- matching                    those whose name contains a word
//   npm run bench -- --benchmark_filter=Ellipse  options for the programs

const fs = require('node:fs');
const path = require('node:path');
const { build } = require('./build.js');
const { ROOT, failure, heading, main, run } = require('./support/run.js');

const PROGRAMS = path.join(ROOT, 'build', 'release', 'bench');
const SCRIPTS = path.join(ROOT, 'bench');

function isProgram(entry) {
  if (!entry.isFile()) return false;
  const { mode } = fs.statSync(path.join(PROGRAMS, entry.name));
  return (mode & 0o111) !== 0;
}

function benchmarks(options) {
  const programs = fs
    .readdirSync(PROGRAMS, { withFileTypes: true })
    .filter(isProgram)
    .map(({ name }) => ({ name, command: [path.join(PROGRAMS, name), ...options] }));
  const scripts = fs
    .readdirSync(SCRIPTS)
    .filter((name) => name.endsWith('.js'))
    .map((name) => ({ name, command: [process.execPath, path.join(SCRIPTS, name)] }));
  return [...programs, ...scripts];
}

async function benchMain(args) {
  const options = args.filter((arg) => arg.startsWith('-'));
  const wanted = args.filter((arg) => !arg.startsWith('-'));
  const unknown = options.find((option) => !option.startsWith('--benchmark_'));
  if (unknown) {
    throw failure(`bench: unknown option ${unknown}; there are names and --benchmark_filter=...`);
  }
  await build('release');
  const chosen = benchmarks(options).filter(
    ({ name }) => wanted.length === 0 || wanted.some((word) => name.includes(word)),
  );
  if (chosen.length === 0) {
    const names = benchmarks(options).map(({ name }) => name);
    throw failure(`bench: no benchmark "${wanted.join('", "')}"; there are ${names.join(', ')}`);
  }
  let worst = 0;
  for (const { name, command } of chosen) {
    heading(`Benchmark: ${name}`);
    worst = Math.max(worst, await run(command[0], command.slice(1)));
  }
  return worst;
}

main(benchMain);
