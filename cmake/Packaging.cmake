# Where things are installed, and what CPack makes of them: a .deb and a .tar.gz on Linux, a .zip with the
# Windows program. scripts/package runs all of it.
include(GNUInstallDirs)

# -- The package's version is the program's ---------------------------------------------------------------

set(versionFile ${PROJECT_SOURCE_DIR}/src/run/run_options.h)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${versionFile})
file(STRINGS ${versionFile} versionLine REGEX "programVersion = \"v\\.")
if(NOT versionLine MATCHES "\"v\\.([0-9][0-9a-z.]*)\"")
    message(FATAL_ERROR "No programVersion \"v.<number>\" in ${versionFile}.")
endif()
set(packageVersion ${CMAKE_MATCH_1})

# -- How the packaged programs are linked ------------------------------------------------------------------

# A package of one file for many systems: of the compiler's own libraries nothing has to be installed.
set(installedPrograms orbconv orbconv-inspect orbconv-standard)
option(ORBCONV_STATIC_RUNTIME "Link the compiler's runtime libraries into the programs" OFF)
if(ORBCONV_STATIC_RUNTIME)
    foreach(program IN LISTS installedPrograms)
        target_link_options(${program} PRIVATE -static-libstdc++ -static-libgcc)
        if(NOT WIN32)
            target_link_options(${program} PRIVATE -Wl,-z,relro -Wl,-z,now)
        endif()
    endforeach()
endif()

# -- Files that are made here -----------------------------------------------------------------------------

set(made ${PROJECT_BINARY_DIR}/packaging)

# Makes <made>/<to> of a text, compressed in such a way that the same text gives the same bytes.
function(orbconv_compress from to)
    add_custom_command(OUTPUT ${made}/${to}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${made}
        COMMAND ${ORBCONV_GZIP} -9nc ${from} > ${made}/${to}
        DEPENDS ${from}
        VERBATIM)
    set_property(GLOBAL APPEND PROPERTY orbconv_compressed ${made}/${to})
endfunction()

# -- Install rules ----------------------------------------------------------------------------------------

# Components: what everyone gets has none of its own; `archive` goes with a plain installation and into the
# .tar.gz, `debian` into the .deb alone.
set(manuals docs/manual.md docs/differences.md docs/inspect.md docs/standard.md docs/notices.md)
set(CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

if(WIN32)
    # One folder that can stand anywhere. The texts and the batch file end their lines as Windows expects it.
    install(TARGETS ${installedPrograms} RUNTIME DESTINATION . COMPONENT orbconv)
    foreach(text IN ITEMS ${manuals} CHANGELOG.md completions/orbconv.ps1 packaging/orbconv-drop.cmd)
        get_filename_component(name ${text} NAME)
        configure_file(${PROJECT_SOURCE_DIR}/${text} ${made}/${name} @ONLY NEWLINE_STYLE CRLF)
        install(FILES ${made}/${name} DESTINATION . COMPONENT orbconv)
    endforeach()
else()
    set(documents ${CMAKE_INSTALL_DATADIR}/doc/orbconv)
    install(TARGETS ${installedPrograms} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT orbconv)
    list(TRANSFORM manuals PREPEND ${PROJECT_SOURCE_DIR}/)
    install(FILES ${manuals} DESTINATION ${documents} COMPONENT orbconv)
    # A shell looks for a file by the name of the command.
    set(completions ${PROJECT_SOURCE_DIR}/completions)
    foreach(program IN LISTS installedPrograms)
        install(FILES ${completions}/${program}.bash
            DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME ${program} COMPONENT orbconv)
        install(FILES ${completions}/${program}.fish
            DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d COMPONENT orbconv)
        # Debian's zsh reads another folder than zsh as it comes.
        install(FILES ${completions}/_${program}
            DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions COMPONENT archive)
        install(FILES ${completions}/_${program}
            DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions COMPONENT debian EXCLUDE_FROM_ALL)
    endforeach()
    install(FILES ${PROJECT_SOURCE_DIR}/CHANGELOG.md DESTINATION ${documents} COMPONENT archive)

    find_program(ORBCONV_GZIP gzip)
    mark_as_advanced(ORBCONV_GZIP)
    foreach(program IN LISTS installedPrograms)
        set(manualPage ${PROJECT_SOURCE_DIR}/docs/${program}.1)
        if(ORBCONV_GZIP)
            orbconv_compress(${manualPage} ${program}.1.gz)
            set(manualPage ${made}/${program}.1.gz)
        endif()
        install(FILES ${manualPage} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT orbconv)
    endforeach()
endif()

# -- CPack ------------------------------------------------------------------------------------------------

# Placeholder: the program's owner has published no address.
set(ORBCONV_MAINTAINER "ORBCONV maintainers <orbconv@example.com>"
    CACHE STRING "Name and address that a package gives as its maintainer")
mark_as_advanced(ORBCONV_MAINTAINER)
set(debianRevision 1)

set(CPACK_PACKAGE_NAME orbconv)
set(CPACK_PACKAGE_VERSION ${packageVersion})
set(CPACK_PACKAGE_VENDOR "ZENTA GNSS")
set(CPACK_PACKAGE_CONTACT ${ORBCONV_MAINTAINER})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "converts a satellite-receiver log into RINEX files")
set(CPACK_PACKAGE_CHECKSUM SHA256)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_THREADS 0)
set(CPACK_COMPONENTS_GROUPING ALL_COMPONENTS_IN_ONE)
set(CPACK_ARCHIVE_COMPONENT_INSTALL ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_PROJECT_CONFIG_FILE ${PROJECT_SOURCE_DIR}/packaging/cpack-generators.cmake)

