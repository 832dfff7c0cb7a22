# What targets of the project compile with, each as far as it links one of these.

# All of the tree. An include names a file by its path from the root. Nothing may be left to warn about; presets of
# developers make errors of warnings.
add_library(project_options INTERFACE)
target_include_directories(project_options INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(project_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wformat=2 -Wundef -Wcast-align
  $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor -Woverloaded-virtual>)

# Host, simulator and krctl. Programs wait for modems: what compiles faster serves their tests better.
add_library(program_options INTERFACE)
target_link_libraries(program_options INTERFACE project_options)
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
