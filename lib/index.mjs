import scrivo from './index.js';

export const { initScrivo, optimizeAStroke, FigureType, templates } = scrivo;
