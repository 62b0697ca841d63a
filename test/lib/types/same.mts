/** Compiles only if both types are identical: `same<A, B>(true)`. */
type Same<A, B> =
  (<T>() => T extends A ? 1 : 2) extends <T>() => T extends B ? 1 : 2 ? true : never;
export const same = <A, B>(proof: Same<A, B>) => proof;
