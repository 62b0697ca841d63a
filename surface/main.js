'use strict';

// The drawing page of a clone, which is built when its server starts.
//
//   node surface/main.js [--port N]

const { buildPage } = require('./build.js');
const server = require('./server.js');

const serve = (args) => server.serve(args, buildPage);

module.exports = { serve };

if (require.main === module) {
  serve(process.argv.slice(2)).then(
    (code) => (process.exitCode = code),
    (error) => {
      console.error(error.expected ? error.message : error);
      process.exitCode = 1;
    },
  );
}
