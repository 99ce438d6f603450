# Installs quillet into a scratch prefix, builds the consumer project against
# it with Ninja and -Werror, and checks the build log and how the build reacts
# to changes of the definition and of the aliases file.
#   cmake -DPROJECT_BUILD_DIR=<dir> -DCONSUMER_DIR=<dir> -DAPPLICATION_DIR=<dir>
#         -DWORK_DIR=<dir> -DNINJA=<exe> [-DCLANGXX=<exe>] [-DSANITIZE=ON]
#         -P run_integration.cmake
cmake_minimum_required(VERSION 3.21)

if(NOT NINJA)
  message("quillet integration test skipped: ninja not found")
  return()
endif()

set(prefix "${WORK_DIR}/prefix")
set(build "${WORK_DIR}/build")
set(definition "${WORK_DIR}/orrery.def")
set(aliases "${WORK_DIR}/source-tree/orrery-src/data/res/alias.cmd")
set(named_aliases "${WORK_DIR}/aliases/standard.cmd")
set(generated nq_command_id.h nq_command_id.cxx nq_command_init.cxx)

# Runs a command that must succeed (or fail, with FAILS first); its merged
# output lands in `output`.
function(run)
  set(expect_failure OFF)
  if(ARGV0 STREQUAL "FAILS")
    set(expect_failure ON)
    list(POP_FRONT ARGN)
  endif()
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE out)
  if(expect_failure AND status EQUAL 0)
    message(FATAL_ERROR "expected to fail but succeeded: ${ARGN}\n${out}")
  elseif(NOT expect_failure AND NOT status EQUAL 0)
    message(FATAL_ERROR "failed (${status}): ${ARGN}\n${out}")
  endif()
  set(output "${out}" PARENT_SCOPE)
endfunction()

function(expect what text regex)
  if(NOT text MATCHES "${regex}")
    message(FATAL_ERROR "${what}: no match for '${regex}' in:\n${text}")
  endif()
endfunction()

function(expect_not what text regex)
  if(text MATCHES "${regex}")
    message(FATAL_ERROR "${what}: unexpected match for '${regex}' in:\n${text}")
  endif()
endfunction()

function(build)
  run(${CMAKE_COMMAND} --build "${build}" ${ARGN})
  set(output "${output}" PARENT_SCOPE)
endfunction()

# Content and modification time (to the microsecond) of each generated file.
function(snapshot variable)
  set(result "")
  foreach(name IN LISTS generated)
    file(READ "${build}/app_quillet/${name}" content)
    file(TIMESTAMP "${build}/app_quillet/${name}" time "%s.%f" UTC)
    string(APPEND result "${name} ${time}\n${content}")
  endforeach()
  set(${variable} "${result}" PARENT_SCOPE)
endfunction()

set(good [[
LOOKUP: Colors
    RED red 1
    GREEN green 2
KEYWORD: paint PAINT_KWD
KEY_DESCRIPTION: Paints the selection.
    OPTION: color PAINT_COLOR NQ_INT_TYPE green
    OPT_LOOKUP: Colors
    OPT_MAXIMUM: GREEN
KEYWORD: quit QUIT_KWD
]])
# What quillet reports on standard error for the limit above, on success too.
set(progress "DEBUG   Found Table Name entry \\(GREEN\\)\\. Value is 2")
set(extended "${good}KEYWORD: zoom ZOOM_KWD\n    OPTION: factor ZOOM_FACTOR NQ_DOUBLE_TYPE 2\n")

file(REMOVE_RECURSE "${WORK_DIR}")
file(WRITE "${definition}" "${good}")
file(WRITE "${aliases}" "alias q quit\n")
file(WRITE "${named_aliases}" "alias p paint\n")

# The package as installed.
run(${CMAKE_COMMAND} --install "${PROJECT_BUILD_DIR}" --prefix "${prefix}")
foreach(file bin/quillet bin/quillet-preview include/nqerr.h include/nqerr_capture.h include/nqtoken.h
             share/man/man1/quillet.1 share/man/man1/quillet-preview.1 share/doc/quillet/definition-language.md
             share/doc/quillet/application-interface.md)
  if(NOT EXISTS "${prefix}/${file}")
    message(FATAL_ERROR "not installed: ${file}")
  endif()
