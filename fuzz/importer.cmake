# CHEMKIN importer fuzz target. The importer sources, the solver-file reader it is checked
# against and the shell helpers are compiled into the target itself, so that all of them
# carry the fuzzer's coverage instrumentation and the sanitizers.
file(GLOB chemkin_fuzz_sources CONFIGURE_DEPENDS
    ${PROJECT_SOURCE_DIR}/src/core/solverfile/Chemkin*.cpp
    ${PROJECT_SOURCE_DIR}/src/core/shell/*.cpp)
add_executable(fuzz_chemkin ${CMAKE_CURRENT_SOURCE_DIR}/chemkin_fuzz.cpp ${chemkin_fuzz_sources}
    ${PROJECT_SOURCE_DIR}/src/core/solverfile/SolverFileReader.cpp)
target_include_directories(fuzz_chemkin PRIVATE ${PROJECT_SOURCE_DIR}/src/core)
target_compile_options(fuzz_chemkin PRIVATE -fsanitize=fuzzer,address,undefined
    -fno-sanitize-recover=undefined)
target_link_options(fuzz_chemkin PRIVATE -fsanitize=fuzzer,address,undefined)
set_target_properties(fuzz_chemkin PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/fuzz)
