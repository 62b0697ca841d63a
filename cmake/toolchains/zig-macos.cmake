# A bundle is what CMake asks for and what Zig does not link. A library is loaded
# just as well.
set(CMAKE_SHARED_MODULE_CREATE_CXX_FLAGS -dynamiclib)
