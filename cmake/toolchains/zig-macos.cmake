# CMake asks for a bundle, which Zig cannot link. A dynamic library loads the same way.
set(CMAKE_SHARED_MODULE_CREATE_CXX_FLAGS -dynamiclib)
