'use strict';

// `npm run soak`: both modules answer generated strokes for long, see test/soak/main.js, or are
// given more than a host would give them. Each run prints the memory that it took.
//
//   npm run soak -- --strokes 1000000
//   npm run soak -- --large             strokes of 10 million points and the like
//   npm run soak -- --workers 1000      workers that are terminated in the middle of a call

const path = require('node:path');
const { parseArgs } = require('node:util');
const { build } = require('./build.js');
const { ROOT, failure, main, run } = require('./support/run.js');

const FOLDER = path.join(ROOT, 'test', 'soak');

const soak = (program, arg) =>
  run(process.execPath, ['--expose-gc', path.join(FOLDER, program), arg]);

/** Each in a process of its own, whose greatest size is its own too. */
async function soakLarge() {
  const { names } = require(path.join(FOLDER, 'large.js'));
  let failed = 0;
  for (const name of names) failed += (await soak('large.js', name)) === 0 ? 0 : 1;
  return failed > 0 ? 1 : 0;
}

async function soakMain(args) {
  const { values } = parseArgs({
    args,
    options: {
      strokes: { type: 'string', default: '100000' },
      large: { type: 'boolean' },
      workers: { type: 'string' },
    },
  });
  const { strokes, large, workers } = values;
  for (const [name, count] of Object.entries({ strokes, workers })) {
    const isCount = count === undefined || /^[1-9]\d{0,9}$/.test(count);
    if (!isCount) throw failure(`soak: --${name} needs a positive number`);
  }
  await build('release', { modulesOnly: true });
  if (large) return soakLarge();
  return workers ? soak('workers.js', workers) : soak('main.js', strokes);
}

main(soakMain);
