'use strict';

const assert = require('node:assert/strict');
const { spawn } = require('node:child_process');
const { once } = require('node:events');
const path = require('node:path');
const { describe, test } = require('node:test');
const { judgeNode, matchesLock, planSystemPackages } = require('../../tools/setup.js');
const { unbuiltFiles } = require('../../tools/support/source-lists.js');
const counting = require('../../tools/support/test-counts.js');

describe('setup', () => {
  const wanted = ['g++', 'cmake', 'ninja-build'];
  const plan = (facts) => planSystemPackages({ wanted, root: false, sudo: false, ...facts });

  test('does nothing when every package is installed', () => {
    assert.deepEqual(plan({ installed: new Set(wanted) }), { missing: [], commands: [] });
  });

  test('installs what is missing, and nothing else, as root', () => {
    const { commands } = plan({ installed: new Set(['cmake']), root: true });
    const [update, install] = commands.map((command) => command.join(' '));
    assert.match(update, /^env DEBIAN_FRONTEND=noninteractive apt-get .*update$/);
    assert.match(install, / install -y --no-install-recommends g\+\+ ninja-build$/);
  });

  test('lets Debian know of a second processor where a package is for that', () => {
    const facts = { wanted: ['cmake', 'musl:arm64'], installed: new Set(['cmake']) };
    const { commands } = plan({ ...facts, root: true });
    assert.equal(commands[0].join(' '), 'dpkg --add-architecture arm64');
    assert.equal(commands.length, 3);
    assert.match(plan(facts).advice, /sudo dpkg --add-architecture arm64 && sudo apt-get update/);
    assert.deepEqual(plan({ ...facts, installed: new Set(facts.wanted) }).commands, []);
  });

  test('goes through sudo where it asks for no password', () => {
    const { commands } = plan({ installed: new Set(), sudo: true });
    assert.equal(commands.length, 2);
    for (const command of commands) assert.deepEqual(command.slice(0, 2), ['sudo', '-n']);
  });

  test('prints the exact command where it may install nothing', () => {
    const { commands, advice } = plan({ installed: new Set(['g++']) });
    assert.deepEqual(commands, []);
    assert.match(
      advice,
      /sudo apt-get update && sudo apt-get install --no-install-recommends cmake ninja-build$/,
    );
  });

  test('names the packages on a system without dpkg', () => {
    const { missing, commands, advice } = plan({ installed: null, root: true });
    assert.deepEqual([missing, commands], [[], []]);
    assert.match(advice, /g\+\+ cmake ninja-build/);
  });

  test('refuses Node 16 and warns of Node 18', () => {
    assert.match(judgeNode('16.20.2').error, /install Node 18/);
    assert.match(judgeNode('18.19.0').warning, /want 20/);
    assert.deepEqual(judgeNode('20.1.0'), {});
  });

  test('compares the installed npm packages with the lock file', () => {
    const entry = (version, more) => ({ version, integrity: `sha512-${version}`, ...more });
    const lock = {
      packages: {
        '': { name: 'scrivo' },
        'node_modules/a': entry('1.0.0'),
        'node_modules/other-platform': entry('1.0.0', { optional: true }),
      },
    };
    const a = { 'node_modules/a': entry('1.0.0') };
    const matches = (packages) => matchesLock(lock, { packages });
    assert.equal(matches(a), true);
    assert.equal(matchesLock(lock, null), false);
    assert.equal(matches({}), false, 'a package is missing');
    assert.equal(matches({ 'node_modules/a': entry('1.0.1') }), false);
    assert.equal(matches({ ...a, 'node_modules/left': entry('1.0.0') }), false);
  });
});

test('the list check finds C++ files that nothing builds', () => {
  const makefiles = new Map([
    ['core/CMakeLists.txt', 'add_library(core\n  "unit/A.cpp"\n  unit/A.h) # unit/B.cpp'],
    ['core/test/CMakeLists.txt', 'add_executable(t ATest.cpp)'],
  ]);
  const sources = new Map([
    ['core/unit/A.cpp', '#include "unit/A.h"\n#include "unit/detail/C.h"\n'],
    ['core/unit/A.h', ''],
    ['core/unit/detail/C.h', '  #  include "D.h"'],
    ['core/unit/detail/D.h', '#include "core/unit/detail/E.h"'],
    ['core/test/ATest.cpp', ''],
    ['core/unit/B.cpp', ''],
    ['core/unit/detail/E.h', '#include "F.h"\n'],
    ['core/unit/detail/OldC.h', '#include "OldC.h"'],
    ['ATest.cpp', ''],
  ]);
  assert.deepEqual(unbuiltFiles(sources, makefiles), [
    'core/unit/B.cpp',
    'core/unit/detail/OldC.h',
    'ATest.cpp',
  ]);
});

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

test('an interrupted tool takes its children and theirs along', { timeout: 60_000 }, async (t) => {
  const script = `require('./tools/support/run.js').run('sh', ['-c', 'sleep 600 & echo $$; wait'])`;
  const tool = spawn(process.execPath, ['-e', script], { cwd: path.join(__dirname, '../..') });
  const [group] = await once(tool.stdout, 'data');
  t.after(() => {
    try {
      process.kill(-group, 'SIGKILL');
    } catch {
      // gone, as it should be
    }
  });
  tool.kill('SIGTERM');
  // The output closes when the last process that holds it is gone.
  assert.deepEqual(await once(tool, 'close'), [128 + 15, null]);
});
