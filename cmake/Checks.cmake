# `format` lays every C++ file out, `format-check` only looks. `tidy` runs clang-tidy over the program's own files, those
# without Windows in a native build and the others in a Windows build; `tidy-tests` runs it over the tests, which takes
# several times as long because of the test framework's headers.
include(ClangSysroot)

file(GLOB_RECURSE SITEKEEPER_CXX_FILES CONFIGURE_DEPENDS
  "${CMAKE_SOURCE_DIR}/src/*.h" "${CMAKE_SOURCE_DIR}/src/*.cpp" "${CMAKE_SOURCE_DIR}/tests/*.h"
  "${CMAKE_SOURCE_DIR}/tests/*.cpp" "${CMAKE_SOURCE_DIR}/benchmarks/*.h" "${CMAKE_SOURCE_DIR}/benchmarks/*.cpp"
  "${CMAKE_SOURCE_DIR}/tools/*.cpp" "${CMAKE_SOURCE_DIR}/tools/*.h")

find_program(CLANG_FORMAT clang-format)
find_program(RUN_CLANG_TIDY NAMES run-clang-tidy run-clang-tidy-14)
if(CLANG_FORMAT AND SITEKEEPER_CXX_FILES)
  # Handed over in a file: a failing command is printed whole.
  list(JOIN SITEKEEPER_CXX_FILES "\n" files)
  file(GENERATE OUTPUT "${CMAKE_BINARY_DIR}/cxx-files" CONTENT "${files}\n")
  add_custom_target(format
    COMMAND xargs -a cxx-files "${CLANG_FORMAT}" -i WORKING_DIRECTORY "${CMAKE_BINARY_DIR}" VERBATIM)
  add_custom_target(format-check
    COMMAND xargs -a cxx-files "${CLANG_FORMAT}" --dry-run -Werror WORKING_DIRECTORY "${CMAKE_BINARY_DIR}" VERBATIM)
endif()
if(RUN_CLANG_TIDY)
  set(tidy_target_arguments "")
  if(WIN32)
    set(farm "${CMAKE_BINARY_DIR}/clang-sysroot")
    sitekeeper_clang_sysroot("${farm}")
    set(tidy_target_arguments "-extra-arg=--target=x86_64-w64-mingw32" "-extra-arg=--sysroot=${farm}")
  endif()
  set(tidy_folders "(src|benchmarks)")
  if(WIN32)
    set(tidy_folders "(src/(win32|frame|controls|dialogs|app|maindlg|access|shortcuts)|benchmarks|tools)")
  endif()
  foreach(part tidy tidy-tests)
    set(folders "$<IF:$<STREQUAL:${part},tidy>,${tidy_folders},tests>")
    add_custom_target(${part}
      COMMAND "${RUN_CLANG_TIDY}" -quiet -p "${CMAKE_BINARY_DIR}" ${tidy_target_arguments}
              "${CMAKE_SOURCE_DIR}/${folders}/.*[.]cpp$"
      VERBATIM)
  endforeach()
endif()
