# Builds for macOS on x86-64: on a Mac with Apple's own tools, elsewhere with clang, LLVM's Mach-O linker and this
# folder's declarations and stubs of the frameworks.
set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_OSX_ARCHITECTURES x86_64)
set(CMAKE_OSX_DEPLOYMENT_TARGET 10.9)

if(CMAKE_HOST_APPLE)
  return()
endif()

include(${CMAKE_CURRENT_LIST_DIR}/../../cmake/LLVM.cmake)
set(CMAKE_C_COMPILER ${QZL_LLVM}/bin/clang)
set(CMAKE_CXX_COMPILER ${QZL_LLVM}/bin/clang++)
set(CMAKE_OBJCXX_COMPILER ${QZL_LLVM}/bin/clang++)
foreach(language C CXX OBJCXX)
  set(CMAKE_${language}_COMPILER_TARGET x86_64-apple-macos10.9)
endforeach()
set(CMAKE_AR ${QZL_LLVM}/bin/llvm-ar)
set(CMAKE_RANLIB ${QZL_LLVM}/bin/llvm-ranlib)
set(CMAKE_INSTALL_NAME_TOOL ${QZL_LLVM}/bin/llvm-install-name-tool)

# There is no startup code to link a program with.
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)

# Where the linker looks for frameworks and libraries.
set(CMAKE_OSX_SYSROOT ${CMAKE_CURRENT_LIST_DIR}/stubs)
