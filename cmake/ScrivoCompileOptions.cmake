# Two interface targets, linked at build time only: what the numbers depend on,
# and what the compiler is asked to complain about.

# Results are fixed to the last bit. A fused multiply-add rounds once where two
# roundings are meant, fast-math reorders sums, and a wider instruction set
# changes what Eigen computes: none of them, ever.
add_library(scrivo_numerics INTERFACE)
target_compile_features(scrivo_numerics INTERFACE cxx_std_20)
target_compile_options(scrivo_numerics INTERFACE
  $<$<CXX_COMPILER_ID:GNU,Clang,AppleClang>:-ffp-contract=off>
  $<$<CXX_COMPILER_ID:MSVC>:/fp:precise>)

add_library(scrivo_warnings INTERFACE)
target_compile_options(scrivo_warnings INTERFACE
  $<$<CXX_COMPILER_ID:GNU,Clang,AppleClang>:-Wall -Wextra -Wpedantic -Wshadow
    -Wnon-virtual-dtor -Wold-style-cast -Wcast-align -Woverloaded-virtual
    -Wformat=2 -Wimplicit-fallthrough -Wconversion>
  $<$<AND:$<BOOL:${SCRIVO_WERROR}>,$<CXX_COMPILER_ID:GNU,Clang,AppleClang>>:-Werror>)

# Hidden symbols: a shared object that exports no template instance is not
# pinned in memory and can be unloaded with the last worker that used it. The
# instances of libstdc++ are exported nevertheless; as unique symbols they pin it.
add_compile_options($<$<COMPILE_LANG_AND_ID:CXX,GNU>:-fno-gnu-unique>)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
