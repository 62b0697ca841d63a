'use strict';

const { templates } = require('scrivo');
const { askProbe } = require('../probe/index.js');

/**
 * What the template engine computes from strokes, and its answers: see probe/PictureProbe.cpp.
 *
 * @param {Array<object>} tasks
 * @returns {Array<object>} one finding per task
 */
const findingsOf = (tasks) => askProbe(['pictures', ...templates], tasks);

module.exports = { findingsOf };
