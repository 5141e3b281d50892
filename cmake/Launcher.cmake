# Compiles through ccache where it is installed. A project that includes this one chooses its
# own launcher.
if(PROJECT_IS_TOP_LEVEL AND NOT DEFINED CMAKE_CXX_COMPILER_LAUNCHER)
    find_program(VXLAN_CCACHE ccache)
    mark_as_advanced(VXLAN_CCACHE)
    if(VXLAN_CCACHE)
        # A precompiled header is told apart by its content.
        set(CMAKE_CXX_COMPILER_LAUNCHER "${CMAKE_COMMAND}" -E env
            CCACHE_SLOPPINESS=pch_defines,time_macros
            "${VXLAN_CCACHE}")
    endif()
endif()
