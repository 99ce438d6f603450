# One build step of quillet_generate(): runs quillet in a staging directory
# and publishes what it wrote.
#
#   cmake -DQUILLET=<exe> -DDEFINITION=<file> -DOUTPUT_DIR=<dir>
#         -DSTAGING_DIR=<dir> -DSTAMP=<file> [-DDEPFILE=<file>] [-DVERBOSE=ON]
#         [-DHTML=ON [-DALIASES_ROOT=<dir> | -DALIASES=<file>]]
#         [-DLINT=<exe> [-DLINT_STRICT=ON]] -P QuilletGenerateStep.cmake
#
# With HTML the step writes the command reference (quillet -html) instead of
# the C++ sources. quillet reads the aliases file from
# $VELLUM_SRC/orrery-src/data/res/alias.cmd and fails without one: VELLUM_SRC
# is ALIASES_ROOT, or else a staging tree holding a copy of ALIASES, or an
# empty aliases file when neither is given. With LINT it first runs
# quillet-lint on the definition (and the aliases file) and fails on its
# errors and on the warnings of a misread file, or with LINT_STRICT on every
# warning. STAMP lists the files published by the last successful run.
cmake_minimum_required(VERSION 3.21)

set(inputs "${DEFINITION}")
set(arguments "")
if(HTML)
  set(arguments -html)
  if(ALIASES_ROOT)
    set(vellum_src "${ALIASES_ROOT}")
    list(APPEND inputs "${ALIASES_ROOT}/orrery-src/data/res/alias.cmd")
  else()
    set(vellum_src "${STAGING_DIR}-vellum-src")
    if(ALIASES)
      list(APPEND inputs "${ALIASES}")
    endif()
  endif()
  set(ENV{VELLUM_SRC} "${vellum_src}")
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

if(HTML AND NOT ALIASES_ROOT)
  set(staged "${vellum_src}/orrery-src/data/res/alias.cmd")
  file(REMOVE_RECURSE "${vellum_src}")
  file(MAKE_DIRECTORY "${vellum_src}/orrery-src/data/res")
  if(NOT ALIASES)
    file(WRITE "${staged}" "")
  elseif(EXISTS "${ALIASES}")
    file(COPY_FILE "${ALIASES}" "${staged}")
  else()
    message(FATAL_ERROR "the aliases file ${ALIASES} does not exist; the files in ${OUTPUT_DIR} are left as they were")
  endif()
endif()

# The linter reports every problem at once, where quillet stops at the first.
# Like quillet's, its report reaches the build log when it fails, or with
# VERBOSE; a successful step prints nothing.
if(LINT)
  set(lint_arguments --quiet --werror-misreading "${DEFINITION}")
  if(LINT_STRICT)
    set(lint_arguments --quiet --werror "${DEFINITION}")
  endif()
  if(HTML)
    list(APPEND lint_arguments "--aliases=${vellum_src}/orrery-src/data/res/alias.cmd")
  endif()
  execute_process(COMMAND "${LINT}" ${lint_arguments}
                  RESULT_VARIABLE lint_status OUTPUT_VARIABLE lint_report ERROR_VARIABLE lint_report)
  if(NOT lint_report STREQUAL "" AND (VERBOSE OR NOT lint_status EQUAL 0))
    string(REGEX REPLACE "\n$" "" lint_report "${lint_report}")
    message("${lint_report}")
  endif()
  if(NOT lint_status EQUAL 0)
    message(FATAL_ERROR "quillet-lint found problems in ${DEFINITION} (status ${lint_status}); the files in ${OUTPUT_DIR} are left as they were")
  endif()
endif()

file(REMOVE_RECURSE "${STAGING_DIR}")
file(MAKE_DIRECTORY "${STAGING_DIR}")
# quillet reports progress on standard error even when all is well (a limit
# given by lookup entry ID, for one): its output reaches the build log
# unchanged when it fails, or with VERBOSE, and stays out of it otherwise.
execute_process(
  COMMAND "${QUILLET}" ${arguments}
  INPUT_FILE "${DEFINITION}"
  WORKING_DIRECTORY "${STAGING_DIR}"
  RESULT_VARIABLE status
  OUTPUT_VARIABLE report
  ERROR_VARIABLE report)
if(NOT report STREQUAL "" AND (VERBOSE OR NOT status EQUAL 0))
  string(REGEX REPLACE "\n$" "" report "${report}")
  message("${report}")
endif()
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
