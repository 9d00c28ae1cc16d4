# The Debian package, made from what was built and is installed: cpack -G DEB in the build folder.
set(document_folder ${CMAKE_INSTALL_DATADIR}/doc/velmaro)
set(packed ${CMAKE_CURRENT_BINARY_DIR}/packed)

# Texts that a package holds compressed; without the time of day in them, so that every build gives the same bytes.
function(velmaro_install_compressed source name destination)
  add_custom_command(OUTPUT ${packed}/${name}.gz
    COMMAND sh -c "mkdir -p '${packed}' && gzip -9nc '${source}' >'${packed}/${name}.gz'" DEPENDS ${source} VERBATIM)
  set_property(GLOBAL APPEND PROPERTY velmaro_compressed ${packed}/${name}.gz)
  install(FILES ${packed}/${name}.gz DESTINATION ${destination})
endfunction()

velmaro_install_compressed(${CMAKE_SOURCE_DIR}/packaging/linux/velmaro.1 velmaro.1 ${CMAKE_INSTALL_MANDIR}/man1)
velmaro_install_compressed(${CMAKE_SOURCE_DIR}/packaging/debian/changelog changelog ${document_folder})
get_property(compressed GLOBAL PROPERTY velmaro_compressed)
add_custom_target(velmaro_documents ALL DEPENDS ${compressed})

install(FILES ${CMAKE_SOURCE_DIR}/packaging/debian/copyright DESTINATION ${document_folder})
install(FILES ${CMAKE_SOURCE_DIR}/packaging/debian/lintian-overrides RENAME velmaro
  DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides)
install(DIRECTORY ${CMAKE_SOURCE_DIR}/packaging/linux/samples/ DESTINATION ${document_folder}/examples)
# Stores look for it under the name that it tells for the program.
install(FILES ${CMAKE_SOURCE_DIR}/packaging/linux/velmaro.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo
  RENAME example.velmaro.Velmaro.metainfo.xml)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME velmaro)
set(CPACK_PACKAGE_VENDOR "the Velmaro developers")
set(CPACK_PACKAGE_CONTACT "the Velmaro developers <velmaro@velmaro.example>")
set(CPACK_PACKAGE_HOMEPAGE_URL "https://velmaro.example/")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "process priorities, kill lists and memory for players of emulators")
set(CPACK_PACKAGE_DESCRIPTION "Velmaro gives one program more of your machine. It shows what runs and at
which priority, changes a priority, ends programs (one, or a whole list at
once while a second list is spared), wins back memory, starts programs at the
priority that you choose, and hides, shows or pins windows.

It works from its window or, silently and at once, from one command line.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION admin)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "pkexec, qt6-wayland, xdg-utils")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA ${CMAKE_SOURCE_DIR}/packaging/debian/conffiles)
include(CPack)
