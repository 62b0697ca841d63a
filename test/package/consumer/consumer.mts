// Compiled where the package is installed from its archive.
import { FigureType, initScrivo, optimizeAStroke, templates } from 'scrivo';
import type { Point, StrokeResult } from 'scrivo';
import { Beautifier } from 'scrivo/beautifier';

initScrivo(templates);
const stroke: Point[] = [{ x: 0.5, y: 0.5, force: 1 }];
const { path, type }: StrokeResult = optimizeAStroke(stroke, 800, 600, []);
// @ts-expect-error: the declarations are there, not `any`
optimizeAStroke(stroke, '800', 600, []);

export const answer = { first: path[0]?.x, isDot: type === FigureType.POINT, Beautifier };
