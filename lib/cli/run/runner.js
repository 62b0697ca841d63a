'use strict';

const path = require('node:path');
const workerpool = require('workerpool');
const { createEngine } = require('../engines.js');
const { UserError } = require('../user-error.js');
const { createProcessor } = require('./processor.js');

const WORKER = path.join(__dirname, 'worker.js');

/**
 * Prepares the engine and whatever runs its jobs: this thread for one job at a time, else a pool
 * of worker threads.
 *
 * The core may write a line to standard output when a line snaps. Where the strokes go there too,
 * snapping runs in processes whose own standard output is thrown away.
 *
 * @param {import('./processor.js').ProcessorOptions} options
 * @param {object} how
 * @param {number} how.jobs at a time
 * @param {boolean} how.writesToStdout
 * @returns {{run: (job: object) => Promise<import('./processor.js').JobResult>,
 *   close: () => Promise<void>}}
 */
function createRunner(options, { jobs, writesToStdout }) {
  if (options.snap && writesToStdout)
    return createPool({ ...options, loads: true }, 'process', jobs);
  if (jobs === 1) {
    const processJob = createProcessor({ ...options, loads: true });
    return { run: async (job) => processJob(job), close: async () => {} };
  }
  // Threads share the engine's templates: loaded before the first of them starts.
  createEngine(options.engine).load(options);
  return createPool(options, 'thread', jobs);
}

function createPool(options, workerType, maxWorkers) {
  const pool = workerpool.pool(WORKER, {
    workerType,
    maxWorkers,
    emitStdStreams: workerType === 'process',
    forkOpts: { serialization: 'advanced' },
  });
  return {
    async run(job) {
      const transfer = workerType === 'thread' && job.bytes ? [job.bytes.buffer] : [];
      const result = await pool.exec('work', [options, job], { transfer });
      if (result.failure) throw new UserError(result.failure);
      return result;
    },
    async close() {
      await pool.terminate(true);
    },
  };
}

module.exports = { createRunner };
