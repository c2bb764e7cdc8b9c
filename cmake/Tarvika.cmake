# Helpers shared by the CMakeLists of the source folders.

# tarvika_library(NAME <lib> SOURCES ... DEPENDS ...)
# A static library of the core, with src/ as its include root.
function(tarvika_library)
  cmake_parse_arguments(T "" "NAME" "SOURCES;DEPENDS" ${ARGN})
  add_library(${T_NAME} STATIC ${T_SOURCES})
  target_include_directories(${T_NAME} PUBLIC ${CMAKE_SOURCE_DIR}/src)
  target_link_libraries(${T_NAME} PUBLIC ${T_DEPENDS})
endfunction()

# tarvika_test(NAME <test> SOURCES ... DEPENDS ... [LABELS ...])
# A GoogleTest executable, registered with CTest; runs with the source tree's tests/ as TARVIKA_TEST_DATA.
# The shared helpers of tests/support are included as "support/...".
function(tarvika_test)
  cmake_parse_arguments(T "" "NAME" "SOURCES;DEPENDS;LABELS" ${ARGN})
  add_executable(${T_NAME} ${T_SOURCES})
  target_include_directories(${T_NAME} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  target_link_libraries(${T_NAME} PRIVATE ${T_DEPENDS} GTest::gtest GTest::gtest_main GTest::gmock)
  target_compile_definitions(${T_NAME} PRIVATE
    TARVIKA_TEST_DATA="${CMAKE_SOURCE_DIR}/tests"
    TARVIKA_SOURCE_DIR="${CMAKE_SOURCE_DIR}"
    TARVIKA_PROGRAM_DIR="${TARVIKA_PROGRAM_DIR}")
  include(GoogleTest)
  if(T_LABELS)
    gtest_discover_tests(${T_NAME} DISCOVERY_TIMEOUT 60 PROPERTIES LABELS "${T_LABELS}")
  else()
    gtest_discover_tests(${T_NAME} DISCOVERY_TIMEOUT 60)
  endif()
endfunction()

# tarvika_bench(NAME <bench> SOURCES ... DEPENDS ...)
function(tarvika_bench)
  cmake_parse_arguments(T "" "NAME" "SOURCES;DEPENDS" ${ARGN})
  add_executable(${T_NAME} ${T_SOURCES})
  target_link_libraries(${T_NAME} PRIVATE ${T_DEPENDS} benchmark::benchmark)
  set_property(GLOBAL APPEND PROPERTY TARVIKA_BENCHES ${T_NAME})
endfunction()
