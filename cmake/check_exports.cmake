# Fails unless the library's only defined dynamic symbol is apiTbl (the
# toolchain's own _init/_fini-type entries aside).
execute_process(COMMAND nm -D --defined-only ${LIBRARY}
                OUTPUT_VARIABLE symbols RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "nm failed on ${LIBRARY}")
endif()
string(REGEX MATCHALL "[^\n]+" lines "${symbols}")
set(found "")
foreach(line ${lines})
  string(REGEX REPLACE "^.* " "" name "${line}")
  if(NOT name MATCHES "^_(init|fini|edata|end|_bss_start)$")
    list(APPEND found ${name})
  endif()
endforeach()
if(NOT found STREQUAL "apiTbl")
  message(FATAL_ERROR "exported: ${found}")
endif()
