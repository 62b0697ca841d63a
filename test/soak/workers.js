'use strict';

// workers.js COUNT: terminates workers in the middle of a call, and workers without a native
// module in the middle of a loop. Prints by how much each makes the process grow.

const { once } = require('node:events');
const path = require('node:path');
const { Worker } = require('node:worker_threads');

const LIB = path.join(__dirname, '..', '..', 'lib');
const START = `require('node:worker_threads').parentPort.postMessage('started');`;
const moduleOf = (file) => `require(${JSON.stringify(path.join(LIB, file))})`;
const STROKE = `Array.from({ length: 3000 }, (_, i) => ({ x: Math.cos(i / 400), y: Math.sin(i / 400) }))`;

const SOURCES = {
  'without a module': `${START} for (let x = 0; ; ) x += Math.random();`,
  'in a call of the beautifier': `
    const { Beautifier } = ${moduleOf('beautifier.js')};
    const [stroke, beautifier] = [${STROKE}, new Beautifier()];
    ${START} for (;;) beautifier.beautify(stroke, 800, 600);`,
  'in a call of the template engine': `
    const { optimizeAStroke } = ${moduleOf('index.js')};
    const stroke = ${STROKE};
    ${START} for (;;) optimizeAStroke(stroke, 800, 600, []);`,
};

async function terminate(source) {
  const worker = new Worker(source, { eval: true });
  await once(worker, 'message');
  await new Promise((resolve) => setTimeout(resolve, Math.random() * 5));
  await worker.terminate();
}

async function residentKilobytes() {
  for (let i = 0; i < 5; i++) {
    globalThis.gc();
    await new Promise(setImmediate);
  }
  return process.memoryUsage().rss / 1024;
}

async function grow(source, count) {
  for (let i = 0; i < count / 5; i++) await terminate(source); // warms up
  const before = await residentKilobytes();
  for (let i = 0; i < count; i++) await terminate(source);
  return ((await residentKilobytes()) - before) / count;
}

async function main(count) {
  for (const [name, source] of Object.entries(SOURCES)) {
    const growth = await grow(source, count);
    console.log(`workers terminated ${name}: ${growth.toFixed(1)} kB each`);
  }
}

main(Number(process.argv[2]));
