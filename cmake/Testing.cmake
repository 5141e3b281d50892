# Tests: one program per room of the tree, one test file per file of that room.

enable_testing()
find_package(GTest REQUIRED)
include(GoogleTest)

# Tests are compiled once and run for a second: optimising them hardly would wait longer
# than it saves. And GCC 12, optimising, takes the small buffer of a std::string for all of
# it when one is put together from constants (GCC bug 105651), as expected texts are.
set(VXLAN_TEST_OPTIONS -O1 -Wno-array-bounds -Wno-restrict -Wno-stringop-overflow)
# What the sanitizers add hides from it that a std::function in std::regex is initialised.
if(VXLAN_SANITIZE)
    list(APPEND VXLAN_TEST_OPTIONS -Wno-maybe-uninitialized)
endif()

# Google Test's headers cost more to parse than most tests: parsed once here.
file(WRITE "${CMAKE_BINARY_DIR}/GTestHeaders.cpp" "// Holds the precompiled Google Test headers.\n")
add_library(gtest_headers OBJECT "${CMAKE_BINARY_DIR}/GTestHeaders.cpp")
target_link_libraries(gtest_headers PUBLIC GTest::gtest)
target_precompile_headers(gtest_headers PRIVATE <gtest/gtest.h>)
# As for programs: position-independent code of the other kind does not fit.
set_target_properties(gtest_headers PROPERTIES POSITION_INDEPENDENT_CODE OFF)
target_compile_options(gtest_headers PRIVATE -fPIE ${VXLAN_TEST_OPTIONS})

# vxlan_test_program(NAME SOURCES file... LIBRARIES target... [DEFINITIONS name=value...])
# A program of tests, which its caller registers.
function(vxlan_test_program name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LIBRARIES;DEFINITIONS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_include_directories(${name} PRIVATE "${CMAKE_SOURCE_DIR}")
    target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES} GTest::gtest GTest::gtest_main)
    target_precompile_headers(${name} REUSE_FROM gtest_headers)
    target_compile_definitions(${name} PRIVATE ${ARG_DEFINITIONS})
    target_compile_options(${name} PRIVATE ${VXLAN_TEST_OPTIONS})
endfunction()

# vxlan_test(NAME ...) registers each test of such a program by itself.
function(vxlan_test name)
    vxlan_test_program(${name} ${ARGN})
    gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST PROPERTIES TIMEOUT 300)
endfunction()
