# coverage_report: line and branch coverage of the library's sources (src/)
# from the counters the tests left in this build tree. Prints the summary and
# a table per folder, writes a per-file listing to coverage.txt and fails
# below the minimum line coverage. Counters add up over runs; delete the
# *.gcda files of the build tree for a fresh measure.
find_program(GCOVR gcovr REQUIRED)
find_package(Python3 REQUIRED COMPONENTS Interpreter)
set(FENK_COVERAGE_MIN_LINES 90 CACHE STRING "Least line coverage of src/ (percent)")
add_custom_target(coverage_report
  COMMAND ${GCOVR} --root ${PROJECT_SOURCE_DIR} --filter src/
          --exclude-unreachable-branches --exclude-throw-branches
          --txt ${PROJECT_BINARY_DIR}/coverage.txt
          --json-summary ${PROJECT_BINARY_DIR}/coverage-summary.json --print-summary
          --fail-under-line ${FENK_COVERAGE_MIN_LINES} ${PROJECT_BINARY_DIR}
  COMMAND ${Python3_EXECUTABLE} ${PROJECT_SOURCE_DIR}/cmake/coverage_folders.py
          ${PROJECT_BINARY_DIR}/coverage-summary.json
  WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
  COMMENT "Coverage of src/ (per file: ${PROJECT_BINARY_DIR}/coverage.txt)"
  VERBATIM)
