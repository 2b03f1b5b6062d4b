# Small helpers shared by every CMakeLists of the tree.

function(vira_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wnon-virtual-dtor)
  # GCC 12 at -O3 reports string concatenation inside libstdc++ ("literal" + std::string&&) as an
  # overlapping memcpy (GCC bug 105651): a false alarm that would stop optimised builds.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(${target} PRIVATE -Wno-restrict)
  endif()
  if(VIRA_WARNINGS_AS_ERRORS)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
endfunction()

# Collects the .cpp files directly inside the given folders (relative to the source root).
function(vira_glob_sources out)
  set(files)
  foreach(dir IN LISTS ARGN)
    file(GLOB found CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${dir}/*.cpp)
    list(APPEND files ${found})
  endforeach()
  list(SORT files)
  set(${out} ${files} PARENT_SCOPE)
endfunction()

# vira_test(NAME name DIRS dir... LIBS lib...): one GoogleTest executable from the .cpp files of the
# given folders, each test registered with CTest.
function(vira_test)
  cmake_parse_arguments(T "" "NAME" "DIRS;LIBS" ${ARGN})
  set(sources)
  foreach(dir IN LISTS T_DIRS)
    file(GLOB found CONFIGURE_DEPENDS ${dir}/*.cpp)
    list(APPEND sources ${found})
  endforeach()
  if(NOT sources)
    return()
  endif()
  list(SORT sources)
  add_executable(${T_NAME} ${sources})
  target_link_libraries(${T_NAME} PRIVATE ${T_LIBS} GTest::gtest GTest::gmock GTest::gtest_main)
  target_compile_definitions(${T_NAME} PRIVATE
    VIRA_SOURCE_DIR="${PROJECT_SOURCE_DIR}" VIRA_BINARY_DIR="${PROJECT_BINARY_DIR}"
    VIRA_PYTHON="${VIRA_PYTHON}")
  vira_warnings(${T_NAME})
  # Tests run with settings and protocol folders of their own, never the developer's. The module checks for
  # updates whenever it is initialised: its server is a port on 127.0.0.1 that nobody listens on, so no test
  # reaches beyond this machine.
  set(test_home ${PROJECT_BINARY_DIR}/test-home)
  file(WRITE ${test_home}/config/TRELLANOVA\ 10/registry.ini "[Platform]\nUpdateServer=127.0.0.1:9\n")
  gtest_discover_tests(${T_NAME} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60
    WORKING_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}
    PROPERTIES ENVIRONMENT "XDG_CONFIG_HOME=${test_home}/config;XDG_STATE_HOME=${test_home}/state")
endfunction()
