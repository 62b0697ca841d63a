'use strict';

const assert = require('node:assert/strict');
const { spawnSync } = require('node:child_process');
const fs = require('node:fs');
const os = require('node:os');
const path = require('node:path');
const { test } = require('node:test');

const { builtModule, root } = require('../support/native.js');

const isHost = 'bun' in process.versions && process.arch === 'x64';
const skip = isHost ? false : 'Bun for x64 alone makes single files here';

test('a single file starts where its package is, else it lists the files tried', { skip }, () => {
  const folder = fs.realpathSync(fs.mkdtempSync(path.join(os.tmpdir(), 'scrivo-single-')));
  const copy = path.join(folder, 'scrivo');
  fs.cpSync(path.join(root, 'lib'), path.join(copy, 'lib'), { recursive: true });
  fs.mkdirSync(path.join(copy, 'build', 'release'), { recursive: true });
  fs.copyFileSync(builtModule, path.join(copy, 'build', 'release', 'hello.node'));
  const script = path.join(folder, 'main.js');
  fs.writeFileSync(script, "console.log(require('./scrivo/lib/index.js').initScrivo([]));");
  const program = path.join(folder, 'program');
  const build = ['build', '--compile', script, '--outfile', program];
  assert.equal(spawnSync(process.execPath, build).status, 0);
  const start = () => spawnSync(program, [], { encoding: 'utf8' });
  assert.equal(start().stdout, 'true\n');
  fs.renameSync(copy, `${copy}-away`);
  const { status, stderr } = start();
  assert.notEqual(status, 0);
  assert.match(stderr, /Cannot find the native module hello.node. Tried:[^]*single-file programs/);
  fs.rmSync(folder, { recursive: true });
});
