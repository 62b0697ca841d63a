'use strict';

const assert = require('node:assert/strict');
const { describe, test } = require('node:test');

const { builtModule, runApart, skipIn } = require('../support/native.js');

// What a host may do with a native module, each in a separate process: loading takes another
// path once any thread has mapped the library.

const notNode = { bun: "a flag of Node's", deno: "a flag of Node's" };
const ANSWER = { path: [{ x: 1, y: 2, force: 0.5 }], type: 0 };
const once = (native) => native.optimizeAStroke([{ x: 1, y: 2, force: 0.5 }], 1, 1, []);

/** Terminates a worker that runs `body`; reports its outcome and the results of later calls. */
async function endWhileInCall({ hello, work, body, report }) {
  const native = require(hello);
  const started = new SharedArrayBuffer(4);
  const run = work(body, { workerData: started });
  while (!Atomics.load(new Int32Array(started), 0)) await new Promise(setImmediate);
  await new Promise((resolve) => setTimeout(resolve, 20));
  await run.worker.terminate();
  const other = await work((fresh) => fresh.optimizeAStroke([], 1, 1, []).type);
  report([await run, other, native.optimizeAStroke([], 1, 1, []).type]);
}

describe('the native module', () => {
  const reason = { bun: 'a module that registers itself exports its `exports` as well' };
  test('exports two functions and nothing else', { skip: skipIn(reason) }, () => {
    const found = runApart(({ hello, report }) => {
      const native = require(hello);
      report(Object.entries(native).map(([key, value]) => [key, typeof value, value.name]));
    });
    assert.deepEqual(found, [
      ['initScrivo', 'function', ''],
      ['optimizeAStroke', 'function', ''],
    ]);
  });

  test('answers before templates are loaded, and uses them afterwards', () => {
    const types = runApart(async ({ hello, work, report }) => {
      const fs = require('node:fs');
      const native = require(hello);
      const at = (turn) => ({ x: 0.5 + 0.4 * Math.cos(turn), y: 0.5 + 0.4 * Math.sin(turn) });
      const circle = Array.from({ length: 65 }, (_, i) => at((Math.PI * i) / 32));
      const recognise = () => native.optimizeAStroke(circle, 200, 200, []).type;
      const before = recognise();

      const folder = fs.mkdtempSync(`${require('node:os').tmpdir()}/scrivo-test-`);
      const file = `${folder}/ellipse.template`;
      fs.writeFileSync(file, circle.map(({ x, y }) => `${x},${y}`).join(','));
      native.initScrivo([]);
      const without = recognise();
      native.initScrivo([{ toString: () => file }]);
      fs.rmSync(folder, { recursive: true });

      // The templates belong to the process: threads started later have them.
      const inWorker = await work(
        (other, { workerData }) => other.optimizeAStroke(workerData, 200, 200, []).type,
        { workerData: circle },
      );
      report([before, without, recognise(), inWorker]);
    });
    assert.deepEqual(types, [0, 0, 7, 7]);
  });

  test('loads again when its cache entry is deleted, beside the first', () => {
    const answers = runApart(({ hello, report }) => {
      const load = () => {
        delete require.cache[require.resolve(hello)];
        return require(hello).optimizeAStroke;
      };
      const functions = [load(), load(), load()];
      if (new Set(functions).size !== 3) throw new Error('not loaded anew');
      const get = () => functions[1]([{ x: 1, y: 2 }], 1, 1, []).path[0].x;
      const point = Object.defineProperty({ y: 2, force: 0.5 }, 'x', { get });
      report(functions.map((optimize) => optimize([point], 1, 1, [])));
    });
    assert.deepEqual(answers, [ANSWER, ANSWER, ANSWER]);
  });
});

test('answers where code from strings is disallowed', { skip: skipIn(notNode) }, () => {
  const found = runApart(
    ({ hello, report }) => {
      const native = require(hello);
      let refused = false;
      try {
        eval('1');
      } catch (error) {
        refused = error instanceof EvalError;
      }
      report([refused, native.optimizeAStroke([{ x: 1, y: 2, force: 0.5 }], 1, 1, [])]);
    },
    { flags: ['--disallow-code-generation-from-strings'] },
  );
  assert.deepEqual(found, [true, ANSWER]);
});

