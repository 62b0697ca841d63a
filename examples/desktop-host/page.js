'use strict';

// The page draws ink and replaces each stroke by its figure. It keeps the ink: the first
// undo brings it back, the next one removes the stroke.

const canvas = document.querySelector('canvas');
const context = canvas.getContext('2d');
const strokes = []; // { ink: as drawn, path: the points of its figure, or null }
let drawing = null; // the ink under the pen

/** A pointer event as a point: fractions of the drawing area. */
const toPoint = ({ offsetX, offsetY, pressure }) => ({
  x: offsetX / canvas.clientWidth,
  y: offsetY / canvas.clientHeight,
  force: pressure,
});

const shown = ({ ink, path }) => path ?? ink;

function draw() {
  canvas.width = canvas.clientWidth * devicePixelRatio;
  canvas.height = canvas.clientHeight * devicePixelRatio;
  context.lineWidth = 2 * devicePixelRatio;
  const paths = strokes.map(shown);
  for (const path of drawing ? [...paths, drawing] : paths) {
    context.beginPath();
    for (const { x, y } of path) context.lineTo(x * canvas.width, y * canvas.height);
    context.stroke();
  }
}

/** Shows `ink` at once, and its figure when the answer arrives. */
async function add(ink) {
  const others = strokes.map(shown);
  const stroke = { ink, path: null };
  strokes.push(stroke);
  const { clientWidth: width, clientHeight: height } = canvas; // the size that the user sees
  const { path, figure } = await window.scrivo.beautify(ink, width, height, others);
  if (figure) stroke.path = path;
  draw(); // no change if the stroke has been undone meanwhile
}

function undo() {
  const last = strokes.at(-1);
  if (last?.path) last.path = null;
  else strokes.pop();
  draw();
}

canvas.addEventListener('pointerdown', (event) => {
  canvas.setPointerCapture(event.pointerId);
  drawing = [toPoint(event)];
});

canvas.addEventListener('pointermove', (event) => {
  if (!drawing) return;
  for (const sample of event.getCoalescedEvents()) drawing.push(toPoint(sample));
  draw();
});

canvas.addEventListener('pointerup', () => {
  if (drawing) add(drawing);
  drawing = null;
});

canvas.addEventListener('pointercancel', () => {
  drawing = null; // a palm or the start of a gesture
  draw();
});

document.querySelector('button').addEventListener('click', undo);
window.addEventListener('resize', draw);
draw();
