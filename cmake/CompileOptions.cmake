# Compiler settings that all of the project's own code shares: the target qzl_options.

# A field that an initialiser does not name is zero, and a method's implementation is called with its own type: neither is
# a slip. Not every Apple clang knows both warnings.
set(qzl_warnings -Wall -Wextra -Wconversion -Wshadow -Wnon-virtual-dtor -Werror
  -Wno-missing-designated-field-initializers -Wno-cast-function-type-mismatch -Wno-unknown-warning-option)

add_library(qzl_options INTERFACE)
target_compile_options(qzl_options INTERFACE ${qzl_warnings} -fno-omit-frame-pointer -gdwarf-4)
if(CMAKE_SYSTEM_PROCESSOR STREQUAL aarch64)
  # Code of Apple's arm64 trusts that a result of less than 32 bits fills them, which Linux's convention does not ask for.
  target_compile_options(qzl_options INTERFACE $<$<COMPILE_LANGUAGE:C,CXX,OBJCXX>:-mabi=darwinpcs>)
endif()
if(QZL_SANITIZE AND NOT APPLE)
  target_compile_options(qzl_options INTERFACE
    -fsanitize=${QZL_SANITIZE} -fno-sanitize-recover=all
    # Host and library call each other by address; each declares types of its own for the same functions.
    -fno-sanitize=function)
  target_link_options(qzl_options INTERFACE -fsanitize=${QZL_SANITIZE})
endif()
