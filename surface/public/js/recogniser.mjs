const TIMEOUT_MS = 10_000;

/** A failure to get an answer; its message is for the reader of the page. */
export class RecogniserError extends Error {}

async function post(body) {
  try {
    return await fetch('/stroke', {
      method: 'POST',
      headers: { 'Content-Type': 'application/json' },
      body: JSON.stringify(body),
      signal: AbortSignal.timeout(TIMEOUT_MS),
    });
  } catch {
    throw new RecogniserError('The server does not answer. Your ink is kept as drawn.');
  }
}

const isFinitePoint = (point) => Number.isFinite(point?.x) && Number.isFinite(point?.y);

/**
 * Asks for the figure of `stroke`. Points are in fractions of a drawing area of
 * `width` by `height` pixels; `others` are the strokes that are there already.
 * Resolves to {path, type}.
 */
export async function recognise({ stroke, width, height, others }) {
  const response = await post({ stroke, width, height, others });
  const answer = await response.json().catch(() => null);
  if (!response.ok || !Array.isArray(answer?.path)) {
    const reason = answer?.error ?? `status ${response.status}`;
    throw new RecogniserError(`The server could not take this stroke: ${reason}`);
  }
  // A degenerate figure has NaN coordinates, null in JSON: nothing to be seen.
  return answer.path.every(isFinitePoint) ? answer : { path: stroke, type: 0 };
}
