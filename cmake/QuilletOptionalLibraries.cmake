# quillet itself needs only a compiler and CMake. Its companions and the test
# suite use libraries that a fresh machine may lack: a part whose libraries are
# missing is left out with one configure line naming the Debian packages, and
# its tests are registered as skipped with that reason, so nothing vanishes
# silently. QUILLET_REQUIRE_ALL turns any such gap into a configure error.
option(QUILLET_REQUIRE_ALL "Fail at configure when a library of a companion or of the tests is missing" OFF)

set(QUILLET_DEBIAN_PACKAGE_CLI11 libcli11-dev)
set(QUILLET_DEBIAN_PACKAGE_nlohmann_json nlohmann-json3-dev)
set(QUILLET_DEBIAN_PACKAGE_pugixml libpugixml-dev)
set(QUILLET_DEBIAN_PACKAGE_GTest libgtest-dev)
set(QUILLET_MINIMUM_VERSION_nlohmann_json 3)

# quillet_find_libraries(<part> <found-var> <package>...): finds each package
# (quietly) and sets <found-var> to TRUE when all are there. Otherwise reports
# the part as left out and records why for quillet_skipped_test().
function(quillet_find_libraries part found_var)
  set(missing "")
  set(debian "")
  foreach(package IN LISTS ARGN)
    find_package(${package} ${QUILLET_MINIMUM_VERSION_${package}} QUIET)
    if(NOT ${package}_FOUND)
      list(APPEND missing ${package})
      list(APPEND debian ${QUILLET_DEBIAN_PACKAGE_${package}})
    endif()
  endforeach()
  if(NOT missing)
    set(${found_var} TRUE PARENT_SCOPE)
    return()
  endif()
  list(JOIN missing " and " missing_text)
  list(JOIN debian " " debian_text)
  set(reason "${missing_text} not found (Debian: ${debian_text})")
  message(STATUS "${part}: not built, ${reason}")
  set_property(GLOBAL APPEND PROPERTY QUILLET_MISSING_PACKAGES ${debian})
  set_property(GLOBAL PROPERTY QUILLET_LEFT_OUT_${part} "${reason}")
  set(${found_var} FALSE PARENT_SCOPE)
endfunction()

# quillet_skipped_test(<part> [<reason>]): one ctest test that stands for
# <part>'s tests and is reported as skipped, its name carrying the reason
# (the left-out companion's, when none is given), since ctest's summary
# lists the names of skipped tests.
function(quillet_skipped_test part)
  set(reason "${ARGN}")
  if(NOT reason)
    get_property(reason GLOBAL PROPERTY QUILLET_LEFT_OUT_${part})
    set(reason "not built, ${reason}")
  endif()
  set(name "${part} skipped: ${reason}")
  add_test(NAME "${name}" COMMAND ${CMAKE_COMMAND} -E echo "${name}")
  set_tests_properties("${name}" PROPERTIES SKIP_REGULAR_EXPRESSION " skipped: ")
endfunction()

# Called once at the end of the top-level list file.
function(quillet_check_required_libraries)
  get_property(missing GLOBAL PROPERTY QUILLET_MISSING_PACKAGES)
  if(QUILLET_REQUIRE_ALL AND missing)
    list(REMOVE_DUPLICATES missing)
    list(JOIN missing " " missing_text)
    message(FATAL_ERROR "QUILLET_REQUIRE_ALL is on and libraries are missing; install them with:\n"
                        "  apt-get install ${missing_text}")
  endif()
endfunction()
