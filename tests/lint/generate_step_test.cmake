# quillet_generate()'s build step with LINT: on a definition with several
# errors the step fails before quillet runs, with every error in the log and
# the outputs left alone; on a good definition it publishes the sources.
#   cmake -DQUILLET=<exe> -DLINT=<exe> -DSTEP=<script> -DBAD=<file> -DGOOD=<file> -DWORK=<dir> -P ...
function(run_step definition result_var log_var)
  execute_process(
    COMMAND "${CMAKE_COMMAND}" "-DQUILLET=${QUILLET}" "-DLINT=${LINT}" "-DDEFINITION=${definition}"
            "-DOUTPUT_DIR=${WORK}/out" "-DSTAGING_DIR=${WORK}/staging" "-DSTAMP=${WORK}/stamp" -P "${STEP}"
    RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE err)
  set(${result_var} "${status}" PARENT_SCOPE)
  set(${log_var} "${out}${err}" PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE "${WORK}")
run_step("${BAD}" status log)
if(status EQUAL 0)
  message(FATAL_ERROR "the step succeeded on ${BAD}:\n${log}")
endif()
foreach(expected "input.def:5:26: error: Value could not be parsed" "input.def:22:1: error: The KEYWORD: command"
                 "8 errors, 0 warnings" "quillet-lint found problems")
  string(FIND "${log}" "${expected}" found)
  if(found EQUAL -1)
    message(FATAL_ERROR "'${expected}' missing from the log:\n${log}")
  endif()
endforeach()
if(EXISTS "${WORK}/staging" OR EXISTS "${WORK}/out")
  message(FATAL_ERROR "quillet ran although the linter failed")
endif()

run_step("${GOOD}" status log)
if(NOT status EQUAL 0 OR NOT EXISTS "${WORK}/out/nq_command_init.cxx")
  message(FATAL_ERROR "the step failed on ${GOOD}:\n${log}")
endif()
