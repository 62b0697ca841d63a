'use strict';

// Corpora as text: an input a line, in hexadecimal. A line that begins with # says what the
// next one found.

/** All inputs as buffers, and the lines of those with a comment. */
function fromLines(text) {
  const lines = text.split('\n').filter(Boolean);
  const isComment = (line) => line.startsWith('#');
  const inputs = lines.filter((line) => !isComment(line)).map((line) => Buffer.from(line, 'hex'));
  const noted = lines.filter((line, k) => isComment(line) || (k > 0 && isComment(lines[k - 1])));
  return { inputs, noted };
}

/** The text of commented lines and further inputs. */
function toLines(noted, inputs) {
  const known = new Set(noted);
  const fresh = inputs
    .map((input) => input.toString('hex'))
    .filter((hex) => hex && !known.has(hex));
  return [...noted, ...fresh].map((line) => `${line}\n`).join('');
}

module.exports = { fromLines, toLines };
