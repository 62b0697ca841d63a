'use strict';

const path = require('node:path');
const { Readable } = require('node:stream');
const { createEngine } = require('../engines.js');
const { createProgress } = require('../progress.js');
const { readInk } = require('../read/ink.js');
const { STDIN, checkInputs, displayName } = require('../read/input.js');
const { UserError } = require('../user-error.js');
const { createDocument } = require('../write/document.js');
const { FORMATS } = require('../write/formats.js');
const { Output, inspectFolder, inspectOutput } = require('../write/output-file.js');
const { Messages } = require('./messages.js');
const { Neighbours } = require('./neighbours.js');
const { Pages } = require('./pages.js');
const { withPlausibleSize } = require('./plausible-size.js');
const { createRunner } = require('./runner.js');

// Jobs under way or finished for each worker, enough to keep it from waiting for the disk.
const AHEAD = 3;

/**
 * @typedef {object} RunOptions
 * @property {string[]} inputs file names, `-` for standard input
 * @property {string} output file name, `-` for standard output
 * @property {boolean} isFolder the output is a folder: a file for each input
 * @property {string} [errors] name of a file for all messages
 * @property {boolean} force overwrite the output
 * @property {string} format of the output
 * @property {(text: string) => Uint8Array} [convert] see createDocument
 * @property {string} engine
 * @property {string[]} [templates]
 * @property {object} beautifier options of the beautifier
 * @property {{x: number, y: number, width: number, height: number}} [area]
 * @property {number} [scale] drawing units per unit of the input
 * @property {boolean} snap lines may snap to other strokes
 * @property {number} step distance between samples along SVG curves, drawing units
 * @property {number} [decimals]
 * @property {number} jobs
 */

/**
 * Idealises the strokes of all inputs, in their order, into one output or into one for each.
 *
 * @param {RunOptions} options
 * @param {{stdout: NodeJS.WriteStream, stderr: NodeJS.WriteStream}} io
 * @returns {Promise<object>} the summary of the run, as `--json` prints it
 */
async function runStrokes(options, { stdout, stderr }) {
  const totalBytes = checkInputs(options.inputs);
  const parts = planOutputs(options);
  const file = options.errors && inspectOutput(options.errors, options);
  const { templates, beautifier, area, scale, snap, format, decimals, jobs } = options;
  const engine = createEngine(options.engine, beautifier).name;
  const runner = createRunner(
    { engine, templates, beautifier, area, scale, snap, format, decimals },
    jobs,
  );
  const progress = createProgress({ totalBytes, stream: stderr });
  const messages = new Messages(progress, file && new Output(file));
  const report = new Report({ ...options, engine }, progress, messages);
  try {
    for (const { inputs, target } of parts) {
      const document = createDocument(target, format, stdout, options.convert);
      await convert({ ...options, inputs }, { runner, report, document, progress });
    }
    await report.finish();
    return report.summary();
  } catch (error) {
    messages.abandon();
    throw error;
  } finally {
    progress.stop();
    await runner.close();
    // An open standard input would keep the process alive.
    if (options.inputs.includes(STDIN)) process.stdin.destroy();
  }
}

/** The inputs of each output. */
function planOutputs(options) {
  const { inputs, output, isFolder, format } = options;
  if (!isFolder) return [{ inputs, target: inspectOutput(output, options) }];
  inspectFolder(output);
  const taken = new Map();
  return inputs.map((input) => {
    if (input === STDIN) throw new UserError('a folder as output needs files as inputs');
    const name = `${path.parse(input.replace(/\.gz$/i, '')).name}${FORMATS[format].extension}`;
    if (taken.has(name)) {
      throw new UserError(`${taken.get(name)} and ${input} would both become ${name}`);
    }
    taken.set(name, input);
    return { inputs: [input], target: inspectOutput(path.join(output, name), options) };
  });
}

