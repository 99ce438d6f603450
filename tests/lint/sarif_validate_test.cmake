# Validates quillet-lint's SARIF for every golden case with Microsoft's SARIF
# Multitool, with the definition named by a relative and by an absolute path
# (a file: URI); any error of the validator fails the test. Where the
# Multitool is not installed (npm install -g @microsoft/sarif-multitool) the
# test is skipped, saying so.
#   cmake -DLINT=<exe> -DCASES=<dir> -DWORK=<dir> -P sarif_validate_test.cmake
cmake_minimum_required(VERSION 3.25)

find_program(MULTITOOL NAMES Sarif.Multitool sarif-multitool)
if(NOT MULTITOOL)
  message("SARIF validation skipped: the SARIF Multitool is not installed (npm install -g @microsoft/sarif-multitool)")
  return()
endif()

file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}")
file(GLOB definitions "${CASES}/*/*.def")
set(logs "")
foreach(definition IN LISTS definitions)
  get_filename_component(case_dir "${definition}" DIRECTORY)
  get_filename_component(case "${case_dir}" NAME)
  get_filename_component(file "${definition}" NAME)
  set(aliases "")
  if(EXISTS "${case_dir}/aliases.cmd")
    set(aliases --aliases=aliases.cmd)
  endif()
  foreach(form relative absolute)
    set(path "${file}")
    if(form STREQUAL "absolute")
      set(path "${definition}")
    endif()
    execute_process(COMMAND "${LINT}" --format=sarif ${aliases} "${path}"
                    WORKING_DIRECTORY "${case_dir}"
                    OUTPUT_FILE "${WORK}/${case}-${form}.sarif")
    list(APPEND logs "${WORK}/${case}-${form}.sarif")
  endforeach()
endforeach()

execute_process(COMMAND "${MULTITOOL}" validate ${logs} --output "${WORK}/validation.sarif" --log ForceOverwrite
                RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE out)
# The Multitool ends with status 0 even when it reports errors.
if(NOT status EQUAL 0 OR out MATCHES " error [A-Z]+[0-9]+" OR NOT out MATCHES "Analysis completed successfully")
  message(FATAL_ERROR "the SARIF Multitool rejects quillet-lint's SARIF (status ${status}):\n${out}")
endif()
