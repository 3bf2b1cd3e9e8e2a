# orv_add_tests(<name> LIBS <targets...> SOURCES <files...>)
# One test executable per module; every test case is registered with CTest.
function(orv_add_tests name)
  if(NOT ORV_BUILD_TESTS)
    return()
  endif()
  cmake_parse_arguments(ARG "" "" "LIBS;SOURCES" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LIBS} GTest::gtest GTest::gtest_main)
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST
    PROPERTIES ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
endfunction()
