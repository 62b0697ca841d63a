#pragma once

#include <mutex>

/// The lock of the recogniser; none where the C++ library has no threads.
namespace Scrivo::detail {

#if defined(_LIBCPP_HAS_NO_THREADS)

class Mutex {};

class LockGuard {
public:
    explicit LockGuard(Mutex& /*mutex*/) {}
    LockGuard(const LockGuard&) = delete;
    LockGuard& operator=(const LockGuard&) = delete;
    ~LockGuard() {}  // as a guard has one, so that it does not count as unused
};

#else

using Mutex = std::mutex;
using LockGuard = std::lock_guard<Mutex>;

#endif

}  // namespace Scrivo::detail
