# The interface in other languages than Italian; none is there yet. Each of CORVANE_LANGUAGES, "de;en", has its texts in
# translations/corvane_LANGUAGE.ts. Neither build nor tests need Qt's tools for them (Debian: qt6-l10n-tools).
set(CORVANE_LANGUAGES "" CACHE STRING "Languages that the interface is translated into")
find_program(LUPDATE_PROGRAM lupdate HINTS /usr/lib/qt6/bin)
find_program(LRELEASE_PROGRAM lrelease HINTS /usr/lib/qt6/bin)

set(TS_FILES)
foreach(language ${CORVANE_LANGUAGES})
    list(APPEND TS_FILES translations/corvane_${language}.ts)
endforeach()

if(LUPDATE_PROGRAM)
    # All texts of the program, and those in the languages' files brought up to date.
    add_custom_target(update_translations
        COMMAND ${CMAKE_COMMAND} -E make_directory translations
        COMMAND ${LUPDATE_PROGRAM} platform host magazzino -I . -locations relative -no-obsolete
                -ts ${CMAKE_BINARY_DIR}/corvane.ts ${TS_FILES}
        WORKING_DIRECTORY ${CMAKE_SOURCE_DIR} VERBATIM)
endif()

if(CORVANE_LANGUAGES AND NOT LRELEASE_PROGRAM)
    message(FATAL_ERROR "Languages take lrelease (qt6-l10n-tools).")
endif()
add_custom_target(translations ALL)
set(QM_FOLDER ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/translations)
foreach(language ${CORVANE_LANGUAGES})
    add_custom_command(TARGET translations
        COMMAND ${CMAKE_COMMAND} -E make_directory ${QM_FOLDER}
        COMMAND ${LRELEASE_PROGRAM} -silent ${CMAKE_SOURCE_DIR}/translations/corvane_${language}.ts
                -qm ${QM_FOLDER}/corvane_${language}.qm VERBATIM)
    install(FILES ${QM_FOLDER}/corvane_${language}.qm DESTINATION ${CMAKE_INSTALL_DATADIR}/corvane/translations)
endforeach()
