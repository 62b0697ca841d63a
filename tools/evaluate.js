'use strict';

const { evaluateCommand } = require('../packages/cli/lib/evaluate.js');

evaluateCommand(process.argv.slice(2)).then((exitCode) => {
  process.exitCode = exitCode;
});
