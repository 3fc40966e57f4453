# hollerwick_precompile(HEADER target...)
#
# Parses cmake/precompiled/HEADER once for each target instead of once for each of its sources.

# A target whose macros differ from those of the header that it shares parses the headers itself, which is no fault.
set(CMAKE_PCH_WARN_INVALID OFF)

option(HOLLERWICK_PRECOMPILE "Precompile the headers that most sources include" ON)

function(hollerwick_precompile header)
    if(NOT HOLLERWICK_PRECOMPILE)
        return()
    endif()
    foreach(target ${ARGN})
        target_precompile_headers(${target} PRIVATE ${PROJECT_SOURCE_DIR}/cmake/precompiled/${header})
    endforeach()
endfunction()
