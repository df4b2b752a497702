# One interface target carries what every target is compiled with. Fused multiply-add is off so that
# results do not depend on whether the machine has it. Unique symbols are off because they stay global
# whatever is done to them, and no variable here is shared with another library.
add_library(nivaro_options INTERFACE)
target_include_directories(nivaro_options INTERFACE ${PROJECT_SOURCE_DIR}/src
                                                    ${PROJECT_SOURCE_DIR}/include)
target_compile_options(nivaro_options INTERFACE
  $<$<COMPILE_LANGUAGE:CXX>:-Wall -Wextra -Wpedantic -Wconversion -Wshadow -ffp-contract=off>
  $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-fno-gnu-unique>
  $<$<AND:$<COMPILE_LANGUAGE:CXX>,$<BOOL:${NIVARO_WARNINGS_AS_ERRORS}>>:-Werror>)

# Windows looks for a shared library beside the program: all programs go where the library is.
if(WIN32)
  set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR})
endif()

# A floor of the library: one folder of src/, linked with the floors below it. The floors are the
# folders of docs/architecture.md; scripts/check_layers.py compares the includes with that table.
function(nivaro_floor name)
  cmake_parse_arguments(FLOOR "" "" "SOURCES;USES" ${ARGN})
  add_library(floor_${name} STATIC ${FLOOR_SOURCES})
  list(TRANSFORM FLOOR_USES PREPEND floor_)
  target_link_libraries(floor_${name} PUBLIC nivaro_options ${FLOOR_USES})
endfunction()

# Makes the tests of a GoogleTest program known to ctest, every test by name. Windows programs run
# under Wine, where each start of a process takes its time: there one test is the whole program.
function(nivaro_ctest program prefix label)
  if(CMAKE_CROSSCOMPILING)
    add_test(NAME ${prefix}.${program} COMMAND ${program})
    set_tests_properties(${prefix}.${program} PROPERTIES LABELS ${label} FIXTURES_REQUIRED wine)
  else()
    gtest_discover_tests(${program} TEST_PREFIX ${prefix}. PROPERTIES LABELS ${label}
                         DISCOVERY_TIMEOUT 60)
  endif()
endfunction()

# Where tests find what they share, and what they need of the system they run on.
function(nivaro_test_includes program)
  target_include_directories(${program} PRIVATE ${PROJECT_SOURCE_DIR}/tests
    ${PROJECT_SOURCE_DIR}/tests/support/$<IF:$<PLATFORM_ID:Windows>,windows,posix>)
endfunction()

# The unit tests of one floor, in one program.
function(nivaro_unit_tests name)
  cmake_parse_arguments(UNIT "" "" "SOURCES" ${ARGN})
  add_executable(${name}_test ${UNIT_SOURCES})
  nivaro_test_includes(${name}_test)
  # Tests are read and built more often than they run.
  target_compile_options(${name}_test PRIVATE -O1)
  target_link_libraries(${name}_test PRIVATE floor_${name} GTest::gmock_main)
  nivaro_ctest(${name}_test ${name} unit)
endfunction()
