'use strict';

// `node:test` as far as the tests of the engines use it.

/** Of the file under way: tests with the titles of what they are in. */
let found = [];
let titles = [];

function describe(title, body) {
  titles.push(title);
  body();
  titles.pop();
}

function test(title, ...rest) {
  const body = rest.pop();
  const [{ skip = false } = {}] = rest;
  found.push({ name: [...titles, title].join(' > '), body, skip });
}

const results = {};

/** Runs the tests that `load` finds, one after the other. */
async function run(file, load) {
  found = [];
  titles = [];
  const result = { passed: 0, skipped: [], failed: [] };
  results[file] = result;
  load();
  for (const { name, body, skip } of found) {
    if (skip) {
      result.skipped.push(name);
      continue;
    }
    try {
      await body();
      result.passed++;
    } catch (error) {
      result.failed.push(`${name}: ${error?.stack ?? error}`);
    }
  }
}

run.end = () => fetch('results', { method: 'POST', body: JSON.stringify(results) });

module.exports = { describe, it: test, test, run };
