# What `cmake --install` and the Debian package hold: the programs in a folder of their own with data and manual beside
# them, links to them in the path, and the files that desktop, shell and man look for.

set(LINUX ${CMAKE_SOURCE_DIR}/packaging/linux)
set(DEBIAN ${CMAKE_SOURCE_DIR}/packaging/debian)
set(MADE ${CMAKE_BINARY_DIR}/packaging)
set(DOCUMENTS share/doc/shockscope)
set(MAINTAINER "ShockScope maintainers <maintainers@shockscope.example>")
file(MAKE_DIRECTORY ${MADE}/bin)

# shockscope_compressed(NAME DESTINATION SOURCE command…): installs what the command prints, compressed as NAME.gz.
function(shockscope_compressed name destination source)
  add_custom_command(OUTPUT ${MADE}/${name}.gz
    COMMAND bash -o pipefail -c "\"$@\" | gzip -9n >\"$0\"" ${MADE}/${name}.gz ${ARGN}
    DEPENDS ${source} VERBATIM)
  set_property(GLOBAL APPEND PROPERTY SHOCKSCOPE_COMPRESSED ${MADE}/${name}.gz)
  install(FILES ${MADE}/${name}.gz DESTINATION ${destination})
endfunction()

function(shockscope_install_program name)
  install(TARGETS ${name} RUNTIME DESTINATION lib/shockscope)
  execute_process(COMMAND ${CMAKE_COMMAND} -E create_symlink ../lib/shockscope/${name} ${MADE}/bin/${name})
  install(FILES ${MADE}/bin/${name} DESTINATION bin)
  set(page ${CMAKE_SOURCE_DIR}/docs/${name}.1)
  shockscope_compressed(${name}.1 share/man/man1 ${page} cat ${page})
endfunction()

shockscope_install_program(kshock)
install(FILES ${LINUX}/kshock.bash DESTINATION share/bash-completion/completions RENAME kshock)
install(FILES ${CMAKE_SOURCE_DIR}/docs/fleet.md ${CMAKE_SOURCE_DIR}/docs/kshock-format.md ${DEBIAN}/copyright
        DESTINATION ${DOCUMENTS})
install(DIRECTORY ${CMAKE_SOURCE_DIR}/packaging/cluster/ DESTINATION ${DOCUMENTS}/examples
        USE_SOURCE_PERMISSIONS)
set(CHANGES ${CMAKE_SOURCE_DIR}/CHANGELOG.md)
shockscope_compressed(changelog ${DOCUMENTS} "${CHANGES};${DEBIAN}/changelog" ${DEBIAN}/changelog ${CHANGES}
                      "${MAINTAINER}")

if(SHOCKSCOPE_GUI)
  # The software centre shows the day of the release.
  file(STRINGS ${CHANGES} RELEASE REGEX "^## ${PROJECT_VERSION}, [0-9-]+$")
  if(NOT RELEASE MATCHES ", ([0-9-]+)$")
    message(FATAL_ERROR "CHANGELOG.md needs the heading \"## ${PROJECT_VERSION}, \" with the day of that release.")
  endif()
  set(RELEASE_DATE ${CMAKE_MATCH_1})
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${CHANGES})
  set(ID org.shockscope.shockscope)
  configure_file(${LINUX}/metainfo.xml.in ${MADE}/${ID}.metainfo.xml @ONLY)

  shockscope_install_program(shockscope)
  install(FILES ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/data/demo.kshock DESTINATION lib/shockscope/data)
  install(DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/doc_shock DESTINATION lib/shockscope OPTIONAL)
  install(FILES ${LINUX}/shockscope.desktop DESTINATION share/applications)
  install(FILES ${MADE}/${ID}.metainfo.xml DESTINATION share/metainfo)
  install(FILES ${LINUX}/mime.xml DESTINATION share/mime/packages RENAME shockscope.xml)
  install(FILES ${CMAKE_SOURCE_DIR}/src/gui/shockscope.svg DESTINATION share/icons/hicolor/scalable/apps)
  install(FILES ${LINUX}/application-x-kshock.svg DESTINATION share/icons/hicolor/scalable/mimetypes)
endif()

get_property(COMPRESSED GLOBAL PROPERTY SHOCKSCOPE_COMPRESSED)
add_custom_target(compressed_documents ALL DEPENDS ${COMPRESSED})

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME shockscope)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "viewer of the recordings of shock loggers")
set(CPACK_PACKAGE_DESCRIPTION
"ShockScope shows the recordings of portable shock loggers (.kshock files):
when shocks happened and how strong they were. It computes each event's
peak, time over threshold and integral over threshold, and shows them with
temperature, humidity, pressure and the other slow sensors. Limit profiles
judge a transport, and a report says on paper what happened.
.
The package holds the window (shockscope), the command line (kshock), the
manual as PDF, and a demo recording.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ
    WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER ${MAINTAINER})
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-wayland, xdg-utils")  # for desktops of that kind; to open the manual
set(CPACK_DEBIAN_PACKAGE_SUGGESTS pdf-viewer)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
