# Tests: one program per room of the tree, one test file per file of that room.

enable_testing()
find_package(GTest REQUIRED)
include(GoogleTest)
find_program(PYTHON3 python3 PATHS /usr/bin NO_DEFAULT_PATH REQUIRED)

# What every test but those of real peers needs.
add_custom_target(tests_without_peers)
add_dependencies(tests_without_peers vxshow)

# The tests of what has threads.
add_custom_target(tests_of_threads)
add_dependencies(tests_of_threads vxshow)

# Tests are compiled once and run for a second: to optimise them would take longer than it saves.
# The C library's checks of lengths work in optimised code only.
set(VXLAN_TEST_OPTIONS -O0 -U_FORTIFY_SOURCE)
# A unity batch includes its sources. GCC takes a fixture in an unnamed namespace of an included file
# for one of a header, and clang reports a local name that a constant of another source has, too.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    list(APPEND VXLAN_TEST_OPTIONS -Wno-subobject-linkage)
elseif(CMAKE_UNITY_BUILD)
    list(APPEND VXLAN_TEST_OPTIONS -Wno-shadow)
endif()

# A test links the front end's libraries as they were compiled, whatever else is in them.
set(VXLAN_TEST_LINK_OPTIONS)
if(VXLAN_LTO AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    set(VXLAN_TEST_LINK_OPTIONS -fno-lto)
endif()

# Google Test's headers cost more to parse than most tests: parsed once here.
file(WRITE "${PROJECT_BINARY_DIR}/GTestHeaders.cpp" "// Holds the precompiled Google Test headers.\n")
add_library(gtest_headers OBJECT "${PROJECT_BINARY_DIR}/GTestHeaders.cpp")
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
    target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}")
    target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES} GTest::gtest GTest::gtest_main)
    target_precompile_headers(${name} REUSE_FROM gtest_headers)
    target_compile_definitions(${name} PRIVATE ${ARG_DEFINITIONS})
    target_compile_options(${name} PRIVATE ${VXLAN_TEST_OPTIONS})
    target_link_options(${name} PRIVATE ${VXLAN_TEST_LINK_OPTIONS})
endfunction()

# vxlan_test(NAME [THREADS] [LABELS label...] ...) registers each test of such a program by itself;
# under the sanitizers, where starting a process takes longer than most tests, the program in a few
# parts. The largest programs are started first. THREADS: it tests what has threads.
function(vxlan_test name)
    cmake_parse_arguments(ARG "THREADS" "" "LABELS;SOURCES;LIBRARIES;DEFINITIONS" ${ARGN})
    vxlan_test_program(${name} SOURCES ${ARG_SOURCES} LIBRARIES ${ARG_LIBRARIES}
                       DEFINITIONS ${ARG_DEFINITIONS})
    if(VXLAN_SANITIZE OR VXLAN_SANITIZE_THREAD)
        list(LENGTH ARG_SOURCES size)
        if(ARG_THREADS)
            list(APPEND ARG_LABELS threads)
        endif()
        math(EXPR shards "(${size} + 9) / 10")
        foreach(shard RANGE 1 ${shards})
            math(EXPR index "${shard} - 1")
            add_test(NAME ${name}_${shard} COMMAND ${name} --gtest_brief=1)
            set_tests_properties(${name}_${shard} PROPERTIES
                TIMEOUT 900 COST ${size} LABELS "${ARG_LABELS}"
                ENVIRONMENT "GTEST_TOTAL_SHARDS=${shards};GTEST_SHARD_INDEX=${index}")
        endforeach()
    else()
        gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST
                             PROPERTIES TIMEOUT 300 LABELS "${ARG_LABELS}")
    endif()
    add_dependencies(tests_without_peers ${name})
    if(ARG_THREADS)
        add_dependencies(tests_of_threads ${name})
    endif()
endfunction()

# vxlan_program_test(NAME SCRIPT ARGUMENT...) runs a Python script with `--vxshow` and the path of the
# program: that of this build tree, or VXSHOW_PROGRAM of the environment. No configuration file of the
# user or the system is read.
function(vxlan_program_test name script)
    add_test(NAME ${name}
             COMMAND env XDG_CONFIG_HOME=/nonexistent XDG_CACHE_HOME=/dev/null VXSHOW_SYSTEM_CONFIG=
                     bash -c "exec \"$1\" \"$2\" --vxshow \"\${VXSHOW_PROGRAM:-$0}\" \"\${@:3}\""
                     $<TARGET_FILE:vxshow> ${PYTHON3} ${script} ${ARGN})
endfunction()
