# The plug-in over host libraries that were built elsewhere: the package named by HOLLERWICK_HOST_PACKAGE defines the three
# targets, and Kelvaris::Contract where it has headers of its own.

find_package(${HOLLERWICK_HOST_PACKAGE} REQUIRED)
foreach(target Core QtCore Support)
    if(NOT TARGET Kelvaris::${target})
        message(FATAL_ERROR "The package ${HOLLERWICK_HOST_PACKAGE} defines no target Kelvaris::${target}.")
    endif()
endforeach()

if(TARGET Kelvaris::Contract)
    add_library(kelvaris_contract INTERFACE)
    target_link_libraries(kelvaris_contract INTERFACE Kelvaris::Contract)
else()
    add_subdirectory(core)
endif()
