'use strict';

const assert = require('node:assert/strict');
const { describe, test } = require('node:test');
const { checkNode, matchesLock, planSystemPackages } = require('../../tools/setup.js');

describe('setup', () => {
  const wanted = ['g++', 'cmake', 'ninja-build'];
  const plan = (facts) => planSystemPackages({ wanted, root: false, sudo: false, ...facts });

  test('installs what is missing, and nothing else, as root', () => {
    const { commands } = plan({ installed: new Set(['cmake']), root: true });
    const [update, install] = commands.map((command) => command.join(' '));
    assert.match(update, /^env DEBIAN_FRONTEND=noninteractive apt-get .*update$/);
    assert.match(install, / install -y --no-install-recommends g\+\+ ninja-build$/);
  });

  test('adds the architecture of a package for another processor', () => {
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
    assert.match(checkNode('16.20.2').error, /install Node 18/);
    assert.match(checkNode('18.19.0').warning, /need 20/);
    assert.deepEqual(checkNode('20.1.0'), {});
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
