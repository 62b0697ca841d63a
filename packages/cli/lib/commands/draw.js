'use strict';

const fs = require('node:fs');
const path = require('node:path');
const { UserError } = require('../user-error.js');

const help = `Serves a page to draw on, on this computer only. Ctrl-C stops it.

usage: scrivo draw [--port N]

  --port N  port to listen on, 0 for any free one (4173, or a free one when it is taken)
  --help    this text
`;

/** The page that was packed with this program, or that of the clone. */
const SERVERS = ['../../page/server.js', '../../../../surface/main.js'];

function loadServer() {
  const found = SERVERS.map((name) => path.join(__dirname, name)).find((file) =>
    fs.existsSync(file),
  );
  return require(found);
}

module.exports = {
  help,
  parse: (args) => ({ help: args.includes('--help') || args.includes('-h'), args }),
  run: async ({ args }) => {
    try {
      return await loadServer().serve(args);
    } catch (error) {
      throw error.expected ? new UserError(error.message) : error;
    }
  },
};
