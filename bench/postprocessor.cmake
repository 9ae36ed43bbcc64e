# Post-processor views over a solved GRI-Mech 3.0 file: loading, production analysis and the
# mean-parameter table.
zarvion_bench(postprocessor SOURCES ${CMAKE_CURRENT_LIST_DIR}/PostprocessorBench.cpp
              DEPS zarvion::postprocessor zarvion::solver zarvion::solverfile zarvion::shell)
