# What an installation holds beside the programs and plug-ins, which their own folders install.
# Components: cli, app, clap, lv2, vst3, and common for what they share.

install(DIRECTORY "${CMAKE_SOURCE_DIR}/resources/QOR Limiter Folder" DESTINATION "${CMAKE_INSTALL_DATADIR}/qor-limiter"
  COMPONENT common)
install(FILES "${CMAKE_SOURCE_DIR}/resources/EditorLayout.plist" DESTINATION "${CMAKE_INSTALL_DATADIR}/qor-limiter"
  COMPONENT common)
install(FILES "${CMAKE_SOURCE_DIR}/README.md" "${CMAKE_SOURCE_DIR}/resources/debian/copyright"
  DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/qor-limiter" COMPONENT common)
install(DIRECTORY "${CMAKE_SOURCE_DIR}/docs" # where README.md points
  DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/qor-limiter" COMPONENT common)
if(TARGET qor-limiter-app)
  install(FILES "${CMAKE_SOURCE_DIR}/resources/desktop/org.qrvk.qor-limiter.desktop"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/applications" COMPONENT app)
  install(FILES "${CMAKE_SOURCE_DIR}/resources/desktop/org.qrvk.qor-limiter.metainfo.xml"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/metainfo" COMPONENT app)
  install(FILES "${CMAKE_SOURCE_DIR}/resources/icons/org.qrvk.qor-limiter.svg"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps" COMPONENT app)
endif()

# All that is installed, without tests and benchmarks.
add_custom_target(products DEPENDS qor-limiter qor-limiter-clap qor-lv2-bundle qor-limiter-vst3)
if(TARGET qor-limiter-app)
  add_dependencies(products qor-limiter-app)
endif()

# qor_install_compressed(SOURCE DESTINATION NAME COMPONENT): as distributions keep manual pages and change logs.
function(qor_install_compressed source destination name component)
  set(packed "${CMAKE_BINARY_DIR}/compressed/${name}.gz")
  add_custom_command(OUTPUT "${packed}"
    COMMAND ${CMAKE_COMMAND} -E make_directory "${CMAKE_BINARY_DIR}/compressed"
    COMMAND sh -c "gzip -9nc \"$1\" > \"$2\"" sh "${source}" "${packed}"
    DEPENDS "${source}" VERBATIM)
  add_custom_target("compressed-${name}" ALL DEPENDS "${packed}")
  add_dependencies(products "compressed-${name}")
  install(FILES "${packed}" DESTINATION "${destination}" COMPONENT "${component}")
endfunction()

qor_install_compressed("${CMAKE_SOURCE_DIR}/resources/man/qor-limiter.1" "${CMAKE_INSTALL_MANDIR}/man1" qor-limiter.1 cli)
if(TARGET qor-limiter-app)
  qor_install_compressed("${CMAKE_SOURCE_DIR}/resources/man/qor-limiter-app.1" "${CMAKE_INSTALL_MANDIR}/man1"
    qor-limiter-app.1 app)
endif()
qor_install_compressed("${CMAKE_SOURCE_DIR}/resources/debian/changelog" "${CMAKE_INSTALL_DATADIR}/doc/qor-limiter"
  changelog common)