if(WIN32)
    set(CPACK_GENERATOR ZIP)
    set(CPACK_PACKAGE_FILE_NAME orbconv-${packageVersion}-windows-x64)
else()
    set(CPACK_GENERATOR DEB TGZ)
    set(CPACK_STRIP_FILES ON)
    string(TOLOWER ${CMAKE_SYSTEM_NAME} system)
    set(CPACK_PACKAGE_FILE_NAME orbconv-${packageVersion}-${system}-${CMAKE_SYSTEM_PROCESSOR})

    set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
    set(CPACK_DEBIAN_PACKAGE_RELEASE ${debianRevision})
    set(CPACK_DEBIAN_PACKAGE_MAINTAINER ${ORBCONV_MAINTAINER})
    set(CPACK_DEBIAN_PACKAGE_SECTION science)
    set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
    set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
    set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
    set(CPACK_PACKAGE_DESCRIPTION
"orbconv reads one binary log of a satellite-navigation receiver (KVS format)
and writes RINEX files beside it: an observation file, and either one
navigation file for each constellation (RINEX 3.05) or one mixed navigation
file (RINEX 4.00 and 4.01). It handles GPS, GLONASS, Galileo, BeiDou and
NavIC. It is a console program and needs no receiver, no network and no
configuration file. Two programs stand beside it: orbconv-inspect tells what is
in a log and what is wrong with it, orbconv-standard writes a log's
observations and navigation messages as RINEX to the letter of the standard.")

    if(ORBCONV_GZIP)
        # SOURCE_DATE_EPOCH, if set, is the date of the entry.
        string(TIMESTAMP packageDate "%a, %d %b %Y %H:%M:%S +0000" UTC)
        string(TIMESTAMP packageYear "%Y" UTC)
        configure_file(${PROJECT_SOURCE_DIR}/packaging/debian/changelog.in ${made}/changelog.Debian @ONLY)
        configure_file(${PROJECT_SOURCE_DIR}/packaging/debian/copyright ${made}/copyright COPYONLY)
        orbconv_compress(${made}/changelog.Debian changelog.Debian.gz)
        orbconv_compress(${PROJECT_SOURCE_DIR}/CHANGELOG.md changelog.gz)
        install(FILES ${made}/copyright ${made}/changelog.Debian.gz ${made}/changelog.gz
            DESTINATION ${documents} COMPONENT debian EXCLUDE_FROM_ALL)
    endif()
endif()

get_property(compressed GLOBAL PROPERTY orbconv_compressed)
add_custom_target(orbconv_packaging ALL DEPENDS ${compressed})

include(CPack)

# -- Checks that go with the suite ------------------------------------------------------------------------

if(ORBCONV_BUILD_TESTS AND NOT CMAKE_CROSSCOMPILING)
    find_program(ORBCONV_BASH bash)
    mark_as_advanced(ORBCONV_BASH)
    if(ORBCONV_BASH)
        add_test(NAME Completions
            COMMAND ${ORBCONV_BASH} ${PROJECT_SOURCE_DIR}/completions/test $<TARGET_FILE_DIR:orbconv>)
        add_test(NAME ManualNamesEveryOption
            COMMAND ${ORBCONV_BASH} ${PROJECT_SOURCE_DIR}/docs/check-options $<TARGET_FILE_DIR:orbconv>)
        add_test(NAME Differences COMMAND ${ORBCONV_BASH} ${PROJECT_SOURCE_DIR}/docs/check-differences)
    endif()
endif()
