# Debian's LLVM: the folder of its compilers, linker and tools. The version stands in llvm-version.txt alone.
file(STRINGS ${CMAKE_CURRENT_LIST_DIR}/llvm-version.txt llvm_version)
set(QZL_LLVM /usr/lib/llvm-${llvm_version})
