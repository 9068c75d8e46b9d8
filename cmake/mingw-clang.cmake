# The second compiler for 64-bit Windows: clang and lld with the headers and libraries of the cross compiler. (GNU ld calls
# what clang compiles doubly defined.)
include("${CMAKE_CURRENT_LIST_DIR}/mingw.cmake")
include("${CMAKE_CURRENT_LIST_DIR}/ClangSysroot.cmake")
set(CMAKE_SYSROOT "${CMAKE_BINARY_DIR}/clang-sysroot")
sitekeeper_clang_sysroot("${CMAKE_SYSROOT}")

set(CMAKE_C_COMPILER clang)
set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_C_COMPILER_TARGET x86_64-w64-mingw32)
set(CMAKE_CXX_COMPILER_TARGET x86_64-w64-mingw32)
# The runtime library's variables of a thread are the emulated ones of its own compiler.
set(CMAKE_CXX_FLAGS_INIT "-femulated-tls")
foreach(kind EXE SHARED MODULE)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT "-fuse-ld=lld -rtlib=libgcc -pthread -Wl,--fatal-warnings")
endforeach()
