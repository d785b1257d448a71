# Flags that everything is built with, and the function that declares the library of a folder.

find_program(CCACHE ccache)
if(CCACHE)
  # ccache compares precompiled headers by content, not by their macros and times, and knows a file in another clone again.
  set(CMAKE_CXX_COMPILER_LAUNCHER
      ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1
      CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime ${CCACHE})
endif()

add_library(shockscope_flags INTERFACE)
if(CCACHE AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(shockscope_flags INTERFACE -fpch-preprocess)  # so that ccache sees the header
endif()
target_include_directories(shockscope_flags INTERFACE ${CMAKE_SOURCE_DIR}/src)
# No fused multiply-add: metrics are the same to the last bit on every machine.
target_compile_options(shockscope_flags INTERFACE -Wall -Wextra -Wpedantic -Wconversion -ffp-contract=off)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # GCC 12 sees overlaps where a string literal is joined with a std::string (its bug 105651).
  target_compile_options(shockscope_flags INTERFACE -Wno-restrict)
  # The compiler looks for unused memory of its own only above a gigabyte, which saves a tenth of its time.
  target_compile_options(shockscope_flags INTERFACE --param=ggc-min-heapsize=1000000)
endif()
if(SHOCKSCOPE_WERROR)
  target_compile_options(shockscope_flags INTERFACE -Werror)
endif()
if(SHOCKSCOPE_SANITIZE)
  add_compile_options(-fsanitize=${SHOCKSCOPE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${SHOCKSCOPE_SANITIZE})
endif()

# shockscope_room(NAME source… LINK library…): the library shockscope_NAME of src/NAME. It may include only what it
# links; checks/check_layers.py has the same table.
function(shockscope_room name)
  cmake_parse_arguments(ROOM "" "" "LINK" ${ARGN})
  add_library(shockscope_${name} STATIC ${ROOM_UNPARSED_ARGUMENTS})
  target_link_libraries(shockscope_${name} PUBLIC shockscope_flags ${ROOM_LINK})
endfunction()

