'use strict';

// `npm run soak`: both modules answer generated strokes for long; see test/soak/main.js.
//
//   npm run soak -- --strokes 1000000

const path = require('node:path');
const { parseArgs } = require('node:util');
const { build } = require('./build.js');
const { ROOT, failure, main, run } = require('./support/run.js');

async function soakMain(args) {
  const options = { strokes: { type: 'string', default: '100000' } };
  const { strokes } = parseArgs({ args, options }).values;
  if (!/^[1-9]\d{0,9}$/.test(strokes)) throw failure('soak: --strokes needs a positive number');
  await build('release', { modulesOnly: true });
  const program = path.join(ROOT, 'test', 'soak', 'main.js');
  return run(process.execPath, ['--expose-gc', program, strokes]);
}

main(soakMain);
