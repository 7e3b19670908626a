# A test executable: orvantile_test(name LABEL tier SOURCES … LINK … [TIMEOUT seconds]).
# Each test case becomes a CTest test of its own.
include(GoogleTest)

function(orvantile_test name)
  cmake_parse_arguments(arg "" "LABEL;TIMEOUT" "SOURCES;LINK;PROPERTIES" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE orvantile::options GTest::gmock ${arg_LINK})
  target_include_directories(${name} PRIVATE "${CMAKE_SOURCE_DIR}/tests")
  orvantile_precompile(${name})
  if(NOT arg_TIMEOUT)
    set(arg_TIMEOUT 60)
  endif()
  gtest_discover_tests(${name} TEST_PREFIX "${name}/" DISCOVERY_MODE PRE_TEST
    PROPERTIES LABELS ${arg_LABEL} TIMEOUT ${arg_TIMEOUT} ${arg_PROPERTIES})
endfunction()
