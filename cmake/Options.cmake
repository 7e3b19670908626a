# How every target of the product is compiled: language level, warnings, Qt's strict mode,
# sanitizers and precompiled headers. Targets link `orvantile::options`.

option(ORVANTILE_TESTS "Build the tests" ON)
option(ORVANTILE_BENCH "Build the benchmarks" OFF)
option(ORVANTILE_TRACE "Let the program record where time goes (for the benchmarks; not for what is released)" OFF)
option(ORVANTILE_DEMO "Build the demonstration on a private desktop" OFF)
option(ORVANTILE_FUZZ "Build the fuzz targets with libFuzzer (clang only)" OFF)
option(ORVANTILE_COVERAGE "Instrument for coverage" OFF)
set(ORVANTILE_SANITIZERS "" CACHE STRING "Sanitizers to build with, such as address,undefined")

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_OBJCXX_STANDARD 20)
set(CMAKE_OBJCXX_STANDARD_REQUIRED ON)
set(CMAKE_OBJCXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime ${CCACHE_PROGRAM})
  add_compile_options($<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>)
endif()

# Dozens of test programs are linked; this linker takes a fraction of the time.
find_program(LLD_PROGRAM ld.lld)
if(LLD_PROGRAM AND NOT APPLE)
  add_link_options(-fuse-ld=lld)
endif()

add_library(orvantile_options INTERFACE)
add_library(orvantile::options ALIAS orvantile_options)
if(ORVANTILE_TRACE)
  # Found before the empty class of the same name.
  target_include_directories(orvantile_options INTERFACE "${CMAKE_SOURCE_DIR}/src/trace/recording")
  target_link_libraries(orvantile_options INTERFACE orvantile_trace)
endif()
target_include_directories(orvantile_options INTERFACE "${CMAKE_SOURCE_DIR}/src")
include(Warnings)
include(QtStrict)
target_link_libraries(orvantile_options INTERFACE orvantile::warnings orvantile::qt_strict)

# What is released is hardened: addresses at random, tables read-only, stacks and buffers guarded.
include(CheckPIESupported)
check_pie_supported()
target_compile_options(orvantile_options INTERFACE $<$<CONFIG:Release>:-fstack-protector-strong> $<$<CONFIG:Release>:-D_FORTIFY_SOURCE=2>)
if(NOT APPLE)
  target_link_options(orvantile_options INTERFACE $<$<CONFIG:Release>:-Wl,-z,relro,-z,now>)
endif()

if(ORVANTILE_SANITIZERS)
  target_compile_options(orvantile_options INTERFACE -fsanitize=${ORVANTILE_SANITIZERS} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(orvantile_options INTERFACE -fsanitize=${ORVANTILE_SANITIZERS})
endif()
if(ORVANTILE_FUZZ)
  target_compile_options(orvantile_options INTERFACE -fsanitize=fuzzer-no-link)
endif()
if(ORVANTILE_COVERAGE)
  target_compile_options(orvantile_options INTERFACE --coverage)
  target_link_options(orvantile_options INTERFACE --coverage)
endif()

# A static library of the product: orvantile_library(name SOURCES … LINK …).
function(orvantile_library name)
  cmake_parse_arguments(arg "" "" "SOURCES;LINK" ${ARGN})
  add_library(${name} STATIC ${arg_SOURCES})
  target_link_libraries(${name} PUBLIC orvantile::options ${arg_LINK})
  orvantile_precompile(${name})
endfunction()

# Qt's headers and the standard library's are parsed once for the whole build.
function(orvantile_precompile name)
  if(TARGET orvantile_precompiled)
    target_link_libraries(${name} PUBLIC Qt6::Widgets)
    target_precompile_headers(${name} REUSE_FROM orvantile_precompiled)
  endif()
endfunction()
