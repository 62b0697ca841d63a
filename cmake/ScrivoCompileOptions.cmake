# Two interface targets, linked at build time only: the options that results depend
# on, and the warnings.

# Results are fixed to the last bit. A fused multiply-add rounds once where two
# roundings are meant, fast-math reorders sums, and a wider instruction set
# changes what Eigen computes: none of them is allowed.
add_library(scrivo_numerics INTERFACE)
target_compile_features(scrivo_numerics INTERFACE cxx_std_20)
if(MSVC AND CMAKE_CXX_COMPILER_ID STREQUAL Clang)
  target_compile_options(scrivo_numerics INTERFACE /clang:-ffp-contract=off)
elseif(MSVC)
  # Its versions before Visual Studio 2022 contract nevertheless, for processors that can.
  target_compile_options(scrivo_numerics INTERFACE /fp:precise)
else()
  target_compile_options(scrivo_numerics INTERFACE -ffp-contract=off)
endif()

add_library(scrivo_warnings INTERFACE)
if(NOT MSVC)
  target_compile_options(scrivo_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wold-style-cast -Wcast-align
    -Woverloaded-virtual -Wformat=2 -Wimplicit-fallthrough -Wconversion
    $<$<BOOL:${SCRIVO_WERROR}>:-Werror>)
endif()

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
