# zarvion_gtest(<name> [DEPS <targets>...] [SOURCES <files>...])
# One GoogleTest executable per subsystem; it runs as one ctest entry with the
# paths of the checkout and of ../shared in its environment.
function(zarvion_gtest name)
    cmake_parse_arguments(ARG "" "" "DEPS;SOURCES" ${ARGN})
    if(NOT ARG_SOURCES)
        file(GLOB ARG_SOURCES CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
    endif()
    if(NOT ARG_SOURCES)
        return()
    endif()
    add_executable(test_${name} ${ARG_SOURCES})
    set_target_properties(test_${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
    target_link_libraries(test_${name} PRIVATE ${ARG_DEPS} GTest::gtest GTest::gtest_main)
    target_include_directories(test_${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
    target_compile_definitions(test_${name} PRIVATE
        ZARVION_SOURCE_DIR="${ZARVION_SOURCE_DIR}"
        ZARVION_SHARED_DIR="${ZARVION_SHARED_DIR}"
        ZARVION_BIN_DIR="${ZARVION_BIN_DIR}")
    add_test(NAME ${name} COMMAND test_${name})
    set_tests_properties(${name} PROPERTIES ENVIRONMENT "QT_QPA_PLATFORM=offscreen" TIMEOUT 900)
endfunction()
