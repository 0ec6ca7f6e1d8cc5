# `make package`: a Debian package of the Release tree, installed under /usr.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME hushpane)
set(CPACK_PACKAGE_VENDOR Hushpane)
set(CPACK_PACKAGE_CONTACT "Hushpane developers <hushpane@users.noreply.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_DESCRIPTION
  "Hushpane finds the quiet stretches in a talk, lecture or podcast, audio or video, and writes a new file that holds only the spoken parts, in a window, for whole folders or on the command line.")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION sound)
# The libraries the binary links come from dpkg-shlibdeps; what it only loads at run time is
# named here: Qt's platform themes and the GStreamer elements the preview plays through.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS
  "qt6-qpa-plugins, gstreamer1.0-plugins-base, gstreamer1.0-plugins-good, gstreamer1.0-libav")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-wayland, qt6-translations-l10n, sound-theme-freedesktop")
include(CPack)
