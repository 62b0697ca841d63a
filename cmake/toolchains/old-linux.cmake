# The g++ of this system, building for older systems.
set(CMAKE_CXX_COMPILER g++)
get_filename_component(header old-linux.h ABSOLUTE BASE_DIR "${CMAKE_CURRENT_LIST_DIR}")
set(CMAKE_CXX_FLAGS_INIT "-include \"${header}\" -ffunction-sections -fdata-sections")
set(CMAKE_MODULE_LINKER_FLAGS_INIT "-s -Wl,--gc-sections")