endforeach()
# The language server, where its libraries let it be built.
if(EXISTS "${PROJECT_BUILD_DIR}/src/lsp/quillet-lsp"
   AND NOT (EXISTS "${prefix}/bin/quillet-lsp" AND EXISTS "${prefix}/share/man/man1/quillet-lsp.1"))
  message(FATAL_ERROR "not installed: quillet-lsp or its man page")
endif()
if(EXISTS "${prefix}/include/nqlog_testing.h" OR EXISTS "${prefix}/include/nqerr_internal.h")
  message(FATAL_ERROR "a private header was installed")
endif()
file(GLOB_RECURSE package_files RELATIVE "${prefix}" "${prefix}/*/quillet*.cmake")
expect("package files" "${package_files}" "cmake/quillet/quilletConfig.cmake.*cmake/quillet/quilletConfigVersion.cmake")

# The minimal headers of the installed interface description, as a user
# copies them.
file(READ "${prefix}/share/doc/quillet/application-interface.md" interface)
foreach(header nq_id.h nq_command.h)
  string(FIND "${interface}" "```cpp\n// ${header}\n" start)
  if(start EQUAL -1)
    message(FATAL_ERROR "application-interface.md shows no ${header}")
  endif()
  string(SUBSTRING "${interface}" ${start} -1 code)
  string(FIND "${code}" "\n```\n" end)
  math(EXPR length "${end} - 6")
  string(SUBSTRING "${code}" 7 ${length} code)
  file(WRITE "${WORK_DIR}/minimal/${header}" "${code}")
endforeach()

# The application's strictest flags: the generated sources must not warn.
set(configure -G Ninja "-DCMAKE_MAKE_PROGRAM=${NINJA}" "-DCMAKE_PREFIX_PATH=${prefix}"
    "-DDEFINITION=${definition}" "-DALIASES_ROOT=${WORK_DIR}/source-tree" "-DALIASES=${named_aliases}"
    "-DAPPLICATION_DIR=${APPLICATION_DIR}" "-DMINIMAL_DIR=${WORK_DIR}/minimal")
set(strict "-Wall -Wextra -Werror")
set(flags "")
if(SANITIZE)
  string(APPEND strict " -fsanitize=address,undefined")
  set(flags "-DCMAKE_EXE_LINKER_FLAGS=-fsanitize=address,undefined")
endif()
run(${CMAKE_COMMAND} -S "${CONSUMER_DIR}" -B "${build}" ${configure} "-DCMAKE_CXX_FLAGS=${strict}" ${flags})
build()
expect_not("successful build" "${output}" "${progress}")
run("${build}/app")
expect("first build" "${output}" "keyword \"paint\" id 1.*lookup \"green\" 2\n.*keyword \"quit\" id 2")
run("${build}/uses_libraries")
run("${build}/minimal")
expect("minimal headers" "${output}" "^paint 1\nquit 2\n$")
# Only the generated file that needs it has the warning switched off.
run("${NINJA}" -C "${build}" -t commands app)
expect("compile commands" "${output}" "-Wno-unused-variable [^\n]*nq_command_init\\.cxx")
expect_not("compile commands" "${output}" "-Wno-unused-variable [^\n]*(main|other|nq_command|nq_command_id)\\.c")
if(CLANGXX)
  run(${CMAKE_COMMAND} -S "${CONSUMER_DIR}" -B "${WORK_DIR}/build-clang" ${configure}
      "-DCMAKE_CXX_COMPILER=${CLANGXX}" "-DCMAKE_CXX_FLAGS=-Wall -Wextra -Werror")
  run(${CMAKE_COMMAND} --build "${WORK_DIR}/build-clang" --target app)
endif()

# VERBOSE shows quillet's messages of a successful run.
build(--target verbose)
expect("VERBOSE" "${output}" "${progress}")

# LINT_STRICT on a clean definition: the linter runs and says nothing.
build(--target linted)
expect("LINT_STRICT" "${output}" "Generating the command sources of linted")
expect_not("LINT_STRICT" "${output}" "warning|errors?,")

# The same definition written again: quillet runs, nothing is recompiled, and
# the build is then up to date.
snapshot(before)
file(WRITE "${definition}" "${good}")
build()
expect("unchanged definition" "${output}" "Generating the command sources of app")
expect_not("unchanged definition" "${output}" "Building|Linking")
snapshot(after)
if(NOT before STREQUAL after)
  message(FATAL_ERROR "unchanged outputs were replaced:\n${before}\n---\n${after}")
