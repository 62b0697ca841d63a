'use strict';

const { createEngine } = require('../engines.js');
const { free } = require('../memory.js');
const { TOO_DEEP, parseBlock, unlessTooDeep } = require('../read/ndjson.js');
const { createWriter } = require('../write/formats.js');
const { NO_EDGES, edgesOf, uniteEdges } = require('../boxes.js');
const { addSource } = require('../write/ndjson.js');
const { answerPoints } = require('./answer.js');
const { commonArea, commonScale } = require('./area.js');
const { createLineProcessor } = require('./lines.js');

/**
 * @typedef {object} ProcessorOptions plain data, the same for every job of a run
 * @property {string} engine its name
 * @property {string[]} [templates]
 * @property {object} [beautifier] options of the beautifier
 * @property {boolean} [loads] the engine has yet to be loaded in this process
 * @property {boolean} snap lines may snap to other strokes
 * @property {string} format of the output
 * @property {number} [decimals] of the coordinates
 * @property {{x: number, y: number, width: number, height: number}} [area]
 * @property {number} [scale]
 */

/**
 * @typedef {object} JobResult
 * @property {Uint8Array[]} parts text for each part of the output
 * @property {number} lines of the block, 0 for a document
 * @property {Record<string, number>} families number of strokes answered with each
 * @property {Array<[number, string]>} problems line and message of each stroke left out
 * @property {number[]} edges left, top, right, bottom of all that is drawn, in output units; those
 *   of nothing where the format does not need them
 * @property {{x: number, y: number, width: number, height: number}|null} [area] the drawing area
 *   of all strokes, in output units; null when they have none in common, undefined without
 *   strokes
 * @property {number|null} [scale] drawing units per output unit, by the same rule
 * @property {Record<string, string>} definitions what the texts refer to, by identifier
 */

/**
 * @param {ProcessorOptions} options
 * @returns {(job: {bytes: Uint8Array}|{records: object[]}) => JobResult}
 */
function createProcessor(options) {
  const engine = createEngine(options.engine, options.beautifier);
  if (options.loads) engine.load(options);
  const processLines = createLineProcessor(engine, options);
  const writer = createWriter(options);
  return (job) => {
    try {
      return answerJob(job);
    } finally {
      if (job.bytes) free(job.bytes);
    }
  };
  function answerJob(job) {
    if (job.bytes && options.format === 'ndjson') return processLines(job);
    const { lines, records } = job.records ? { lines: 0, records: job.records } : parseBlock(job);
    const tally = new Tally(writer);
    const answers = [];
    for (const { line, stroke, problem } of records) {
      if (problem) {
        tally.problems.push([line, problem]);
        answers.push(undefined);
      } else {
        addSource(stroke.fields, job.source);
        const answer = answerPoints(engine, stroke, options);
        if (job.isKept) answers.push(answer);
        const isAdded = unlessTooDeep(() => tally.add(stroke, answer) ?? true);
        if (!isAdded) tally.problems.push([line, TOO_DEEP]);
      }
    }
    return { ...tally.toResult(lines), ...(job.isKept && { answers }) };
  }
}

/** The result of a job, collected stroke by stroke. */
class Tally {
  constructor(writer) {
    this.writer = writer;
    this.texts = Array.from({ length: writer.parts }, () => []);
    this.definitions = {};
    this.families = {};
    this.problems = [];
    this.edges = NO_EDGES;
    this.area = undefined;
    this.scale = undefined;
  }

  add(stroke, answer) {
    const { texts, definitions } = this.writer.write(stroke, answer);
    texts.forEach((text, part) => this.texts[part].push(text));
    Object.assign(this.definitions, definitions);
    this.families[answer.family] = (this.families[answer.family] ?? 0) + 1;
    if (this.writer.needsView) this.show(stroke, answer);
  }

  show(stroke, answer) {
    const { unit, area, scale } = this.writer.placeOf(stroke);
    this.area = commonArea(this.area, area ?? null);
    this.scale = commonScale(this.scale, scale ?? null);
    this.enclose(stroke.points, unit);
    if (answer.points !== stroke.points) this.enclose(answer.points, unit);
  }

  enclose(points, unit) {
    const edges = edgesOf(points).map((edge) => edge * unit);
    this.edges = uniteEdges(this.edges, edges);
  }

  toResult(lines) {
    const { families, problems, edges, area, scale, definitions } = this;
    const encoder = new TextEncoder();
    const parts = this.texts.map((texts) => encoder.encode(texts.join('')));
    return { parts, lines, families, problems, edges, area, scale, definitions };
  }
}

module.exports = { createProcessor };
