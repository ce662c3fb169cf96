# The Debian package: "cpack" in the build tree makes velloreader_VERSION_ARCHITECTURE.deb.

set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_COMPONENTS_ALL Unspecified)
set(CPACK_DEBIAN_UNSPECIFIED_PACKAGE_NAME velloreader)
if(TARGET fltview)
  list(APPEND CPACK_COMPONENTS_ALL view)
endif()
set(CPACK_PACKAGE_NAME velloreader)
set(CPACK_PACKAGE_CONTACT "VelloReader maintainers <maintainers@velloreader.example>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/PreparePackage.cmake)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The library's name in the programs has no version, and no other package that would own it.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(CPACK_DEBIAN_UNSPECIFIED_PACKAGE_DEPENDS python3)
# The toolkit loads images by the library's name without a version, which only the development package has.
set(CPACK_DEBIAN_UNSPECIFIED_PACKAGE_RECOMMENDS "libcoin-dev, libsimage-dev, python3-pivy")
set(CPACK_DEBIAN_UNSPECIFIED_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/packaging/triggers)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# Files for Debian alone, which PreparePackage.cmake adds
configure_file(packaging/changelog.in packaging/changelog.Debian @ONLY)
set(CPACK_VELLOREADER_CHANGELOG ${PROJECT_BINARY_DIR}/packaging/changelog.Debian)
set(CPACK_VELLOREADER_OVERRIDES ${PROJECT_SOURCE_DIR}/packaging/lintian-overrides)

# The first line of the description is the project's.
set(CPACK_DEBIAN_UNSPECIFIED_DESCRIPTION "VelloReader reads OpenFlight databases (.flt), the usual format of flight and
driving simulators for terrain, buildings and vehicles, into scene graphs of
the Coin toolkit.
.
Every program on the toolkit reads .flt files once this is installed. flt2iv
converts them into Open Inventor files, flt2gltf into glTF files and pages for
browsers, and fltshot draws them into pictures without a window; fltinfo says
what is in them, and fltcheck what is wrong with them; fltreport sums up what
became of many. Programs in C++ use the
library through CMake or pkg-config,
and programs in Python through the package velloreader, together with pivy.")

# The program with a window needs much that the others don't.
set(CPACK_DEBIAN_VIEW_PACKAGE_NAME velloreader-view)
set(CPACK_DEBIAN_VIEW_PACKAGE_DEPENDS "velloreader (= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")
set(CPACK_DEBIAN_VIEW_DESCRIPTION "OpenFlight databases in a window
fltview shows OpenFlight databases (.flt): the tree of the scene beside the
picture, all fields of the records, switches, levels of detail and degrees of
freedom by hand, and missing textures.")

include(CPack)
