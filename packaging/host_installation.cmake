# The host's libraries, the program and what a desktop knows of it, and what others build against.

set(config_directory ${CMAKE_INSTALL_LIBDIR}/cmake/Kelvaris)
set(application org.hollerwick.hollerwick)

foreach(library KelvarisCore KelvarisQtCore KelvarisSupport)
    hollerwick_install_rpath(${library} .)
endforeach()
set_target_properties(KelvarisCore PROPERTIES EXPORT_NAME Core)
set_target_properties(KelvarisQtCore PROPERTIES EXPORT_NAME QtCore)
set_target_properties(KelvarisSupport PROPERTIES EXPORT_NAME Support)
install(TARGETS kelvaris_contract KelvarisCore KelvarisQtCore KelvarisSupport EXPORT KelvarisTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT libraries NAMELINK_COMPONENT development)

install(DIRECTORY ${PROJECT_SOURCE_DIR}/core/kelvaris DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development
    FILES_MATCHING PATTERN "*.h")
install(EXPORT KelvarisTargets NAMESPACE Kelvaris:: DESTINATION ${config_directory} COMPONENT development)
include(CMakePackageConfigHelpers)
configure_package_config_file(KelvarisConfig.cmake.in KelvarisConfig.cmake INSTALL_DESTINATION ${config_directory})
write_basic_package_version_file(KelvarisConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/KelvarisConfig.cmake ${CMAKE_CURRENT_BINARY_DIR}/KelvarisConfigVersion.cmake
    DESTINATION ${config_directory} COMPONENT development)

file(RELATIVE_PATH libraries_from_program /${CMAKE_INSTALL_BINDIR} /${CMAKE_INSTALL_LIBDIR})
hollerwick_install_rpath(hollerwick-host ${libraries_from_program})
install(TARGETS hollerwick-host RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT host)
# The program itself, and what a double click on a barrel and on another bundle starts.
install(FILES desktop/${application}.desktop desktop/${application}.barrel.desktop desktop/${application}.bundle.desktop
    DESTINATION ${CMAKE_INSTALL_DATADIR}/applications COMPONENT host)
install(FILES desktop/${application}.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo COMPONENT host)
install(FILES desktop/${application}.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages COMPONENT host)
install(DIRECTORY desktop/icons/ DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable COMPONENT host
    FILES_MATCHING PATTERN "*.svg")
