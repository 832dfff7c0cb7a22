# lib_mainControl.so: needs libc and nothing else, and exports exactly the names in exports.txt.

include(CheckCXXCompilerFlag)
find_package(Threads REQUIRED)

set(exports_list ${PROJECT_SOURCE_DIR}/mainControl/exports.txt)
set(version_script ${PROJECT_BINARY_DIR}/exports.map)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${exports_list})
file(STRINGS ${exports_list} exports_list_names)
list(JOIN exports_list_names ";\n    " exports)
file(CONFIGURE OUTPUT ${version_script} CONTENT "{\n  global:\n    @exports@;\n  local: *;\n};\n" @ONLY)

# What runs once for a command is built for size, what runs over every character of a reply for speed.
set(for_size
  lib_public/ATPreprocess/ATPreprocess.cpp
  lib_public/AtCodec/Network_AtWrapper/operator.cpp
  lib_public/AtCodec/Network_AtWrapper/radio_mode.cpp
  lib_public/AtCodec/Network_AtWrapper/registration.cpp
  lib_public/AtCodec/Network_AtWrapper/signal.cpp
  lib_public/AtCodec/Set_AtWrapper/device.cpp
  lib_public/AtCodec/Set_AtWrapper/identity.cpp
  lib_public/AtCodec/Set_AtWrapper/network_lock.cpp
  lib_public/AtCodec/Set_AtWrapper/pin.cpp
  lib_public/AtCodec/Set_AtWrapper/settings.cpp
  lib_public/support/platform_traits.cpp
  mainControl/frame.cpp
  mainControl/identity.cpp
  mainControl/network_lock.cpp
  mainControl/notification.cpp
  mainControl/pdp_profile.cpp
  mainControl/pin.cpp
  mainControl/radio_preference.cpp
  mainControl/registration.cpp
  mainControl/service_provider.cpp
  mainControl/serving_network.cpp
  mainControl/settings.cpp
  mainControl/signal.cpp
  mainControl/system_config.cpp)
set(for_speed
  lib_public/ATPreprocess/ATCtrTransfer.cpp
  lib_public/ATPreprocess/AtTable_lookup.cpp
  lib_public/ATPreprocess/KoraWcdma_AtTable.cpp
  lib_public/ATPreprocess/end_flag_search.cpp
  lib_public/ATPreprocess/ok_body.cpp
  lib_public/ATPreprocess/reply_parser.cpp
  lib_public/AtCodec/ATCodec_line.cpp
  lib_public/AtCodec/ATCodec_list.cpp
  lib_public/AtCodec/AtExchange.cpp
  lib_public/AtCodec/Set_AtWrapper/pdp.cpp
  lib_public/AtCodec/pieces.cpp
  lib_public/support/in_stretches.cpp
  lib_public/support/quoted_search.cpp
  lib_public/support/scan.cpp)
add_library(mainControl SHARED ${for_size} ${for_speed})
add_library(mainControl::mainControl ALIAS mainControl)

target_include_directories(mainControl PUBLIC
  $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>
  $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
target_compile_features(mainControl PRIVATE cxx_std_20)

# Optimised builds are the ones that ship: they are fortified, and their frames are held to what a thread with a small
# stack can give. Sanitizers bring their own checks and larger frames.
set(is_hardened $<AND:$<CONFIG:Release,RelWithDebInfo,MinSizeRel>,$<NOT:$<BOOL:${MAINCONTROL_SANITIZED}>>>)
# Hundreds of log formats need no more alignment than characters do. Only GCC for x86 gives them more, and an option.
check_cxx_compiler_flag(-malign-data=abi has_malign_data)
target_compile_options(mainControl PRIVATE
  $<$<BOOL:${has_malign_data}>:-malign-data=abi>
  -fno-exceptions -fno-rtti -fno-threadsafe-statics -fno-asynchronous-unwind-tables
  -fno-tree-slp-vectorize # a pair of pointers comes in two registers; as one vector it makes a load wait for two stores
  -fno-plt # the names are bound when the library is loaded anyway, and there is a jump less in every call
  -ffunction-sections -fdata-sections -fstack-protector-strong
  $<${is_hardened}:-Wframe-larger-than=28672>
  $<${is_hardened}:-U_FORTIFY_SOURCE> $<${is_hardened}:-D_FORTIFY_SOURCE=2>)

if(MAINCONTROL_BUILD_FUZZ) # which follows the ways that are taken through the library, and nothing else
  target_compile_options(mainControl PRIVATE -fsanitize=fuzzer-no-link)
endif()

set_property(SOURCE ${for_size} APPEND PROPERTY COMPILE_OPTIONS $<${is_hardened}:-Os>)
# A walk over characters is a loop of a few instructions, which takes up to a quarter longer where it begins badly.
check_cxx_compiler_flag(-falign-loops=32 has_align_loops)
set_property(SOURCE ${for_speed} APPEND PROPERTY COMPILE_OPTIONS $<$<BOOL:${has_align_loops}>:-falign-loops=32>)

set_target_properties(mainControl PROPERTIES
  OUTPUT_NAME _mainControl
  VERSION ${PROJECT_VERSION}
  SOVERSION ${PROJECT_VERSION_MAJOR}
  CXX_VISIBILITY_PRESET hidden
  VISIBILITY_INLINES_HIDDEN ON
  LINKER_LANGUAGE C
  LINK_DEPENDS ${version_script}
  COMPILE_WARNING_AS_ERROR ON)

# The C compiler links the library, and nothing of the C++ runtime comes along.
set(CMAKE_CXX_IMPLICIT_LINK_LIBRARIES "")
target_link_libraries(mainControl PRIVATE $<BUILD_INTERFACE:mainControl_warnings> $<BUILD_INTERFACE:Threads::Threads>)
target_link_options(mainControl PRIVATE
  LINKER:--version-script=${version_script}
  LINKER:-z,relro LINKER:-z,now LINKER:-z,noexecstack LINKER:--gc-sections)
