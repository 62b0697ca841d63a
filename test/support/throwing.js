'use strict';

const assert = require('node:assert/strict');

/** Checks that `call` throws this very value, which need not be an Error. */
function assertThrowsSame(call, value) {
  let caught = 'nothing thrown';
  try {
    call();
  } catch (error) {
    caught = error;
  }
  assert.ok(Object.is(caught, value), `caught ${String(caught)}`);
}

const thrower = (value) => () => {
  throw value;
};

module.exports = { assertThrowsSame, thrower };
