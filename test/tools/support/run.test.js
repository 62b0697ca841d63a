'use strict';

const assert = require('node:assert/strict');
const { spawn } = require('node:child_process');
const { once } = require('node:events');
const { test } = require('node:test');
const { ROOT } = require('../../../tools/support/run.js');

test('an interrupted tool takes its children and theirs along', { timeout: 60_000 }, async (t) => {
  const script = `require('./tools/support/run.js').run('sh', ['-c', 'sleep 600 & echo $$; wait'])`;
  const tool = spawn(process.execPath, ['-e', script], { cwd: ROOT });
  const [group] = await once(tool.stdout, 'data');
  t.after(() => {
    try {
      process.kill(-group, 'SIGKILL');
    } catch {
      // It is gone.
    }
  });
  tool.kill('SIGTERM');
  // The output closes when the last process that holds it is gone.
  assert.deepEqual(await once(tool, 'close'), [128 + 15, null]);
});
