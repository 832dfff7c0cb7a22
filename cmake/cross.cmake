# Toolchain file for Debian's cross compilers, whose programs run here under qemu-user:
#   cmake -DCMAKE_TOOLCHAIN_FILE=cmake/cross.cmake -DCROSS=arm-linux-gnueabihf
set(known_machines
  arm-linux-gnueabihf=arm
  aarch64-linux-gnu=aarch64
  mipsel-linux-gnu=mipsel
  mips-linux-gnu=mips
  riscv64-linux-gnu=riscv64)
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES CROSS)
list(FILTER known_machines INCLUDE REGEX "^${CROSS}=")
if(NOT known_machines)
  message(FATAL_ERROR "CROSS is not one of the machines that cmake/cross.cmake knows: ${CROSS}")
endif()
string(REGEX REPLACE ".*=" "" CMAKE_SYSTEM_PROCESSOR "${known_machines}")

set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_C_COMPILER ${CROSS}-gcc)
set(CMAKE_CXX_COMPILER ${CROSS}-g++)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-${CMAKE_SYSTEM_PROCESSOR} -L /usr/${CROSS})
set(CMAKE_FIND_ROOT_PATH /usr/${CROSS})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
