'use strict';

// The drawing page's server: serves its files, and answers POST /stroke with the
// figure of one stroke. Listens on the loopback interface only.
//
//   node surface/server.js [--port N]

const fs = require('node:fs/promises');
const http = require('node:http');
const path = require('node:path');
const { createRecogniser } = require('./recognise.js');
const { BadRequest, readStrokeRequest } = require('./stroke-request.js');

const HOST = '127.0.0.1';
const DEFAULT_PORT = 4173;
const PUBLIC = path.join(__dirname, 'public');
// The page also needs this file of a package.
const PACKAGED = {
  '/vendor/perfect-freehand.mjs': path.join(
    path.dirname(require.resolve('perfect-freehand')),
    '../esm/index.mjs',
  ),
};
const TYPES = {
  '.css': 'text/css; charset=utf-8',
  '.html': 'text/html; charset=utf-8',
  '.mjs': 'text/javascript; charset=utf-8',
  '.svg': 'image/svg+xml',
};
const HEADERS = { 'Cache-Control': 'no-cache', 'X-Content-Type-Options': 'nosniff' };

function send(response, status, type, body, headers = {}) {
  const content = { 'Content-Type': type, 'Content-Length': Buffer.byteLength(body) };
  response.writeHead(status, { ...HEADERS, ...content, ...headers });
  response.end(response.req.method === 'HEAD' ? undefined : body);
}

function sendJson(response, status, value, headers) {
  send(response, status, 'application/json; charset=utf-8', JSON.stringify(value), headers);
}

/** The file of a URL path, or null. */
function fileOf(pathname) {
  if (Object.hasOwn(PACKAGED, pathname)) return PACKAGED[pathname];
  const name = pathname === '/' ? '/index.html' : pathname;
  // Plain names only: nothing outside PUBLIC, no escapes, no hidden files.
  if (!/^(\/[a-z0-9][a-z0-9.-]*)+$/i.test(name) || !(path.extname(name) in TYPES)) return null;
  return path.join(PUBLIC, name);
}

async function serveFile(response, pathname) {
  const file = fileOf(pathname);
  const body = file && (await fs.readFile(file).catch(() => null));
  if (!body) return sendJson(response, 404, { error: `There is no ${pathname}.` });
  return send(response, 200, TYPES[path.extname(file)], body);
}

/** Rejects other sites, also those whose name resolves to the loopback address. */
function isLocal({ headers }) {
  const local = /^(localhost|127\.0\.0\.1)(:\d+)?$/i;
  const { host = '', origin } = headers;
  return local.test(host) && (!origin || origin === `http://${host}`);
}

async function route(request, response, recognise) {
  if (!isLocal(request)) throw new BadRequest(403, 'Only the page of this server may use it.');
  const [pathname] = request.url.split('?', 1);
  const isStroke = pathname === '/stroke';
  const methods = isStroke ? ['POST'] : ['GET', 'HEAD'];
  if (!methods.includes(request.method)) {
    throw new BadRequest(405, `${pathname} accepts only ${methods.join(' and ')}.`, {
      Allow: methods.join(', '),
    });
  }
  if (isStroke) return sendJson(response, 200, recognise(await readStrokeRequest(request)));
  return serveFile(response, pathname);
}

/** An HTTP server, not listening yet. `recognise` is that of `createRecogniser`. */
function createServer(recognise) {
  return http.createServer(async (request, response) => {
    try {
      await route(request, response, recognise);
    } catch (error) {
      if (response.headersSent || response.destroyed) return response.destroy();
      const known = error instanceof BadRequest;
      if (!known) console.error(error);
      // The rest of a refused body would be parsed as the next request.
      const headers = { ...error.headers, Connection: 'close' };
      const message = known ? error.message : 'The server failed, see its output.';
      sendJson(response, known ? error.status : 500, { error: message }, headers);
    }
  });
}

/** Listens on `port`, or on a free port when that one is taken; resolves to the address. */
function listen(server, port) {
  return new Promise((resolve, reject) => {
    server.on('error', (error) => {
      if (error.code !== 'EADDRINUSE' || port === 0) return reject(error);
      return server.listen(0, HOST);
    });
    server.on('listening', () => resolve(`http://${HOST}:${server.address().port}/`));
    server.listen(port, HOST);
  });
}

function parsePort(args) {
  if (args.length === 0) return DEFAULT_PORT;
  const port = args.length === 2 && args[0] === '--port' ? Number(args[1]) : NaN;
  if (Number.isInteger(port) && port >= 0 && port < 65536) return port;
  throw Object.assign(new Error('--port must be a whole number from 0 (any free port) to 65535.'), {
    expected: true,
  });
}

/** Serves until Ctrl-C; resolves to the exit code. */
async function serve(args) {
  const port = parsePort(args);
  const server = createServer(createRecogniser());
  const address = await listen(server, port);
  console.log(`\nDraw at ${address} (Ctrl-C stops the server)`);
  return new Promise((resolve) => {
    const stop = () => {
      server.close(() => resolve(0));
      server.closeAllConnections?.();
    };
    process.once('SIGINT', stop);
    process.once('SIGTERM', stop);
  });
}

module.exports = { createServer, listen, serve };

if (require.main === module) {
  serve(process.argv.slice(2)).catch((error) => {
    console.error(error.expected ? error.message : error);
    process.exitCode = 1;
  });
}
