'use strict';

const { parseArgs } = require('node:util');
const { FIGURES, HANDS, drawInk } = require('./index.js');

const USAGE = `Writes generated strokes of every figure to standard output, as labelled NDJSON.

usage: node research/ink/write.js [--hand NAME] [--rate N] [--count N] [--seed N]

  --hand NAME  ${Object.keys(HANDS).join(', ')} (ordinary)
  --rate N     samples a second (60)
  --count N    strokes of each figure (40)
  --seed N     of the first stroke of each figure (1)
`;

const OPTIONS = {
  hand: { type: 'string', default: 'ordinary' },
  rate: { type: 'string', default: '60' },
  count: { type: 'string', default: '40' },
  seed: { type: 'string', default: '1' },
  help: { type: 'boolean', default: false },
};

function parseCommandLine() {
  const { values } = parseArgs({ options: OPTIONS });
  if (!Object.hasOwn(HANDS, values.hand)) throw new Error(`unknown hand ${values.hand}`);
  const [rate, count, seed] = [values.rate, values.count, values.seed].map(Number);
  if (!(rate > 0) || !(count > 0) || !Number.isInteger(seed)) {
    throw new Error('--rate and --count must be above 0, --seed a whole number');
  }
  return { help: values.help, hand: { ...HANDS[values.hand], rate }, count, seed };
}

function main() {
  const { help, hand, count, seed } = parseCommandLine();
  if (help) {
    process.stdout.write(USAGE);
    return;
  }
  for (const figure of Object.keys(FIGURES)) {
    for (let i = 0; i < count; i += 1) {
      process.stdout.write(`${JSON.stringify(drawInk({ figure, seed: seed + i, hand }))}\n`);
    }
  }
}

try {
  main();
} catch (error) {
  process.stderr.write(`${error.message}\n\n${USAGE}`);
  process.exitCode = 2;
}
