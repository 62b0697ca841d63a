'use strict';

const assert = require('node:assert/strict');
const { spawnSync } = require('node:child_process');
const { describe, it } = require('node:test');
const { createProgress } = require('../../packages/cli/lib/progress.js');
const { collect } = require('../support/cli.js');

describe('progress', () => {
  function show(isTTY, totalBytes) {
    const stream = Object.assign(collect(), { isTTY });
    const progress = createProgress({ totalBytes, stream });
    progress.advance(50);
    progress.count(3);
    progress.stop();
    return stream.text;
  }

  it('shows a bar on a terminal, a count where the size is unknown, elsewhere nothing', () => {
    assert.match(show(true, 100), /\d+ %/);
    assert.match(show(true, undefined), /3 strokes/);
    assert.doesNotMatch(show(true, undefined), /%/);
    assert.equal(show(false, 100), '');
  });

  it('restores the terminal when the run is interrupted', () => {
    const file = JSON.stringify(require.resolve('../../packages/cli/lib/progress.js'));
    const source = `process.stderr.isTTY = true;
      require(${file}).createProgress({ totalBytes: 9 });
      process.kill(process.pid, 'SIGINT'); setTimeout(() => {}, 5000)`;
    const options = { encoding: 'utf8' };
    const { status, signal, stderr } = spawnSync(process.execPath, ['-e', source], options);
    assert.deepEqual([status, signal], [null, 'SIGINT']);
    const [off, on] = ['\u001b[?7l', '\u001b[?7h'].map((code) => stderr.lastIndexOf(code));
    assert.ok(off >= 0 && on > off, JSON.stringify(stderr));
  });
});
