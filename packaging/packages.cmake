# `cpack --config build/release/CPackConfig.cmake` makes build/release/packages: a .deb of each component, and a tarball
# of all, which can be unpacked anywhere. What movies are made with belongs to the command-line tool, and the window
# needs that package.
set(CPACK_PACKAGE_NAME personal-velmor)
set(CPACK_PACKAGE_VENDOR "The Personal Velmor authors")
set(CPACK_PACKAGE_CONTACT ${VELMOR_MAINTAINER})
set(CPACK_PACKAGE_HOMEPAGE_URL ${VELMOR_HOMEPAGE})
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_OUTPUT_FILE_PREFIX ${PROJECT_BINARY_DIR}/packages)
set(CPACK_GENERATOR DEB TGZ)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS ${CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS})
set(CPACK_COMPONENTS_ALL cli)
if(VELMOR_WINDOW)
  list(APPEND CPACK_COMPONENTS_ALL window)
endif()
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_PACKAGE_FILE_NAME personal-velmor-${PROJECT_VERSION}-${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR})

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_CLI_PACKAGE_NAME velmor-cli)
set(CPACK_DEBIAN_CLI_PACKAGE_SUGGESTS "slurm-client, parallel")
set(CPACK_COMPONENT_CLI_DESCRIPTION
"make pictures and movies of animation scenes
Composes, checks and renders the scenes of Personal Velmor, brings in drawings,
pictures, sounds and exposure sheets, and prepares renders for Slurm and GNU
parallel. It needs neither a display nor Qt, so a node of a render farm needs
nothing else.")
set(CPACK_DEBIAN_WINDOW_PACKAGE_NAME personal-velmor)
set(CPACK_DEBIAN_WINDOW_PACKAGE_DEPENDS "velmor-cli (= ${PROJECT_VERSION}), hicolor-icon-theme")
set(CPACK_COMPONENT_WINDOW_DESCRIPTION
"traditional 2D cel animation
Drawings are made of ink lines and flat paint on transparent cels, backgrounds
are painted pictures, and an exposure sheet says which of them shows when, and
where. A camera that pans, turns and zooms films the whole, with sound.")
include(CPack)
