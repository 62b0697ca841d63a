// Reads and writes the points of strokes. PointTransfer.cc compiles this file into
// the native module, runs it, and passes in the shared array and the constants of
// its layout. A point takes three numbers of the array: x, y and force.
//
// The factory and `write` are in sloppy mode on purpose: an assignment that a
// prototype forbids is ignored, as napi_set_property ignores it. `read` is strict,
// so that a getter does not see it as its caller. `shared` is no parameter of
// `read` or `write`, so that a getter cannot get hold of it and detach it.
(function (shared, BLOCK, DONE, STATE, POINTS, END_OF_BLOCK, NO_OBJECT) {
  /**
   * Reads points until the block is full or the stroke ends. Returns the element
   * or property that stopped it; the state tells which.
   */
  function read(stroke, from) {
    'use strict';
    let done = 0;
    for (let k = POINTS; done < BLOCK && from < stroke.length; done++, k += 3, from++) {
      shared[DONE] = done;
      shared[k] = shared[k + 1] = shared[k + 2] = 0;
      const point = stroke[from];
      if (typeof point !== 'object' || point === null) {
        shared[STATE] = NO_OBJECT;
        return point;
      }
      const x = point.x;
      if (typeof x !== 'number') return x;
      shared[k] = x;
      const y = point.y;
      if (typeof y !== 'number') return y;
      shared[k + 1] = y;
      if ('force' in point) {
        const force = point.force;
        if (typeof force !== 'number') return force;
        shared[k + 2] = force;
      }
    }
    shared[DONE] = done;
    shared[STATE] = END_OF_BLOCK;
  }

  /** Stores `count` points of the block in `path`, from the index `from` on. */
  function write(path, from, count) {
    for (let k = POINTS, end = from + count; from < end; k += 3, from++) {
      const point = {};
      point.x = shared[k];
      point.y = shared[k + 1];
      if (shared[k + 2] !== 0) point.force = shared[k + 2];
      path[from] = point;
    }
  }

  return [read, write];
});
