'use strict';

const assert = require('node:assert/strict');
const { describe, test } = require('node:test');
const { setImmediate: turn } = require('node:timers/promises');
const { SharedWork } = require('../../../packages/cli/lib/run/shared-work.js');

const HERE = ({ id }) => `here ${id}`;
const THERE = ({ id }) => `there ${id}`;

/** Workers that answer when they are told to. */
function fakePool() {
  const calls = [];
  const runAll = (jobs) =>
    new Promise((resolve, reject) => {
      calls.push({ jobs, answer: () => resolve(jobs.map(THERE)), fail: reject });
    });
  return { calls, runAll };
}

/** The results of jobs, as they come. */
function give(shared, count) {
  const results = Array.from({ length: count }, () => undefined);
  results.forEach((_, id) => {
    const keep = (result) => {
      results[id] = result;
    };
    shared.run({ id }).then(keep, (error) => keep(error.message));
  });
  return results;
}

async function settle() {
  for (let i = 0; i < 20; i += 1) await turn();
}

describe('SharedWork', () => {
  test('starts no worker for a single job', async () => {
    const pool = fakePool();
    assert.equal(await new SharedWork(HERE, pool, 2).run({ id: 0 }), 'here 0');
    assert.equal(pool.calls.length, 0);
  });

  test('works in this thread until all workers are ready, whoever is first', async () => {
    const pool = fakePool();
    const shared = new SharedWork(HERE, pool, 2);
    const early = give(shared, 3);
    await settle();
    assert.deepEqual(early, ['here 0', 'here 1', 'here 2']);
    // Without a job: they say that the workers are ready.
    assert.deepEqual(
      pool.calls.map(({ jobs }) => jobs),
      [[], []],
    );
    for (const { answer } of pool.calls.splice(0)) answer();
    await settle();

    const late = give(shared, 7);
    await settle();
    assert.equal(pool.calls.length, 2);
    assert.ok(late.every((result) => result === undefined));
    while (pool.calls.length > 0) {
      pool.calls.pop().answer();
      await settle();
    }
    assert.deepEqual(
      late,
      late.map((_, id) => `there ${id}`),
    );
  });

  test('survives a worker that does not start', async () => {
    const pool = fakePool();
    const shared = new SharedWork(HERE, pool, 2);
    const results = give(shared, 3);
    pool.calls[0].fail(new Error('no memory'));
    await settle();
    assert.deepEqual(results, ['here 0', 'here 1', 'here 2']);
  });

  test('gives an error to the jobs that it concerns', async () => {
    const pool = fakePool();
    const refuse = ({ id }) => {
      if (id === 1) throw new Error('refused');
      return HERE({ id });
    };
    const shared = new SharedWork(refuse, pool, 1);
    const early = give(shared, 3);
    await settle();
    assert.deepEqual(early, ['here 0', 'refused', 'here 2']);
    pool.calls.shift().answer();
    await settle();
    const late = give(shared, 2);
    pool.calls.shift().fail(new Error('ended'));
    await settle();
    assert.deepEqual(late, ['ended', 'refused']);
  });
});
