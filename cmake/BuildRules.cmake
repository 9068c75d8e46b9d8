# What every target shares: language level, warnings, hardening, sanitizers, reproducible output.
# Targets link `sitekeeper_build`; nothing else in the tree sets compiler flags of this kind.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(SITEKEEPER_SANITIZE "" CACHE STRING "Sanitizers for the whole build, as -fsanitize takes them")
option(SITEKEEPER_TRAPS "Undefined behaviour ends the program by an illegal instruction, for builds without a runtime to report it" OFF)
option(SITEKEEPER_COVERAGE "Count which lines and branches a run takes" OFF)
option(SITEKEEPER_JOIN_TESTS "Compile several test files as one: half the time, and blind to a missing include" OFF)
option(SITEKEEPER_LONE_HEADERS "Compile each header alone too, in debug builds" ON)

find_program(CCACHE ccache)
if(CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE}")
  set(CMAKE_C_COMPILER_LAUNCHER "${CCACHE}")
endif()

# Paths inside objects are relative to the tree, so that two checkouts give the same bytes.
add_compile_options("-ffile-prefix-map=${CMAKE_SOURCE_DIR}=." "-ffile-prefix-map=${CMAKE_BINARY_DIR}=build")

if(SITEKEEPER_SANITIZE)
  add_compile_options("-fsanitize=${SITEKEEPER_SANITIZE}" -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options("-fsanitize=${SITEKEEPER_SANITIZE}")
endif()

if(SITEKEEPER_TRAPS)
  add_compile_options(-fsanitize=undefined -fsanitize-undefined-trap-on-error)
endif()

if(SITEKEEPER_COVERAGE)
  add_compile_options(--coverage -fprofile-abs-path)
  add_link_options(--coverage)
endif()

add_library(sitekeeper_warnings INTERFACE)
target_compile_options(sitekeeper_warnings INTERFACE
  $<$<COMPILE_LANGUAGE:CXX>:-Wall;-Wextra;-Wpedantic;-Wconversion;-Wshadow;-Werror>)

add_library(sitekeeper_hardening INTERFACE)
target_compile_options(sitekeeper_hardening INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-fstack-protector-strong>)
# The checked library functions need an optimising build; the sanitizers bring checks of their own.
if(NOT SITEKEEPER_SANITIZE)
  target_compile_options(sitekeeper_hardening INTERFACE
    $<$<AND:$<COMPILE_LANGUAGE:CXX>,$<NOT:$<CONFIG:Debug>>>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>)
endif()
if(WIN32)
  # At the link the flag brings in the guard's own code, which the cross compiler keeps in a library.
  target_link_options(sitekeeper_hardening INTERFACE -fstack-protector-strong
    LINKER:--dynamicbase LINKER:--high-entropy-va LINKER:--nxcompat LINKER:--tsaware)
endif()

add_library(sitekeeper_build INTERFACE)
target_link_libraries(sitekeeper_build INTERFACE sitekeeper_warnings sitekeeper_hardening)
target_include_directories(sitekeeper_build INTERFACE "${CMAKE_SOURCE_DIR}/src")

if(WIN32)
  enable_language(RC)
  set(CMAKE_RC_FLAGS "-c 65001")
  target_compile_definitions(sitekeeper_build INTERFACE
    UNICODE _UNICODE WINVER=0x0A00 _WIN32_WINNT=0x0A00 NOMINMAX WIN32_LEAN_AND_MEAN STRICT)
  # Everything the compiler brings goes inside the file; the linker's time stamp does not.
  add_link_options(-static LINKER:--no-insert-timestamp)
  add_compile_options($<$<NOT:$<CONFIG:Debug>>:-ffunction-sections> $<$<NOT:$<CONFIG:Debug>>:-fdata-sections>)
  add_link_options($<$<NOT:$<CONFIG:Debug>>:LINKER:--gc-sections> $<$<NOT:$<CONFIG:Debug>>:-s>)
endif()

# GNU ld takes up to a minute and a half for a test program with its debug information, lld less than a second. The cross
# compiler knows no other linker, so clang calls it. Counting brings a runtime of its own and stays with its compiler.
find_program(CLANG clang++)
find_program(LLD ld.lld)
if(WIN32 AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_BUILD_TYPE STREQUAL "Debug" AND CLANG AND LLD
   AND NOT SITEKEEPER_COVERAGE)
  include(ClangSysroot)
  sitekeeper_clang_sysroot("${CMAKE_BINARY_DIR}/clang-sysroot")
  string(JOIN " " CMAKE_CXX_LINK_EXECUTABLE
    "${CLANG} --target=x86_64-w64-mingw32 --sysroot=${CMAKE_BINARY_DIR}/clang-sysroot -fuse-ld=lld -rtlib=libgcc -pthread"
    "<LINK_FLAGS> <OBJECTS> -o <TARGET> <LINK_LIBRARIES>")
endif()

# sitekeeper_lone_headers(target FOLDER… | FILES HEADER…): each header compiles alone, in debug builds. One that its own source
# includes before anything else does so there.
function(sitekeeper_lone_headers target)
  if(NOT SITEKEEPER_LONE_HEADERS OR NOT CMAKE_BUILD_TYPE STREQUAL "Debug" OR SITEKEEPER_COVERAGE)
    return()
  endif()
  cmake_parse_arguments(PARSE_ARGV 1 lone "" "" "FILES")
  set(headers ${lone_FILES})
  foreach(folder ${lone_UNPARSED_ARGUMENTS})
    file(GLOB found CONFIGURE_DEPENDS RELATIVE "${CMAKE_CURRENT_SOURCE_DIR}" "${folder}/*.h")
    list(APPEND headers ${found})
  endforeach()
  foreach(header ${headers})
    string(REGEX REPLACE "h$" "cpp" source "${CMAKE_CURRENT_SOURCE_DIR}/${header}")
    if(EXISTS "${source}")
      file(STRINGS "${source}" first_include REGEX "^#include" LIMIT_COUNT 1)
      if(first_include STREQUAL "#include \"${header}\"")
        continue()
      endif()
    endif()
    string(MAKE_C_IDENTIFIER "${header}" name)
    set(lone "${CMAKE_CURRENT_BINARY_DIR}/lone/${target}/${name}.cpp")
    file(CONFIGURE OUTPUT "${lone}" CONTENT "#include \"${header}\"\n#include \"${header}\"\n")
    target_sources(${target} PRIVATE "${lone}")
    set_source_files_properties("${lone}" PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
  endforeach()
endfunction()
