# What every target of the project shares: warnings, sanitizers, compiler cache.

find_program(CCACHE ccache)
if(CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE}")
endif()

option(ZIRVO_SANITIZE "Build with the address and undefined-behaviour sanitizers" OFF)
option(ZIRVO_FUZZ "Build the fuzz targets instead of the tests; needs Clang" OFF)

add_library(zirvo_build_flags INTERFACE)
target_compile_options(zirvo_build_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual
    -Wno-sign-conversion # Qt counts with signed sizes, the standard library with unsigned ones
    -Werror)
target_compile_definitions(zirvo_build_flags INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH QT_STRICT_ITERATORS
    QT_DISABLE_DEPRECATED_BEFORE=0x060400)
if(ZIRVO_SANITIZE)
    target_compile_options(zirvo_build_flags INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    target_link_options(zirvo_build_flags INTERFACE -fsanitize=address,undefined)
endif()
if(ZIRVO_FUZZ)
    target_compile_options(zirvo_build_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()
