// Answers strokes in a worker, so that a long one does not delay the page:
//
//   const worker = new Worker('worker.js', { type: 'module' });
//   worker.postMessage({ stroke, width, height });

import { Beautifier, start } from '../dist/beautifier.js';

const started = start();
const beautifier = new Beautifier();

addEventListener('message', async ({ data: { stroke, width, height } }) => {
  await started;
  postMessage(beautifier.beautify(stroke, width, height));
});
