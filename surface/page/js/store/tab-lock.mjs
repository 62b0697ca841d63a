// @ts-check
// One tab at a time has the drawing: the others could overwrite its changes.

const NAME = 'scrivo-drawing';

// A tab that does not answer for so long, as one that is frozen, is not waited for.
const PATIENCE_MS = 3000;

// Set before the reload by which a tab takes the drawing from another one.
const TAKES = 'scrivo-take-over';

/** Reloads this tab, with the drawing of the other one. */
export function takeOver() {
  sessionStorage.setItem(TAKES, 'yes');
  location.reload();
}

/** @param {LockOptions} options @param {() => void} onStolen @returns {Promise<(() => void) | null>} releases the lock */
function request(options, onStolen) {
  return new Promise((resolve, reject) => {
    navigator.locks
      .request(NAME, options, (lock) => {
        if (!lock) return resolve(null);
        return new Promise((release) => resolve(() => release(undefined)));
      })
      .catch((error) => {
        reject(error);
        onStolen(); // does nothing before the lock was granted
      });
  });
}

/**
 * Takes the lock if no other tab has it, or if the user wants the drawing here.
 *
 * @param {() => Promise<void>} onYield stores what is pending, before the drawing goes to another tab
 * @returns {Promise<boolean>} whether this tab has the drawing
 */
export async function lockDrawing(onYield) {
  if (!navigator.locks) return true;
  const takes = sessionStorage.getItem(TAKES);
  sessionStorage.removeItem(TAKES);
  let isOurs = false;
  const onStolen = () => isOurs && onYield();
  const channel = new BroadcastChannel(NAME);
  if (takes) channel.postMessage('yield');
  const options = takes ? { signal: AbortSignal.timeout(PATIENCE_MS) } : { ifAvailable: true };
  try {
    const release = await request(options, onStolen).catch((error) => {
      if (takes) return request({ steal: true }, onStolen);
      throw error;
    });
    isOurs = release !== null;
    channel.onmessage = async () => {
      if (!release || !isOurs) return;
      isOurs = false;
      await onYield();
      release();
    };
    return isOurs;
  } catch {
    return true; // a page from disk may have no locks
  }
}
