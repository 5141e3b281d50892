# How every target is compiled: C++20, symbols hidden unless a public header shows them, and
# one place per build tree for programs and libraries.
#
# A public header shows its symbols by the visibility of its namespace. GCC goes by the
# declaration's namespace block, clang by the definition's, so both carry the attribute.
include(Launcher)

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/lib")
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/lib")
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)

# The presets turn warnings into errors (CMAKE_COMPILE_WARNING_AS_ERROR); a packager's
# compiler, which may know more of them, does not.
add_compile_options(-Wall -Wextra -Wpedantic -Wconversion -Wshadow)

# No program replaces a function of our libraries with its own of the same name. Without that
# promise their own calls of exported functions, several for each JSON attribute, are never
# inlined.
add_compile_options(-fno-semantic-interposition)

# GCC spends a tenth of its time on collecting its own garbage, of which a unity batch makes much.
if(CMAKE_UNITY_BUILD AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    add_compile_options(--param=ggc-min-heapsize=1500000)
endif()

# The checks of each pointer for null, alignment and the type behind it take a third of the time that
# a sanitized build takes, and rarely report what AddressSanitizer does not.
option(VXLAN_SANITIZE "Build with AddressSanitizer and UndefinedBehaviorSanitizer" OFF)
option(VXLAN_SANITIZE_POINTERS "Have UndefinedBehaviorSanitizer also check every pointer" OFF)
if(VXLAN_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all
                        -fno-omit-frame-pointer)
    if(NOT VXLAN_SANITIZE_POINTERS)
        add_compile_options(-fno-sanitize=null,alignment,vptr)
    endif()
    add_link_options(-fsanitize=address,undefined)
endif()

# ThreadSanitizer does not work together with AddressSanitizer. Its preset does not run the tests of
# signals: the sanitizer delivers a signal only when the program next calls certain functions, which
# those tests wait for in vain.
option(VXLAN_SANITIZE_THREAD "Build with ThreadSanitizer" OFF)
if(VXLAN_SANITIZE_THREAD)
    add_compile_options(-fsanitize=thread -fno-omit-frame-pointer)
    add_link_options(-fsanitize=thread)
    # It does not know fences. Only the shared tables have any, against other processes, which it
    # does not see anyway.
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        add_compile_options(-Wno-tsan)
    endif()
endif()

# What makes a fault in memory end the program rather than run foreign code: a guard value above the
# local arrays of a function, checked lengths in the C library's functions, tables of addresses
# that are bound at start and then read-only, and marked targets of indirect jumps, where the
# processor knows them.
option(VXLAN_HARDEN "Compile and link with the hardening flags" OFF)
if(VXLAN_HARDEN)
    include(CheckCXXCompilerFlag)
    add_compile_options(-fstack-protector-strong -Wformat -Wformat-security
                        -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
    check_cxx_compiler_flag(-fcf-protection=full VXLAN_HAS_CF_PROTECTION)
    if(VXLAN_HAS_CF_PROTECTION)
        add_compile_options(-fcf-protection=full)
    endif()
    add_link_options(LINKER:-z,relro,-z,now,-z,noexecstack)
endif()

# The coverage that libFuzzer goes by. Only the fuzzing targets are linked with libFuzzer itself.
option(VXLAN_FUZZ "Build the fuzzing targets, which needs Clang" OFF)
if(VXLAN_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link)
    add_link_options(-fsanitize=fuzzer-no-link)
endif()

# Link-time optimisation pays where small functions meet across files: in the two shared
# libraries and the front end, and nowhere else.
option(VXLAN_LTO "Optimise the shipped targets at link time" OFF)

# vxlan_shipped(TARGET) optimises a shared library or the front end when it is linked.
function(vxlan_shipped target)
    if(VXLAN_LTO)
        set_target_properties(${target} PROPERTIES INTERPROCEDURAL_OPTIMIZATION ON)
        if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
            target_link_options(${target} PRIVATE -flto=auto)
        endif()
    endif()
endfunction()

# vxlan_shipped_part(TARGET) does the same for a static library of the front end. Tests link it
# plainly, so where there are any, its objects also hold finished machine code.
function(vxlan_shipped_part target)
    vxlan_shipped(${target})
    if(VXLAN_LTO AND VXLAN_TESTING AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        target_compile_options(${target} PRIVATE -ffat-lto-objects)
    endif()
endfunction()

# vxlan_small_batches(TARGET) is for sources that take long: a changed one is not to compile ten of
# them. Where the environment says CI, everything is compiled once, which large batches make quicker.
function(vxlan_small_batches target)
    if(NOT "$ENV{CI}")
        set_target_properties(${target} PROPERTIES UNITY_BUILD_BATCH_SIZE 4)
    endif()
endfunction()
