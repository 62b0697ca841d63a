'use strict';

const { serve } = require('./pool.js');
const { createProcessor } = require('./processor.js');

serve(createProcessor, ({ parts }) => parts.map((part) => part.buffer));
