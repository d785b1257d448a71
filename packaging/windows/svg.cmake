# Builds the SVG module, which comes with qmake files only, with its plugins for icons and pictures. Copied beside the
# module's folders.
cmake_minimum_required(VERSION 3.25)
project(Svg LANGUAGES CXX)
set(CMAKE_CXX_STANDARD 17)
set(CMAKE_AUTOMOC ON)
find_package(Qt6 6.4 REQUIRED COMPONENTS Core Gui)
find_package(ZLIB REQUIRED)

# The headers are included by the module's name and without it.
file(GLOB HEADERS svg/*.h)
file(COPY ${HEADERS} DESTINATION ${CMAKE_BINARY_DIR}/include/QtSvg)
file(COPY ${HEADERS} DESTINATION ${CMAKE_BINARY_DIR}/include/QtSvg/private)
foreach(name QSvgGenerator QSvgRenderer)
  string(TOLOWER ${name} header)
  file(WRITE ${CMAKE_BINARY_DIR}/include/QtSvg/${name} "#include \"${header}.h\"\n")
endforeach()

file(GLOB SOURCES svg/*.cpp)
add_library(Svg SHARED ${SOURCES})
add_library(Qt6::Svg ALIAS Svg)
set_target_properties(Svg PROPERTIES OUTPUT_NAME Qt6Svg)
target_compile_definitions(Svg PRIVATE QT_BUILD_SVG_LIB QT_NO_USING_NAMESPACE)
target_include_directories(Svg PUBLIC $<BUILD_INTERFACE:${CMAKE_BINARY_DIR}/include>
  $<BUILD_INTERFACE:${CMAKE_BINARY_DIR}/include/QtSvg> $<INSTALL_INTERFACE:include> $<INSTALL_INTERFACE:include/QtSvg>)
target_link_libraries(Svg PUBLIC Qt6::Gui PRIVATE Qt6::CorePrivate Qt6::GuiPrivate ZLIB::ZLIB)

foreach(plugin IN ITEMS "qsvgicon;iconengines;svgiconengine" "qsvg;imageformats;svg")
  list(GET plugin 0 name)
  list(GET plugin 1 kind)
  list(GET plugin 2 folder)
  file(GLOB SOURCES plugins/${kind}/${folder}/*.cpp)
  add_library(${name} MODULE ${SOURCES})
  set_target_properties(${name} PROPERTIES PREFIX "")
  target_compile_definitions(${name} PRIVATE QT_PLUGIN QT_NO_USING_NAMESPACE)
  target_link_libraries(${name} PRIVATE Svg Qt6::CorePrivate Qt6::GuiPrivate)
  install(TARGETS ${name} DESTINATION plugins/${kind})
endforeach()

install(TARGETS Svg EXPORT Qt6SvgTargets ARCHIVE DESTINATION lib RUNTIME DESTINATION bin)
install(DIRECTORY ${CMAKE_BINARY_DIR}/include/QtSvg DESTINATION include)
install(EXPORT Qt6SvgTargets NAMESPACE Qt6:: FILE Qt6SvgConfig.cmake DESTINATION lib/cmake/Qt6Svg)