describe('worker threads', () => {
  test('load it one after the other, the main thread does not', () => {
    const threeTimes = async ({ work, body, report }) =>
      report([await work(body), await work(body), await work(body)]);
    const answers = runApart(threeTimes, { body: once });
    assert.deepEqual(answers, [ANSWER, ANSWER, ANSWER]);
  });

  test('load it before, beside and after the main thread', () => {
    const aroundIt = async ({ hello, work, body, report }) => {
      const before = [await work(body), await work(body)];
      const native = require(hello);
      report([...before, body(native), await work(body), body(native)]);
    };
    const answers = runApart(aroundIt, { body: once });
    assert.deepEqual(answers, Array(5).fill(ANSWER));
  });

  test('use it four at a time, and four again', () => {
    const many = (native) => {
      let sum = 0;
      for (let i = 0; i < 2000; ++i) {
        const stroke = Array.from({ length: 1 + (i % 9) }, () => ({ x: i, y: 0, force: 1 }));
        for (const point of native.optimizeAStroke(stroke, 9, 9, [stroke]).path) sum += point.x;
      }
      return sum;
    };
    const eight = async ({ work, body, report }) => {
      const four = () => Promise.all([work(body), work(body), work(body), work(body)]);
      report([...(await four()), ...(await four())]);
    };
    const echo = { optimizeAStroke: (path) => ({ path }) };
    assert.deepEqual(runApart(eight, { body: many }), Array(8).fill(many(echo)));
  });

  const keeping = 'never unmaps a native module';
  const carriesLibrary = builtModule.includes('prebuilds') && process.arch !== 'x64';
  const skip =
    process.platform !== 'linux' ||
    (carriesLibrary && 'the C++ library in the module must stay') ||
    skipIn({ bun: keeping, deno: keeping });
  test('leave nothing mapped behind', { skip }, () => {
    const isMapped = () => /hello\.node/.test(require('fs').readFileSync('/proc/self/maps'));
    const around = async ({ work, body, report }) => report([body(), await work(body), body()]);
    const mapped = runApart(around, { body: isMapped });
    assert.deepEqual(mapped, [false, true, false]);
  });

  // In each case the worker is stopped during the call. The process must survive, and
  // the module must keep working in the other threads.
  const endings = {
    'in a getter': (native, { started }) => {
      const get = () => {
        for (started(); ;);
      };
      const point = Object.defineProperty({}, 'x', { get });
      native.optimizeAStroke([point, 5], 1, undefined, [[null]]);
    },
    'in a conversion to a string': (native, { started }) => {
      const toString = () => {
        for (started(); ;);
      };
      native.initScrivo([{ toString }, Symbol('later'), 'more']);
    },
    'while a long stroke is converted': (native, { started }) => {
      const stroke = Array(1e5).fill({ x: NaN, y: 0 });
      for (started(); ;) native.optimizeAStroke([], 1, 1, [stroke, stroke]);
    },
    'while bad strokes are converted': (native, { started }) => {
      for (started(); ;) {
        try {
          native.optimizeAStroke([5], undefined, '1', [[{ x: 1n }]]);
        } catch {
          continue;
        }
      }
    },
    'by itself': (native, { started }) => {
      started();
      const point = Object.defineProperty({}, 'x', { get: () => process.exit(1) });
      native.optimizeAStroke([point, 5], 1, '1', [5]);
    },
  };
  for (const [when, body] of Object.entries(endings)) {
    test(`may be terminated ${when}`, () => {
      const outcome = runApart(endWhileInCall, { body });
      assert.deepEqual(outcome, [{ exitCode: 1 }, 0, 0]);
    });
  }
});

test('memory does not grow with the number of calls', () => {
  const grown = runApart(
    ({ hello, report }) => {
      const native = require(hello);
      const stroke = Array.from({ length: 300 }, (_, i) => ({ x: NaN, y: i, force: 0.5 }));
      const again = () => native.optimizeAStroke(stroke, 1, 1, []).path[0];
      const nested = Object.defineProperty({ y: 0 }, 'x', { get: () => again().y });
      const failing = new Proxy(nested, {
        has: () => {
          throw stroke;
        },
      });
      const attempt = (call) => {
        try {
          return call();
        } catch (error) {
          return error;
        }
      };
      const calls = () => {
        for (let i = 0; i < 1500; ++i) {
          attempt(() => native.optimizeAStroke(stroke, 1, 1, [stroke, stroke]));
          attempt(() => native.optimizeAStroke([nested], 1, 1, [[nested]]));
          attempt(() => native.optimizeAStroke([...stroke, undefined], 1, 1));
          attempt(() => native.optimizeAStroke([failing], 1, 1, []));
          attempt(() => native.initScrivo([`${i}`.repeat(1000), Symbol('path')]));
        }
        global.gc();
        return process.memoryUsage().rss;
      };
      calls();
      const before = calls();
      calls();
      calls();
      report(calls() - before);
    },
    // A small young generation: its growth would hide a leak.
    { flags: ['--expose-gc', '--max-semi-space-size=1'] },
  );
  // Leaking one transfer buffer per round would take 27 MB, one stroke 32 MB. The address
  // sanitizer keeps up to 8 MB of freed memory for a while.
  const allowed = 'LD_PRELOAD' in process.env ? 1e7 : 3e6;
  assert.ok(grown < allowed, `grew by ${grown} bytes in 4500 rounds`);
});
