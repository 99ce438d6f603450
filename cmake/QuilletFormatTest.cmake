# quillet_add_format_test(NAME <name> DEFINITION <file>)
#
# Adds the test <name>, which fails when DEFINITION is not laid out as
# quillet::quillet-format lays it out; its output is the diff that
# `quillet-format -i` would apply. A definition that quillet refuses fails
# too, with its error. A relative path is taken from the current source
# directory.

function(quillet_add_format_test)
  cmake_parse_arguments(PARSE_ARGV 0 arg "" "NAME;DEFINITION" "")
  if(arg_UNPARSED_ARGUMENTS)
    message(FATAL_ERROR "quillet_add_format_test: unknown arguments: ${arg_UNPARSED_ARGUMENTS}")
  endif()
  if(NOT arg_NAME OR NOT arg_DEFINITION)
    message(FATAL_ERROR "quillet_add_format_test: NAME and DEFINITION are required")
  endif()
  get_filename_component(definition "${arg_DEFINITION}" ABSOLUTE BASE_DIR "${CMAKE_CURRENT_SOURCE_DIR}")
  add_test(NAME ${arg_NAME} COMMAND quillet::quillet-format --check --diff "${definition}")
endfunction()
