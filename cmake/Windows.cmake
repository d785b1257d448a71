# What only programs for Windows need.

set(WINDOWS ${CMAKE_SOURCE_DIR}/packaging/windows)
find_program(RSVG rsvg-convert REQUIRED)
find_program(ICOTOOL icotool REQUIRED)

enable_language(RC)
target_compile_definitions(shockscope_flags INTERFACE UNICODE NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0A00)

# Found here for all folders: Qt would define one of its targets anew in each.
if(SHOCKSCOPE_GUI)
  find_package(Qt6 6.4 REQUIRED COMPONENTS Core)
endif()

# The program's icon in the sizes that the desktop asks for.
set(ICON ${CMAKE_BINARY_DIR}/shockscope.ico)
set(DRAWN)
set(COMMANDS)
foreach(size 16 24 32 48 64 256)
  list(APPEND DRAWN ${CMAKE_BINARY_DIR}/icon-${size}.png)
  list(APPEND COMMANDS COMMAND ${RSVG} -w ${size} -h ${size} -o ${CMAKE_BINARY_DIR}/icon-${size}.png
                               ${CMAKE_SOURCE_DIR}/src/gui/shockscope.svg)
endforeach()
add_custom_command(OUTPUT ${ICON} ${COMMANDS} COMMAND ${ICOTOOL} -c -o ${ICON} ${DRAWN}
                   DEPENDS ${CMAKE_SOURCE_DIR}/src/gui/shockscope.svg)
add_custom_target(program_icon DEPENDS ${ICON})

# Gives a program icon, version and manifest.
function(shockscope_resource target DESCRIPTION)
  set(MANIFEST ${WINDOWS}/program.manifest)
  set(resource ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
  configure_file(${WINDOWS}/program.rc.in ${resource} @ONLY)
  set_property(SOURCE ${resource} PROPERTY OBJECT_DEPENDS "${ICON};${MANIFEST}")
  target_sources(${target} PRIVATE ${resource})
  add_dependencies(${target} program_icon)
endfunction()
