# Conversions of whole solver files: the CHEMKIN text of the reaction list, and the loader of
# the comparison window. Both read from a path, so each target writes its input to a scratch
# file first. The sources are compiled into each target to carry the instrumentation.
file(GLOB conversion_fuzz_shell_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/core/shell/*.cpp)
set(conversion_fuzz_sources
    ${PROJECT_SOURCE_DIR}/src/core/solverfile/SolverFileReader.cpp
    ${PROJECT_SOURCE_DIR}/src/core/solverfile/SolverFileLines.cpp
    ${PROJECT_SOURCE_DIR}/src/core/solverfile/SolverFileChecks.cpp
    ${PROJECT_SOURCE_DIR}/src/core/reduction/ChemkinConversion.cpp
    ${PROJECT_SOURCE_DIR}/src/core/comparison/ComparisonData.cpp
    ${conversion_fuzz_shell_sources})
foreach(target chemkin_text comparison)
    add_executable(fuzz_${target} ${CMAKE_CURRENT_LIST_DIR}/${target}_fuzz.cpp
        ${conversion_fuzz_sources})
    target_include_directories(fuzz_${target} PRIVATE ${PROJECT_SOURCE_DIR}/src/core)
    target_compile_options(fuzz_${target} PRIVATE -fsanitize=fuzzer,address,undefined
        -fno-sanitize-recover=undefined)
    target_link_options(fuzz_${target} PRIVATE -fsanitize=fuzzer,address,undefined)
    set_target_properties(fuzz_${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/fuzz)
endforeach()
