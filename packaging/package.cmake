# Where an installed program lies, and the Debian packages: `tarn-view`, and `tarn-view-webpane` once
# a target is installed with the component `webpane`.
set(program tarn-view)

install(TARGETS tarn-view tarn RUNTIME DESTINATION bin COMPONENT ${program})
install(DIRECTORY data/ DESTINATION share/tarn-view COMPONENT ${program}
        PATTERN make EXCLUDE PATTERN README.md EXCLUDE)

set(here ${CMAKE_CURRENT_LIST_DIR})
install(FILES ${here}/tarn-view.desktop DESTINATION share/applications COMPONENT ${program})
configure_file(${here}/org.tarnview.tarn_view.metainfo.xml
               ${CMAKE_BINARY_DIR}/packaging/org.tarnview.tarn_view.metainfo.xml @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/packaging/org.tarnview.tarn_view.metainfo.xml
        DESTINATION share/metainfo COMPONENT ${program})
install(FILES ${here}/tarn-view-mime.xml DESTINATION share/mime/packages RENAME tarn-view.xml
        COMPONENT ${program})
install(FILES ${here}/completions/tarn DESTINATION share/bash-completion/completions
        COMPONENT ${program})
set(icons share/icons/hicolor)
install(FILES ${here}/icons/tarn-view.svg DESTINATION ${icons}/scalable/apps COMPONENT ${program})
foreach(size 16 22 24 32 48 64 128 256)
  install(FILES ${here}/icons/tarn-view-${size}.png DESTINATION ${icons}/${size}x${size}/apps
          RENAME tarn-view.png COMPONENT ${program})
endforeach()

# tarn_install_zipped(FILE NAME FOLDER COMPONENT): with the version put in, as NAME.gz.
find_program(GZIP gzip REQUIRED)
function(tarn_install_zipped file name folder component)
  set(plain ${CMAKE_BINARY_DIR}/packaging/${component}/${name})
  configure_file(${file} ${plain} @ONLY)
  execute_process(COMMAND ${GZIP} -9nkf ${plain} COMMAND_ERROR_IS_FATAL ANY)
  install(FILES ${plain}.gz DESTINATION ${folder} COMPONENT ${component})
endfunction()
foreach(page tarn tarn-view)
  tarn_install_zipped(${here}/man/${page}.1 ${page}.1 share/man/man1 ${program})
endforeach()

function(tarn_install_papers package component)
  install(FILES ${here}/deb/copyright DESTINATION share/doc/${package} COMPONENT ${component})
  tarn_install_zipped(${here}/deb/changelog changelog share/doc/${package} ${component})
endfunction()
tarn_install_papers(tarn-view ${program})
install(FILES ${here}/deb/lintian-overrides DESTINATION share/lintian/overrides RENAME tarn-view
        COMPONENT ${program})

set(CPACK_COMPONENTS_ALL ${program})
get_cmake_property(components COMPONENTS)
if("webpane" IN_LIST components)
  tarn_install_papers(tarn-view-webpane webpane)
  list(APPEND CPACK_COMPONENTS_ALL webpane)
endif()

# The usual strip leaves the compiler's name in.
foreach(component ${CPACK_COMPONENTS_ALL})
  install(CODE "
    set(root \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}\")
    file(GLOB binaries \"\${root}/bin/tarn\" \"\${root}/bin/tarn-view\" \"\${root}/lib/tarn-view/plugins/*.so\" \"\${root}/lib/tarn-view/plugins/tarn-decoder\")
    if(CMAKE_INSTALL_DO_STRIP AND binaries)
      execute_process(COMMAND ${CMAKE_STRIP} --strip-unneeded -R .comment -R .note \${binaries}
                      COMMAND_ERROR_IS_FATAL ANY)
    endif()" COMPONENT ${component})
endforeach()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tarn-view)
set(CPACK_PACKAGE_CONTACT "Tarn View team <team@tarnview.org>")
set(CPACK_PACKAGE_VENDOR "Tarn View team")
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/packages)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)

string(TOUPPER ${program} PROGRAM)
set(CPACK_DEBIAN_${PROGRAM}_PACKAGE_NAME tarn-view)
set(CPACK_DEBIAN_${PROGRAM}_PACKAGE_SECTION graphics)
# What no link tells of: a plug-in for TIFF pictures, and where the desktop looks for the icon.
set(CPACK_DEBIAN_${PROGRAM}_PACKAGE_DEPENDS "qt6-image-formats-plugins, hicolor-icon-theme")
set(CPACK_DEBIAN_${PROGRAM}_PACKAGE_RECOMMENDS "fonts-liberation, qt6-wayland, xdg-utils")
set(CPACK_DEBIAN_${PROGRAM}_PACKAGE_SUGGESTS tarn-view-webpane)
set(CPACK_DEBIAN_${PROGRAM}_DESCRIPTION
"picture browser for photographers and amateur astronomers
One window shows the folders, the files, the picture, and beside it what
the camera wrote into the file. One key goes to the next picture, so that a
night's thousand frames are gone through quickly, and a broken file never
stops the run.
.
A note can be kept for each picture and goes along when the picture is
renamed, copied or deleted. From there come slide shows, contact sheets,
thumbnails, web pages and galleries, and small captioned copies. The
companion program tarn does much of this on the console.")

set(CPACK_DEBIAN_WEBPANE_PACKAGE_NAME tarn-view-webpane)
set(CPACK_DEBIAN_WEBPANE_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_WEBPANE_PACKAGE_DEPENDS "tarn-view (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_WEBPANE_DESCRIPTION
"picture browser for photographers and amateur astronomers - web engine
Lets Tarn View show web pages by a whole web engine. Without this package it
shows their text and pictures in a simpler way, which is enough for the pages
that it makes itself.")
include(CPack)
