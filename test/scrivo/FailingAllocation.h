#pragma once

namespace Scrivo::test {

/// How many allocations of the program succeed before one fails, once. None
/// fails below 0.
extern long allocationsBeforeFailure;

}  // namespace Scrivo::test
