'use strict';

const { version } = require('../../package.json');

/** Commands by name; each loads what it needs only when it is called. */
const COMMANDS = {
  idealise: {
    what: 'turn strokes into the figures that were meant',
    run: (argv) => require('./idealise.js').idealiseCommand(argv),
  },
  render: {
    what: 'draw strokes and their figures side by side, as SVG or PNG',
    run: (argv) => require('./render.js').renderCommand(argv),
  },
  evaluate: {
    what: 'score an engine on labelled strokes',
    run: (argv) => require('./evaluate.js').evaluateCommand(argv),
  },
};

const HELP = `usage: scrivo COMMAND [options] [FILE...]

${Object.entries(COMMANDS)
  .map(([name, { what }]) => `  ${name.padEnd(10)} ${what}`)
  .join('\n')}

  --help     this text; after a command, its options and examples
  --version  the version of scrivo
`;

/** Spelt otherwise elsewhere. */
const ALIASES = { idealize: 'idealise' };

/**
 * The program `scrivo`.
 *
 * @param {string[]} argv arguments after the program's name
 * @returns {Promise<number>} exit code
 */
async function main([first, ...rest]) {
  const name = ALIASES[first] ?? first;
  if (Object.hasOwn(COMMANDS, name ?? '')) return COMMANDS[name].run(rest);
  if (name === '--version' || name === '-V') {
    process.stdout.write(`${version}\n`);
    return 0;
  }
  if (name === '--help' || name === '-h' || name === 'help') {
    process.stdout.write(HELP);
    return 0;
  }
  const problem = name === undefined ? 'name a command' : `there is no command ${name}`;
  process.stderr.write(`scrivo: ${problem}\n\n${HELP}`);
  return 2;
}

module.exports = { main };
