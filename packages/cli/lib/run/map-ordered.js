'use strict';

/**
 * Runs a task on every item, several at a time, and yields the results in the order of the items,
 * each as soon as it and those before it are there, also while the next item lets itself be waited
 * for. Takes no more than `limit` items ahead of the results.
 *
 * @template Item, Result
 * @param {AsyncIterable<Item>} items
 * @param {(item: Item) => Promise<Result>} task
 * @param {number} limit
 * @yields {Result}
 */
async function* mapOrdered(items, task, limit) {
  const iterator = items[Symbol.asyncIterator]();
  const running = [];
  let next = ask(iterator);
  while (next || running.length > 0) {
    const canTake = next && running.length < limit;
    const item = canTake && (await firstOf(next, running[0]));
    if (!item) {
      yield await running.shift();
    } else if (item.done) {
      next = undefined;
    } else {
      running.push(handled(task(item.value)));
      next = ask(iterator);
    }
  }
}

function ask(iterator) {
  return handled(iterator.next());
}

/** Who awaits the promise still meets its failure; nobody may be left to. */
function handled(promise) {
  promise.catch(() => {});
  return promise;
}

/** The next item, or undefined when the result that is due comes earlier. */
function firstOf(next, result) {
  return result ? Promise.race([result.then(() => undefined), next]) : next;
}

module.exports = { mapOrdered };
