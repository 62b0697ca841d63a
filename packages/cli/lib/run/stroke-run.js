'use strict';

const fs = require('node:fs');
const path = require('node:path');
const { Readable } = require('node:stream');
const { createEngine } = require('../engines.js');
const { createProgress } = require('../progress.js');
const { isSmallDocument } = require('../read/ink.js');
const { STDIN, checkInputs, displayName } = require('../read/input.js');
const { UserError } = require('../user-error.js');
const { createDocument } = require('../write/document.js');
const { FORMATS } = require('../write/formats.js');
const { Output, inspectFolder, inspectOutput } = require('../write/output-file.js');
const { readJobs, runJob } = require('./jobs.js');
const { Messages } = require('./messages.js');
const { Pages } = require('./pages.js');
const { createRunner } = require('./runner.js');

// Jobs under way or finished for each worker, enough to keep it from waiting for the disk.
const AHEAD = 3;

/**
 * @typedef {object} RunOptions
 * @property {string[]} inputs file names, `-` for standard input
 * @property {string} output file name, `-` for standard output
 * @property {boolean} isFolder the output is a folder: a file for each input
 * @property {string} [extension] of these files, instead of the format's
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
    const outputs = Readable.from(parts).map(
      async ({ inputs, target }) => {
        const document = createDocument(target, format, stdout, options.convert);
        await convert({ ...options, inputs }, { runner, report, document, progress });
      },
      { concurrency: jobs },
    );
    await outputs.toArray();
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
  const { inputs, output, isFolder, format, extension = FORMATS[format].extension } = options;
  if (!isFolder) return [{ inputs, target: inspectOutput(output, options) }];
  inspectFolder(output);
  const taken = new Map();
  return inputs.map((input) => {
    if (input === STDIN) throw new UserError('a folder as output needs files as inputs');
    const name = `${path.parse(input.replace(/\.gz$/i, '')).name}${extension}`;
    if (taken.has(name)) {
      throw new UserError(`${taken.get(name)} and ${input} would both become ${name}`);
    }
    taken.set(name, input);
    return { inputs: [input], target: inspectOutput(path.join(output, name), options) };
  });
}

async function convert(options, { runner, report, document, progress }) {
  const pages = new Pages(options.area);
  let input;
  try {
    await document.start();
    const jobs = readInputs(options, runner, (bytes) => progress.advance(bytes));
    const limit = AHEAD * options.jobs;
    // Results come in the order of the jobs, each as soon as it can.
    const found = Readable.from(jobs, { highWaterMark: 1 }).map((job) => runAny(runner, job), {
      concurrency: limit,
      highWaterMark: limit,
    });
    for await (const results of found) {
      for (const result of results) {
        if (input && input !== result.input) await report.endInput(input);
        ({ input } = result);
        if (result.parts) {
          if (pages.add(result)) document.startPage();
          await document.add(result);
        }
        await report.add(result);
      }
    }
    if (input) await report.endInput(input);
    await document.finish(pages.layOut());
  } catch (error) {
    document.abandon();
    throw error;
  }
}

/** The jobs of all inputs. A small document is one job, which a worker also reads. */
async function* readInputs(options, runner, onBytes) {
  const { inputs, format, step, scale, snap } = options;
  for (const each of inputs) {
    const input = { name: displayName(each), lines: 0, passedOver: new Map() };
    const reading = { path: each, isAlone: inputs.length === 1, format, step, scale, snap };
    if (runner.runFile && isSmallDocument(each)) {
      onBytes(fs.statSync(each).size);
      yield { input, reading };
    } else {
      for await (const job of readJobs(reading, onBytes)) yield { input, job };
    }
  }
}

async function runAny(runner, { input, reading, job }) {
  const results = reading ? await runner.runFile(reading) : [await runJob(job, runner.run)];
  return results.map((result) => ({ input, ...result }));
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
  }

  async add({ input, damage, warning, passedOver = [], lines = 0, families = {}, problems = [] }) {
    if (warning) await this.messages.add(warning);
    if (damage) {
      this.unread.push(input.name);
      await this.messages.add(input.lines > 0 ? `${damage}, after line ${input.lines}` : damage);
    }
    const before = input.lines;
    input.lines += lines;
    for (const [line, problem] of problems) {
      await this.messages.add(`${input.name}:${before + line}: ${problem}`);
    }
    for (const what of passedOver) {
      input.passedOver.set(what, (input.passedOver.get(what) ?? 0) + 1);
    }
    this.skipped += problems.length;
    this.passedOver += passedOver.length;
    for (const [family, n] of Object.entries(families)) {
      this.families[family] = (this.families[family] ?? 0) + n;
      this.strokes += n;
    }
    this.progress.count(this.strokes);
  }

  async endInput({ name, passedOver }) {
    if (passedOver.size === 0) return;
    const total = [...passedOver.values()].reduce((sum, n) => sum + n, 0);
    const counts = [...passedOver].map(([what, n]) => `${what} ${n}`).join(', ');
    await this.messages.add(`${name}: ${total} not read as ink: ${counts}`);
  }

  async finish() {
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
