# Builds for macOS on x86-64: on a Mac with Apple's own tools, elsewhere with clang, LLVM's Mach-O linker and this
# folder's declarations and stubs of the frameworks.
set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_OSX_ARCHITECTURES x86_64)
set(CMAKE_OSX_DEPLOYMENT_TARGET 10.9)

if(CMAKE_HOST_APPLE)
  return()
endif()

set(CMAKE_C_COMPILER clang-14)
set(CMAKE_CXX_COMPILER clang++-14)
set(CMAKE_OBJCXX_COMPILER clang++-14)
foreach(language C CXX OBJCXX)
  set(CMAKE_${language}_COMPILER_TARGET x86_64-apple-macos10.9)
endforeach()
set(CMAKE_AR llvm-ar-14)
set(CMAKE_RANLIB llvm-ranlib-14)
set(CMAKE_INSTALL_NAME_TOOL llvm-install-name-tool-14)

# There is no startup code to link a program with.
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)

# Where the linker looks for frameworks and libraries.
set(CMAKE_OSX_SYSROOT ${CMAKE_CURRENT_LIST_DIR}/stubs)
