# quillet_generate(<target> DEFINITION <file> [OUTPUT_DIR <dir>] [VERBOSE] [LINT | LINT_STRICT]
#                  [HTML_DIR <dir> [ALIASES <file> | ALIASES_ROOT <dir>] [PREVIEW_DIR <dir>]])
#
# Generates nq_command_id.h, nq_command_id.cxx and nq_command_init.cxx from
# the definition with quillet::quillet, compiles the two sources into
# <target> and puts OUTPUT_DIR (default: <target>_quillet in the current
# binary directory) on its include path. With HTML_DIR it also adds the
# target <target>_reference, which writes the command reference into HTML_DIR
# with the aliases of the file ALIASES, of the file below ALIASES_ROOT where
# quillet looks by default (orrery-src/data/res/alias.cmd), or with none;
# with PREVIEW_DIR that target also writes the reference's preview site
# (quillet::quillet-preview) there. quillet's messages appear in the build
# log when it fails, or always with VERBOSE.
#
# quillet runs in a staging directory; an output is replaced (by rename) only
# when its content changed, so that regenerating an unchanged header does not
# rebuild everything that includes it. A failed run keeps the previous outputs.
#
# With LINT, quillet::quillet-lint checks the definition (and the aliases
# file) before each run, so that a failing build shows every problem at once;
# the build fails on its errors and on the warnings that mean quillet reads
# the file otherwise than it looks (a line too long, Windows line ends, a
# misspelt directive, dropped quotes). LINT_STRICT fails it on every warning.

# Policies are recorded with the function: depfiles relative to the current
# binary directory (CMP0116) and GENERATED visible to all directories (CMP0118).
cmake_policy(PUSH)
cmake_policy(VERSION 3.21...3.25)

