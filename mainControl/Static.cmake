# lib_mainControl.a, for C programs as well. Its objects become one, in which only the names of exports.txt stay visible;
# a program that is linked with --gc-sections still leaves out what it does not call.
include(CheckLinkerFlag)
set(whole ${CMAKE_CURRENT_BINARY_DIR}/mainControl.o)
separate_arguments(partial_link NATIVE_COMMAND "${CMAKE_CXX_COMPILER} ${CMAKE_CXX_FLAGS} -r -nostdlib")
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
  target_compile_options(mainControl_code PRIVATE -fno-gnu-unique) # names that are unique in a process cannot be hidden
  list(APPEND partial_link -fno-gnu-unique -flinker-output=nolto-rel) # machine code, also where -flto has put it off until now
endif()
# A section that several objects bring stays, as a program that brings it as well cannot replace one whose name is hidden.
check_linker_flag(CXX LINKER:--force-group-allocation has_force_group_allocation)
if(has_force_group_allocation)
  list(APPEND partial_link -Wl,--force-group-allocation)
endif()
add_custom_command(OUTPUT ${whole}
  COMMAND ${partial_link} -o ${whole} $<TARGET_OBJECTS:mainControl_code>
  COMMAND ${CMAKE_OBJCOPY} --keep-global-symbols=${exports_list} ${whole}
  DEPENDS mainControl_code $<TARGET_OBJECTS:mainControl_code> ${exports_list}
  COMMENT "Hiding the names of lib_mainControl.a"
  COMMAND_EXPAND_LISTS VERBATIM)

add_library(mainControl STATIC ${whole})
