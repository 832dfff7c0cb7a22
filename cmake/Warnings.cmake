# Every target of the project compiles with these. Nothing may be left to warn about.
add_library(mainControl_warnings INTERFACE)
target_compile_options(mainControl_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wformat=2 -Wundef -Wcast-align
  $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor -Woverloaded-virtual>
  -Werror)
