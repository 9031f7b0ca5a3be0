# What builds for macOS share: the oldest macOS for each processor, and for builds without Apple's tools the flags of
# clang and of LLVM's Mach-O linker.
set(QZL_OLDEST_MACOS_x86_64 10.9)
set(QZL_OLDEST_MACOS_arm64 11.0)

if(CMAKE_HOST_APPLE)
  return()
endif()

include(${CMAKE_CURRENT_LIST_DIR}/../../cmake/LLVM.cmake)

foreach(processor x86_64 arm64)
  set(QZL_MACOS_TARGET_${processor} ${processor}-apple-macos${QZL_OLDEST_MACOS_${processor}})
endforeach()

# Where the linker looks for frameworks and libraries.
set(QZL_MACOS_STUBS ${CMAKE_CURRENT_LIST_DIR}/stubs)

# No Apple SDK: our declarations first, then libc++'s headers, then musl's for the C library's prototypes. Debian has
# musl's in the folder of its own processor; those of either processor serve both targets.
find_path(QZL_MUSL_INCLUDE features.h REQUIRED NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH
  PATHS /usr/include/x86_64-linux-musl /usr/include/aarch64-linux-musl)
cmake_path(GET CMAKE_CURRENT_LIST_DIR PARENT_PATH platform)
set(QZL_MACOS_COMPILE_FLAGS
  -nostdinc++ -nostdlibinc
  -isystem${platform}/macos/include
  -isystem${platform}/include
  -isystem${QZL_LLVM}/include/c++/v1
  -isystem${QZL_MUSL_INCLUDE}
  -D_GNU_SOURCE -D_LIBCPP_HAS_MUSL_LIBC)

set(QZL_MACOS_LINK_FLAGS --ld-path=${QZL_LLVM}/bin/ld64.lld -mlinker-version=609)
