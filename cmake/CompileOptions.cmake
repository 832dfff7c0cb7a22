# What targets of the project compile with, each as far as it links one of these.

# Nothing may be left to warn about. Presets of developers make errors of warnings.
add_library(mainControl_warnings INTERFACE)
target_compile_options(mainControl_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wformat=2 -Wundef -Wcast-align
  $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor -Woverloaded-virtual>)

# Host, simulator and krctl. Programs wait for modems: what compiles faster serves their tests better.
add_library(program_options INTERFACE)
target_link_libraries(program_options INTERFACE mainControl_warnings)
if(MAINCONTROL_OWN_FLAGS)
  target_compile_options(program_options INTERFACE $<$<CONFIG:RelWithDebInfo>:-g1>)
endif()
if(MAINCONTROL_BUILD_FUZZ)
  target_compile_options(program_options INTERFACE -fsanitize=fuzzer-no-link)
elseif(MAINCONTROL_SANITIZED)
  target_compile_options(program_options INTERFACE -O0)
endif()

# What is read before most files of a build with tests. Without them, each file stands by its own includes.
add_library(standard_headers INTERFACE)
if(MAINCONTROL_BUILD_TESTS)
  target_precompile_headers(standard_headers INTERFACE
    <algorithm> <array> <chrono> <cstdint> <cstring> <functional> <map> <memory> <optional> <string> <string_view>
    <utility> <vector>)
endif()
