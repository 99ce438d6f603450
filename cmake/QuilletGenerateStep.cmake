# One build step of quillet_generate(): runs quillet in a staging directory
# and publishes what it wrote.
#
#   cmake -DQUILLET=<exe> -DDEFINITION=<file> -DOUTPUT_DIR=<dir>
#         -DSTAGING_DIR=<dir> -DSTAMP=<file> [-DDEPFILE=<file>]
#         [-DALIASES_ROOT=<dir>] [-DLINT=<exe>] -P QuilletGenerateStep.cmake
#
# With ALIASES_ROOT the step writes the command reference (quillet -html, with
# VELLUM_SRC set to ALIASES_ROOT) instead of the C++ sources. With LINT it
# first runs quillet-lint on the definition (and the aliases file). STAMP
# lists the files published by the last successful run.
cmake_minimum_required(VERSION 3.21)

set(inputs "${DEFINITION}")
set(arguments "")
if(DEFINED ALIASES_ROOT)
  set(arguments -html)
  set(ENV{VELLUM_SRC} "${ALIASES_ROOT}")
  list(APPEND inputs "${ALIASES_ROOT}/orrery-src/data/res/alias.cmd")
endif()

# Written before the run, so that a failed run still names its inputs.
if(DEPFILE)
  set(escaped "")
  foreach(path IN LISTS STAMP inputs)
    string(REPLACE " " "\\ " path "${path}")
    string(REPLACE "#" "\\#" path "${path}")
    string(REPLACE "$" "$$" path "${path}")
    list(APPEND escaped "${path}")
  endforeach()
  list(POP_FRONT escaped target)
  list(JOIN escaped " " prerequisites)
  file(WRITE "${DEPFILE}" "${target}: ${prerequisites}\n")
endif()

# The linter reports every problem at once, where quillet stops at the first.
if(LINT)
  set(lint_arguments "${DEFINITION}")
  if(DEFINED ALIASES_ROOT)
    list(APPEND lint_arguments "--aliases=${ALIASES_ROOT}/orrery-src/data/res/alias.cmd")
  endif()
  execute_process(COMMAND "${LINT}" ${lint_arguments} RESULT_VARIABLE lint_status)
  if(NOT lint_status EQUAL 0)
    message(FATAL_ERROR "quillet-lint found problems in ${DEFINITION} (status ${lint_status}); the files in ${OUTPUT_DIR} are left as they were")
  endif()
endif()

file(REMOVE_RECURSE "${STAGING_DIR}")
file(MAKE_DIRECTORY "${STAGING_DIR}")
# No output options: quillet's own messages reach the build log unchanged.
execute_process(
  COMMAND "${QUILLET}" ${arguments}
  INPUT_FILE "${DEFINITION}"
  WORKING_DIRECTORY "${STAGING_DIR}"
  RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "quillet failed on ${DEFINITION} (status ${status}); the files in ${OUTPUT_DIR} are left as they were")
endif()

# Only changed files are replaced, each by one rename, so that an unchanged
# file keeps its timestamp and a reader never sees a half-written one.
file(GLOB produced LIST_DIRECTORIES false RELATIVE "${STAGING_DIR}" "${STAGING_DIR}/*")
list(SORT produced)
file(MAKE_DIRECTORY "${OUTPUT_DIR}")
foreach(name IN LISTS produced)
  set(published "${OUTPUT_DIR}/${name}")
  file(SHA256 "${STAGING_DIR}/${name}" new_hash)
  set(old_hash "")
  if(EXISTS "${published}")
    file(SHA256 "${published}" old_hash)
  endif()
  if(NOT new_hash STREQUAL old_hash)
    file(COPY_FILE "${STAGING_DIR}/${name}" "${published}.quillet-new")
    file(RENAME "${published}.quillet-new" "${published}")
  endif()
endforeach()

# A file of the previous run that this run no longer writes (the topic of a
# removed keyword) would be stale.
if(EXISTS "${STAMP}")
  file(STRINGS "${STAMP}" previous)
  if(produced)
    list(REMOVE_ITEM previous ${produced})
  endif()
  foreach(name IN LISTS previous)
    file(REMOVE "${OUTPUT_DIR}/${name}")
  endforeach()
endif()
list(JOIN produced "\n" listing)
file(WRITE "${STAMP}" "${listing}\n")
