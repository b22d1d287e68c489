# Installs the build into a scratch prefix, then builds and runs the
# consumer program against it both ways: find_package and pkg-config.
set(prefix ${BUILD_DIR}/consumer/prefix)
set(work ${BUILD_DIR}/consumer/work)
file(REMOVE_RECURSE ${BUILD_DIR}/consumer)

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "failed: ${ARGN}\n${out}\n${err}")
  endif()
  set(last_output "${out}" PARENT_SCOPE)
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})
file(GLOB libdirs ${prefix}/lib*)
list(GET libdirs 0 libdir)

# Through the CMake package.
run(${CMAKE_COMMAND} -S ${SOURCE_DIR}/tests/consumer -B ${work}/cmake -G Ninja
    -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_C_COMPILER=${C_COMPILER})
run(${CMAKE_COMMAND} --build ${work}/cmake)
run(${CMAKE_COMMAND} -E env LD_LIBRARY_PATH=${libdir} ${work}/cmake/consumer)
if(NOT last_output STREQUAL "consumer ok\n")
  message(FATAL_ERROR "CMake consumer said: ${last_output}")
endif()

# Through pkg-config.
find_program(PKG_CONFIG pkg-config REQUIRED)
run(${CMAKE_COMMAND} -E env PKG_CONFIG_PATH=${libdir}/pkgconfig
    ${PKG_CONFIG} --cflags --libs fenkapi)
string(STRIP "${last_output}" flags)
separate_arguments(flags UNIX_COMMAND "${flags}")
file(MAKE_DIRECTORY ${work}/pc)
run(${C_COMPILER} -std=c11 ${SOURCE_DIR}/tests/consumer/consumer.c ${flags} -o ${work}/pc/consumer)
run(${CMAKE_COMMAND} -E env LD_LIBRARY_PATH=${libdir} ${work}/pc/consumer)
if(NOT last_output STREQUAL "consumer ok\n")
  message(FATAL_ERROR "pkg-config consumer said: ${last_output}")
endif()
