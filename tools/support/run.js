'use strict';

// Runs the commands of the tools and stops them when the tool itself is stopped,
// so that no compiler or browser outlives its caller.

const { spawn, spawnSync } = require('node:child_process');
const { constants } = require('node:os');
const path = require('node:path');

const ROOT = path.resolve(__dirname, '..', '..');
const SIGNALS = ['SIGINT', 'SIGTERM', 'SIGHUP'];
const PATIENCE_MS = 5000;

const running = new Set();
let interruptedBy = null;

/** Each child leads a process group: a signal to it reaches its children too. */
function signalGroup(child, signal) {
  try {
    process.kill(-child.pid, signal);
  } catch {
    child.kill(signal); // no process groups on this system, or already gone
  }
}

function stopAll(signal) {
  for (const child of running) signalGroup(child, signal);
}

function onSignal(signal) {
  interruptedBy = signal;
  stopAll('SIGTERM');
  setTimeout(stopAll, PATIENCE_MS, 'SIGKILL').unref();
}

const onExit = () => stopAll('SIGTERM');

function watchSignals(watch) {
  const change = watch ? 'on' : 'off';
  for (const signal of SIGNALS) process[change](signal, onSignal);
  process[change]('exit', onExit);
}

function forget(child) {
  running.delete(child);
  if (running.size > 0) return;
  watchSignals(false);
  if (interruptedBy) process.exit(128 + constants.signals[interruptedBy]);
}

/**
 * Runs a command in the project's root, its output passed through, or dropped with `stdio`
 * 'ignore'.
 * Resolves to its exit code: 127 when it cannot be started, 128 + n when
 * signal n ended it.
 */
function run(command, args = [], { env = {}, cwd = ROOT, stdio = 'inherit' } = {}) {
  return new Promise((resolve) => {
    // Before the start, since a signal may arrive as soon as the child exists.
    if (running.size === 0) watchSignals(true);
    const child = spawn(command, args, {
      cwd,
      env: { ...process.env, ...env },
      stdio: ['ignore', stdio, stdio],
      detached: true,
    });
    running.add(child);
    child.on('error', (error) => {
      console.error(`${command}: ${error.message}`);
      forget(child);
      resolve(127);
    });
    child.on('close', (code, signal) => {
      forget(child);
      resolve(signal ? 128 + constants.signals[signal] : code);
    });
  });
}

/** Standard output of a short command, or null when it failed. */
function capture(command, args = []) {
  const { status, stdout } = spawnSync(command, args, {
    cwd: ROOT,
    encoding: 'utf8',
    stdio: ['ignore', 'pipe', 'ignore'],
    maxBuffer: 1 << 26,
  });
  return status === 0 ? stdout : null;
}

/** The command that runs an installed tool with this Node. */
const nodeTool = (name, script) => [
  process.execPath,
  path.join(ROOT, 'node_modules', name, script),
];

function heading(text) {
  console.log(`\n==> ${text}`);
}

/** Runs a tool's main function; an expected error prints its message alone. */
async function main(body) {
  try {
    process.exitCode = await body(process.argv.slice(2));
  } catch (error) {
    console.error(error.expected ? error.message : error);
    process.exitCode = 1;
  }
}

/** An error that is printed without a stack. */
function failure(message) {
  return Object.assign(new Error(message), { expected: true });
}

module.exports = { ROOT, capture, failure, heading, main, nodeTool, run };
