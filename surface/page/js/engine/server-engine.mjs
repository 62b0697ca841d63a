// @ts-check

const TIMEOUT_MS = 10_000;

/** No answer came: it may come later. */
export class Unavailable extends Error {}

/** The engine does not accept this request. */
export class Refused extends Error {}

/** The native package behind the local server. @implements {Engine} */
export class ServerEngine {
  name = 'native, on the local server';

  /** @param {EngineRequest} request */
  async ask(request) {
    const response = await post(request);
    const answer = await response.json().catch(() => null);
    if (response.ok && answer) return answer;
    const reason = answer?.error ?? `status ${response.status}`;
    if (response.status === 429 || response.status >= 500) throw new Unavailable(reason);
    throw new Refused(reason);
  }
}

/** @param {EngineRequest} request */
async function post(request) {
  try {
    return await fetch('/recognise', {
      method: 'POST',
      headers: { 'Content-Type': 'application/json' },
      body: JSON.stringify(request),
      signal: AbortSignal.timeout(TIMEOUT_MS),
    });
  } catch {
    throw new Unavailable('The server does not answer.');
  }
}
