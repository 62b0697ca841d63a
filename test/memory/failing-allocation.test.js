'use strict';

const assert = require('node:assert/strict');
const { spawnSync } = require('node:child_process');
const path = require('node:path');
const { test } = require('node:test');

const { root } = require('../support/native.js');

// Lets the allocations of each call fail in turn, in a process of its own.

const shim = path.join(root, 'build', 'release', 'test', 'memory', 'failing_allocation.node');
const program = path.join(__dirname, 'fail-in-turn.js');

// The runtime of a sanitizer is preloaded too, and has its own allocation.
const skip = process.platform !== 'linux' || 'LD_PRELOAD' in process.env;

/** Runs the calls of `name` from the allocation `first` on. */
function failInTurn(name, first = 0) {
  const args = ['--expose-gc', program, shim, name, String(first)];
  const env = { ...process.env, LD_PRELOAD: shim };
  const { signal, stdout, stderr } = spawnSync(process.execPath, args, { encoding: 'utf8', env });
  assert.ok(stdout !== '', stderr);
  return { signal, ...JSON.parse(stdout.trim().split('\n').at(-1)) };
}

/** Of all allocations of a call: those after which it answered or threw, or the process ended. */
function outcomes(name) {
  const sum = { answered: 0, thrown: 0, ended: 0 };
  for (let [at, done] = [0, false]; !done;) {
    const found = failInTurn(name, at);
    assert.equal(found.left, 0, 'everything is freed');
    assert.equal(found.signal, found.done ? null : 'SIGABRT');
    ({ done } = found);
    at = found.at + 1;
    sum.thrown += found.thrown;
    sum.answered += found.failed - found.thrown;
    sum.ended += done ? 0 : 1;
  }
  return sum;
}

for (const name of ['Beautifier', 'beautify', 'beautifyAs', 'outlineOf', 'resample', 'idealise']) {
  test(`${name} throws when memory runs out, and leaves nothing behind`, { skip }, () => {
    const found = outcomes(name);
    assert.equal(found.ended, 0);
    // Sorting does without the room that it asks for.
    assert.ok(found.thrown > 5 && found.answered <= 2, JSON.stringify(found));
  });
}

test(
  'optimizeAStroke answers with the ink, or ends the process while it converts',
  { skip },
  () => {
    const found = outcomes('optimizeAStroke');
    assert.equal(found.thrown, 0);
    assert.ok(found.answered > found.ended, JSON.stringify(found));
  },
);
