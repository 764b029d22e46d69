# Warnings and sanitizers in one place; every target of this project links zol_flags.
add_library(zol_flags INTERFACE)
target_include_directories(zol_flags INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(zol_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion
    $<$<COMPILE_LANGUAGE:CXX>:-Wold-style-cast>
    -Werror)
# GCC 12 at -O3 warns of an overlapping copy inside std::string's operator+ that can't
# happen (its bug 105651).
target_compile_options(zol_flags INTERFACE
    $<$<AND:$<COMPILE_LANG_AND_ID:CXX,GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>:-Wno-restrict>)
# The standard library's own checks, where speed does not matter.
target_compile_definitions(zol_flags INTERFACE
    $<$<AND:$<CONFIG:Debug>,$<COMPILE_LANGUAGE:CXX>>:_GLIBCXX_ASSERTIONS>)
# A computed result must not depend on whether the processor fuses operations.
target_compile_options(zol_flags INTERFACE -ffp-contract=off)

if(ZOL_SANITIZE)
    target_compile_options(zol_flags INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(zol_flags INTERFACE -fsanitize=address,undefined)
    # With sanitizers GCC 12 takes members of <regex> for uninitialised that are not.
    target_compile_options(zol_flags INTERFACE
        $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Wno-maybe-uninitialized>)
endif()
