// For modules that link the C++ library statically. That library registers
// functions to be called when a thread or the process ends, so the module must
// still be mapped then. A host, however, unloads it with the last worker thread
// that used it. A shared C++ library stays mapped without this.

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
