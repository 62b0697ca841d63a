import { getStroke } from 'perfect-freehand';

const PEN_WIDTH = 6;
export const FIGURE_WIDTH = 3.2;

/**
 * Outline of hand-drawn ink, wider where the pen was pressed harder. Without measured
 * pressure it depends on the speed of the hand. Points {x, y, force?} in pixels.
 */
export function inkOutline(points) {
  const measured = points.some(({ force }) => force !== undefined);
  const outline = getStroke(
    points.map(({ x, y, force = 0.5 }) => [x, y, force]),
    {
      size: PEN_WIDTH,
      thinning: 0.55,
      smoothing: 0.5,
      streamline: 0.25,
      simulatePressure: !measured,
      last: true,
    },
  );
  const path = new Path2D();
  if (outline.length === 0) return path;
  const midpoint = (i) => {
    const [ax, ay] = outline[i % outline.length];
    const [bx, by] = outline[(i + 1) % outline.length];
    return [(ax + bx) / 2, (ay + by) / 2];
  };
  path.moveTo(...midpoint(0));
  for (let i = 1; i <= outline.length; i += 1) {
    path.quadraticCurveTo(...outline[i % outline.length], ...midpoint(i));
  }
  path.closePath();
  return path;
}

/** The path through points [x, y] in pixels. */
export function polyline(points) {
  const path = new Path2D();
  points.forEach(([x, y]) => path.lineTo(x, y));
  return path;
}
