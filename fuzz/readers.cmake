# Solver-file readers: the input-side reader, the opening checks with the start window's line
# reader, and the results readers. The reader and shell sources are compiled into each target
# so that they carry the fuzzer's instrumentation and the sanitizers.
file(GLOB reader_fuzz_shell_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/core/shell/*.cpp)
set(reader_fuzz_sources
    ${PROJECT_SOURCE_DIR}/src/core/solverfile/SolverFileReader.cpp
    ${PROJECT_SOURCE_DIR}/src/core/solverfile/SolverFileLines.cpp
    ${PROJECT_SOURCE_DIR}/src/core/solverfile/SolverFileChecks.cpp
    ${PROJECT_SOURCE_DIR}/src/core/postprocessor/ResultsReader.cpp
    ${reader_fuzz_shell_sources})
foreach(target mechanism_reader results_reader checks_reader)
    add_executable(fuzz_${target} ${CMAKE_CURRENT_LIST_DIR}/${target}_fuzz.cpp ${reader_fuzz_sources})
    target_include_directories(fuzz_${target} PRIVATE ${PROJECT_SOURCE_DIR}/src/core)
    target_compile_options(fuzz_${target} PRIVATE -fsanitize=fuzzer,address,undefined
        -fno-sanitize-recover=undefined)
    target_link_options(fuzz_${target} PRIVATE -fsanitize=fuzzer,address,undefined)
    set_target_properties(fuzz_${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/fuzz)
endforeach()
