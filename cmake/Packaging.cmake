# Installing the program as a desktop program and a command line, and packing that
# installation into a Debian package with CPack (./pemlo package).
include(GNUInstallDirs)

# The report executable is the command line's helper, not a command of its own: it
# lives beside the program's other private files, where pemlo-cli looks for it.
set(PEMLO_LIBEXEC_DIR ${CMAKE_INSTALL_LIBEXECDIR}/pemlo-cpt)
set(PEMLO_DOC_DIR ${CMAKE_INSTALL_DATADIR}/doc/pemlo-cpt)
# Where software centres fetch the screenshots from. The project has no web address
# yet: the default is the reserved domain of the maintainer's address, which resolves
# nowhere; a build for the public sets the real one.
set(PEMLO_HOMEPAGE "https://pemlo-cpt.invalid/" CACHE STRING "The project's web address, ending in /")
set(packaging ${PROJECT_SOURCE_DIR}/packaging)
set(package_files)

# A text the package ships compressed, as the system's own manuals and changelogs are
# (-9 and -n: the smallest, and no time stamp, so the package is the same from build
# to build).
function(pemlo_gzip source output)
  add_custom_command(OUTPUT ${output} COMMAND gzip -9 -n -c ${source} > ${output}
                     DEPENDS ${source} VERBATIM)
endfunction()

# A manual page carries the version.
function(pemlo_manual_page name)
  configure_file(${packaging}/${name}.1 ${CMAKE_CURRENT_BINARY_DIR}/${name}.1 @ONLY)
  pemlo_gzip(${CMAKE_CURRENT_BINARY_DIR}/${name}.1 ${CMAKE_CURRENT_BINARY_DIR}/${name}.1.gz)
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${name}.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  set(package_files ${package_files} ${CMAKE_CURRENT_BINARY_DIR}/${name}.1.gz PARENT_SCOPE)
endfunction()

# The newest entry of the changelog, for the software centres' release notes: its date
# (yyyy-mm-dd) and its items as an XML list. The changelog is where a release is
# written down; its version must be the project's.
function(pemlo_latest_release changelog date_var notes_var)
  file(READ ${changelog} text)
  string(REGEX MATCH "^[^\n]*\\(([^)]+)\\)" head "${text}")
  if(NOT CMAKE_MATCH_1 STREQUAL PROJECT_VERSION)
    message(FATAL_ERROR "packaging/changelog begins with version ${CMAKE_MATCH_1}, the project is ${PROJECT_VERSION}")
  endif()
  string(REGEX MATCH "\n -- [^\n]*  [A-Z][a-z][a-z], ([0-9]+) ([A-Z][a-z][a-z]) ([0-9][0-9][0-9][0-9])" trailer "${text}")
  set(months Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec)
  list(FIND months "${CMAKE_MATCH_2}" month)
  math(EXPR month "${month} + 1" OUTPUT_FORMAT DECIMAL)
  string(LENGTH "${CMAKE_MATCH_1}" day_digits)
  set(day ${CMAKE_MATCH_1})
  if(day_digits EQUAL 1)
    set(day 0${day})
  endif()
  if(month LESS 10)
    set(month 0${month})
  endif()
  set(${date_var} "${CMAKE_MATCH_3}-${month}-${day}" PARENT_SCOPE)
  # The items of the first entry: from its heading line to its trailer.
  string(FIND "${text}" "\n -- " end)
  string(SUBSTRING "${text}" 0 ${end} entry)
  string(REPLACE "&" "&amp;" entry "${entry}")
  string(REPLACE "<" "&lt;" entry "${entry}")
  string(REPLACE ">" "&gt;" entry "${entry}")
  string(REGEX REPLACE "\n    " " " entry "${entry}")
  # The items by regular expressions over the whole text, not as a list, which would
  # split at the semicolons in their sentences. (In REGEX REPLACE a ^ matches again
  # after each replacement, so the heading line goes by FIND.)
  string(FIND "${entry}" "\n  * " first)
  string(SUBSTRING "${entry}" ${first} -1 entry)
  string(REGEX REPLACE "\n  \\* ([^\n]*)" "\n          <li>\\1</li>" notes "${entry}")
  string(STRIP "${notes}" notes)
  set(${notes_var} "${notes}" PARENT_SCOPE)
endfunction()

if(TARGET pemlo)
  install(TARGETS pemlo RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  install(FILES ${packaging}/pemlo-cpt.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
  install(DIRECTORY ${packaging}/icons/hicolor DESTINATION ${CMAKE_INSTALL_DATADIR}/icons)
  pemlo_manual_page(pemlo)
  # The screenshots are named by their place in the repository; a software centre
  # wants them as web addresses, so each is joined to the project's.
  set(metainfo invalid.pemlo_cpt.pemlo.metainfo.xml)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${packaging}/${metainfo} ${packaging}/changelog)
  pemlo_latest_release(${packaging}/changelog PEMLO_RELEASE_DATE PEMLO_RELEASE_NOTES)
  file(READ ${packaging}/${metainfo} text)
  string(REGEX REPLACE "<image>([^<]*)</image>" "<image>${PEMLO_HOMEPAGE}\\1</image>" text "${text}")
  file(CONFIGURE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/${metainfo} CONTENT "${text}" @ONLY)
  install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${metainfo} DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
endif()
if(TARGET pemlo-cli)
  install(TARGETS pemlo-cli RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  pemlo_manual_page(pemlo-cli)
  # The command line is static on purpose; the override says why, for lintian.
  install(FILES ${packaging}/pemlo-cpt.lintian-overrides DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides
          RENAME pemlo-cpt)
endif()
if(TARGET pemlo-report)
  install(TARGETS pemlo-report RUNTIME DESTINATION ${PEMLO_LIBEXEC_DIR})
endif()

# What each version brought, in Debian's changelog form.
pemlo_gzip(${packaging}/changelog ${CMAKE_CURRENT_BINARY_DIR}/changelog.gz)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/changelog.gz DESTINATION ${PEMLO_DOC_DIR})
list(APPEND package_files ${CMAKE_CURRENT_BINARY_DIR}/changelog.gz)

# The soil behaviour type's rule in full, which the command line's manual page refers to.
pemlo_gzip(${PROJECT_SOURCE_DIR}/docs/sbtn.md ${CMAKE_CURRENT_BINARY_DIR}/sbtn.md.gz)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/sbtn.md.gz DESTINATION ${PEMLO_DOC_DIR})
list(APPEND package_files ${CMAKE_CURRENT_BINARY_DIR}/sbtn.md.gz)

# The copyright file: the project's own, then the notices of the libraries linked in
# statically, taken from the copyright files of the Debian packages they come from.
set(linked_notices /usr/share/doc/libpugixml-dev/copyright /usr/share/doc/libcli11-dev/copyright
                   /usr/share/doc/libdragonbox-dev/copyright)
set(copyright ${CMAKE_CURRENT_BINARY_DIR}/copyright)
add_custom_command(OUTPUT ${copyright}
                   COMMAND bash ${packaging}/make-copyright.sh ${copyright} ${packaging}/copyright ${linked_notices}
                   DEPENDS ${packaging}/make-copyright.sh ${packaging}/copyright ${linked_notices} VERBATIM)
install(FILES ${copyright} DESTINATION ${PEMLO_DOC_DIR})
list(APPEND package_files ${copyright})

add_custom_target(pemlo_package_files ALL DEPENDS ${package_files})

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
