'use strict';

const assert = require('node:assert/strict');
const { spawnSync } = require('node:child_process');
const fs = require('node:fs');
const path = require('node:path');
const { after, describe, test } = require('node:test');
const { PROGRAM, drawStrokes, makeFolder, run, toNdjson } = require('../support/cli.js');

describe('the program, in every host', () => {
  const home = process.cwd();
  const folder = makeFolder((remove) =>
    after(() => {
      process.chdir(home); // Windows keeps the folder that a process is in
      remove();
    }),
  );

  for (const engine of ['beautifier', 'template']) {
    test(`ends with the answers of one thread when it has several: ${engine}`, async () => {
      const ink = toNdjson(drawStrokes(30));
      const args = ['idealise', '--engine', engine];
      const alone = await run(folder, args, ink);
      assert.equal(alone.code, 0, alone.stderr);
      fs.writeFileSync(path.join(folder, 'ink.ndjson'), ink);
      // Files, because Node in Wine cannot write to a pipe.
      const descriptor = fs.openSync(path.join(folder, 'answers'), 'w');
      const { status, signal } = spawnSync(
        process.execPath,
        [PROGRAM, ...args, '--jobs', '2', path.join(folder, 'ink.ndjson')],
        { stdio: ['ignore', descriptor, 'ignore'], timeout: 120_000 },
      );
      fs.closeSync(descriptor);
      assert.deepEqual({ status, signal }, { status: 0, signal: null });
      assert.equal(fs.readFileSync(path.join(folder, 'answers'), 'utf8'), alone.stdout);
      assert.notEqual(alone.stdout, ink);
    });
  }
});
