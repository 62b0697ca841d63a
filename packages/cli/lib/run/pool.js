'use strict';

const workerpool = require('workerpool');
const { UserError } = require('../user-error.js');

/**
 * A pool of workers that hands jobs to the one that is free.
 *
 * @param {string} file a script that calls `serve`
 * @param {object} options plain data, what the workers' functions are made from
 * @param {object} how
 * @param {'thread'|'process'} [how.type]
 * @param {number} how.workers
 * @returns {{run: (job: object, transfer?: ArrayBuffer[]) => Promise<any>,
 *   close: () => Promise<void>}}
 */
function createPool(file, options, { type = 'thread', workers }) {
  const pool = workerpool.pool(file, {
    workerType: type,
    maxWorkers: workers,
    // What a process prints is then an event, which nobody listens to.
    emitStdStreams: type === 'process',
    forkOpts: { serialization: 'advanced' },
  });
  return {
    async run(job, transfer = []) {
      const result = await pool.exec('work', [options, job], { transfer }).catch(explain);
      if (result.failure) throw new UserError(result.failure);
      return result;
    },
    async close() {
      await pool.terminate(true);
    },
  };
}

/** A worker that ended is no fault of the program: the system or somebody ended it. */
function explain(error) {
  const isEnded = /Worker terminated Unexpectedly/i.test(error.message);
  if (!isEnded && error.code !== 'ERR_WORKER_OUT_OF_MEMORY') throw error;
  const [, signal] = /signalCode: `(SIG\w+)`/.exec(error.message) ?? [];
  const cause = signal ? ` by ${signal}` : '';
  throw new UserError(
    `a worker was ended${cause} before its work was done; if memory ran out, --jobs 1 takes less`,
  );
}

/**
 * The worker's side of a pool.
 *
 * @param {(options: object) => (job: object) => object} create makes the function that does the
 *   jobs; called once
 * @param {(result: object) => ArrayBuffer[]} [buffersOf] what a result hands over instead of
 *   copying it
 */
function serve(create, buffersOf = () => []) {
  let processJob;
  const work = (options, job) => {
    try {
      processJob ??= create(options);
      const result = processJob(job);
      return new workerpool.Transfer(result, buffersOf(result));
    } catch (error) {
      if (!(error instanceof UserError)) throw error;
      // The kind of an error does not come through to the main thread.
      return { failure: error.message };
    }
  };
  workerpool.worker({ work });
}

module.exports = { createPool, serve };
