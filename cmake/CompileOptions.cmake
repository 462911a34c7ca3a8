# Compiler and linker flags of every target.

option(PADSCOPE_WARNINGS_AS_ERRORS "Treat compiler warnings as errors" OFF)
set(PADSCOPE_SANITIZE "" CACHE STRING "Sanitizers, as -fsanitize takes them (address,undefined or thread)")

option(PADSCOPE_COVERAGE "Count which lines and branches are run" OFF)
option(PADSCOPE_FUZZ "Build the fuzz targets as fuzzers, which takes clang" OFF)

set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
# No folder of the build in what is installed: builds in different folders give the same bytes.
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)
add_compile_options($<$<NOT:$<CONFIG:Debug>>:-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.>)

add_library(padscope_options INTERFACE)
target_compile_options(padscope_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion
    $<$<BOOL:${PADSCOPE_WARNINGS_AS_ERRORS}>:-Werror>)

# Hardening: boards send anything. Fortified functions need optimisation, and exclude a sanitizer, which finds more.
add_compile_options(-fstack-protector-strong)
if(NOT PADSCOPE_SANITIZE)
    add_compile_options($<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE> $<$<NOT:$<CONFIG:Debug>>:-D_FORTIFY_SOURCE=2>)
endif()
add_link_options(-Wl,-z,relro,-z,now)
# lld links the tests faster. What is installed is linked by the system's default linker.
find_program(PADSCOPE_LLD ld.lld)
if(PADSCOPE_LLD AND CMAKE_BUILD_TYPE STREQUAL "Debug")
    add_link_options(-fuse-ld=lld)
endif()
# Position-independent executables need a linker flag, too.
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)

if(PADSCOPE_SANITIZE)
    add_compile_options(-fsanitize=${PADSCOPE_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${PADSCOPE_SANITIZE})
endif()

if(PADSCOPE_COVERAGE)
    # The callbacks count on threads of the driver library.
    add_compile_options(--coverage -fprofile-update=atomic)
    add_link_options(--coverage)
endif()

if(PADSCOPE_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()
