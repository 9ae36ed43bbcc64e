# Rate evaluation and ignition integrations on imported real mechanisms.
zarvion_bench(thermo_rates SOURCES ${CMAKE_CURRENT_SOURCE_DIR}/ThermoRates.cpp
              DEPS zarvion::postprocessor zarvion::solverfile)
zarvion_bench(solver_ignition SOURCES ${CMAKE_CURRENT_SOURCE_DIR}/SolverIgnition.cpp
              DEPS zarvion::solver zarvion::solverfile)
