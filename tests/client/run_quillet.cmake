# Runs quillet on one definition inside a folder of its own, as a build does:
#   cmake -DQUILLET=<exe> -DDEFINITION=<file> -DOUTPUT_DIR=<dir> -P run_quillet.cmake
file(MAKE_DIRECTORY "${OUTPUT_DIR}")
execute_process(
  COMMAND "${QUILLET}"
  INPUT_FILE "${DEFINITION}"
  WORKING_DIRECTORY "${OUTPUT_DIR}"
  RESULT_VARIABLE status
  ERROR_VARIABLE diagnostics)
# Lookups of limits by entry ID are reported at debug level; only a failure
# is worth showing in the build log.
if(NOT status EQUAL 0)
  message(FATAL_ERROR "quillet failed on ${DEFINITION}: ${status}\n${diagnostics}")
endif()
