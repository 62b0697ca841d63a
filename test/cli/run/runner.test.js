'use strict';

const assert = require('node:assert/strict');
const { after, test } = require('node:test');
const { createRunner } = require('../../../packages/cli/lib/run/runner.js');

test('a runner that has been closed starts no worker for the jobs that are left', async () => {
  const runner = createRunner({ engine: 'beautifier', format: 'ndjson', beautifier: {} }, 3);
  after(() => runner.close());
  const line = () => ({ bytes: new TextEncoder().encode('{"points":[[1,2]]}\n') });
  const early = Array.from({ length: 12 }, () => runner.run(line()).catch(() => {}));
  await runner.close();
  await Promise.all(early);
  // A new worker would answer, and keep the process alive.
  await assert.rejects(runner.runAll([line()]), /ended/);
});
