# quenmar_windows_program(TARGET description): gives a program for Windows its icon, version and
# manifest.
function(quenmar_windows_program program description)
  set(sources "${CMAKE_SOURCE_DIR}/share/windows")
  set(folder "${CMAKE_CURRENT_BINARY_DIR}/${program}.windows")
  set(icon "${folder}/quenmar.ico")
  file(GLOB pictures CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/share/icons/hicolor/*/apps/quenmar.png")
  find_program(QUENMAR_ICOTOOL icotool REQUIRED)
  list(TRANSFORM pictures PREPEND "--raw=" OUTPUT_VARIABLE arguments)
  add_custom_command(OUTPUT "${icon}" DEPENDS ${pictures} VERBATIM
                     COMMAND "${QUENMAR_ICOTOOL}" --create "--output=${icon}" ${arguments})

  file(STRINGS "${CMAKE_SOURCE_DIR}/LICENSE" copyright REGEX "^Copyright")
  configure_file("${sources}/program.rc.in" "${folder}/program.rc" @ONLY)
  set_source_files_properties("${folder}/program.rc" PROPERTIES
    OBJECT_DEPENDS "${icon};${sources}/program.manifest"
    INCLUDE_DIRECTORIES "${folder};${sources}")
  target_sources(${program} PRIVATE "${folder}/program.rc" "${icon}")
endfunction()
