# Builds from nothing compile several sources of a target as one file, which takes a third of the time: the templates that they share
# are instantiated once. The tests are always built so, everything else where CMAKE_UNITY_BUILD says it.
#
# hollerwick_compile_alone(TARGET source...)
#
# Keeps sources out of that whose private names are other sources' private names as well.

function(hollerwick_compile_alone target)
    set_source_files_properties(${ARGN} TARGET_DIRECTORY ${target} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
endfunction()

function(hollerwick_allow_unity_build)
    # Whether a source's private names stand in a header is what this warning judges by the file that is compiled.
    add_compile_options($<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
endfunction()

if(CMAKE_UNITY_BUILD)
    hollerwick_allow_unity_build()
endif()
