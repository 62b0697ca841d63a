'use strict';

const path = require('node:path');
const workerpool = require('workerpool');
const { createEngine } = require('../engines.js');
const { UserError } = require('../user-error.js');
const { createProcessor } = require('./processor.js');
const { SharedWork } = require('./shared-work.js');

// In Bun the pool waits for its workers without end: there the work is done in this thread.
const IS_BUN = process.versions.bun !== undefined;

const WORKER = path.join(__dirname, 'worker.js');

/**
 * Loads the engine and prepares what runs its jobs: this thread and, for more than one job at a
 * time, a pool of worker threads.
 *
 * @param {import('./processor.js').ProcessorOptions} options
 * @param {number} jobs at a time
 * @returns {{run: (job: object) => Promise<import('./processor.js').JobResult>,
 *   runFile?: (reading: import('./jobs.js').Reading) => Promise<object[]>,
 *   close: () => Promise<void>}} runFile: reads a document and runs all its jobs
 */
function createRunner(options, jobs) {
  const engine = createEngine(options.engine, options.beautifier);
  // The template engine prints a message when some lines snap, which must not end up among the
  // strokes or the summary. So it runs in processes, whose standard output is discarded.
  if (options.snap && engine.name === 'template' && !IS_BUN) {
    return createPool('process', jobs, { ...options, loads: true });
  }
  if (jobs === 1 || IS_BUN) {
    const processJob = createProcessor({ ...options, loads: true });
    return { run: async (job) => processJob(job), close: async () => {} };
  }
  // The threads share the templates, which must be loaded before the first thread starts.
  engine.load(options);
  const pool = createPool('thread', jobs, options);
  const shared = new SharedWork(createProcessor(options), pool, jobs);
  return { ...pool, run: (job) => shared.run(job) };
}

function createPool(workerType, maxWorkers, options) {
  const isProcess = workerType === 'process';
  const pool = workerpool.pool(WORKER, {
    workerType,
    maxWorkers,
    // Turns output into events.
    emitStdStreams: isProcess,
    forkOpts: { serialization: 'advanced' },
    // What a worker parses is short-lived; more memory for it makes it no quicker.
    workerThreadOpts: { resourceLimits: { maxYoungGenerationSizeMb: 8 } },
  });
  let isClosed = false;
  async function exec(task, what, transfer) {
    // A pool that was terminated would start workers again, which nobody ends.
    if (isClosed) throw new Error('the workers have been ended');
    const { results, failure } = await pool
      .exec(task, [options, what], { transfer, on: discard })
      .catch(explain);
    if (failure) throw new UserError(failure);
    return results;
  }
  async function runAll(jobs) {
    const blocks = isProcess ? [] : jobs.filter(({ bytes }) => bytes);
    return exec(
      'work',
      jobs,
      blocks.map(({ bytes }) => bytes.buffer),
    );
  }
  return {
    runAll,
    async run(job) {
      const [result] = await runAll([job]);
      return result;
    },
    runFile: (reading) => exec('workFile', reading, []),
    async close() {
      isClosed = true;
      await pool.terminate(true);
    },
  };
}

/** Every task needs a listener: an event without one ends the program. */
function discard() {}

/** Reports a worker that was ended from outside; other errors are faults of the program. */
function explain(error) {
  const isEnded = /Worker terminated Unexpectedly/i.test(error.message);
  if (!isEnded && error.code !== 'ERR_WORKER_OUT_OF_MEMORY') throw error;
  const [, signal] = /signalCode: `(SIG\w+)`/.exec(error.message) ?? [];
  const cause = signal ? ` by ${signal}` : '';
  throw new UserError(`a worker was ended${cause}; if memory ran out, try --jobs 1`);
}

module.exports = { createRunner };
