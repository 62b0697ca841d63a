'use strict';

const assert = require('node:assert/strict');
const { spawnSync } = require('node:child_process');
const http = require('node:http');
const net = require('node:net');
const { once } = require('node:events');
const { after, before, describe, test } = require('node:test');
const { parseCommandLine } = require('../../surface/command-line.js');
const { createServer, listen } = require('../../surface/server.js');
const { MAX_BYTES, checkRequest } = require('../../surface/request.js');

const SERVER = require.resolve('../../surface/main.js');
const REQUEST = { task: 'recognise', points: [1, 2, 3, 4], width: 800, height: 600 };
const FILES = { 'index.html': '<p>', 'page.js': '1', 'style.css': 'p {}' };
const JSON_TYPE = { 'Content-Type': 'application/json' };

describe('the server of the drawing page', () => {
  const requests = [];
  const recognise = (request) => {
    requests.push(request);
    if (request.width === 13) throw new Error('failed on purpose');
    return { figure: null };
  };
  const limits = { requestTimeout: 300, headersTimeout: 300, connectionsCheckingInterval: 50 };
  const server = createServer(recognise, FILES, limits);
  let address;

  before(async () => {
    address = await listen(server, 0);
  });
  after(() => server.close());

  const post = (value, headers = JSON_TYPE) =>
    fetch(`${address}recognise`, {
      method: 'POST',
      headers,
      body: typeof value === 'string' ? value : JSON.stringify(value),
    });

  /** A request that no browser would send; resolves to its status. */
  const raw = async (options, port = server.address().port) => {
    const request = http.request({ host: '127.0.0.1', port, ...options }).end();
    const [response] = await once(request, 'response');
    response.resume();
    return response.statusCode;
  };

  test('passes requests on, and says what is wrong with others', async () => {
    const response = await post({ ...REQUEST, engine: 'template' });
    assert.deepEqual([response.status, await response.json()], [200, { figure: null }]);
    assert.deepEqual(requests.at(-1), { ...REQUEST, engine: 'template', anchors: [] });
    for (const [body, message] of [
      ['{"task":', /^The body is not JSON/],
      [{}, /^task is missing/],
    ]) {
      const refused = await post(body);
      assert.equal(refused.status, 400);
      assert.match((await refused.json()).error, message);
    }
  });

  test('refuses other types, methods and sizes, and goes on after a failure', async (t) => {
    assert.equal((await post('{}', { 'Content-Type': 'text/plain' })).status, 415);
    const wrong = await fetch(`${address}recognise`);
    assert.deepEqual([wrong.status, wrong.headers.get('allow')], [405, 'POST']);
    assert.equal((await fetch(address, { method: 'DELETE' })).status, 405);
    const headers = { ...JSON_TYPE, 'Content-Length': MAX_BYTES + 1 };
    assert.equal(await raw({ method: 'POST', path: '/recognise', headers }), 413);
    t.mock.method(console, 'error', () => {});
    assert.equal((await post({ ...REQUEST, width: 13 })).status, 500);
    assert.equal((await post(REQUEST)).status, 200);
  });

  test('serves its files and nothing else, with a policy that lets no other site in', async () => {
    for (const [name, type] of [
      ['', 'text/html'],
      ['style.css', 'text/css'],
      ['page.js', 'text/javascript'],
    ]) {
      const { status, headers } = await fetch(address + name);
      assert.deepEqual([status, headers.get('content-type')], [200, `${type}; charset=utf-8`]);
      assert.match(
        headers.get('content-security-policy'),
        /default-src 'none'.*frame-ancestors 'none'/,
      );
      assert.equal(headers.get('cross-origin-resource-policy'), 'same-origin');
    }
    const head = await fetch(address, { method: 'HEAD' });
    assert.deepEqual([head.status, await head.text()], [200, '']);
    const paths = ['/../server.js', '/%2e%2e/server.js', '//etc/hostname', '/toString', '/js', '*'];
    for (const path of paths) assert.equal(await raw({ path }), 404, path);
  });

  test('answers its own page only', async () => {
    assert.equal(await raw({ path: '/', headers: { Host: 'example.com' } }), 403);
    assert.equal((await post(REQUEST, { ...JSON_TYPE, Origin: 'http://example.com' })).status, 403);
  });

  test('cuts off senders that are slow', async () => {
    const socket = net.connect(server.address().port, '127.0.0.1');
    socket.write(
      'POST /recognise HTTP/1.1\r\nHost: 127.0.0.1\r\nContent-Type: application/json\r\nContent-Length: 100\r\n\r\n{',
    );
    const [answer] = await once(socket, 'data');
    assert.match(String(answer), /^HTTP\/1.1 408/);
    await once(socket, 'close');
  });

  test('limits the rate of requests', async () => {
    const limited = createServer(recognise, FILES, { requestsPerSecond: 3 });
    await listen(limited, 0);
    const statuses = [];
    for (let i = 0; i < 10; i += 1) statuses.push(await raw({ path: '/' }, limited.address().port));
    assert.equal(statuses[0], 200);
    assert.ok(statuses.includes(429));
    limited.close();
  });
});

const SPACE = { ...REQUEST, points: [1, 2, 3] };
for (const [request, message] of [
  [[], /^The body must be an object/],
  [{ ...REQUEST, task: 'draw' }, /^task must be one of recognise/],
  [SPACE, /^points must be an array of numbers, x and y in turn/],
  [{ ...REQUEST, points: [] }, /^points must have 1 to/],
  [{ ...REQUEST, points: [1, Infinity] }, /^points\[1\] must be a finite number/],
  [{ ...REQUEST, points: [1, '2'] }, /^points\[1\] must be a finite number/],
  [{ ...REQUEST, width: 0 }, /^width must be a number from 1/],
  [{ ...REQUEST, height: null }, /^height must be a number/],
  [{ ...REQUEST, engine: 'both' }, /^engine must be one of beautifier, template/],
  [{ ...REQUEST, task: 'as' }, /^wish is missing/],
  [{ ...REQUEST, wish: 'star' }, /^wish must be one of/],
  [{ ...REQUEST, options: { minSize: -1 } }, /^options.minSize must be a number from 0/],
  [{ ...REQUEST, options: { figures: ['dot', 'star'] } }, /^options.figures\[1\] must be one of/],
  [{ ...REQUEST, options: { layout: 'xy' } }, /^options.layout is unknown/],
  [{ ...REQUEST, path: 1 }, /^path is unknown/],
]) {
  test(`a wrong request is refused: ${message.source}`, () => {
    assert.throws(() => checkRequest(request), { status: 400, message });
  });
}

test('the command line of the server', async () => {
  assert.deepEqual(parseCommandLine(['--port', '0']), { port: 0 });
  assert.throws(() => parseCommandLine(['--port', '65536']), /--port must be a whole number/);
  assert.throws(() => parseCommandLine(['--prot', '1']), /Unknown option '--prot'/);
  const start = (...args) =>
    spawnSync(process.execPath, [SERVER, ...args], { encoding: 'utf8', timeout: 20_000 });
  const taken = http.createServer().listen(0, '127.0.0.1');
  await once(taken, 'listening');
  const refused = start('--port', String(taken.address().port));
  taken.close();
  assert.deepEqual(
    [refused.status, refused.stderr.match(/^Port \d+ is taken/) !== null],
    [1, true],
  );
  const help = start('--help');
  assert.equal(help.status, 0);
  assert.match(help.stdout, /usage: npm start/);
});
