'use strict';

/**
 * A failure the user can mend: its message says what was wrong, where, and what to do.
 * Command lines print the message alone, without a stack.
 */
class UserError extends Error {
  /** @param {string} message */
  constructor(message) {
    super(message);
    this.name = 'UserError';
  }
}

module.exports = { UserError };
