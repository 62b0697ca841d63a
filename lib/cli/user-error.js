'use strict';

/**
 * A failure the user can mend: its message says what was wrong, where, and what to do.
 * Command lines print the message alone, without a stack.
 */
class UserError extends Error {
  /**
   * @param {string} message
   * @param {number} [exitCode] 1 for input that cannot be used, 2 for a wrong command line
   */
  constructor(message, exitCode = 1) {
    super(message);
    this.name = 'UserError';
    this.exitCode = exitCode;
  }
}

module.exports = { UserError };
