# One Debian package with everything: cpack --config BUILD/CPackConfig.cmake

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME qor-limiter)
set(CPACK_PACKAGE_VENDOR "The QOR Limiter developers")
set(CPACK_PACKAGE_CONTACT "The QOR Limiter developers <maintainers@qor-limiter.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "stereo peak limiter without latency (plug-ins and programs)")
set(CPACK_PACKAGE_DESCRIPTION
  "QOR Limiter is a stereo peak limiter that adds no latency: two gain laws, four
stereo modes, an input filter, audition and mix, and a final limiter that holds
the output at or below full scale.
.
It comes as a CLAP, LV2 and VST3 plug-in, as a program for JACK and other audio
systems, and as a command line that limits sound files.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
include(CPack)
