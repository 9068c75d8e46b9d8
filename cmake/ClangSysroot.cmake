# clang does not find the cross compiler's headers and libraries by itself: a small farm of links stands in for a sysroot.
function(sitekeeper_clang_sysroot farm)
  file(MAKE_DIRECTORY "${farm}/lib/gcc/x86_64-w64-mingw32")
  file(CREATE_LINK /usr/x86_64-w64-mingw32 "${farm}/x86_64-w64-mingw32" SYMBOLIC)
  file(CREATE_LINK /usr/x86_64-w64-mingw32/include "${farm}/include" SYMBOLIC)
  file(GLOB gcc_folder "/usr/lib/gcc/x86_64-w64-mingw32/*-posix")
  file(CREATE_LINK "${gcc_folder}" "${farm}/lib/gcc/x86_64-w64-mingw32/12" SYMBOLIC)
endfunction()
