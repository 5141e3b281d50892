# How every target is compiled: C++20, warnings as errors, symbols hidden unless a
# public header shows them, and one place per preset for programs and libraries.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)

add_compile_options(-Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)

# Nobody replaces a function of our libraries by one of the same name. Without that promise
# their own calls of exported functions, several for each JSON attribute, are never inlined.
add_compile_options(-fno-semantic-interposition)

option(VXLAN_SANITIZE "Build with AddressSanitizer and UndefinedBehaviorSanitizer" OFF)
if(VXLAN_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all
                        -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()

# Link-time optimisation pays where small functions meet across files: in the two
# libraries and the front end. Tests and tools link faster without it.
option(VXLAN_LTO "Optimise the shipped targets at link time" OFF)
function(vxlan_shipped target)
    if(VXLAN_LTO)
        set_target_properties(${target} PROPERTIES INTERPROCEDURAL_OPTIMIZATION ON)
        target_link_options(${target} PRIVATE -flto=auto)
    endif()
endfunction()