async function convert(options, { runner, report, document, progress }) {
  const pages = new Pages(options.area);
  try {
    await document.start();
    const jobs = readJobs(options, (bytes) => progress.advance(bytes));
    const limit = AHEAD * options.jobs;
    // Results come in the order of the jobs, each as soon as it can.
    const results = Readable.from(jobs, { highWaterMark: 1 }).map((job) => runJob(runner, job), {
      concurrency: limit,
      highWaterMark: limit,
    });
    for await (const result of results) {
      if (result.parts) {
        if (pages.add(result)) document.startPage();
        await document.add(result);
      }
      await report.add(result);
    }
    await document.finish({ ...pages.layOut(), families: report.families });
  } catch (error) {
    document.abandon();
    throw error;
  }
}

/** The jobs of all inputs, each with its input: an object, since a name may come twice. */
async function* readJobs({ inputs, step, scale, snap, format }, onBytes) {
  // A picture shows the ink alone.
  const isKept = inputs.length === 1 && FORMATS[format].isRewritten;
  for (const each of inputs) {
    const input = { name: displayName(each) };
    const source = inputs.length > 1 ? input.name : undefined;
    const neighbours = snap ? new Neighbours() : undefined;
    const read = readInk(each, { step, scale, keep: isKept ? format : undefined, onBytes });
    for await (const job of scale ? read : withPlausibleSize(read, input.name)) {
      for (const { stroke } of job.records ?? []) {
        if (stroke) neighbours?.meet(stroke, scale ?? stroke.scale ?? 1);
      }
      if (FORMATS[format].isKept && (job.bytes || job.records) && !job.rewrite) {
        throw new UserError(`${format} is written from one document of this format only`);
      }
      for (const part of job.rewrite ? [job] : byPage(job)) yield { input, source, ...part };
    }
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

async function runJob(runner, job) {
  const { input, page, damage, warning, passedOver = [], rewrite, ...work } = job;
  if (damage || warning) return { input, damage, warning };
  const { answers, ...result } = await runner.run({ ...work, isKept: rewrite !== undefined });
  return { input, page, passedOver, text: rewrite?.(answers), ...result };
}

/** The totals of a run, and its messages. */
class Report {
  constructor({ engine, output, errors }, progress, messages) {
    Object.assign(this, { engine, output, errors, progress, messages });
    this.strokes = 0;
    this.families = {};
    this.skipped = 0;
    this.unread = [];
    this.passedOver = 0;
    this.start = process.hrtime.bigint();
    /** The current input, the number of its lines before the next block, and what it passes over. */
    this.position = { input: undefined, lines: 0, passedOver: new Map() };
  }

  async add({ input, damage, warning, passedOver = [], lines = 0, families = {}, problems = [] }) {
    await this.locate(input);
    const { position } = this;
    if (warning) await this.messages.add(warning);
    if (damage) {
      this.unread.push(input.name);
      await this.messages.add(
        position.lines > 0 ? `${damage}, after line ${position.lines}` : damage,
      );
    }
    for (const [line, problem] of problems) {
      await this.messages.add(`${input.name}:${position.lines + line}: ${problem}`);
    }
    position.lines += lines;
    for (const what of passedOver) {
      position.passedOver.set(what, (position.passedOver.get(what) ?? 0) + 1);
    }
    this.skipped += problems.length;
    this.passedOver += passedOver.length;
    for (const [family, n] of Object.entries(families)) {
      this.families[family] = (this.families[family] ?? 0) + n;
      this.strokes += n;
    }
    this.progress.count(this.strokes);
  }

  /** Begins with an input, after the messages on the one before. */
  async locate(input) {
    const { input: before, passedOver } = this.position;
    if (before === input) return;
    const total = [...passedOver.values()].reduce((sum, n) => sum + n, 0);
    const counts = [...passedOver].map(([what, n]) => `${what} ${n}`).join(', ');
    this.position = { input, lines: 0, passedOver: new Map() };
    if (total > 0) await this.messages.add(`${before.name}: ${total} not read as ink: ${counts}`);
  }

  async finish() {
    await this.locate(undefined);
    if (this.strokes === 0) await this.messages.add('there is no stroke in the input');
    await this.messages.finish();
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
}

module.exports = { runStrokes };
