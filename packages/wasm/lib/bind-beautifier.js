import defining from '../../../lib/define-beautifier.js';
import coding from '../../../lib/figure-codec.js';
import { lengthOf, writeAll } from './engine.js';
import tables from 'scrivo-wasm-tables';

const bits = (members) => members.reduce((sum, member) => sum | (1 << member), 0);

/** The answer of beautifier.cpp's `write` in the form of the native module's. */
function readAnswer(heap, at) {
  const parameters = at + 8;
  const alternatives = parameters + heap[at + 5];
  const path = alternatives + heap[at + 6];
  return [
    heap.slice(path, path + heap[at + 7]),
    heap[at],
    heap[at + 1],
    heap[at + 2],
    heap[at + 3],
    heap[at + 4],
    heap.slice(parameters, alternatives),
    heap.slice(alternatives, path),
  ];
}

/** The beautifier of an engine's instance. */
export function bindBeautifier(engine) {
  // Takes what the constructor of the native class takes.
  class Beautifier {
    #options;

    constructor(families, ...rest) {
      const anchors = rest.pop();
      this.#options = [bits(families), ...rest.map(Number), bits(anchors)];
    }

    beautify(points, stride, width, height, values, lengths) {
      return this.beautifyAs(points, stride, width, height, values, lengths, -1, -1);
    }

    beautifyAs(points, stride, width, height, values, lengths, family, kind) {
      const area = [family, kind, width, height, stride, points.length / stride, lengths.length];
      const parts = [this.#options, area, lengths, values, points];
      return engine.call(
        'beautify',
        lengthOf(parts),
        (heap, at) => writeAll(heap, at, parts),
        readAnswer,
      );
    }
  }

  /** Calls a function that answers with points. */
  function pointsOf(name, parts) {
    const write = (heap, at) => writeAll(heap, at, parts);
    const read = (heap, at) => heap.slice(at + 1, at + 1 + heap[at]);
    return engine.call(name, lengthOf(parts), write, read);
  }

  const native = {
    Beautifier,
    outlineOf: (index, parameters, width, height) =>
      pointsOf('outlineOf', [[index, width, height, parameters.length], parameters]),
    resample: (points, width, height) =>
      pointsOf('resample', [[width, height, points.length / 2], points]),
  };
  return defining.defineBeautifier(native, coding.figureCodec(tables));
}
