import defining from '../../../lib/define-beautifier.js';
import coding from '../../../lib/figure-codec.js';
import tables from 'scrivo-wasm-tables';

const bits = (members) => members.reduce((sum, member) => sum | (1 << member), 0);

/** The answer of beautifier.cpp's `write` in the form of the native module's. */
function readAnswer(numbers) {
  const [type, confidence, reason, index, subtype, ...counts] = numbers.subarray(0, 8);
  let from = 8;
  const [parameters, alternatives, path] = counts.map((count) =>
    numbers.slice(from, (from += count)),
  );
  return [path, type, confidence, reason, index, subtype, parameters, alternatives];
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
      const head = [...this.#options, ...area, ...lengths];
      const numbers = new Float64Array(head.length + values.length + points.length);
      numbers.set(head);
      numbers.set(values, head.length);
      numbers.set(points, head.length + values.length);
      return engine.call('beautify', numbers, readAnswer);
    }
  }

  function outlineOf(index, parameters, width, height) {
    const numbers = Float64Array.of(index, width, height, parameters.length, ...parameters);
    return engine.call('outlineOf', numbers, (answer) => answer.slice(1, 1 + answer[0]));
  }

  return defining.defineBeautifier({ Beautifier, outlineOf }, coding.figureCodec(tables));
}
