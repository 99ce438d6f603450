# Installs the package files that let other builds use quillet through
# find_package(quillet): the exported targets, the configuration and version
# files, quillet_generate() with its build step, quillet_add_compat_test(),
# quillet_add_format_test(), the man pages, the guide for definition authors
# and the description of the classes the application provides. The targets
# and headers are installed where they are defined.
include(CMakePackageConfigHelpers)

set(QUILLET_CMAKE_INSTALL_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/quillet)

install(EXPORT quilletTargets NAMESPACE quillet:: DESTINATION ${QUILLET_CMAKE_INSTALL_DIR})
configure_package_config_file(
  ${CMAKE_CURRENT_LIST_DIR}/quilletConfig.cmake.in
  ${PROJECT_BINARY_DIR}/quilletConfig.cmake
  INSTALL_DESTINATION ${QUILLET_CMAKE_INSTALL_DIR})
write_basic_package_version_file(
  ${PROJECT_BINARY_DIR}/quilletConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/quilletConfig.cmake
  ${PROJECT_BINARY_DIR}/quilletConfigVersion.cmake
  ${CMAKE_CURRENT_LIST_DIR}/QuilletGenerate.cmake
  ${CMAKE_CURRENT_LIST_DIR}/QuilletGenerateStep.cmake
  ${CMAKE_CURRENT_LIST_DIR}/QuilletCompatTest.cmake
  ${CMAKE_CURRENT_LIST_DIR}/QuilletFormatTest.cmake
  DESTINATION ${QUILLET_CMAKE_INSTALL_DIR})
# A companion's man page goes with it, where it is built.
foreach(tool quillet quillet-preview quillet-diff quillet-lint quillet-format quillet-lsp)
  if(TARGET ${tool})
    install(FILES ${PROJECT_SOURCE_DIR}/docs/${tool}.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  endif()
endforeach()
install(FILES ${PROJECT_SOURCE_DIR}/docs/definition-language.md ${PROJECT_SOURCE_DIR}/docs/application-interface.md
        DESTINATION ${CMAKE_INSTALL_DOCDIR})
