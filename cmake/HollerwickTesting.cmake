# hollerwick_test(NAME [LONG] SOURCES file... [ALONE file...] LIBRARIES target...)
#
# A GoogleTest program and each of its tests as a test of its own, so that a crash names its test. Files that cannot be compiled
# together with others are ALONE. Of whole programs the LONG ones start first, so that none runs on after the others.
# Windows go to Qt's offscreen platform; HOME and TMPDIR of a test are below the build directory.

include(GoogleTest)
find_package(GTest REQUIRED)

option(HOLLERWICK_WHOLE_PROGRAMS "Run each test program in one process, as one test" OFF)

# Programs that show windows share one precompiled header, the others another. A program that is built otherwise parses the
# headers itself.
function(hollerwick_precompile_test name)
    if(NOT HOLLERWICK_PRECOMPILE)
        return()
    endif()
    set(donor test_support)
    if("test_gui_main" IN_LIST TEST_LIBRARIES)
        set(donor test_gui_main)
    endif()
    target_compile_options(${name} PRIVATE -fPIC)
    target_precompile_headers(${name} REUSE_FROM ${donor})
endfunction()

function(hollerwick_test name)
    cmake_parse_arguments(TEST "LONG" "" "SOURCES;ALONE;LIBRARIES" ${ARGN})
    add_executable(${name} ${TEST_SOURCES} ${TEST_ALONE})
    hollerwick_compile_alone(${name} ${TEST_ALONE})
    target_link_libraries(${name} PRIVATE hollerwick_options hollerwick_program kelvaris_contract ${TEST_LIBRARIES} GTest::gtest GTest::gmock)
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
    hollerwick_precompile_test(${name})
    if(HOLLERWICK_WHOLE_PROGRAMS)
        add_test(NAME ${name} COMMAND ${name})
        set_tests_properties(${name} PROPERTIES TIMEOUT 900 ENVIRONMENT "${HOLLERWICK_TEST_ENVIRONMENT}")
        if(TEST_LONG)
            set_tests_properties(${name} PROPERTIES COST 100)
        endif()
        return()
    endif()
    gtest_discover_tests(${name}
        TEST_PREFIX ${name}.
        DISCOVERY_MODE PRE_TEST
        DISCOVERY_TIMEOUT 60
        PROPERTIES TIMEOUT 300 ENVIRONMENT "${HOLLERWICK_TEST_ENVIRONMENT}")
endfunction()
