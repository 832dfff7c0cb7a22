# Toolchain file for Debian's musl (package musl-tools), which brings the C library but no C++ headers. GCC's own serve:
# what lib_mainControl takes from them is templates only.
set(specs -specs=/usr/lib/${CMAKE_HOST_SYSTEM_PROCESSOR}-linux-musl/musl-gcc.specs)
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR ${CMAKE_HOST_SYSTEM_PROCESSOR})
set(CMAKE_C_COMPILER gcc)
set(CMAKE_CXX_COMPILER g++)

execute_process(COMMAND g++ -dumpversion OUTPUT_VARIABLE gcc_version OUTPUT_STRIP_TRAILING_WHITESPACE)
execute_process(COMMAND g++ -dumpmachine OUTPUT_VARIABLE gcc_machine OUTPUT_STRIP_TRAILING_WHITESPACE)
set(CMAKE_C_FLAGS_INIT ${specs})
# The headers ask which glibc they are on: none.
set(CMAKE_CXX_FLAGS_INIT "${specs} '-D__GLIBC_PREREQ(major,minor)=0' -isystem /usr/include/c++/${gcc_version} \
-isystem /usr/include/${gcc_machine}/c++/${gcc_version}")
# C++ programs would need a C++ runtime for musl.
set(CMAKE_CXX_COMPILER_WORKS ON)
set(MAINCONTROL_ONLY_C_PROGRAMS ON)
