# Text conversions and the delimited read of the settings files.
add_executable(fuzz_shell_text ${CMAKE_CURRENT_LIST_DIR}/shell_text_fuzz.cpp)
target_link_libraries(fuzz_shell_text PRIVATE zarvion::shell)
target_compile_options(fuzz_shell_text PRIVATE -fsanitize=fuzzer,address,undefined)
target_link_options(fuzz_shell_text PRIVATE -fsanitize=fuzzer,address,undefined)
