'use strict';

const { Readable } = require('node:stream');
const { NO_EDGES, uniteEdges } = require('../boxes.js');
const { createEngine } = require('../engines.js');
const { createProgress } = require('../progress.js');
const { readInk } = require('../read/ink.js');
const { STDIN, checkInputs, displayName } = require('../read/input.js');
const { createDocument } = require('../write/document.js');
const { inspectOutput } = require('../write/output-file.js');
const { commonArea, commonScale } = require('./area.js');
const { Neighbours } = require('./neighbours.js');
const { createRunner } = require('./runner.js');

// Jobs under way or finished for each worker, enough to keep it from waiting for the disk.
const AHEAD = 3;

/** Room around the ink where there is no drawing area, in drawing units. */
const MARGIN = 10;

/**
 * @typedef {object} RunOptions
 * @property {string[]} inputs file names, `-` for standard input
 * @property {string} output file name, `-` for standard output
 * @property {boolean} force overwrite the output
 * @property {string} format of the output
 * @property {(text: string) => Uint8Array} [convert] see createDocument
 * @property {string} engine
 * @property {string[]} [templates]
 * @property {{x: number, y: number, width: number, height: number}} [area]
 * @property {number} [scale] drawing units per unit of the input
 * @property {boolean} snap lines may snap to other strokes
 * @property {number} step distance between samples along SVG curves, drawing units
 * @property {number} [decimals]
 * @property {number} jobs
 */

/**
 * Idealises the strokes of all inputs into one output, in their order.
 *
 * @param {RunOptions} options
 * @param {{stdout: NodeJS.WriteStream, stderr: NodeJS.WriteStream}} io
 * @returns {Promise<object>} the summary of the run, as `--json` prints it
 */
async function runStrokes(options, { stdout, stderr }) {
  const totalBytes = checkInputs(options.inputs);
  const target = inspectOutput(options.output, options);
  const { templates, area, scale, snap, format, decimals, jobs } = options;
  const engine = createEngine(options.engine).name;
  const runner = createRunner({ engine, templates, area, scale, snap, format, decimals }, jobs);
  const progress = createProgress({ totalBytes, stream: stderr });
  const report = new Report({ ...options, engine }, progress);
  const document = createDocument(target, format, stdout, options.convert);
  try {
    await document.start();
    const jobsRead = readJobs(options, (bytes) => progress.advance(bytes));
    const limit = AHEAD * jobs;
    // Results come in the order of the jobs, each as soon as it can.
    const results = Readable.from(jobsRead, { highWaterMark: 1 }).map(
      (job) => runJob(runner, job),
      { concurrency: limit, highWaterMark: limit },
    );
    for await (const result of results) {
      if (result.parts) await document.add(result);
      report.add(result);
    }
    await document.finish(report.picture());
    return report.summary();
  } catch (error) {
    document.abandon();
    throw error;
  } finally {
    progress.stop();
    await runner.close();
    // An open standard input would keep the process alive.
    if (options.inputs.includes(STDIN)) process.stdin.destroy();
  }
}

/** The jobs of all inputs, each with its input: an object, since a name may come twice. */
async function* readJobs({ inputs, step, scale, snap }, onBytes) {
  for (const path of inputs) {
    const input = { name: displayName(path) };
    const neighbours = snap ? new Neighbours() : undefined;
    for await (const job of readInk(path, { step, scale, onBytes })) {
      for (const { stroke } of job.records ?? []) {
        if (stroke) neighbours?.meet(stroke, scale ?? stroke.scale ?? 1);
      }
      yield { input, ...job };
    }
  }
}

async function runJob(runner, job) {
  const { input, damage, passedOver = [], ...work } = job;
  if (damage) return { input, damage };
  return { input, passedOver, ...(await runner.run(work)) };
}

/** The totals of a run, and its messages. */
class Report {
  constructor({ engine, output, area }, progress) {
    Object.assign(this, { engine, output, givenArea: area, progress });
    this.strokes = 0;
    this.families = {};
    this.skipped = 0;
    this.unread = [];
    this.passedOver = 0;
    this.edges = NO_EDGES;
    this.area = undefined;
    this.scale = undefined;
    this.start = process.hrtime.bigint();
    /** The current input, and the number of its lines before the next block. */
    this.position = { input: undefined, lines: 0 };
  }

  add({ input, damage, passedOver, lines, families, problems, edges, area, scale }) {
    this.locate(input);
    if (damage) {
      this.unread.push(input.name);
      const { lines: before } = this.position;
      this.progress.log(before > 0 ? `${damage}, after line ${before}` : damage);
      return;
    }
    for (const [line, problem] of problems) {
      this.progress.log(`${input.name}:${this.position.lines + line}: ${problem}`);
    }
    this.position.lines += lines;
    this.skipped += problems.length;
    this.passedOver += passedOver.length;
    this.edges = uniteEdges(this.edges, edges);
    this.area = commonArea(this.area, area);
    this.scale = commonScale(this.scale, scale);
    for (const [family, n] of Object.entries(families)) {
      this.families[family] = (this.families[family] ?? 0) + n;
      this.strokes += n;
    }
    this.progress.count(this.strokes);
  }

  locate(input) {
    if (this.position.input !== input) this.position = { input, lines: 0 };
  }

  summary() {
    const seconds = Number(process.hrtime.bigint() - this.start) / 1e9;
    // Of all threads, since the program started.
    const { user, system } = process.cpuUsage();
    return {
      engine: this.engine,
      output: this.output,
      strokes: this.strokes,
      figures: this.families,
      skipped: this.skipped,
      passed_over: this.passedOver,
      unread: this.unread,
      seconds: Number(seconds.toFixed(3)),
      cpu_seconds: Number(((user + system) / 1e6).toFixed(3)),
    };
  }

  /**
   * What the head of a drawing depends on.
   *
   * @returns {{view: {x: number, y: number, width: number, height: number},
   *   scale: number|undefined, families: Record<string, number>}} view: the drawing area, or where
   *   there is none the ink and a margin; scale: drawing units per unit of it, where all strokes
   *   have the same
   */
  picture() {
    const scale = this.scale ?? undefined;
    return { view: this.view(scale ?? 1), scale, families: this.families };
  }

  view(scale) {
    if (this.area) return this.area;
    const [left, top, right, bottom] = this.edges;
    if (!(left <= right)) return this.givenArea ?? { x: 0, y: 0, width: 100, height: 100 };
    const margin = MARGIN / scale;
    return {
      x: left - margin,
      y: top - margin,
      width: right - left + 2 * margin,
      height: bottom - top + 2 * margin,
    };
  }
}

module.exports = { runStrokes };
