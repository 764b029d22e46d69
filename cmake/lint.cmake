# `cmake --workflow --preset lint`: layout, include arrows and the static checks.
find_package(Python3 3.9 REQUIRED COMPONENTS Interpreter)

add_custom_target(lint
    COMMAND ${PROJECT_SOURCE_DIR}/tools/check_format
    COMMAND ${Python3_EXECUTABLE} ${PROJECT_SOURCE_DIR}/tools/check_includes
    COMMAND ${Python3_EXECUTABLE} ${PROJECT_SOURCE_DIR}/tools/check_tidy ${PROJECT_BINARY_DIR}
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
    USES_TERMINAL VERBATIM
    COMMENT "Checking layout, includes and clang-tidy's findings")

# The arrows need no tool that a plain build lacks, so they are checked in every test run.
add_test(NAME lint.includes
    COMMAND ${Python3_EXECUTABLE} ${PROJECT_SOURCE_DIR}/tools/check_includes)
set_tests_properties(lint.includes PROPERTIES LABELS lint)
