# Builds for Linux with clang: g++ miscompiles @catch in Objective-C++.
include(${CMAKE_CURRENT_LIST_DIR}/../../cmake/LLVM.cmake)
set(CMAKE_C_COMPILER ${QZL_LLVM}/bin/clang)
set(CMAKE_CXX_COMPILER ${QZL_LLVM}/bin/clang++)
set(CMAKE_OBJCXX_COMPILER ${QZL_LLVM}/bin/clang++)
