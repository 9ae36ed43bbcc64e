zarvion_bench(importer SOURCES ${CMAKE_CURRENT_SOURCE_DIR}/importer_bench.cpp
    DEPS zarvion::solverfile zarvion::shell)
