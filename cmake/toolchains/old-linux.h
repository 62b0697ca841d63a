#pragma once

// Put before every source file of what is shipped for x86-64 Linux, so that what the
// g++ of Debian 12 makes loads on older systems too: wherever Node.js itself does, with
// the C++ library of GCC 5 or later.

#include <new>

// The older names of functions that only moved to another library (threads, glibc 2.34)
// or report errors in another way (2.29). The values are the same to the last bit.
#define SCRIVO_OLD_SYMBOL(function) __asm__(".symver " #function "," #function "@GLIBC_2.2.5")
SCRIVO_OLD_SYMBOL(exp);
SCRIVO_OLD_SYMBOL(log);
SCRIVO_OLD_SYMBOL(pow);
SCRIVO_OLD_SYMBOL(pthread_rwlock_rdlock);
SCRIVO_OLD_SYMBOL(pthread_rwlock_unlock);
SCRIVO_OLD_SYMBOL(pthread_rwlock_wrlock);
#undef SCRIVO_OLD_SYMBOL

// What GCC's headers call since release 11, and libraries before that have not got.
namespace std {
[[noreturn, gnu::weak, gnu::visibility("hidden")]] void __throw_bad_array_new_length() {
    throw bad_array_new_length();
}
}  // namespace std
