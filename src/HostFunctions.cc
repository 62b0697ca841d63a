#include <windows.h>

// On Windows a library names the program that it imports functions from. A desktop
// host is not called node.exe, so nothing is imported by name: each Node-API
// function is a jump through a pointer, which is looked up in whatever program has
// loaded the library.

namespace {

#define SCRIVO_HOST_FUNCTION(name)     \
    extern "C" {                       \
    [[gnu::used]] FARPROC host_##name; \
    }
#include "HostFunctions.inc"
#undef SCRIVO_HOST_FUNCTION

#if defined(__x86_64__)
#define SCRIVO_JUMP(name) "jmp *host_" name "(%rip)\n"
#elif defined(__aarch64__)
#define SCRIVO_JUMP(name)             \
    "adrp x16, host_" name            \
    "\n"                              \
    "ldr x16, [x16, :lo12:host_" name \
    "]\n"                             \
    "br x16\n"
#endif

#define SCRIVO_HOST_FUNCTION(name) asm(".text\n.globl " #name "\n" #name ":\n" SCRIVO_JUMP(#name));
#include "HostFunctions.inc"
#undef SCRIVO_HOST_FUNCTION

/// Runs before initialisers without a priority, one of which registers the module.
[[gnu::constructor(101)]] void findHostFunctions() {
    const HMODULE host = GetModuleHandleW(nullptr);
#define SCRIVO_HOST_FUNCTION(name) host_##name = GetProcAddress(host, #name);
#include "HostFunctions.inc"
#undef SCRIVO_HOST_FUNCTION
}

}  // namespace
