# One compiler for every system: Zig's Clang with the C and C++ libraries of the
# target. Set in the environment, because CMake reads this file again for each of
# its own small test projects:
#   SCRIVO_ZIG         the compiler's path
#   SCRIVO_ZIG_TARGET  what to build for, as x86_64-linux-musl
set(zig "$ENV{SCRIVO_ZIG}")
set(target "$ENV{SCRIVO_ZIG_TARGET}")
if(NOT zig OR NOT target)
  message(FATAL_ERROR "SCRIVO_ZIG and SCRIVO_ZIG_TARGET must be set: npm run prebuilds does so")
endif()

string(REGEX MATCH "^([a-z0-9_]+)-([a-z]+)" _ "${target}")
set(CMAKE_SYSTEM_PROCESSOR ${CMAKE_MATCH_1})
set(systems_linux Linux)
set(systems_macos Darwin)
set(systems_windows Windows)
set(CMAKE_SYSTEM_NAME ${systems_${CMAKE_MATCH_2}})

# The baseline processor of the architecture: results must not depend on the machine.
set(CMAKE_CXX_COMPILER "${zig}" c++ -target "${target}" -mcpu=baseline)

# The archiver of this system only supports its own object files.
set(CMAKE_CXX_ARCHIVE_CREATE "\"${zig}\" ar qc <TARGET> <OBJECTS>")
set(CMAKE_CXX_ARCHIVE_APPEND "\"${zig}\" ar q <TARGET> <OBJECTS>")
set(CMAKE_CXX_ARCHIVE_FINISH "\"${zig}\" ranlib <TARGET>")

# The C++ library is linked into the module.
set(SCRIVO_STAY_LOADED ON CACHE BOOL "")
if(CMAKE_SYSTEM_NAME STREQUAL Darwin)
  # Runs after CMake's own settings, which come after this file.
  set(CMAKE_PROJECT_INCLUDE "${CMAKE_CURRENT_LIST_DIR}/zig-macos.cmake")
  # -s leaves local symbols there.
  set(CMAKE_MODULE_LINKER_FLAGS_INIT "-s -Wl,-x -Wl,-dead_strip")
else()
  set(CMAKE_MODULE_LINKER_FLAGS_INIT "-s -Wl,--gc-sections")
endif()

# No warnings: the system headers alone cause thousands. The compilers that the project
# is developed with give them.
set(CMAKE_CXX_FLAGS_INIT "-w -ffunction-sections -fdata-sections")

# Where Debian and others install header-only packages such as Eigen. Elsewhere, set
# Eigen3_ROOT in the environment.
list(APPEND CMAKE_PREFIX_PATH /usr /usr/local /opt/homebrew)

# CMake's compiler checks link nothing: linking a program would make Zig compile the C and
# C++ libraries again, with the options of a debug build. The first check, which finds out
# what compiler it is, would always link.
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
set(CMAKE_CXX_COMPILER_ID_RUN 1)
set(CMAKE_CXX_COMPILER_ID Clang)
set(CMAKE_CXX_COMPILER_VERSION 21)
set(CMAKE_CXX_STANDARD_COMPUTED_DEFAULT 17)
set(CMAKE_CXX_EXTENSIONS_COMPUTED_DEFAULT ON)
