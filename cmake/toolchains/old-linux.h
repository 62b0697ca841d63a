#pragma once

// Put before every source file of what is shipped for x86-64 Linux, so that what the
// g++ of Debian 12 makes loads on older systems too: wherever Node.js itself does, with
// the C++ library of GCC 5 or later.

#include <new>

// The older names of functions that report errors in another way since glibc 2.29. The
// values are the same to the last bit.
#define SCRIVO_OLD_SYMBOL(function) __asm__(".symver " #function "," #function "@GLIBC_2.2.5")
SCRIVO_OLD_SYMBOL(exp);
SCRIVO_OLD_SYMBOL(log);
SCRIVO_OLD_SYMBOL(pow);
#undef SCRIVO_OLD_SYMBOL

// What GCC's headers call since release 11, and libraries before that have not got.
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
