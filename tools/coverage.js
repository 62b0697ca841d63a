'use strict';

// `npm run coverage`: runs the tests of the core in the coverage preset and prints the lines
// and branches of both engines that they reach. Fails below the least shares.
//
//   npm run coverage              the shares of every file
//   npm run coverage -- --lines   also the lines that are not reached

const fs = require('node:fs');
const path = require('node:path');
const { JOBS, build } = require('./build.js');
const { ROOT, capture, failure, heading, main, run } = require('./support/run.js');
const { addReport, sharesOf } = require('./support/coverage.js');

const BUILD = path.join(ROOT, 'build', 'coverage');
const SOURCES = path.join(ROOT, 'subproject', 'scrivo');
const MIN_PERCENT = { lines: 98, branches: 95 };

/** Files of a kind below a folder. */
function filesBelow(folder, suffix) {
  return fs
    .readdirSync(folder, { withFileTypes: true })
    .flatMap((entry) => {
      const file = path.join(folder, entry.name);
      return entry.isDirectory() ? filesBelow(file, suffix) : [file];
    })
    .filter((file) => file.endsWith(suffix));
}

/** What the objects of the engines and of their tests count in the sources of the engines. */
function readCounts() {
  const files = new Map();
  for (const counts of filesBelow(BUILD, '.gcda')) {
    const json = capture('gcov', ['--json-format', '--branch-probabilities', '--stdout', counts]);
    if (json === null) throw failure(`coverage: gcov cannot read ${counts}`);
    for (const line of json.split('\n').filter(Boolean)) {
      addReport(files, JSON.parse(line), BUILD, SOURCES);
    }
  }
  return files;
}

const percent = ({ reached, all }) => (all === 0 ? 100 : (100 * reached) / all);
const row = (name, { lines, branches }) =>
  `${name.padEnd(50)} ${percent(lines).toFixed(1).padStart(6)} % ${percent(branches).toFixed(1).padStart(6)} %`;

function print(files, showsLines) {
  heading('Coverage: lines, branches');
  for (const [name, file] of [...files].sort()) {
    const shares = sharesOf([file]);
    console.log(row(name, shares));
    if (showsLines && shares.missed.length > 0) console.log(`    ${shares.missed.join(' ')}`);
  }
  for (const engine of ['Scrivo', 'Beautifier']) {
    const own = [...files].filter(([name]) => name.startsWith(`${engine}/`));
    console.log(row(`all of ${engine}/`, sharesOf(own.map(([, file]) => file))));
  }
}

async function coverageMain(args) {
  await build('coverage');
  for (const counts of filesBelow(BUILD, '.gcda')) fs.rmSync(counts);
  heading('Tests of the core (coverage)');
  const code = await run('ctest', ['--preset', 'coverage', '--parallel', JOBS, '--quiet']);
  if (code !== 0) throw failure('coverage: tests failed');
  const files = readCounts();
  print(files, args.includes('--lines'));
  const all = sharesOf([...files.values()]);
  console.log(row('both engines', all));
  const missing = Object.keys(MIN_PERCENT).filter((key) => percent(all[key]) < MIN_PERCENT[key]);
  for (const key of missing) console.log(`Fewer than ${MIN_PERCENT[key]} % of the ${key}`);
  return missing.length === 0 ? 0 : 1;
}

main(coverageMain);
