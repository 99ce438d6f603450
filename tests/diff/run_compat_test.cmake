# Installs quillet into a scratch prefix and runs the tests that the consumer
# project adds with quillet_add_compat_test(): the compatible definition
# passes, a removed option and a removed alias fail, naming the change.
#   cmake -DPROJECT_BUILD_DIR=<dir> -DCONSUMER_DIR=<dir> -DWORK_DIR=<dir> -P run_compat_test.cmake
cmake_minimum_required(VERSION 3.21)

include(${CMAKE_CURRENT_LIST_DIR}/../support/scratch_install.cmake)

function(expect what text regex)
  if(NOT text MATCHES "${regex}")
    message(FATAL_ERROR "${what}: no match for '${regex}' in:\n${text}")
  endif()
endfunction()

run(0 ${CMAKE_COMMAND} --install "${PROJECT_BUILD_DIR}" --prefix "${prefix}")
foreach(file bin/quillet-diff share/man/man1/quillet-diff.1)
  if(NOT EXISTS "${prefix}/${file}")
    message(FATAL_ERROR "not installed: ${file}")
  endif()
endforeach()
file(GLOB_RECURSE helper "${prefix}/*/QuilletCompatTest.cmake")
if(NOT helper)
  message(FATAL_ERROR "not installed: QuilletCompatTest.cmake")
endif()
run(0 ${CMAKE_COMMAND} -S "${CONSUMER_DIR}" -B "${build}" "-DCMAKE_PREFIX_PATH=${prefix}")

run(0 ${CMAKE_COMMAND} -E chdir "${build}" ${CMAKE_CTEST_COMMAND} -R "^compatible$" -V)
expect("compatible" "${output}" "compatible OPTION_ADDED paint.color.*compatible ALIAS_ADDED z")
run(8 ${CMAKE_COMMAND} -E chdir "${build}" ${CMAKE_CTEST_COMMAND} -R "^breaking$" --output-on-failure)
expect("breaking" "${output}" "breaking OPTION_REMOVED paint.size \\([^)]*released.def:2\\)")
run(8 ${CMAKE_COMMAND} -E chdir "${build}" ${CMAKE_CTEST_COMMAND} -R "^alias_removed$" --output-on-failure)
expect("alias_removed" "${output}" "breaking ALIAS_REMOVED q: quit")
