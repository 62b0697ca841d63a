'use strict';

// The page: draws ink, and shows each stroke as its figure once there is one. The ink is
// kept: undo brings it back before it takes the stroke away.

const canvas = document.querySelector('canvas');
const context = canvas.getContext('2d');
const strokes = []; // { ink: as drawn, figure: its points, or null }
let drawing = null; // the ink under the pen

/** A pointer event as a point: fractions of the drawing area. */
const toPoint = ({ offsetX, offsetY, pressure }) => ({
  x: offsetX / canvas.clientWidth,
  y: offsetY / canvas.clientHeight,
  force: pressure,
});

const shown = ({ ink, figure }) => figure ?? ink;

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

/** Shows `ink` at once, and its figure as soon as the answer is there. */
async function add(ink) {
  const others = strokes.map(shown);
  const stroke = { ink, figure: null };
  strokes.push(stroke);
  const { clientWidth: width, clientHeight: height } = canvas; // the size that the user sees
  const { path, type } = await window.scrivo.idealise(ink, width, height, others);
  if (type !== 0) stroke.figure = path; // 0: no figure, and the path is the ink
  draw(); // unchanged, if the stroke was undone in the meantime
}

function undo() {
  const last = strokes.at(-1);
  if (last?.figure) last.figure = null;
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
  drawing = null; // it was a palm, or the start of a gesture
  draw();
});

document.querySelector('button').addEventListener('click', undo);
window.addEventListener('resize', draw);
draw();
