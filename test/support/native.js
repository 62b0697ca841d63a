'use strict';

const assert = require('node:assert/strict');
const { spawnSync } = require('node:child_process');
const path = require('node:path');

const { findNative } = require('../../lib/native.js');

const root = path.join(__dirname, '..', '..');
const builtModule = findNative('hello');

const host = ['bun', 'deno', 'browser'].find((name) => name in process.versions) ?? 'node';

/** Whether scrivo-wasm is in the place of the native modules, see test/wasm. */
const isWasm = process.env.SCRIVO_TESTED === 'wasm';

/** Arrays behind a proxy, which only native code can tell from arrays. */
const proxies = isWasm ? [] : [new Proxy([{ x: 0.25, y: 0.5 }], {})];

/** For the option `skip` of a test: the reason for this host, or false. */
const skipIn = (reasons) => reasons[host] ?? false;

/**
 * Runs a function in a separate process and returns what it passes to `report`.
 * The function sees nothing of this process; it may be async, and it is given
 *
 * - `hello`: the path of the native module, which is not loaded yet
 * - `report(value)`: sets the result, anything that survives JSON
 * - `work(body)`: runs `body(native, { parentPort, workerData, started })` in a worker
 *   with a fresh native module; `started()` sets the first number of a shared `workerData`.
 *   Resolves to what it returns (not awaited), and to `{ exitCode }` if the worker ended
 *   before that
 * - `body`: the function given as an option, for use with `work`
 */
function runApart(main, { flags = [], body } = {}) {
  const source = `(${bootstrap})(${main}, ${JSON.stringify(builtModule)}, ${body})`;
  const child = spawnSync(process.execPath, [...flags, '-e', source], { encoding: 'utf8' });
  assert.equal(child.status, 0, `ended by ${child.signal ?? child.status}: ${child.stderr}`);
  return JSON.parse(child.stdout);
}

function bootstrap(main, hello, body) {
  const { Worker } = require('node:worker_threads');
  let result;

  function work(body, options) {
    const source = `
      const { parentPort, workerData } = require('node:worker_threads');
      const started = () => void Atomics.store(new Int32Array(workerData), 0, 1);
      const threads = { parentPort, workerData, started };
      parentPort.postMessage((${body})(require(${JSON.stringify(hello)}), threads));`;
    const worker = new Worker(source, { eval: true, ...options });
    const done = new Promise((resolve, reject) => {
      worker.on('message', resolve);
      worker.on('error', reject);
      worker.on('exit', (exitCode) => resolve({ exitCode }));
    });
    const ended = new Promise((resolve) => worker.on('exit', resolve));
    return Object.assign(
      ended.then(() => done),
      { worker },
    );
  }

  Promise.resolve(main({ hello, work, body, report: (value) => (result = value) })).then(
    () => process.stdout.write(JSON.stringify(result)),
    (error) => {
      console.error(error);
      process.exitCode = 1;
    },
  );
}

module.exports = { builtModule, isWasm, proxies, root, runApart, skipIn };
