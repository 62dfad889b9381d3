# orv_room(<target> SOURCES <files> [PUBLIC <libraries>] [PRIVATE <libraries>])
# One library a room. Its link line is the list of rooms that it may include: headers of any other
# room are not on its include path, so a wrong include does not build.
# Files of a room are included as "<room>/<file>", e.g. "base/Value.h"; each room's parent folder is
# on the include path of whoever links the room.
function(orv_room target)
  cmake_parse_arguments(ROOM "" "" "SOURCES;PUBLIC;PRIVATE" ${ARGN})
  add_library(${target} STATIC ${ROOM_SOURCES})
  target_include_directories(${target} PUBLIC "${CMAKE_BINARY_DIR}/include/${target}")
  # A link to the room's folder alone, so that neighbours under the same parent stay out of reach.
  get_filename_component(name "${CMAKE_CURRENT_SOURCE_DIR}" NAME)
  file(MAKE_DIRECTORY "${CMAKE_BINARY_DIR}/include/${target}")
  file(CREATE_LINK "${CMAKE_CURRENT_SOURCE_DIR}" "${CMAKE_BINARY_DIR}/include/${target}/${name}" SYMBOLIC)
  target_link_libraries(${target} PUBLIC ${ROOM_PUBLIC} PRIVATE ${ROOM_PRIVATE})
endfunction()

# orv_test(<target> SOURCES <files> LINK <rooms>): one test program with GoogleTest, run without a display.
function(orv_test target)
  cmake_parse_arguments(TEST "" "" "SOURCES;LINK" ${ARGN})
  add_executable(${target} ${TEST_SOURCES})
  target_include_directories(${target} PRIVATE "${CMAKE_SOURCE_DIR}/tests")
  target_link_libraries(${target} PRIVATE ${TEST_LINK} GTest::gtest)
  target_compile_definitions(${target} PRIVATE ORV_SOURCE_DIR="${CMAKE_SOURCE_DIR}")
  add_test(NAME ${target} COMMAND ${target})
  set_tests_properties(${target} PROPERTIES ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/lsan.supp;ASAN_OPTIONS=detect_leaks=1")
endfunction()

# orv_bench(<target> SOURCES <files> LINK <rooms>): one benchmark program with Google Benchmark.
function(orv_bench target)
  cmake_parse_arguments(BENCH "" "" "SOURCES;LINK" ${ARGN})
  add_executable(${target} ${BENCH_SOURCES})
  target_link_libraries(${target} PRIVATE ${BENCH_LINK} benchmark::benchmark)
endfunction()
