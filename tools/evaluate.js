'use strict';

const { evaluateCommand } = require('../lib/cli/evaluate.js');

evaluateCommand(process.argv.slice(2)).then((exitCode) => {
  process.exitCode = exitCode;
});
