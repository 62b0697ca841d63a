'use strict';

const assert = require('node:assert/strict');
const http = require('node:http');
const { after, before, describe, test } = require('node:test');
const { createServer, listen } = require('../../surface/server.js');
const { MAX_BYTES } = require('../../surface/stroke-request.js');

const STROKE = { stroke: [{ x: 0.1, y: 0.2, force: 0.5 }], width: 800, height: 600, others: [[]] };

describe('the server of the drawing page', () => {
  const ANSWER = { path: STROKE.stroke, figure: { kind: 'line' }, confidence: 0.9 };
  const requests = [];
  const recognise = (request) => {
    requests.push(request);
    if (request.width === 13) throw new Error('failed on purpose');
    return ANSWER;
  };
  const server = createServer(recognise);
  let address;

  before(async () => {
    address = await listen(server, 0);
  });
  after(() => server.close());

  const post = (body, headers = { 'Content-Type': 'application/json' }) =>
    fetch(`${address}stroke`, { method: 'POST', headers, body });

  /** A request that no browser would send; resolves to its status. */
  const raw = (options) =>
    new Promise((resolve, reject) => {
      const { port } = server.address();
      const request = http.request({ host: '127.0.0.1', port, ...options }, (response) => {
        response.resume();
        resolve(response.statusCode);
      });
      request.on('error', reject).end();
    });

  test('passes the requested engine on, by default the beautifier', async () => {
    for (const [body, engine] of [
      [STROKE, 'beautifier'],
      [{ ...STROKE, engine: 'template' }, 'template'],
    ]) {
      const response = await post(JSON.stringify(body));
      assert.equal(response.status, 200);
      assert.deepEqual(await response.json(), ANSWER);
      assert.deepEqual(requests.at(-1), { ...STROKE, engine });
    }
  });

  test('reports what is wrong with a request', async () => {
    for (const [body, message] of [
      ['{"stroke":', /^The body is not JSON/],
      ['{}', /^stroke must be an array/],
    ]) {
      const response = await post(body);
      assert.equal(response.status, 400, body);
      assert.match((await response.json()).error, message);
    }
  });

  test('refuses other types, methods and sizes', async () => {
    assert.equal((await post('{}', { 'Content-Type': 'text/plain' })).status, 415);
    const wrong = await fetch(`${address}stroke`);
    assert.deepEqual([wrong.status, wrong.headers.get('allow')], [405, 'POST']);
    assert.equal((await fetch(address, { method: 'DELETE' })).status, 405);
    const headers = { 'Content-Type': 'application/json', 'Content-Length': MAX_BYTES + 1 };
    assert.equal(await raw({ method: 'POST', path: '/stroke', headers }), 413);
  });

  test('goes on after an engine has failed', async (t) => {
    t.mock.method(console, 'error', () => {});
    assert.equal((await post(JSON.stringify({ ...STROKE, width: 13 }))).status, 500);
    assert.equal((await post(JSON.stringify(STROKE))).status, 200);
  });

  test('serves the page and what it loads', async () => {
    const types = {
      '': 'text/html; charset=utf-8',
      'style.css': 'text/css; charset=utf-8',
      'icon.svg': 'image/svg+xml',
      'js/main.mjs': 'text/javascript; charset=utf-8',
      'vendor/perfect-freehand.mjs': 'text/javascript; charset=utf-8',
    };
    for (const [name, type] of Object.entries(types)) {
      const response = await fetch(address + name);
      assert.deepEqual([response.status, response.headers.get('content-type')], [200, type], name);
      assert.notEqual(await response.text(), '');
    }
    const head = await fetch(address, { method: 'HEAD' });
    assert.deepEqual([head.status, await head.text()], [200, '']);
  });

  test('serves nothing outside its folder', async () => {
    const paths = ['/../server.js', '/js/../../server.js', '/%2e%2e/server.js', '/..%2fserver.js'];
    const others = ['//etc/hostname', '/.', '/js', '/js/', '/nothing.html', '/index.html%00', '*'];
    for (const path of [...paths, ...others]) assert.equal(await raw({ path }), 404, path);
  });

  test('answers its own page only', async () => {
    const headers = { Host: 'example.com' };
    assert.equal(await raw({ path: '/', headers }), 403);
    const foreign = { 'Content-Type': 'application/json', Origin: 'http://example.com' };
    assert.equal((await post(JSON.stringify(STROKE), foreign)).status, 403);
  });

  test('moves to a free port when its own is taken', async () => {
    const second = createServer(recognise);
    const other = await listen(second, server.address().port);
    assert.notEqual(other, address);
    assert.equal((await fetch(other)).status, 200);
    second.close();
  });
});
