// Built with Visual C++: the import library names node.exe, but the module must call the
// program that has loaded it, whatever its name.

// The second header needs the first one.
// clang-format off
#include <windows.h>
#include <delayimp.h>
// clang-format on

#include <cstring>

namespace {

/// Called for each library that is loaded late, the first time that it is needed.
FARPROC WINAPI findHost(unsigned event, PDelayLoadInfo load) {
    if (event != dliNotePreLoadLibrary || _stricmp(load->szDll, "node.exe") != 0) {
        return nullptr;
    }
    return reinterpret_cast<FARPROC>(GetModuleHandleW(nullptr));
}

}  // namespace

extern "C" decltype(__pfnDliNotifyHook2) __pfnDliNotifyHook2 = findHost;
