'use strict';

const { templates } = require('scrivo');
const { askProbe } = require('../probe/index.js');

/**
 * What the template engine sees in strokes, and what it answers: see probe/PictureProbe.cpp.
 *
 * @param {Array<object>} tasks
 * @returns {Array<object>} one finding a task
 */
const findingsOf = (tasks) => askProbe(['pictures', ...templates], tasks);

module.exports = { findingsOf };
