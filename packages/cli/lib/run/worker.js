'use strict';

const workerpool = require('workerpool');
const { UserError } = require('../user-error.js');
const { readJobs, runJob } = require('./jobs.js');
const { createProcessor } = require('./processor.js');

let processJob;

/** What a worker of runner.js does: jobs of lines or records, or all jobs of a document. */
const tasks = {
  work: (options, jobs) => attempt(() => jobs.map((job) => process(options, job))),
  workFile: (options, reading) =>
    attempt(async () => {
      const results = [];
      for await (const job of readJobs(reading, () => {})) {
        results.push(await runJob(job, (work) => process(options, work)));
      }
      return results;
    }),
};

function process(options, job) {
  processJob ??= createProcessor(options);
  return processJob(job);
}

/** The results, with their buffers; the class of an error is lost on the way to the main thread. */
async function attempt(run) {
  try {
    const results = await run();
    const buffers = results.flatMap(({ parts = [] }) => parts.map((part) => part.buffer));
    return new workerpool.Transfer({ results }, buffers);
  } catch (error) {
    if (!(error instanceof UserError)) throw error;
    return { failure: error.message };
  }
}

workerpool.worker(tasks);
