# Chart file reader and clipboard subset reader. The chart and shell sources are compiled
# into each target so that they carry the fuzzer's instrumentation and the sanitizers.
find_package(nlohmann_json 3 REQUIRED)
file(GLOB chart_fuzz_sources CONFIGURE_DEPENDS
    ${PROJECT_SOURCE_DIR}/src/core/charts/*.cpp
    ${PROJECT_SOURCE_DIR}/src/core/shell/*.cpp)
foreach(target chart_file chart_clipboard)
    add_executable(fuzz_${target} ${CMAKE_CURRENT_LIST_DIR}/${target}_fuzz.cpp ${chart_fuzz_sources})
    target_include_directories(fuzz_${target} PRIVATE ${PROJECT_SOURCE_DIR}/src/core)
    target_link_libraries(fuzz_${target} PRIVATE nlohmann_json::nlohmann_json)
    target_compile_options(fuzz_${target} PRIVATE -fsanitize=fuzzer,address,undefined
        -fno-sanitize-recover=undefined)
    target_link_options(fuzz_${target} PRIVATE -fsanitize=fuzzer,address,undefined)
    set_target_properties(fuzz_${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/fuzz)
endforeach()
