// Replaces operator new: lets allocations of the native modules fail, and follows what they
// allocate. Node and the C++ library itself are left alone, as far as they allocate on their
// own account.

#include <cstddef>
#include <cstdlib>
#include <dlfcn.h>
#include <functional>
#include <mutex>
#include <napi.h>
#include <new>
#include <string_view>
#include <unordered_set>

namespace {

/// Allocates without operator new.
template <typename T>
struct Malloc {
    using value_type = T;
    Malloc() = default;
    template <typename U>
    Malloc(const Malloc<U>& /*other*/) {}
    // NOLINTBEGIN(cppcoreguidelines-no-malloc,bugprone-sizeof-expression): of a pointer, as meant
    T* allocate(std::size_t count) { return static_cast<T*>(std::malloc(count * sizeof(T))); }
    void deallocate(T* memory, std::size_t /*count*/) { std::free(memory); }
    // NOLINTEND(cppcoreguidelines-no-malloc,bugprone-sizeof-expression)
    bool operator==(const Malloc& /*other*/) const { return true; }
};

using Blocks = std::unordered_set<void*, std::hash<void*>, std::equal_to<>, Malloc<void*>>;

/// What the modules have allocated while armed, and not yet freed.
struct Live {
    std::mutex mutex;
    Blocks blocks;
};

Live& live() {
    static Live instance;
    return instance;
}

// Of the thread that called `failAt`.
thread_local bool isArmed = false;
thread_local long count = 0;
thread_local long failing = -1;

bool isOfModule(const void* caller) {
    Dl_info info{};
    if (dladdr(caller, &info) == 0 || info.dli_fname == nullptr) return false;
    const std::string_view name = info.dli_fname;
    return name.ends_with("/hello.node") || name.ends_with("/beautifier.node");
}

void* allocate(std::size_t size, const void* caller) {
    const bool isFollowed = isArmed && isOfModule(caller);
    if (isFollowed && count++ == failing) return nullptr;
    // NOLINTNEXTLINE(cppcoreguidelines-no-malloc)
    void* memory = std::malloc(size == 0 ? 1 : size);
    if (isFollowed) {
        const std::lock_guard lock(live().mutex);
        live().blocks.insert(memory);
    }
    return memory;
}

void* allocateOrThrow(std::size_t size, const void* caller) {
    void* memory = allocate(size, caller);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}

void release(void* memory) noexcept {
    if (memory == nullptr) return;
    {
        const std::lock_guard lock(live().mutex);
        if (!live().blocks.empty()) live().blocks.erase(memory);
    }
    std::free(memory);  // NOLINT(cppcoreguidelines-no-malloc)
}

/// (index of the allocation that is to fail, from 0)
void failAt(const Napi::CallbackInfo& info) {
    failing = static_cast<long>(info[0].ToNumber().Int64Value());
    count = 0;
    isArmed = true;
}

/// Whether an allocation has failed since.
Napi::Value stop(const Napi::CallbackInfo& info) {
    isArmed = false;
    return Napi::Boolean::New(info.Env(), failing >= 0 && count > failing);
}

Napi::Value countLive(const Napi::CallbackInfo& info) {
    const std::lock_guard lock(live().mutex);
    return Napi::Number::New(info.Env(), static_cast<double>(live().blocks.size()));
}

Napi::Object Init(Napi::Env env, Napi::Object exports) {
    exports.Set("failAt", Napi::Function::New<failAt>(env));
    exports.Set("stop", Napi::Function::New<stop>(env));
    exports.Set("countLive", Napi::Function::New<countLive>(env));
    return exports;
}

}  // namespace

void* operator new(std::size_t size) {
    return allocateOrThrow(size, __builtin_return_address(0));
}
void* operator new[](std::size_t size) {
    return allocateOrThrow(size, __builtin_return_address(0));
}
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    return allocate(size, __builtin_return_address(0));
}
void operator delete(void* memory) noexcept {
    release(memory);
}
void operator delete[](void* memory) noexcept {
    release(memory);
}
void operator delete(void* memory, std::size_t /*size*/) noexcept {
    release(memory);
}
void operator delete[](void* memory, std::size_t /*size*/) noexcept {
    release(memory);
}

NODE_API_MODULE(failing_allocation, Init)
