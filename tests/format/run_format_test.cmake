# Installs quillet into a scratch prefix and runs the tests that the consumer
# project adds with quillet_add_format_test(): the formatted definition
# passes, the other fails and shows the change.
#   cmake -DPROJECT_BUILD_DIR=<dir> -DCONSUMER_DIR=<dir> -DWORK_DIR=<dir> -P run_format_test.cmake
cmake_minimum_required(VERSION 3.21)

include(${CMAKE_CURRENT_LIST_DIR}/../support/scratch_install.cmake)

run(0 ${CMAKE_COMMAND} --install "${PROJECT_BUILD_DIR}" --prefix "${prefix}")
foreach(file bin/quillet-format share/man/man1/quillet-format.1)
  if(NOT EXISTS "${prefix}/${file}")
    message(FATAL_ERROR "not installed: ${file}")
  endif()
endforeach()
run(0 ${CMAKE_COMMAND} -S "${CONSUMER_DIR}" -B "${build}" "-DCMAKE_PREFIX_PATH=${prefix}")

run(0 ${CMAKE_COMMAND} -E chdir "${build}" ${CMAKE_CTEST_COMMAND} -R "^formatted$")
run(8 ${CMAKE_COMMAND} -E chdir "${build}" ${CMAKE_CTEST_COMMAND} -R "^unformatted$" --output-on-failure)
if(NOT output MATCHES "-OPTION: size PAINT_SIZE NQ_INT_TYPE 1\n\\+    OPTION: size PAINT_SIZE NQ_INT_TYPE 1")
  message(FATAL_ERROR "unformatted: the diff is not shown in:\n${output}")
endif()
