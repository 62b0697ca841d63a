'use strict';

// `npm run compare`: the template engine and its literal form on generated strokes, bit for
// bit.
//
//   npm run compare -- --count 1000000 --seed 7

const path = require('node:path');
const { parseArgs } = require('node:util');
const { build } = require('./build.js');
const { ROOT, failure, main, run } = require('./support/run.js');

async function compareMain(args) {
  const { values } = parseArgs({
    args,
    options: {
      count: { type: 'string', default: '100000' },
      seed: { type: 'string', default: '1' },
    },
  });
  const wrong = Object.entries(values).find(([, value]) => !/^[1-9]\d{0,8}$/.test(value));
  if (wrong) throw failure(`compare: --${wrong[0]} needs a positive number`);
  await build('release');
  const program = path.join(ROOT, 'build', 'release', 'fuzz', 'compare');
  return run(program, [values.count, values.seed]);
}

main(compareMain);
