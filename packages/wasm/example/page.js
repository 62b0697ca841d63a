// A whiteboard of one page: the stroke becomes a figure when the pen is lifted.

import { Beautifier, start } from 'scrivo-wasm/beautifier';

await start();
const beautifier = new Beautifier();

const canvas = document.querySelector('canvas');
const { clientWidth: width, clientHeight: height } = document.documentElement;
Object.assign(canvas, { width, height });
const context = canvas.getContext('2d');
let stroke = [];

function draw(path) {
  context.beginPath();
  for (const { x, y } of path) context.lineTo(x * width, y * height);
  context.stroke();
}

canvas.addEventListener('pointermove', (event) => {
  if (event.buttons === 1) stroke.push({ x: event.offsetX / width, y: event.offsetY / height });
});

canvas.addEventListener('pointerup', () => {
  const { figure, path } = beautifier.beautify(stroke, width, height);
  draw(path);
  document.title = figure?.kind ?? 'ink';
  stroke = [];
});
document.title = 'ready';
