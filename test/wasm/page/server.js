'use strict';

// Serves the page that runs the tests of the engines.

const fs = require('node:fs');
const http = require('node:http');
const path = require('node:path');
const { writePage } = require('./bundle.js');

const TYPES = { '.html': 'text/html', '.js': 'text/javascript', '.wasm': 'application/wasm' };

function deferred() {
  const result = {};
  result.promise = new Promise((resolve, reject) => Object.assign(result, { resolve, reject }));
  return result;
}

async function textOf(request) {
  const parts = [];
  for await (const part of request) parts.push(part);
  return Buffer.concat(parts).toString();
}

/** Serves a new folder; `results` are what the page sends when its tests have been run. */
async function serveTests(folder) {
  fs.mkdirSync(folder, { recursive: true });
  await writePage(folder);
  const results = deferred();
  const server = http.createServer(async (request, response) => {
    if (request.method === 'POST') {
      results.resolve(JSON.parse(await textOf(request)));
      return response.end();
    }
    const file = path.join(folder, path.posix.normalize(request.url));
    if (!fs.existsSync(file)) return response.writeHead(404).end();
    response.writeHead(200, { 'content-type': TYPES[path.extname(file)] });
    return response.end(fs.readFileSync(file));
  });
  await new Promise((resolve) => server.listen(0, '127.0.0.1', resolve));
  const close = () => server.close().closeAllConnections();
  return { address: `http://127.0.0.1:${server.address().port}/tests.html`, results, close };
}

module.exports = { serveTests };
