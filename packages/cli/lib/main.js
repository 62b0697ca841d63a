'use strict';

const { version } = require('../package.json');
const { print, runCommand, suggest } = require('./command.js');

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

/** What is asked for in place of a command. */
const TEXTS = {
  '--version': `${version}\n`,
  '-V': `${version}\n`,
  '--help': HELP,
  '-h': HELP,
  help: HELP,
};

/** Spelt otherwise elsewhere. */
const ALIASES = { idealize: 'idealise' };

/**
 * The program `scrivo`.
 *
 * @param {string[]} argv arguments after the program's name
 * @returns {Promise<number>} exit code
 */
async function main([first = '', ...rest]) {
  const name = ALIASES[first] ?? first;
  if (Object.hasOwn(COMMANDS, name)) return COMMANDS[name].run(rest);
  if (Object.hasOwn(TEXTS, name)) {
    return runCommand(name, async ({ stdout }) => {
      await print(stdout, TEXTS[name]);
      return 0;
    });
  }
  const hint = suggest(name, Object.keys(COMMANDS)) ?? '';
  const problem = name === '' ? 'name a command' : `there is no command ${name}${hint}`;
  process.stderr.write(`scrivo: ${problem}\n\n${HELP}`);
  return 2;
}

module.exports = { main };
