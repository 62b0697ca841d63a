'use strict';

/**
 * A failure that the user can correct: its message says what was wrong, where, and what to do. It is
 * printed without a stack.
 */
class UserError extends Error {
  /** @param {string} message */
  constructor(message) {
    super(message);
    this.name = 'UserError';
  }
}

module.exports = { UserError };
