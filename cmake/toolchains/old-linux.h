#pragma once

// Included before every source file of the x86-64 Linux binaries, so that what the g++
// of Debian 12 builds loads on older systems too: wherever Node.js itself does, with
// the C++ library of GCC 5 or later.

#include <new>

// The older versions of functions whose error reporting changed in glibc 2.29. Their
// results are the same to the last bit.
#define SCRIVO_OLD_SYMBOL(function) __asm__(".symver " #function "," #function "@GLIBC_2.2.5")
SCRIVO_OLD_SYMBOL(exp);
SCRIVO_OLD_SYMBOL(log);
SCRIVO_OLD_SYMBOL(pow);
#undef SCRIVO_OLD_SYMBOL

// Called by GCC's headers since release 11 and missing in older libraries.
namespace std {
[[noreturn, gnu::weak, gnu::visibility("hidden")]] void __throw_bad_array_new_length() {
    throw bad_array_new_length();
}
}  // namespace std

// GCC's shared pointers read this variable of glibc 2.32 to leave out atomic operations while
// there is one thread. It stays 0 here: there may be several.
extern "C" {
[[gnu::weak, gnu::visibility("hidden")]] char __libc_single_threaded = 0;
}
