# Compiler options for all targets, and tamrix_module(), which defines a module's sources and dependencies.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
if(NOT WIN32 OR TAMRIX_SHARED)
    set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
endif()

option(TAMRIX_SHARED "Build the shipped DLL (the release preset) instead of a static library" OFF)
option(TAMRIX_SANITIZE "Build with the address and undefined-behaviour sanitizers" OFF)
option(TAMRIX_SANITIZE_THREADS "Build with the thread sanitizer instead, for the program of scripts/soak" OFF)
option(TAMRIX_TESTS "Build the test suites" ON)
option(TAMRIX_BENCH "Build the benchmarks" OFF)
option(TAMRIX_FUZZ "Build the fuzz targets (clang)" OFF)
option(TAMRIX_COVERAGE "Build for line coverage" OFF)

add_library(tamrix_options INTERFACE)
target_compile_options(tamrix_options INTERFACE -Wall -Wextra -Wconversion -Wshadow -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # GCC 12 reports optimised string concatenation ("(" + text) as overlapping copies.
    target_compile_options(tamrix_options INTERFACE -Wno-restrict)
endif()
if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    # No dynamic initializers: all initialization at load is in the entry point.
    set(TAMRIX_MODULE_WARNINGS -Wglobal-constructors -Wexit-time-destructors)
    if(MSVC)
        # The platform types in exported classes are fixed by the interface.
        target_compile_options(tamrix_options INTERFACE -Wno-microsoft-cast)
    endif()
endif()
# The only generated header; CMakeLists.txt defines the version.
configure_file(${PROJECT_SOURCE_DIR}/cmake/version.h.in ${PROJECT_BINARY_DIR}/include/tamrix32/version.h @ONLY)
target_include_directories(tamrix_options INTERFACE ${PROJECT_SOURCE_DIR}/include ${PROJECT_BINARY_DIR}/include)
if(NOT TAMRIX_SHARED)
    target_compile_definitions(tamrix_options INTERFACE TAMRIX_STATIC)
endif()
if(TAMRIX_SANITIZE)
    # Checking virtual tables requires type information, which the library does not have.
    target_compile_options(tamrix_options INTERFACE -fsanitize=address,undefined -fno-sanitize=vptr
                                                    -fno-sanitize-recover=undefined
                                                    -fno-omit-frame-pointer)
    target_link_options(tamrix_options INTERFACE -fsanitize=address,undefined)
endif()
if(TAMRIX_SANITIZE_THREADS)
    target_compile_options(tamrix_options INTERFACE -fsanitize=thread)
    target_link_options(tamrix_options INTERFACE -fsanitize=thread)
endif()
if(TAMRIX_FUZZ)
    # Instruments the code; fuzz/ links the fuzzing engine.
    target_compile_options(tamrix_options INTERFACE -fsanitize=fuzzer-no-link)
    target_link_options(tamrix_options INTERFACE -fsanitize=fuzzer-no-link)
endif()
if(TAMRIX_COVERAGE)
    target_compile_options(tamrix_options INTERFACE --coverage)
    target_link_options(tamrix_options INTERFACE --coverage)
endif()
if(NOT WIN32)
    target_link_libraries(tamrix_options INTERFACE tamrix_platform_headers)
endif()

# tamrix_module(NAME SOURCES ... [WINDOWS_SOURCES ...] [USES module ...])
#
# Defines an object library, tamrix_NAME. WINDOWS_SOURCES need a desktop (windows, drawing, common dialogs) and are not
# part of native builds. USES lists the modules whose headers this module may include; make check compares it with the
# includes.
function(tamrix_module name)
    cmake_parse_arguments(module "" "" "SOURCES;WINDOWS_SOURCES;USES" ${ARGN})
    if(WIN32)
        list(APPEND module_SOURCES ${module_WINDOWS_SOURCES})
    endif()
    add_library(tamrix_${name} OBJECT ${module_SOURCES})
    target_include_directories(tamrix_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    target_compile_options(tamrix_${name} PRIVATE -fno-exceptions -fno-rtti ${TAMRIX_MODULE_WARNINGS})
    target_link_libraries(tamrix_${name} PUBLIC tamrix_options)
    if(TAMRIX_SHARED)
        target_compile_definitions(tamrix_${name} PRIVATE TAMRIX_EXPORTS)
    endif()
    foreach(used IN LISTS module_USES)
        target_link_libraries(tamrix_${name} PUBLIC tamrix_${used})
    endforeach()
    set_property(GLOBAL APPEND PROPERTY TAMRIX_MODULES ${name})
endfunction()
