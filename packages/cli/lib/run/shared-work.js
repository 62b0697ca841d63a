'use strict';

// A worker gets as many jobs at once, so that it has work while this thread is busy.
const BATCH = 2;

/**
 * Jobs that the workers of a pool share. This thread works, too, until all of them are ready: a
 * short input needs no worker, and later this thread has to answer them at once.
 */
class SharedWork {
  #waiting = [];
  #given = 0;
  #started = 0;
  #ready = 0;
  #idle = 0;
  #isScheduled = false;

  /**
   * @param {(job: object) => object} processJob in this thread
   * @param {{runAll: (jobs: object[]) => Promise<object[]>}} pool
   * @param {number} workers of the pool
   */
  constructor(processJob, pool, workers) {
    this.processJob = processJob;
    this.pool = pool;
    this.workers = workers;
  }

  /** @returns {Promise<object>} the result */
  run(job) {
    return new Promise((resolve, reject) => {
      this.#waiting.push({ job, resolve, reject });
      this.#given += 1;
      this.#share();
    });
  }

  /** Every job after the first starts a worker, which gets jobs once it is ready. */
  #share() {
    while (this.#idle > 0 && this.#waiting.length > 0) {
      this.#workThere(this.#waiting.splice(0, BATCH));
    }
    if (this.#started < Math.min(this.#given - 1, this.workers)) {
      this.#started += 1;
      this.#start();
    }
    const works = this.#ready < this.workers;
    if (works && this.#waiting.length > 0 && !this.#isScheduled) {
      this.#isScheduled = true;
      // Messages of the workers come first.
      setImmediate(() => this.#workHere());
    }
  }

  #workHere() {
    this.#isScheduled = false;
    const next = this.#waiting.shift();
    if (!next) return;
    try {
      next.resolve(this.processJob(next.job));
    } catch (error) {
      next.reject(error);
    }
    this.#share();
  }

  async #start() {
    try {
      await this.pool.runAll([]);
    } catch {
      // Closed meanwhile, or out of memory: the others do the work.
      return;
    }
    this.#ready += 1;
    this.#idle += 1;
    this.#share();
  }

  async #workThere(batch) {
    this.#idle -= 1;
    try {
      const results = await this.pool.runAll(batch.map(({ job }) => job));
      batch.forEach(({ resolve }, i) => resolve(results[i]));
      this.#idle += 1;
    } catch (error) {
      for (const { reject } of batch) reject(error);
      this.#ready -= 1;
    }
    this.#share();
  }
}

module.exports = { SharedWork };
