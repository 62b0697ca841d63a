export const FigureType = Object.freeze({
  NONE: 0,
  POINT: 1,
  LINE: 2,
  ANGLE: 4,
  POLYGON: 6,
  ELLIPSE: 7,
});

const POINTS_PER_EDGE = 21;
const POLYGON_NAMES = { 3: 'Triangle', 4: 'Quadrangle' };
// Radii of an ellipse that was made a circle differ by rounding alone.
const CIRCLE_TOLERANCE = 1e-3;

/** Whether points [x, y] in pixels all lie at one distance from their middle. */
function isCircle(points) {
  const ring = points.slice(1); // the first point is the last one again
  const middle = (k) => ring.reduce((sum, point) => sum + point[k], 0) / ring.length;
  const [cx, cy] = [middle(0), middle(1)];
  const radii = ring.map(([x, y]) => Math.hypot(x - cx, y - cy));
  const largest = Math.max(...radii);
  return largest - Math.min(...radii) < CIRCLE_TOLERANCE * largest;
}

/** The everyday name of an answer, its points given as [x, y] in pixels. */
export function figureName(type, points) {
  switch (type) {
    case FigureType.POINT:
      return 'Dot';
    case FigureType.LINE:
      return 'Line';
    case FigureType.ANGLE:
      return 'Angle';
    case FigureType.POLYGON:
      return POLYGON_NAMES[points.length / POINTS_PER_EDGE] ?? 'Polygon';
    case FigureType.ELLIPSE:
      return isCircle(points) ? 'Circle' : 'Ellipse';
    default:
      return 'Kept as drawn';
  }
}

export const isClosed = (type) => type === FigureType.POLYGON || type === FigureType.ELLIPSE;
