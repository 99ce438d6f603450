# quillet_add_compat_test(NAME <name> BASELINE <old.def> DEFINITION <new.def>
#                         [ALIASES_BASELINE <old aliases> ALIASES <new aliases>])
#
# Adds the test <name>, which compares DEFINITION with BASELINE (the
# definition that users' command scripts were written for) with
# quillet::quillet-diff and fails when a change would make such a script be
# refused: a breaking change. Its output lists every change. With the two
# aliases files, removed aliases count as well. Relative paths are taken from
# the current source directory.

function(quillet_add_compat_test)
  cmake_parse_arguments(PARSE_ARGV 0 arg "" "NAME;BASELINE;DEFINITION;ALIASES_BASELINE;ALIASES" "")
  if(arg_UNPARSED_ARGUMENTS)
    message(FATAL_ERROR "quillet_add_compat_test: unknown arguments: ${arg_UNPARSED_ARGUMENTS}")
  endif()
  if(NOT arg_NAME OR NOT arg_BASELINE OR NOT arg_DEFINITION)
    message(FATAL_ERROR "quillet_add_compat_test: NAME, BASELINE and DEFINITION are required")
  endif()
  if(arg_ALIASES_BASELINE AND NOT arg_ALIASES OR arg_ALIASES AND NOT arg_ALIASES_BASELINE)
    message(FATAL_ERROR "quillet_add_compat_test: ALIASES_BASELINE and ALIASES go together")
  endif()

  set(files "")
  foreach(file IN ITEMS "${arg_BASELINE}" "${arg_DEFINITION}" "${arg_ALIASES_BASELINE}" "${arg_ALIASES}")
    if(file)
      get_filename_component(file "${file}" ABSOLUTE BASE_DIR "${CMAKE_CURRENT_SOURCE_DIR}")
    endif()
    list(APPEND files "${file}")
  endforeach()
  list(GET files 0 baseline)
  list(GET files 1 definition)
  set(aliases "")
  if(arg_ALIASES)
    list(GET files 2 aliases_baseline)
    list(GET files 3 aliases_new)
    set(aliases "--aliases-old=${aliases_baseline}" "--aliases-new=${aliases_new}")
  endif()
  add_test(NAME ${arg_NAME}
           COMMAND quillet::quillet-diff --fail-on=breaking ${aliases} "${baseline}" "${definition}")
endfunction()
