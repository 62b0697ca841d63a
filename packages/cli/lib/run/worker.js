'use strict';

const workerpool = require('workerpool');
const { UserError } = require('../user-error.js');
const { createProcessor } = require('./processor.js');

let processJob;

/** What a worker of runner.js does. */
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
    // The class of an error is lost on the way to the main thread.
    return { failure: error.message };
  }
}

workerpool.worker({ work });
