include(GNUInstallDirs)
include(GenerateExportHeader)

# Where every module's public headers go when installed.
set(ORV_INSTALL_INCLUDEDIR ${CMAKE_INSTALL_INCLUDEDIR}/OrvChart)

# orv_add_library(<target> EXPORT_NAME <name> EXPORT_MACRO <prefix> EXPORT_HEADER <file>
#                 SOURCES <files...> [PRIVATE_HEADERS <files...>])
# A shared library that exports only what its headers mark with <prefix>_EXPORT
# (generated into EXPORT_HEADER), usable in the build as Orv::<name> and installed
# with its public headers into include/OrvChart/<name>/ of the OrvChart package.
# Headers named *_p.h and those listed as PRIVATE_HEADERS are not installed.
function(orv_add_library target)
  cmake_parse_arguments(ARG "" "EXPORT_NAME;EXPORT_MACRO;EXPORT_HEADER" "SOURCES;PRIVATE_HEADERS" ${ARGN})
  add_library(${target} SHARED ${ARG_SOURCES})
  add_library(Orv::${ARG_EXPORT_NAME} ALIAS ${target})
  set_target_properties(${target} PROPERTIES
    EXPORT_NAME ${ARG_EXPORT_NAME}
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}
    INSTALL_RPATH "$ORIGIN")
  set(export_header ${CMAKE_CURRENT_BINARY_DIR}/${ARG_EXPORT_HEADER})
  generate_export_header(${target} BASE_NAME ${ARG_EXPORT_MACRO} EXPORT_FILE_NAME ${export_header})
  target_include_directories(${target} PUBLIC
    $<BUILD_INTERFACE:${CMAKE_CURRENT_SOURCE_DIR}>
    $<BUILD_INTERFACE:${CMAKE_CURRENT_BINARY_DIR}>
    $<INSTALL_INTERFACE:${ORV_INSTALL_INCLUDEDIR}/${ARG_EXPORT_NAME}>)

  set(public_headers ${ARG_SOURCES})
  list(FILTER public_headers INCLUDE REGEX "\\.h$")
  list(FILTER public_headers EXCLUDE REGEX "_p\\.h$")
  if(ARG_PRIVATE_HEADERS)
    list(REMOVE_ITEM public_headers ${ARG_PRIVATE_HEADERS})
  endif()
  install(TARGETS ${target} EXPORT OrvChartTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  install(FILES ${public_headers} ${export_header} DESTINATION ${ORV_INSTALL_INCLUDEDIR}/${ARG_EXPORT_NAME})
endfunction()

# orv_add_tests(<name> LIBS <targets...> SOURCES <files...> [MAIN gui|widgets|none])
# One test executable per module; every test case is registered with CTest.
# MAIN picks the main the tests run under: gui (the default) runs them inside a
# QGuiApplication, widgets inside a QApplication, both on the offscreen platform
# unless QT_QPA_PLATFORM names another, and both link the shared test helpers
# (Orv::TestSupport); none is GoogleTest's own main, for modules without Qt.
function(orv_add_tests name)
  if(NOT ORV_BUILD_TESTS)
    return()
  endif()
  cmake_parse_arguments(ARG "" "MAIN" "LIBS;SOURCES" ${ARGN})
  if(NOT ARG_MAIN OR ARG_MAIN STREQUAL "gui")
    set(main Orv::TestMain Orv::TestSupport)
  elseif(ARG_MAIN STREQUAL "widgets")
    set(main Orv::TestMainWidgets Orv::TestSupport)
  elseif(ARG_MAIN STREQUAL "none")
    set(main GTest::gtest_main)
  else()
    message(FATAL_ERROR "orv_add_tests(${name}): MAIN must be gui, widgets or none, not ${ARG_MAIN}")
  endif()
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LIBS} GTest::gtest ${main})
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST
    PROPERTIES ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
endfunction()
