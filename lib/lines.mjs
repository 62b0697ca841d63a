import lines from './lines.js';

export const { LineIdealiser, loadTemplates } = lines;
