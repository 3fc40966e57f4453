# Documents as they stand in the tree, and the samples that they build on.

install(FILES ${PROJECT_SOURCE_DIR}/README.md ${PROJECT_SOURCE_DIR}/CHANGELOG.md ${PROJECT_SOURCE_DIR}/CONTRIBUTING.md
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/hollerwick COMPONENT documents)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/hollerwick COMPONENT documents
    PATTERN "*.py" EXCLUDE)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/samples DESTINATION ${shared_directory} COMPONENT documents)
