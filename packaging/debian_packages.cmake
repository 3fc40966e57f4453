# Debian packages, one a component: "./dev package" builds them with the preset "package", which installs below /usr.

option(HOLLERWICK_DEBIAN "Install what Debian wants beside each package, and let CPack build Debian packages" OFF)
if(NOT HOLLERWICK_DEBIAN)
    return()
endif()
set(HOLLERWICK_MAINTAINER "Hollerwick maintainers <maintainers@hollerwick.invalid>" CACHE STRING
    "Who answers for the packages, as name <address>")

set(package_of_host hollerwick-host)
set(package_of_plugin hollerwick-plugin)
set(package_of_libraries libkelvariscore1)
set(package_of_development libkelvaris-dev)
set(package_of_documents hollerwick-doc)

# Compresses a file as Debian has it: no time, no name, so that the same input gives the same package.
function(hollerwick_gzip file)
    execute_process(COMMAND gzip --best --no-name --stdout ${file} OUTPUT_FILE ${file}.gz COMMAND_ERROR_IS_FATAL ANY)
endfunction()

string(TIMESTAMP HOLLERWICK_DATE "%a, %d %b %Y %H:%M:%S +0000" UTC)
configure_file(debian/changelog.in changelog @ONLY)
hollerwick_gzip(${CMAKE_CURRENT_BINARY_DIR}/changelog)

foreach(component host plugin libraries development documents)
    install(FILES debian/copyright ${CMAKE_CURRENT_BINARY_DIR}/changelog.gz
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package_of_${component}} COMPONENT ${component})
    string(TOUPPER ${component} key)
    set(CPACK_DEBIAN_${key}_PACKAGE_NAME ${package_of_${component}})
    file(READ debian/${component}.txt description)
    # a line break at its end would end the whole control file
    string(STRIP "${description}" CPACK_DEBIAN_${key}_DESCRIPTION)
endforeach()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME hollerwick)
set(CPACK_PACKAGE_CONTACT ${HOLLERWICK_MAINTAINER})
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL host plugin libraries development documents)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SOURCE hollerwick)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

# What a binary needs is read from it; of our own packages each needs the same version of the others.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY =)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_COMPONENT_HOST_DEPENDS plugin libraries)
set(CPACK_COMPONENT_PLUGIN_DEPENDS libraries)
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS libraries)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "qtbase5-dev (>= 5.15)")
set(CPACK_DEBIAN_HOST_PACKAGE_RECOMMENDS "hollerwick-doc, libqt5svg5, qttranslations5-l10n")

# The loader's cache is dpkg's affair, by a trigger. CPack would write scripts that renew it a second time, for every package with a
# library in it, unless it is told of others: these names have no files behind them, and the packages no scripts.
set(no_scripts ${CMAKE_CURRENT_BINARY_DIR}/none/postinst ${CMAKE_CURRENT_BINARY_DIR}/none/postrm)
set(CPACK_DEBIAN_LIBRARIES_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_SOURCE_DIR}/debian/triggers ${no_scripts})
set(CPACK_DEBIAN_PLUGIN_PACKAGE_CONTROL_EXTRA ${no_scripts})

set(CPACK_DEBIAN_HOST_PACKAGE_SECTION electronics)
set(CPACK_DEBIAN_PLUGIN_PACKAGE_SECTION electronics)
set(CPACK_DEBIAN_LIBRARIES_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DOCUMENTS_PACKAGE_SECTION doc)
set(CPACK_DEBIAN_DOCUMENTS_PACKAGE_ARCHITECTURE all)

include(CPack)
