# What every target of the project is built with.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

add_library(hollerwick_options INTERFACE)
target_compile_options(hollerwick_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wold-style-cast -Werror)
target_compile_definitions(hollerwick_options INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # Unique symbols pin a library in memory; the plug-in must really unload.
    target_compile_options(hollerwick_options INTERFACE -fno-gnu-unique)
    # GCC 12 sees overlaps and overruns in std::string and std::vector that are none (GCC bug 105651 and its like).
    target_compile_options(hollerwick_options INTERFACE -Wno-restrict -Wno-array-bounds -Wno-stringop-overflow)
    # With -O3 it sees a short literal being read beyond its end as well, where it is moved into a vector of strings.
    target_compile_options(hollerwick_options INTERFACE $<$<CONFIG:Release>:-Wno-stringop-overread>)
endif()

set(HOLLERWICK_SANITIZE "" CACHE STRING "Sanitizers for all of the project, as -fsanitize takes them")
if(HOLLERWICK_SANITIZE)
    add_compile_options(-fsanitize=${HOLLERWICK_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${HOLLERWICK_SANITIZE})
    # What the sanitizers put in between makes GCC 12 see unset values where there are none.
    add_compile_options($<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
endif()

# Every program links this: what a sanitizer is told before it starts, nothing in other builds.
add_library(hollerwick_program INTERFACE)
if(HOLLERWICK_SANITIZE)
    add_library(hollerwick_sanitizer_defaults OBJECT ${CMAKE_CURRENT_LIST_DIR}/sanitizer_defaults.cpp)
    target_sources(hollerwick_program INTERFACE $<TARGET_OBJECTS:hollerwick_sanitizer_defaults>)
endif()

# lld links the test programs in a third of the time.
find_program(HOLLERWICK_LLD ld.lld)
if(HOLLERWICK_LLD)
    add_link_options(-fuse-ld=lld)
endif()

# What every test runs in.
set(HOLLERWICK_TEST_ENVIRONMENT
    QT_QPA_PLATFORM=offscreen
    LC_ALL=C.UTF-8
    HOME=${CMAKE_BINARY_DIR}/home)
