# The target gnustep: GNUstep Base and GUI with the GCC Objective-C runtime.

file(GLOB gcc_folders ${CMAKE_SYSROOT}/usr/lib/gcc/*/*/include)
find_path(gcc_include objc/objc.h PATHS ${gcc_folders} NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH REQUIRED)

# Debian 13 has the headers in the folder of its architecture.
find_path(gnustep_include Foundation/Foundation.h PATH_SUFFIXES GNUstep REQUIRED)

add_library(gnustep INTERFACE)
target_include_directories(gnustep SYSTEM INTERFACE ${gnustep_include})
target_compile_definitions(gnustep INTERFACE
  GNUSTEP GNUSTEP_BASE_LIBRARY=1 GNU_GUI_LIBRARY=1 GNU_RUNTIME=1 _NATIVE_OBJC_EXCEPTIONS)
target_compile_options(gnustep INTERFACE
  # After the compiler's own headers, which this folder also has.
  "SHELL:-idirafter ${gcc_include}"
  $<$<COMPILE_LANGUAGE:OBJCXX>:-fobjc-runtime=gcc>
  $<$<COMPILE_LANGUAGE:OBJCXX>:-fobjc-exceptions>
  $<$<COMPILE_LANGUAGE:OBJCXX>:-fconstant-string-class=NSConstantString>
  -fexceptions -fno-strict-aliasing)
target_link_libraries(gnustep INTERFACE gnustep-gui gnustep-base objc pthread)
