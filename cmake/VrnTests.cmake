# vrn_use_qt_in_tests(<target>): vrn_use_qt() with the options of tests. All tests share
# one precompiled header, so they must all have the same options.
function(vrn_use_qt_in_tests target)
    vrn_use_qt(${target})
    target_compile_options(${target} PRIVATE
        # Plain literals read better in tests.
        -UQT_NO_CAST_FROM_ASCII -UQT_NO_CAST_TO_ASCII -UQT_NO_CAST_FROM_BYTEARRAY
        # These differ from target to target. They serve QFINDTESTDATA, which no test uses.
        -UQT_TESTCASE_BUILDDIR -UQT_TESTCASE_SOURCEDIR)
endfunction()

# vrn_add_test(<name> [X11] [SOURCES <file>...] [LIBRARIES <target>...] [ENVIRONMENT <NAME=value>...])
#
# A Qt Test program from <name>.cpp and the other SOURCES, linked with the test support
# and the LIBRARIES. It runs offscreen. With X11 it runs under a window manager on its
# own X server and has the ctest label "x11".
function(vrn_add_test name)
    cmake_parse_arguments(arg "X11" "" "SOURCES;LIBRARIES;ENVIRONMENT" ${ARGN})
    add_executable(${name} ${name}.cpp ${arg_SOURCES})
    vrn_configure_target(${name})
    vrn_use_qt_in_tests(${name})
    target_precompile_headers(${name} REUSE_FROM vrn_test_support)
    # This source is empty: a test includes the output of moc itself.
    set_source_files_properties("${CMAKE_CURRENT_BINARY_DIR}/${name}_autogen/mocs_compilation.cpp"
        PROPERTIES SKIP_PRECOMPILE_HEADERS ON)
    target_link_libraries(${name} PRIVATE vrn_test_support ${arg_LIBRARIES})
    if(arg_X11)
        add_test(NAME ${name} COMMAND
            "${vrn_qt2_SOURCE_DIR}/tests/support/run-x11" "$<TARGET_FILE:${name}>")
        # Serial, because a test waits only five seconds for the effect of a key.
        set_tests_properties(${name} PROPERTIES LABELS x11 TIMEOUT 300 RUN_SERIAL ON)
        set(environment "QT_QPA_PLATFORM=xcb")
    else()
        add_test(NAME ${name} COMMAND ${name})
        set_tests_properties(${name} PROPERTIES TIMEOUT 300)
        set(environment "QT_QPA_PLATFORM=offscreen")
    endif()
    # The result must not depend on the user's locale, style or scaling.
    set_tests_properties(${name} PROPERTIES ENVIRONMENT
        "${environment};LC_ALL=C.UTF-8;QT_STYLE_OVERRIDE=fusion;QT_SCALE_FACTOR=1;QT_QPA_PLATFORMTHEME=;${arg_ENVIRONMENT}")
endfunction()
