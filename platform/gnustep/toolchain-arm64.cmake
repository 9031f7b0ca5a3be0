# Builds for Linux on arm64 on another machine, with the libraries that scripts/arm64_root unpacks. On Linux on arm64 this
# is the build for Linux.
include(${CMAKE_CURRENT_LIST_DIR}/toolchain.cmake)
if(CMAKE_HOST_SYSTEM_PROCESSOR STREQUAL aarch64)
  return()
endif()

set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
foreach(language C CXX OBJCXX ASM)
  set(CMAKE_${language}_COMPILER_TARGET aarch64-linux-gnu)
endforeach()
foreach(kind EXE SHARED MODULE)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT --ld-path=${QZL_LLVM}/bin/ld.lld)
endforeach()

set(CMAKE_SYSROOT ${CMAKE_CURRENT_LIST_DIR}/../../build/arm64-root)
file(REAL_PATH ${CMAKE_SYSROOT} CMAKE_SYSROOT)
set(CMAKE_LIBRARY_ARCHITECTURE aarch64-linux-gnu)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
foreach(kind LIBRARY INCLUDE PACKAGE)
  set(CMAKE_FIND_ROOT_PATH_MODE_${kind} ONLY)
endforeach()
set(ENV{PKG_CONFIG_SYSROOT_DIR} ${CMAKE_SYSROOT})
set(ENV{PKG_CONFIG_LIBDIR} ${CMAKE_SYSROOT}/usr/lib/aarch64-linux-gnu/pkgconfig:${CMAKE_SYSROOT}/usr/share/pkgconfig)

find_program(QZL_EMULATOR NAMES qemu-aarch64-static qemu-aarch64 REQUIRED)
set(CMAKE_CROSSCOMPILING_EMULATOR ${QZL_EMULATOR};-L;${CMAKE_SYSROOT})
