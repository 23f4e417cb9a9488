# Installing the program as a desktop program and a command line, and packing that
# installation into a Debian package with CPack (./pemlo package).
include(GNUInstallDirs)

# The report executable is the command line's helper, not a command of its own: it
# lives beside the program's other private files, where pemlo-cli looks for it.
set(PEMLO_LIBEXEC_DIR ${CMAKE_INSTALL_LIBEXECDIR}/pemlo-cpt)

if(TARGET pemlo)
  install(TARGETS pemlo RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  install(FILES ${PROJECT_SOURCE_DIR}/packaging/pemlo-cpt.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/packaging/icons/hicolor DESTINATION ${CMAKE_INSTALL_DATADIR}/icons)
endif()
if(TARGET pemlo-cli)
  install(TARGETS pemlo-cli RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  # The manual page carries the version; it is installed compressed, as the system's
  # own are (-n: no time stamp, so that the package is the same from build to build).
  configure_file(${PROJECT_SOURCE_DIR}/packaging/pemlo-cli.1 ${CMAKE_CURRENT_BINARY_DIR}/pemlo-cli.1 @ONLY)
  set(manual ${CMAKE_CURRENT_BINARY_DIR}/pemlo-cli.1.gz)
  add_custom_command(OUTPUT ${manual}
                     COMMAND gzip -9 -n -c ${CMAKE_CURRENT_BINARY_DIR}/pemlo-cli.1 > ${manual}
                     DEPENDS ${CMAKE_CURRENT_BINARY_DIR}/pemlo-cli.1 VERBATIM)
  add_custom_target(pemlo_manual ALL DEPENDS ${manual})
  install(FILES ${manual} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
endif()
if(TARGET pemlo-report)
  install(TARGETS pemlo-report RUNTIME DESTINATION ${PEMLO_LIBEXEC_DIR})
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME pemlo-cpt)
set(CPACK_PACKAGE_VENDOR "The Pemlo CPT authors")
set(CPACK_PACKAGE_CONTACT "The Pemlo CPT authors <maintainers@pemlo-cpt.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Soil classification from cone penetration tests")
# One string (separate quoted pieces would make a list, joined by semicolons), its
# lines short as Debian's control files want them.
string(CONCAT CPACK_PACKAGE_DESCRIPTION
       "Reads cone penetration test soundings (plain ASCII, GEF-CPT, AGS4 and\n"
       "BRO-XML), averages them over depth intervals, classifies every interval\n"
       "with a closed-form probabilistic method (indices U and V, percent sand,\n"
       "silt and clay), charts the results against depth and prints a one-page\n"
       "report. The command line pemlo-cli runs the same computation for scripts\n"
       "and writes soil profiles and AGS4 files.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
# Dependencies come from the libraries the executables link, as dpkg-shlibdeps finds
# them. The charts are drawn in Arial; the metric-compatible Liberation fonts keep the
# designed text widths, but any font will do.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-liberation")
set(CPACK_STRIP_FILES ON)
include(CPack)
