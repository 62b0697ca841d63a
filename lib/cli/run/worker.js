'use strict';

const workerpool = require('workerpool');
const { UserError } = require('../user-error.js');
const { createProcessor } = require('./processor.js');

let processJob;

/**
 * Works on one job.
 *
 * @param {import('./processor.js').ProcessorOptions} options the same in every call
 * @param {object} job
 */
function work(options, job) {
  try {
    processJob ??= createProcessor(options);
    const result = processJob(job);
    return new workerpool.Transfer(
      result,
      result.parts.map((part) => part.buffer),
    );
  } catch (error) {
    if (!(error instanceof UserError)) throw error;
    // The kind of an error does not come through to the main thread.
    return { failure: error.message };
  }
}

workerpool.worker({ work });
