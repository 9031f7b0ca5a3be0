# Builds for macOS on the processor that the preset names in CMAKE_OSX_ARCHITECTURES: on a Mac with Apple's own tools,
# elsewhere with clang, LLVM's Mach-O linker and this folder's declarations and stubs of the frameworks.
include(${CMAKE_CURRENT_LIST_DIR}/cross_build.cmake)

set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_PROCESSOR ${CMAKE_OSX_ARCHITECTURES})
set(CMAKE_OSX_DEPLOYMENT_TARGET ${QZL_OLDEST_MACOS_${CMAKE_OSX_ARCHITECTURES}})

if(CMAKE_HOST_APPLE)
  return()
endif()

set(CMAKE_C_COMPILER ${QZL_LLVM}/bin/clang)
set(CMAKE_CXX_COMPILER ${QZL_LLVM}/bin/clang++)
set(CMAKE_OBJCXX_COMPILER ${QZL_LLVM}/bin/clang++)
foreach(language C CXX OBJCXX)
  set(CMAKE_${language}_COMPILER_TARGET ${QZL_MACOS_TARGET_${CMAKE_OSX_ARCHITECTURES}})
endforeach()
set(CMAKE_AR ${QZL_LLVM}/bin/llvm-ar)
set(CMAKE_RANLIB ${QZL_LLVM}/bin/llvm-ranlib)
set(CMAKE_INSTALL_NAME_TOOL ${QZL_LLVM}/bin/llvm-install-name-tool)

# There is no startup code to link a program with.
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)

set(CMAKE_OSX_SYSROOT ${QZL_MACOS_STUBS})