function(quillet_generate target)
  set(options VERBOSE LINT LINT_STRICT)
  set(one_value_keywords DEFINITION OUTPUT_DIR HTML_DIR ALIASES ALIASES_ROOT PREVIEW_DIR)
  cmake_parse_arguments(PARSE_ARGV 1 arg "${options}" "${one_value_keywords}" "")
  if(arg_UNPARSED_ARGUMENTS)
    message(FATAL_ERROR "quillet_generate: unknown arguments: ${arg_UNPARSED_ARGUMENTS}")
  endif()
  if(NOT TARGET ${target})
    message(FATAL_ERROR "quillet_generate: '${target}' is not a target")
  endif()
  if(NOT arg_DEFINITION)
    message(FATAL_ERROR "quillet_generate: DEFINITION is required")
  endif()
  if((arg_ALIASES OR arg_ALIASES_ROOT) AND NOT arg_HTML_DIR)
    message(FATAL_ERROR "quillet_generate: ALIASES and ALIASES_ROOT need HTML_DIR")
  endif()
  if(arg_ALIASES AND arg_ALIASES_ROOT)
    message(FATAL_ERROR "quillet_generate: give either ALIASES or ALIASES_ROOT")
  endif()
  if(arg_PREVIEW_DIR AND NOT arg_HTML_DIR)
    message(FATAL_ERROR "quillet_generate: PREVIEW_DIR needs HTML_DIR")
  endif()
  if(NOT arg_OUTPUT_DIR)
    set(arg_OUTPUT_DIR ${target}_quillet)
  endif()

  get_filename_component(definition "${arg_DEFINITION}" ABSOLUTE BASE_DIR "${CMAKE_CURRENT_SOURCE_DIR}")
  get_filename_component(output_dir "${arg_OUTPUT_DIR}" ABSOLUTE BASE_DIR "${CMAKE_CURRENT_BINARY_DIR}")
  set(work_dir "${CMAKE_CURRENT_BINARY_DIR}/CMakeFiles/${target}_quillet.dir")
  set(step "${CMAKE_CURRENT_FUNCTION_LIST_DIR}/QuilletGenerateStep.cmake")
  set(quillet "$<TARGET_FILE:quillet::quillet>")
  # What every run of the step needs; -P and the script come last.
  set(step_command "${CMAKE_COMMAND}" "-DQUILLET=${quillet}" "-DDEFINITION=${definition}"
                   "-DVERBOSE=${arg_VERBOSE}")
  set(lint "")
  if(arg_LINT OR arg_LINT_STRICT)
    set(lint "$<TARGET_FILE:quillet::quillet-lint>")
    list(APPEND step_command "-DLINT=${lint}" "-DLINT_STRICT=${arg_LINT_STRICT}")
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
    COMMAND ${step_command}
            "-DOUTPUT_DIR=${output_dir}" "-DSTAGING_DIR=${work_dir}/sources"
            "-DSTAMP=${stamp}" "-DDEPFILE=${depfile}"
            -P "${step}"
    DEPENDS "${definition}" "${quillet}" ${lint} "${step}"
    ${depfile_args}
    COMMENT "Generating the command sources of ${target} from ${arg_DEFINITION}"
    VERBATIM)
  target_sources(${target} PRIVATE ${sources} "${stamp}")
  target_include_directories(${target} PRIVATE "${output_dir}")
  # A routine whose keywords have no options declares current_option and never
  # uses it. Only this file is marked, so the target's own flags (-Werror
  # included) apply unchanged everywhere else.
  set_property(SOURCE "${output_dir}/nq_command_init.cxx" TARGET_DIRECTORY ${target}
               APPEND PROPERTY COMPILE_OPTIONS
               "$<$<COMPILE_LANG_AND_ID:CXX,GNU,Clang,AppleClang>:-Wno-unused-variable>"
               "$<$<COMPILE_LANG_AND_ID:CXX,MSVC>:/wd4101>")

  if(NOT arg_HTML_DIR)
    return()
  endif()
  get_filename_component(html_dir "${arg_HTML_DIR}" ABSOLUTE BASE_DIR "${CMAKE_CURRENT_BINARY_DIR}")
  # quillet reads the aliases only from below VELLUM_SRC; the step stages
  # ALIASES (or an empty file) there, ALIASES_ROOT is used as it is.
  set(aliases "")
  set(aliases_arg "")
  if(arg_ALIASES_ROOT)
    get_filename_component(aliases_root "${arg_ALIASES_ROOT}" ABSOLUTE BASE_DIR "${CMAKE_CURRENT_SOURCE_DIR}")
    set(aliases "${aliases_root}/orrery-src/data/res/alias.cmd")
    set(aliases_arg "-DALIASES_ROOT=${aliases_root}")
  elseif(arg_ALIASES)
    get_filename_component(aliases "${arg_ALIASES}" ABSOLUTE BASE_DIR "${CMAKE_CURRENT_SOURCE_DIR}")
    set(aliases_arg "-DALIASES=${aliases}")
  endif()
  set(stamp "${work_dir}/reference.stamp")
  if(use_depfile)
    set(depfile "${work_dir}/reference.d")
    set(depfile_args DEPFILE "${depfile}")
  else()
    set(depfile_args DEPENDS ${aliases})
  endif()
  add_custom_command(
    OUTPUT "${stamp}"
    COMMAND ${step_command}
            "-DOUTPUT_DIR=${html_dir}" "-DSTAGING_DIR=${work_dir}/reference"
            "-DSTAMP=${stamp}" "-DDEPFILE=${depfile}"
            -DHTML=ON ${aliases_arg} -P "${step}"
    DEPENDS "${definition}" "${quillet}" ${lint} "${step}"
    ${depfile_args}
    COMMENT "Writing the command reference of ${target} into ${html_dir}"
    VERBATIM)

  # The preview site, written again whenever the reference is.
  set(preview_stamp "")
  if(arg_PREVIEW_DIR)
    get_filename_component(preview_dir "${arg_PREVIEW_DIR}" ABSOLUTE BASE_DIR "${CMAKE_CURRENT_BINARY_DIR}")
    set(preview "$<TARGET_FILE:quillet::quillet-preview>")
    set(preview_stamp "${work_dir}/preview.stamp")
    add_custom_command(
      OUTPUT "${preview_stamp}"
      COMMAND "${preview}" "${html_dir}" "${preview_dir}"
      COMMAND "${CMAKE_COMMAND}" -E touch "${preview_stamp}"
      DEPENDS "${stamp}" "${preview}"
      COMMENT "Writing the preview of the command reference of ${target} into ${preview_dir}"
      VERBATIM)
  endif()
  add_custom_target(${target}_reference DEPENDS "${stamp}" ${preview_stamp})
endfunction()

cmake_policy(POP)
