# What is installed beside the programs.
set(manuals share/man/quenmarctl.1)
set(completions share/bash-completion/quenmarctl)
if(QUENMAR_BUILD_GUI)
  list(APPEND manuals share/man/quenmar.1)
  list(APPEND completions share/bash-completion/quenmar)
  install(FILES share/applications/quenmar.desktop
          DESTINATION "${CMAKE_INSTALL_DATADIR}/applications")
  install(FILES share/metainfo/org.quenmar.Quenmar.metainfo.xml
          DESTINATION "${CMAKE_INSTALL_DATADIR}/metainfo")
  install(DIRECTORY share/icons DESTINATION "${CMAKE_INSTALL_DATADIR}")
endif()
install(FILES ${manuals} DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
install(FILES ${completions} DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions")
install(FILES README.md CHANGELOG.md LICENSE DESTINATION "${CMAKE_INSTALL_DOCDIR}")
install(FILES docs/guide.md DESTINATION "${CMAKE_INSTALL_DOCDIR}/docs")
install(DIRECTORY docs/pictures DESTINATION "${CMAKE_INSTALL_DOCDIR}/docs")
install(FILES examples/spanish.reg DESTINATION "${CMAKE_INSTALL_DOCDIR}/examples")
