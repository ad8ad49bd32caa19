# How every folder of the house is built: one library a folder, the same language level, warnings and sanitizers everywhere.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
    # It keeps what was compiled with a precompiled header only when told that macros beside it do not change it.
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros ${CCACHE_PROGRAM})
endif()

add_compile_options(-Wall -Wextra -Wconversion -Wshadow)
if(CARDSONG_WARNINGS_AS_ERRORS)
    add_compile_options(-Werror)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # With optimisation GCC 12 takes the parts of a sum of strings for overlapping ones.
    add_compile_options(-Wno-restrict)
endif()
if(CARDSONG_FUZZ)
    # Readers tell the fuzzer which of their edges an input reached.
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()
if(CARDSONG_SANITIZE)
    add_compile_options(-fsanitize=${CARDSONG_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${CARDSONG_SANITIZE})
endif()

if(NOT WIN32)
    add_link_options(LINKER:--as-needed) # a program loads the libraries of those rooms alone that it calls
    add_compile_options(-pthread) # everywhere, or a precompiled header would not serve the libraries that ask for it
endif()
if(WIN32)
    # One look of the API everywhere: wide text, no min and max macros, the functions of Windows 10.
    add_compile_definitions(UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0A00)
    add_link_options(LINKER:--no-insert-timestamp) # the same source gives the same program
endif()

# What most libraries include of the standard library is compiled once, for the first of them: it was half of each file's
# time. Nothing of the house is in it, so that a folder sees no header that it does not include; the build without
# precompiled headers in .ci/run shows an include that is missing.
function(cardsong_precompile name)
    get_property(first GLOBAL PROPERTY CARDSONG_PRECOMPILED)
    if(first)
        target_precompile_headers(${name} REUSE_FROM ${first})
    else()
        target_precompile_headers(${name} PRIVATE <algorithm> <array> <cstddef> <cstdint> <cstring> <functional> <memory>
            <mutex> <optional> <span> <string> <string_view> <vector>)
        set_property(GLOBAL PROPERTY CARDSONG_PRECOMPILED ${name})
    endif()
    target_compile_options(${name} PRIVATE -fpch-preprocess) # which ccache asks for
endfunction()

# cardsong_library(NAME SOURCES file... LINKS target... PRIVATE_LINKS target...): a static library of one folder.
# Headers are included by their path from the root, so that a reader sees which folder an arrow points to.
function(cardsong_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS;PRIVATE_LINKS" ${ARGN})
    if(ARG_SOURCES)
        add_library(${name} STATIC ${ARG_SOURCES})
        target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR})
        target_link_libraries(${name} PUBLIC ${ARG_LINKS} PRIVATE ${ARG_PRIVATE_LINKS})
        cardsong_precompile(${name})
    else()
        add_library(${name} INTERFACE)
        target_include_directories(${name} INTERFACE ${PROJECT_SOURCE_DIR})
        target_link_libraries(${name} INTERFACE ${ARG_LINKS})
    endif()
endfunction()

# cardsong_test(NAME SOURCES file... LINKS target... DEFINES name=value... DEPENDS target...): one GoogleTest program, which
# is one test for CTest: a process for each of its tests would take longer to start than to pass. Files named
# *_linux_test.cpp look behind the seam: they belong to the Linux build alone.
function(cardsong_test name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS;DEFINES;DEPENDS" ${ARGN})
    if(WIN32)
        list(FILTER ARG_SOURCES EXCLUDE REGEX "_linux_test\\.cpp$")
        if(NOT ARG_SOURCES)
            return()
        endif()
    endif()
    add_executable(${name} ${ARG_SOURCES})
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
    target_precompile_headers(${name} REUSE_FROM cardsong_test_base)
    target_link_libraries(${name} PRIVATE ${ARG_LINKS} cardsong_test_base)
    target_compile_definitions(${name} PRIVATE ${ARG_DEFINES})
    if(ARG_DEPENDS)
        add_dependencies(${name} ${ARG_DEPENDS})
    endif()
    add_test(NAME ${name} COMMAND ${name} --gtest_brief=1)
    set_tests_properties(${name} PROPERTIES TIMEOUT 300)
endfunction()
