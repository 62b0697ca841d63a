// For modules that carry a C++ library of their own, linked statically. That
// library leaves functions behind, to be called when a thread or the process ends,
// and they must still be there then: a host unloads a module together with the
// last worker thread that used it. A shared C++ library stays by itself.

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace {

[[gnu::constructor]] void stayLoaded() {
#ifdef _WIN32
    constexpr DWORD PINNED = GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS;
    HMODULE module = nullptr;
    GetModuleHandleExW(PINNED, reinterpret_cast<LPCWSTR>(&stayLoaded), &module);
#else
    Dl_info library{};
    if (dladdr(reinterpret_cast<const void*>(&stayLoaded), &library) != 0) {
        dlopen(library.dli_fname, RTLD_LAZY | RTLD_NOLOAD | RTLD_NODELETE);
    }
#endif
}

}  // namespace
