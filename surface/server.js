'use strict';

// The drawing page's server: serves its files, and answers POST /recognise with the
// figure of one stroke. Listens on the loopback interface only.

const http = require('node:http');
const path = require('node:path');
const { DEFAULT_PORT, failure, parseCommandLine, printHelp } = require('./command-line.js');
const { policy } = require('./policy.js');
const { createRecogniser } = require('./recognise.js');
const { BadRequest, readRequest } = require('./request.js');

const HOST = '127.0.0.1';
const TYPES = {
  '.css': 'text/css; charset=utf-8',
  '.html': 'text/html; charset=utf-8',
  '.js': 'text/javascript; charset=utf-8',
  '.svg': 'image/svg+xml',
};
const HEADERS = {
  'Cache-Control': 'no-cache',
  'Content-Security-Policy': `${policy()}; frame-ancestors 'none'`,
  // With these two the page gets clocks of full resolution.
  'Cross-Origin-Embedder-Policy': 'require-corp',
  'Cross-Origin-Opener-Policy': 'same-origin',
  'Cross-Origin-Resource-Policy': 'same-origin',
  'Referrer-Policy': 'no-referrer',
  'X-Content-Type-Options': 'nosniff',
};

/** Bounds on what one client may take; times in ms. */
const LIMITS = {
  headersTimeout: 5_000,
  requestTimeout: 10_000,
  keepAliveTimeout: 5_000,
  connectionsCheckingInterval: 1_000,
  connections: 64,
  // Nobody draws faster than this, and a page that has waited sends its strokes one by one.
  requestsPerSecond: 300,
};

function send(response, status, type, body, headers = {}) {
  const content = { 'Content-Type': type, 'Content-Length': Buffer.byteLength(body) };
  response.writeHead(status, { ...HEADERS, ...content, ...headers });
  response.end(response.req.method === 'HEAD' ? undefined : body);
}

function sendJson(response, status, value, headers) {
  send(response, status, 'application/json; charset=utf-8', JSON.stringify(value), headers);
}

function sendFile(response, files, pathname) {
  const name = pathname === '/' ? 'index.html' : pathname.slice(1);
  if (!Object.hasOwn(files, name)) {
    return sendJson(response, 404, { error: `There is no ${pathname}.` });
  }
  return send(response, 200, TYPES[path.extname(name)], files[name]);
}

/** Rejects other sites, also those whose name resolves to the loopback address. */
function isLocal({ headers }) {
  const local = /^(localhost|127\.0\.0\.1)(:\d+)?$/i;
  const { host = '', origin } = headers;
  return local.test(host) && (!origin || origin === `http://${host}`);
}

/** Counts requests by second; returns a function that tells whether one more is accepted. */
function createRateLimit(perSecond) {
  let second = 0;
  let count = 0;
  return () => {
    const now = Math.floor(Date.now() / 1000);
    if (now !== second) [second, count] = [now, 0];
    count += 1;
    return count <= perSecond;
  };
}

/**
 * An HTTP server, not listening yet.
 *
 * @param {(request: object) => object} recognise that of `createRecogniser`
 * @param {Record<string, string>} files the page, as `buildPage` makes it
 * @param {Partial<typeof LIMITS>} [changed] limits that differ
 */
function createServer(recognise, files, changed = {}) {
  const { connections, requestsPerSecond, keepAliveTimeout, ...times } = { ...LIMITS, ...changed };
  const accepts = createRateLimit(requestsPerSecond);

  async function route(request, response) {
    if (!isLocal(request)) throw new BadRequest(403, 'Only the page of this server may use it.');
    const [pathname] = request.url.split('?', 1);
    const isStroke = pathname === '/recognise';
    const methods = isStroke ? ['POST'] : ['GET', 'HEAD'];
    if (!methods.includes(request.method)) {
      throw new BadRequest(405, `${pathname} accepts only ${methods.join(' and ')}.`, {
        Allow: methods.join(', '),
      });
    }
    if (!accepts()) throw new BadRequest(429, 'Too many requests.', { 'Retry-After': '1' });
    if (isStroke) return sendJson(response, 200, recognise(await readRequest(request)));
    return sendFile(response, files, pathname);
  }

  const server = http.createServer({ ...times, keepAliveTimeout }, async (request, response) => {
    try {
      await route(request, response);
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
  server.maxConnections = connections;
  return server;
}

/** Listens on `port`; resolves to the address. */
function listen(server, port) {
  return new Promise((resolve, reject) => {
    server.once('error', reject);
    server.listen(port, HOST, () => {
      server.off('error', reject);
      resolve(`http://${HOST}:${server.address().port}/`);
    });
  });
}

/** Listens on the port asked for, or else on the default one or a free one. */
async function listenOn(server, port) {
  try {
    return await listen(server, port ?? DEFAULT_PORT);
  } catch (error) {
    if (error.code === 'EACCES') throw failure(`Port ${port} needs more rights. Choose another.`);
    if (error.code !== 'EADDRINUSE') throw error;
    if (port !== undefined) throw failure(`Port ${port} is taken. Choose another, or 0 for any.`);
    return listen(server, 0);
  }
}

/**
 * Serves until Ctrl-C; resolves to the exit code.
 *
 * @param {string[]} args the command line
 * @param {() => Promise<Record<string, string>>} loadPage resolves to the files of the page, by name
 */
async function serve(args, loadPage) {
  const { help, port } = parseCommandLine(args);
  if (help) return printHelp();
  const [recognise, files] = await Promise.all([createRecogniser(), loadPage()]);
  const server = createServer(recognise, files);
  const address = await listenOn(server, port);
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
