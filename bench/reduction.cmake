# Mechanism reduction over the stored rows of a solved file.
zarvion_bench(reduction SOURCES ${CMAKE_CURRENT_LIST_DIR}/ReductionBench.cpp
              DEPS zarvion::reduction zarvion::postprocessor zarvion::solverfile zarvion::shell)
