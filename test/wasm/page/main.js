'use strict';

// Runs the tests of the engines in a browser, for `npm run test:hosts`:
//
//   node test/wasm/page/main.js PROGRAM [ARGUMENT ...]
//
// In the arguments PROFILE stands for a new folder and PAGE for the address of the page.
// Prints totals as Node's test runner does.

const { spawn } = require('node:child_process');
const fs = require('node:fs');
const os = require('node:os');
const path = require('node:path');
const { serveTests } = require('./server.js');

const TIMEOUT_MS = 120_000;

/** Starts a browser; returns a function that ends it with the processes that it started. */
function start([program, ...args], folder, address) {
  const places = { PROFILE: path.join(folder, 'profile'), PAGE: address };
  const given = args.map((arg) => arg.replace(/PROFILE|PAGE/, (name) => places[name]));
  fs.mkdirSync(places.PROFILE);
  const child = spawn(program, given, { detached: true, stdio: 'ignore' });
  const ended = new Promise((resolve) => child.on('exit', resolve).on('error', resolve));
  return () => {
    if (child.exitCode === null && child.pid) process.kill(-child.pid);
    return ended;
  };
}

function print(results) {
  for (const [file, { passed, skipped, failed }] of Object.entries(results)) {
    console.log(`${file}: ${passed} passed`);
    for (const name of skipped) console.log(`skipped: ${name}`);
    for (const message of failed) console.log(`failed: ${message}`);
  }
  const all = Object.values(results);
  const sum = (count) => all.reduce((total, result) => total + count(result), 0);
  console.log(`# pass ${sum(({ passed }) => passed)}`);
  console.log(`# skipped ${sum(({ skipped }) => skipped.length)}`);
  console.log(`# fail ${sum(({ failed }) => failed.length)}`);
  return sum(({ failed }) => failed.length) === 0 ? 0 : 1;
}

async function main(command) {
  const folder = fs.mkdtempSync(path.join(os.tmpdir(), 'scrivo-browser-'));
  const { address, results, close } = await serveTests(path.join(folder, 'page'));
  const end = start(command, folder, address);
  const timer = setTimeout(() => results.reject(new Error('no results in time')), TIMEOUT_MS);
  try {
    process.exitCode = print(await results.promise);
  } finally {
    clearTimeout(timer);
    await end();
    close();
    fs.rmSync(folder, { recursive: true, maxRetries: 3 });
  }
}

main(process.argv.slice(2));
