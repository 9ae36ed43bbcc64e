zarvion_bench(shell_text SOURCES ${CMAKE_CURRENT_LIST_DIR}/shell_text_bench.cpp DEPS zarvion::shell)