endif()
run("${NINJA}" -C "${build}" -n)
expect("after an unchanged definition" "${output}" "no work to do")

# A new keyword: the generated sources and what includes them are rebuilt,
# nothing else.
file(WRITE "${definition}" "${extended}")
build()
expect("new keyword" "${output}" "main\\.cpp\\.o")
expect("new keyword" "${output}" "nq_command_id\\.cxx\\.o")
expect("new keyword" "${output}" "nq_command_init\\.cxx\\.o")
expect_not("new keyword" "${output}" "other\\.cpp\\.o|nq_command\\.cpp\\.o|uses_libraries")
file(READ "${build}/app_quillet/nq_command_id.h" header)
expect("new keyword" "${header}" "extern NQ_KeywordID ZOOM_KWD;")
run("${build}/app")
expect("new keyword" "${output}" "keyword \"zoom\" id 3 summary \"\"\n  option double \"factor\" id 2")

# A broken definition fails the build with all of quillet's messages and
# leaves the outputs alone; going back to the last good one recompiles nothing.
snapshot(before)
file(WRITE "${definition}" "${extended}KEYWORD: broken\n")
run(FAILS ${CMAKE_COMMAND} --build "${build}")
string(CONCAT messages
  "\nFATAL The KEYWORD: command defined on line: 12 is not complete\n"
  "FATAL The syntax is: 'KEYWORD: keyword_text keyword_ID' \n"
  "FATAL Error with definition\n")
string(FIND "${output}" "${messages}" at)
if(at EQUAL -1)
  message(FATAL_ERROR "quillet's messages are missing from the build log:\n${output}")
endif()
expect("failed build" "${output}" "\n${progress}\n")
snapshot(after)
if(NOT before STREQUAL after)
  message(FATAL_ERROR "a failed run changed the outputs:\n${before}\n---\n${after}")
endif()
file(WRITE "${definition}" "${extended}")
build()
expect_not("repaired definition" "${output}" "Building|Linking")

# The command reference and its preview site, rewritten when the aliases file
# changes; the topic of an alias that is gone is removed.
build(--target app_reference)
foreach(file reference/Commands.fltoc reference/paint.html reference/quit.html reference/zoom.html
             reference/q.html preview/index.html preview/topics/q.html)
  if(NOT EXISTS "${build}/${file}")
    message(FATAL_ERROR "reference lacks ${file}")
  endif()
endforeach()
file(WRITE "${aliases}" "alias z zoom\n")
build(--target app_reference)
expect("changed aliases" "${output}" "Writing the command reference of app")
expect("changed aliases" "${output}" "Writing the preview of the command reference of app")
if(NOT EXISTS "${build}/reference/z.html" OR EXISTS "${build}/reference/q.html"
   OR NOT EXISTS "${build}/preview/topics/z.html" OR EXISTS "${build}/preview/topics/q.html")
  message(FATAL_ERROR "the reference does not follow the aliases file")
endif()
build(--target app_reference)
expect("unchanged aliases" "${output}" "no work to do")

# An aliases file kept where the application likes; it is staged for quillet
# and its changes are followed like those of the default one.
build(--target named_aliases_reference)
expect_not("named aliases" "${output}" "${progress}")
if(NOT EXISTS "${build}/reference_named/p.html" OR EXISTS "${build}/reference_named/q.html")
  message(FATAL_ERROR "the reference does not hold the aliases of ${named_aliases}")
endif()
file(WRITE "${named_aliases}" "alias z zoom\n")
build(--target named_aliases_reference)
if(NOT EXISTS "${build}/reference_named/z.html" OR EXISTS "${build}/reference_named/p.html")
  message(FATAL_ERROR "the reference does not follow ${named_aliases}")
endif()
build(--target named_aliases_reference)
expect("unchanged named aliases" "${output}" "no work to do")

# No aliases file at all: the reference of the keywords alone.
build(--target no_aliases_reference)
file(GLOB topics RELATIVE "${build}/reference_none" "${build}/reference_none/*")
list(SORT topics)
if(NOT topics STREQUAL "Commands.fltoc;paint.html;quit.html;zoom.html")
  message(FATAL_ERROR "a reference without aliases holds: ${topics}")
endif()
