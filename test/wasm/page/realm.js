'use strict';

/** The value of an expression in another realm, as that of `node:vm`. */
function runInNewContext(expression) {
  const { document } = globalThis;
  const frame = document.body.appendChild(document.createElement('iframe'));
  return frame.contentWindow.eval(expression);
}

module.exports = { runInNewContext };
