# Compiler cache, sanitizers, hardening: all that concerns how, not what, is compiled.

set(CMAKE_POSITION_INDEPENDENT_CODE ON)

find_program(TARNWICK_CCACHE ccache)
if(TARNWICK_CCACHE)
    # Paths relative to the source folder, so that work trees and fresh clones share the cache.
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env
        CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1
        CCACHE_SLOPPINESS=pch_defines,time_macros ${TARNWICK_CCACHE})
endif()

# A target whose macros differ from those of the precompiled headers does without them.
set(CMAKE_PCH_WARN_INVALID OFF)

find_program(TARNWICK_MOLD mold)
if(TARNWICK_MOLD AND NOT APPLE)
    # Hundreds of test programs are linked in a build: with this linker each takes no time.
    add_link_options(-fuse-ld=mold)
endif()

if(TARNWICK_SANITIZE)
    add_compile_options(-fsanitize=${TARNWICK_SANITIZE} -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${TARNWICK_SANITIZE})
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # The added code hides from GCC that an optional is looked into only where it holds a value.
        add_compile_options(-Wno-maybe-uninitialized)
        if(TARNWICK_SANITIZE STREQUAL "thread")
            # The sanitizer knows no fences, and GCC says so wherever a header of the library has one.
            add_compile_options(-Wno-tsan)
        endif()
    endif()
endif()

if(TARNWICK_FUZZ)
    # Tells the fuzzer which ways through our code an input took.
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# What scripts/checks/hardened looks for in the programs, and what guards returns and jumps where the
# processor can.
if(TARNWICK_HARDENED)
    include(CheckPIESupported)
    check_pie_supported(LANGUAGES CXX)
    add_compile_options(-fstack-protector-strong -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
    include(CheckCXXCompilerFlag)
    foreach(flag -fstack-clash-protection -fcf-protection -mbranch-protection=standard)
        string(MAKE_C_IDENTIFIER TARNWICK_HAS${flag} known)
        check_cxx_compiler_flag(${flag} ${known})
        if(${known})
            add_compile_options(${flag})
        endif()
    endforeach()
    if(NOT APPLE)
        add_link_options(-Wl,-z,relro,-z,now,-z,noexecstack)
    endif()
endif()
