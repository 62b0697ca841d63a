'use strict';

const assert = require('node:assert/strict');
const { describe, test } = require('node:test');
const counting = require('../../../tools/support/test-counts.js');

describe('the totals of a runner', () => {
  const deno = `running 3 tests from ./test/lib/x.test.js
alone ... ok (59ms)
group ...
  one ... ok (1ms)
  inner ...
    two ... ok (2ms)
    three ... ignored (0ms)
  inner ... ok (2ms)
group ... ok (5ms)
last ... ignored (0ms)

ok | 2 passed (4 steps) | 0 failed | 1 ignored (71ms)`;
  const denoFailing = 'g ...\n  one ... FAILED (1ms)\ng ... FAILED (due to 1 failed step) (2ms)';
  const xml = '<testsuite name="x"\n\ttests="9"\n\tfailures="2"\n\tdisabled="1"\n\tskipped="1">';
  const tap = '# tests 7\n# pass 3\n# fail 1\n# cancelled 1\n# skipped 2\n# todo 0\n';
  const bun = '(pass) 7 pass\n\n 11 pass\n 2 skip\n 1 fail\nRan 14 tests\n';
  const outputs = [
    ['countJunit', xml, [5, 2, 2]],
    ['countTap', tap, [3, 2, 2]],
    ['countBun', bun, [11, 1, 2]],
    ['countDeno', deno, [3, 0, 2]],
    ['countDeno', denoFailing, [0, 2, 0]],
    ...Object.keys(counting).map((name) => [name, 'Segmentation fault\n', [0, 0, 0]]),
  ];
  for (const [name, output, expected] of outputs) {
    test(`${name} reads ${expected}`, () => {
      const { passed, failed, skipped } = counting[name](output);
      assert.deepEqual([passed, failed, skipped], expected);
    });
  }
});
