'use strict';

// The page: draws ink, and replaces each stroke by its figure when the pen is up.

const canvas = document.querySelector('canvas');
const context = canvas.getContext('2d');
const strokes = [];
let stroke = null;

/** A pointer event as a point: fractions of the drawing area. */
const toPoint = ({ offsetX, offsetY, pressure }) => ({
  x: offsetX / canvas.clientWidth,
  y: offsetY / canvas.clientHeight,
  force: pressure,
});

function draw() {
  canvas.width = canvas.clientWidth;
  canvas.height = canvas.clientHeight;
  for (const path of stroke ? [...strokes, stroke] : strokes) {
    context.beginPath();
    for (const { x, y } of path) context.lineTo(x * canvas.width, y * canvas.height);
    context.stroke();
  }
}

canvas.addEventListener('pointerdown', (event) => {
  canvas.setPointerCapture(event.pointerId);
  stroke = [toPoint(event)];
});

canvas.addEventListener('pointermove', (event) => {
  if (!stroke) return;
  for (const sample of event.getCoalescedEvents()) stroke.push(toPoint(sample));
  draw();
});

canvas.addEventListener('pointerup', async () => {
  const drawn = stroke;
  stroke = null;
  const others = [...strokes];
  const index = strokes.push(drawn) - 1; // the ink stays until the answer is there
  const { clientWidth: width, clientHeight: height } = canvas;
  strokes[index] = (await window.scrivo.idealise(drawn, width, height, others)).path;
  draw();
});

window.addEventListener('resize', draw);
draw();
