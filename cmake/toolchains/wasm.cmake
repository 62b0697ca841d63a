# WebAssembly with Debian's clang, lld and wasi-libc. No system is called: what the core
# needs of one, packages/wasm/src supplies.
set(CMAKE_SYSTEM_NAME Generic)
set(CMAKE_SYSTEM_PROCESSOR wasm32)
set(CMAKE_CXX_COMPILER clang++-14)
set(CMAKE_CXX_COMPILER_TARGET wasm32-wasi)
set(CMAKE_AR llvm-ar-14)
set(CMAKE_RANLIB llvm-ranlib-14)
# There is no main function to link.
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
