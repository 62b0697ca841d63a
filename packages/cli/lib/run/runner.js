'use strict';

const path = require('node:path');
const { createEngine } = require('../engines.js');
const { createPool } = require('./pool.js');
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
  if (options.snap && writesToStdout) {
    const pool = createPool(
      WORKER,
      { ...options, loads: true },
      { type: 'process', workers: jobs },
    );
    return { ...pool, run: (job) => pool.run(job) };
  }
  if (jobs === 1) {
    const processJob = createProcessor({ ...options, loads: true });
    return { run: async (job) => processJob(job), close: async () => {} };
  }
  // Threads share the engine's templates: loaded before the first of them starts.
  createEngine(options.engine).load(options);
  const pool = createPool(WORKER, options, { workers: jobs });
  return { ...pool, run: (job) => pool.run(job, job.bytes ? [job.bytes.buffer] : []) };
}

module.exports = { createRunner };
