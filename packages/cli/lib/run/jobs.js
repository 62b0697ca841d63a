'use strict';

const { displayName } = require('../read/input.js');
const { readInk } = require('../read/ink.js');
const { UserError } = require('../user-error.js');
const { FORMATS } = require('../write/formats.js');
const { Neighbours } = require('./neighbours.js');
const { withPlausibleSize } = require('./plausible-size.js');

/**
 * @typedef {object} Reading how an input is read; plain data
 * @property {string} path file name, `-` for standard input
 * @property {boolean} isAlone the output has no other input
 * @property {string} format of the output
 * @property {number} step see RunOptions
 * @property {number} [scale] see RunOptions
 * @property {boolean} snap see RunOptions
 */

/**
 * The jobs of an input.
 *
 * @param {Reading} reading
 * @param {(count: number) => void} onBytes see readInk
 * @yields {object} those of readInk, each on one page, and warnings
 */
async function* readJobs({ path, isAlone, format, step, scale, snap }, onBytes) {
  const name = displayName(path);
  const source = isAlone ? undefined : name;
  const neighbours = snap ? new Neighbours() : undefined;
  const keep = isAlone && FORMATS[format].isRewritten ? format : undefined;
  const read = readInk(path, { step, scale, keep, onBytes });
  for await (const job of scale ? read : withPlausibleSize(read, name)) {
    for (const { stroke } of job.records ?? []) {
      if (stroke) neighbours?.meet(stroke, scale ?? stroke.scale ?? 1);
    }
    if (FORMATS[format].isKept && (job.bytes || job.records) && !job.rewrite) {
      throw new UserError(`${format} is written from one document of this format only`);
    }
    for (const part of job.rewrite ? [job] : byPage(job)) yield { source, ...part };
  }
}

/** The parts of a job that are on one page each. */
function* byPage(job) {
  if (!job.records) {
    yield job;
    return;
  }
  let { passedOver } = job;
  for (let start = 0; start === 0 || start < job.records.length;) {
    const page = job.records[start]?.stroke?.page ?? 1;
    let end = start + 1;
    while (end < job.records.length && (job.records[end].stroke?.page ?? page) === page) end += 1;
    yield { ...job, passedOver, page, records: job.records.slice(start, end) };
    passedOver = [];
    start = end;
  }
}

/**
 * @param {object} job of readJobs
 * @param {(job: object) => Promise<import('./processor.js').JobResult>} run
 * @returns {Promise<object>} the result, or the job itself if it is a message
 */
async function runJob({ page, damage, warning, passedOver = [], rewrite, ...work }, run) {
  if (damage || warning) return { damage, warning };
  const { answers, ...result } = await run({ ...work, isKept: rewrite !== undefined });
  return { page, passedOver, text: rewrite?.(answers), ...result };
}

module.exports = { readJobs, runJob };
