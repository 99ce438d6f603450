# Shared by the installed-package tests: a scratch prefix and consumer build
# below WORK_DIR, emptied first, and run(<status> <command>...), which fails
# the test unless the command ends with <status> and leaves its combined
# output in `output`.
set(prefix "${WORK_DIR}/prefix")
set(build "${WORK_DIR}/build")
file(REMOVE_RECURSE "${WORK_DIR}")

function(run expect_status)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE out)
  if(NOT status STREQUAL expect_status)
    message(FATAL_ERROR "expected status ${expect_status}, got ${status}: ${ARGN}\n${out}")
  endif()
  set(output "${out}" PARENT_SCOPE)
endfunction()
