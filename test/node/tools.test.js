'use strict';

const assert = require('node:assert/strict');
const { spawn } = require('node:child_process');
const { once } = require('node:events');
const path = require('node:path');
const { describe, test } = require('node:test');
const { judgeNode, matchesLock, planSystemPackages } = require('../../tools/setup.js');
const { unbuiltFiles } = require('../../tools/support/source-lists.js');
const { countJunit, countTap } = require('../../tools/test.js');

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
    assert.deepEqual(
      commands.map((command) => command.slice(0, 2)),
      [
        ['sudo', '-n'],
        ['sudo', '-n'],
      ],
    );
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
    const installed = (packages) => ({ packages });
    const a = { 'node_modules/a': entry('1.0.0') };
    assert.equal(matchesLock(lock, installed(a)), true);
    assert.equal(matchesLock(lock, null), false);
    assert.equal(matchesLock(lock, installed({})), false, 'a package is missing');
    assert.equal(matchesLock(lock, installed({ 'node_modules/a': entry('1.0.1') })), false);
    assert.equal(
      matchesLock(lock, installed({ ...a, 'node_modules/left': entry('1.0.0') })),
      false,
    );
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

test('totals are read from the reports of both runners', () => {
  const xml = '<testsuite name="x"\n\ttests="9"\n\tfailures="2"\n\tdisabled="1"\n\tskipped="1">';
  assert.deepEqual(countJunit(xml), { passed: 5, failed: 2, skipped: 2 });
  const tap = '# tests 7\n# pass 3\n# fail 1\n# cancelled 1\n# skipped 2\n# todo 0\n';
  assert.deepEqual(countTap(tap), { passed: 3, failed: 2, skipped: 2 });
  const nothing = { passed: 0, failed: 0, skipped: 0 };
  assert.deepEqual([countJunit(''), countTap('')], [nothing, nothing]);
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
