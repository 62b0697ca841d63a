'use strict';

const assert = require('node:assert/strict');
const http = require('node:http');
const { after, before, describe, test } = require('node:test');
const { createServer, listen } = require('../../surface/server.js');
const { MAX_BYTES } = require('../../surface/stroke-request.js');

const STROKE = { stroke: [{ x: 0.1, y: 0.2, force: 0.5 }], width: 800, height: 600, others: [[]] };

describe('the server of the drawing page', () => {
  const calls = [];
  const optimizeAStroke = (...args) => {
    calls.push(args);
    if (args[1] === 13) throw new Error('out of luck');
    return { path: args[0], type: 2 };
  };
  const server = createServer({ optimizeAStroke });
  let address;

  before(async () => {
    address = await listen(server, 0);
  });
  after(() => server.close());

  const post = (body, headers = { 'Content-Type': 'application/json' }) =>
    fetch(`${address}stroke`, { method: 'POST', headers, body });

  /** A request as no browser would send it; resolves to its status. */
  const raw = (options) =>
    new Promise((resolve, reject) => {
      const { port } = server.address();
      const request = http.request({ host: '127.0.0.1', port, ...options }, (response) => {
        response.resume();
        resolve(response.statusCode);
      });
      request.on('error', reject).end();
    });

  test('hands the four arguments to the module and answers with its result', async () => {
    const response = await post(JSON.stringify(STROKE));
    assert.equal(response.status, 200);
    assert.deepEqual(await response.json(), { path: STROKE.stroke, type: 2 });
    assert.deepEqual(calls.at(-1), [STROKE.stroke, 800, 600, [[]]]);
  });

  test('says what is wrong with a request and where', async () => {
    const points = (text) => `{"stroke":[${text}],"width":1,"height":1,"others":[]}`;
    const but = (changes) => JSON.stringify({ ...STROKE, ...changes });
    const cases = [
      ['{"stroke":', /no JSON/],
      ['[]', /must be an object \{stroke/],
      ['{}', /^stroke must be an array/],
      [points('{"x":0,"y":0},null'), /^stroke\[1\] must be an object/],
      [points('{"x":0,"y":"1"}'), /^stroke\[0\]\.y must be a finite number/],
      [points('{"x":1e999,"y":0}'), /^stroke\[0\]\.x must be a finite number/],
      [points('{"x":0,"y":0,"force":null}'), /^stroke\[0\]\.force must be/],
      [but({ width: 0 }), /^width must be a positive number/],
      [but({ height: null }), /^height must be a positive number/],
      [but({ others: {} }), /^others must be an array/],
      [but({ others: [[], [{ x: 1 }]] }), /^others\[1\]\[0\]\.y must be/],
    ];
    for (const [body, message] of cases) {
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

  test('goes on after the module has failed', async (t) => {
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

  test('talks to its own page only', async () => {
    const headers = { Host: 'example.com' };
    assert.equal(await raw({ path: '/', headers }), 403);
    const foreign = { 'Content-Type': 'application/json', Origin: 'http://example.com' };
    assert.equal((await post(JSON.stringify(STROKE), foreign)).status, 403);
  });

  test('moves to a free port when its own is taken', async () => {
    const second = createServer({ optimizeAStroke });
    const other = await listen(second, server.address().port);
    assert.notEqual(other, address);
    assert.equal((await fetch(other)).status, 200);
    second.close();
  });
});
