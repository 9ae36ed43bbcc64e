# The printed form of text documents: laying out and painting the pages of a solved file.
zarvion_bench(textprint SOURCES ${CMAKE_CURRENT_LIST_DIR}/TextReportBench.cpp
              DEPS zarvion::gui_textdocs)
