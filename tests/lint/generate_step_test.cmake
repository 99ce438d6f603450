# quillet_generate()'s build step with LINT: on a definition with several
# errors the step fails before quillet runs, with every error in the log and
# the outputs left alone; on a good definition it publishes the sources. A
# line quillet silently stops at fails the build; a warning that changes
# nothing of the reading fails it only with LINT_STRICT; a successful step
# leaves the log empty.
#   cmake -DQUILLET=<exe> -DLINT=<exe> -DSTEP=<script> -DBAD=<file> -DGOOD=<file> -DWORK=<dir> -P ...
cmake_minimum_required(VERSION 3.25)

function(run_step definition result_var log_var)
  execute_process(
    COMMAND "${CMAKE_COMMAND}" "-DQUILLET=${QUILLET}" "-DLINT=${LINT}" "-DLINT_STRICT=${strict}"
            "-DDEFINITION=${definition}"
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

# Each case: the definition, LINT_STRICT, whether the step must succeed, and
# what the log must hold ("" for an empty log).
string(REPEAT "x" 300 long_comment)
file(WRITE "${WORK}/clean.def" "KEYWORD: quit QUIT_KWD\nKEY_SUMMARY: Leave\nKEY_NO_OPTIONS:\n")
file(WRITE "${WORK}/long.def" "KEYWORD: quit QUIT_KWD\nKEY_NO_OPTIONS:\n# ${long_comment}\nKEYWORD: stop STOP_KWD\n")
file(WRITE "${WORK}/unused.def" "LOOKUP: Spare SPARE_A a 1\nKEYWORD: quit QUIT_KWD\nKEY_NO_OPTIONS:\n")
foreach(case "clean.def|OFF|0|" "clean.def|ON|0|" "long.def|OFF|1|long.def:3:255: error: line longer than 254 bytes"
             "unused.def|OFF|0|"
             "unused.def|ON|1|unused.def:1:9: error: lookup table 'Spare' is used by no option")
  string(REPLACE "|" ";" case "${case}")
  list(GET case 0 definition)
  list(GET case 1 strict)
  list(GET case 2 must_fail)
  list(GET case 3 expected)
  file(REMOVE_RECURSE "${WORK}/out" "${WORK}/staging" "${WORK}/stamp")
  run_step("${WORK}/${definition}" status log)
  if((must_fail AND status EQUAL 0) OR (NOT must_fail AND NOT status EQUAL 0))
    message(FATAL_ERROR "${definition} with LINT_STRICT=${strict}: status ${status}:\n${log}")
  endif()
  if(expected STREQUAL "" AND NOT log STREQUAL "")
    message(FATAL_ERROR "${definition}: the log of a successful run is not empty:\n${log}")
  endif()
  string(FIND "${log}" "${expected}" found)
  if(found EQUAL -1)
    message(FATAL_ERROR "${definition}: '${expected}' missing from the log:\n${log}")
  endif()
endforeach()
