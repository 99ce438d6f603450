# quillet_generate(<target> DEFINITION <file> [OUTPUT_DIR <dir>]
#                  [HTML_DIR <dir> ALIASES_ROOT <dir>] [LINT])
#
# Generates nq_command_id.h, nq_command_id.cxx and nq_command_init.cxx from
# the definition with quillet::quillet, compiles the two sources into
# <target> and puts OUTPUT_DIR (default: <target>_quillet in the current
# binary directory) on its include path. With HTML_DIR it also adds the
# target <target>_reference, which writes the command reference into HTML_DIR,
# reading the aliases file below ALIASES_ROOT.
#
# quillet runs in a staging directory; an output is replaced (by rename) only
# when its content changed, so that regenerating an unchanged header does not
# rebuild everything that includes it. A failed run keeps the previous outputs.
#
# With LINT, quillet::quillet-lint checks the definition (and the aliases
# file) before each run, so that a failing build shows every problem at once.

# Policies are recorded with the function: depfiles relative to the current
# binary directory (CMP0116) and GENERATED visible to all directories (CMP0118).
cmake_policy(PUSH)
cmake_policy(VERSION 3.21...3.25)

function(quillet_generate target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "LINT" "DEFINITION;OUTPUT_DIR;HTML_DIR;ALIASES_ROOT" "")
  if(arg_UNPARSED_ARGUMENTS)
    message(FATAL_ERROR "quillet_generate: unknown arguments: ${arg_UNPARSED_ARGUMENTS}")
  endif()
  if(NOT TARGET ${target})
    message(FATAL_ERROR "quillet_generate: '${target}' is not a target")
  endif()
  if(NOT arg_DEFINITION)
    message(FATAL_ERROR "quillet_generate: DEFINITION is required")
  endif()
  if(arg_HTML_DIR AND NOT arg_ALIASES_ROOT OR arg_ALIASES_ROOT AND NOT arg_HTML_DIR)
    message(FATAL_ERROR "quillet_generate: HTML_DIR and ALIASES_ROOT go together")
  endif()
  if(NOT arg_OUTPUT_DIR)
    set(arg_OUTPUT_DIR ${target}_quillet)
  endif()

  get_filename_component(definition "${arg_DEFINITION}" ABSOLUTE BASE_DIR "${CMAKE_CURRENT_SOURCE_DIR}")
  get_filename_component(output_dir "${arg_OUTPUT_DIR}" ABSOLUTE BASE_DIR "${CMAKE_CURRENT_BINARY_DIR}")
  set(work_dir "${CMAKE_CURRENT_BINARY_DIR}/CMakeFiles/${target}_quillet.dir")
  set(step "${CMAKE_CURRENT_FUNCTION_LIST_DIR}/QuilletGenerateStep.cmake")
  set(quillet "$<TARGET_FILE:quillet::quillet>")
  set(lint_args "")
  set(lint "")
  if(arg_LINT)
    set(lint "$<TARGET_FILE:quillet::quillet-lint>")
    set(lint_args "-DLINT=${lint}")
  endif()
  # Ninja reads the depfile; other generators get the same inputs as plain
  # dependencies.
  set(use_depfile OFF)
  if(CMAKE_GENERATOR MATCHES "Ninja")
    set(use_depfile ON)
  endif()

  set(sources "${output_dir}/nq_command_id.h" "${output_dir}/nq_command_id.cxx" "${output_dir}/nq_command_init.cxx")
  set(stamp "${work_dir}/sources.stamp")
  set(depfile "")
  set(depfile_args "")
  if(use_depfile)
    set(depfile "${work_dir}/sources.d")
    set(depfile_args DEPFILE "${depfile}")
  endif()
  # The outputs are byproducts of a stamp-producing step: Ninja then checks
  # their timestamps again after the step (restat) and rebuilds only the
  # dependants of files that were actually replaced.
  add_custom_command(
    OUTPUT "${stamp}"
    BYPRODUCTS ${sources}
    COMMAND "${CMAKE_COMMAND}" "-DQUILLET=${quillet}" "-DDEFINITION=${definition}"
            "-DOUTPUT_DIR=${output_dir}" "-DSTAGING_DIR=${work_dir}/sources"
            "-DSTAMP=${stamp}" "-DDEPFILE=${depfile}" ${lint_args}
            -P "${step}"
    DEPENDS "${definition}" "${quillet}" ${lint} "${step}"
    ${depfile_args}
    COMMENT "Generating the command sources of ${target} from ${arg_DEFINITION}"
    VERBATIM)
  target_sources(${target} PRIVATE ${sources} "${stamp}")
  target_include_directories(${target} PRIVATE "${output_dir}")

  if(NOT arg_HTML_DIR)
    return()
  endif()
  get_filename_component(html_dir "${arg_HTML_DIR}" ABSOLUTE BASE_DIR "${CMAKE_CURRENT_BINARY_DIR}")
  get_filename_component(aliases_root "${arg_ALIASES_ROOT}" ABSOLUTE BASE_DIR "${CMAKE_CURRENT_SOURCE_DIR}")
  set(aliases "${aliases_root}/orrery-src/data/res/alias.cmd")
  set(stamp "${work_dir}/reference.stamp")
  if(use_depfile)
    set(depfile "${work_dir}/reference.d")
    set(depfile_args DEPFILE "${depfile}")
  else()
    set(depfile_args DEPENDS "${aliases}")
  endif()
  add_custom_command(
    OUTPUT "${stamp}"
    COMMAND "${CMAKE_COMMAND}" "-DQUILLET=${quillet}" "-DDEFINITION=${definition}"
            "-DOUTPUT_DIR=${html_dir}" "-DSTAGING_DIR=${work_dir}/reference"
            "-DSTAMP=${stamp}" "-DDEPFILE=${depfile}"
            "-DALIASES_ROOT=${aliases_root}" ${lint_args} -P "${step}"
    DEPENDS "${definition}" "${quillet}" ${lint} "${step}"
    ${depfile_args}
    COMMENT "Writing the command reference of ${target} into ${html_dir}"
    VERBATIM)
  add_custom_target(${target}_reference DEPENDS "${stamp}")
endfunction()

cmake_policy(POP)
