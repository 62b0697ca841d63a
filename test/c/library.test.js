'use strict';

const assert = require('node:assert/strict');
const { execFileSync } = require('node:child_process');
const fs = require('node:fs');
const path = require('node:path');
const { test } = require('node:test');

const { root } = require('../support/native.js');

test('the shared library exports the functions of scrivo.h, and nothing else', () => {
  const header = fs.readFileSync(path.join(root, 'subproject/scrivo/C/scrivo.h'), 'utf8');
  const declared = [...header.matchAll(/^SCRIVO_API[^(]*?(\w+)\(/gm)].map(([, name]) => name);
  const library = path.join(root, 'build/release/subproject/scrivo/C/libscrivo.so');
  const nm = ['-D', '--defined-only', '--format=just-symbols', library];
  const exported = execFileSync('nm', nm, { encoding: 'utf8' }).trim().split('\n');
  assert.ok(declared.length > 0);
  assert.deepEqual(exported.sort(), declared.sort());
  const { version } = require('../../package.json');
  const soname = `libscrivo.so.${version.split('.').slice(0, 2).join('.')}`;
  const dynamic = execFileSync('objdump', ['-p', library], { encoding: 'utf8' });
  assert.match(dynamic, new RegExp(`SONAME +${soname}\\n`));
});
