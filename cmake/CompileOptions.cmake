# Compiler settings that all of the project's own code shares: the target qzl_options.

set(qzl_warnings -Wall -Wextra -Wconversion -Wshadow -Wnon-virtual-dtor -Werror)

add_library(qzl_options INTERFACE)
target_compile_options(qzl_options INTERFACE ${qzl_warnings} -fno-omit-frame-pointer -gdwarf-4)
if(QZL_SANITIZE AND NOT APPLE)
  target_compile_options(qzl_options INTERFACE
    -fsanitize=${QZL_SANITIZE} -fno-sanitize-recover=all
    # Host and library call each other by address; each declares types of its own for the same functions.
    -fno-sanitize=function)
  target_link_options(qzl_options INTERFACE -fsanitize=${QZL_SANITIZE})
endif()
