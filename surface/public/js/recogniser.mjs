const TIMEOUT_MS = 10_000;

/** A failure to get an answer; its message is meant for the user of the page. */
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

/**
 * Asks an engine, 'beautifier' or 'template', for the figure of `stroke`. Points are in fractions
 * of a drawing area of `width` by `height` pixels; `others` are the other strokes on the page.
 * Resolves to {path, figure, confidence}; `figure` is null when the stroke stays as drawn.
 */
export async function recognise({ engine, stroke, width, height, others }) {
  const response = await post({ engine, stroke, width, height, others });
  const answer = await response.json().catch(() => null);
  if (!response.ok || !Array.isArray(answer?.path)) {
    const reason = answer?.error ?? `status ${response.status}`;
    throw new RecogniserError(`The server refused this stroke: ${reason}`);
  }
  return answer;
}
