# Run by CPack on the installed files, before it packs them: what Debian wants otherwise than
# "cmake --install" leaves it.
if(NOT CPACK_GENERATOR STREQUAL "DEB")
  return()
endif()
set(share "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr/share")
set(documents "${share}/doc/quenmar")
set(debian "${CMAKE_CURRENT_LIST_DIR}/../packaging/debian")

file(STRINGS "${debian}/changelog" latest LIMIT_COUNT 1)
if(NOT latest MATCHES "^quenmar \\(${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}\\)")
  message(FATAL_ERROR "packaging/debian/changelog begins with another version: ${latest}")
endif()

file(REMOVE "${documents}/LICENSE")  # "copyright" holds it
configure_file("${debian}/copyright" "${documents}/copyright" COPYONLY)
file(RENAME "${documents}/CHANGELOG.md" "${documents}/changelog")
configure_file("${debian}/changelog" "${documents}/changelog.Debian" COPYONLY)
file(GLOB compressed "${share}/man/man1/*" "${documents}/changelog*")
execute_process(COMMAND gzip -9 -n -f ${compressed} COMMAND_ERROR_IS_FATAL ANY)
