# vrn_use_qt_in_tests(<target>): as vrn_use_qt(), with what tests want otherwise. All
# tests share one precompiled header, so that this has to be the same for each.
function(vrn_use_qt_in_tests target)
    vrn_use_qt(${target})
    target_compile_options(${target} PRIVATE
        # Tests are written with plain literals where a reader wants plain text.
        -UQT_NO_CAST_FROM_ASCII -UQT_NO_CAST_TO_ASCII -UQT_NO_CAST_FROM_BYTEARRAY
        # Folders of one target, for QFINDTESTDATA, which no test uses.
        -UQT_TESTCASE_BUILDDIR -UQT_TESTCASE_SOURCEDIR)
endfunction()

# vrn_add_test(<name> [X11] [WINDOW_MANAGERS <manager>...]
#     [SOURCES <file>...] [LIBRARIES <target>...] [ENVIRONMENT <NAME=value>...])
#
# A Qt Test program from <name>.cpp and the further SOURCES, linked with the test
# support and the LIBRARIES. It runs offscreen; with X11 it runs on an X server
# of its own under a window manager and has the ctest label "x11". The window manager
# is openbox; with WINDOW_MANAGERS there is a test <name>_<manager> for each of them.
function(vrn_add_test name)
    cmake_parse_arguments(arg "X11" "" "WINDOW_MANAGERS;SOURCES;LIBRARIES;ENVIRONMENT" ${ARGN})
    add_executable(${name} ${name}.cpp ${arg_SOURCES})
    vrn_configure_target(${name})
    vrn_use_qt_in_tests(${name})
    target_precompile_headers(${name} REUSE_FROM vrn_test_support)
    # Empty, for a test includes what moc makes of it.
    set_source_files_properties("${CMAKE_CURRENT_BINARY_DIR}/${name}_autogen/mocs_compilation.cpp"
        PROPERTIES SKIP_PRECOMPILE_HEADERS ON)
    target_link_libraries(${name} PRIVATE vrn_test_support ${arg_LIBRARIES})
    if(NOT arg_X11)
        add_test(NAME ${name} COMMAND ${name})
        _vrn_set_test_properties(${name} ENVIRONMENT "QT_QPA_PLATFORM=offscreen" ${arg_ENVIRONMENT})
    elseif(NOT arg_WINDOW_MANAGERS)
        _vrn_add_x11_test(${name} ${name} openbox ${arg_ENVIRONMENT})
    else()
        foreach(manager IN LISTS arg_WINDOW_MANAGERS)
            _vrn_add_x11_test(${name}_${manager} ${name} ${manager} ${arg_ENVIRONMENT})
        endforeach()
    endif()
endfunction()

# _vrn_add_x11_test(<name> <program> <window manager> [<NAME=value>...])
function(_vrn_add_x11_test name program manager)
    add_test(NAME ${name} COMMAND
        "${vrn_qt2_SOURCE_DIR}/tests/support/run-x11" "$<TARGET_FILE:${program}>")
    _vrn_set_test_properties(${name}
        ENVIRONMENT "QT_QPA_PLATFORM=xcb" "VRN_X11_WINDOW_MANAGER=${manager}" ${ARGN})
    # Alone: what waits for the effect of a key waits for five seconds.
    set_tests_properties(${name} PROPERTIES LABELS x11 RUN_SERIAL ON)
endfunction()

# _vrn_set_test_properties(<name> ENVIRONMENT <NAME=value>...)
function(_vrn_set_test_properties name)
    cmake_parse_arguments(arg "" "" "ENVIRONMENT" ${ARGN})
    # One outcome on every machine: no locale, style or scaling of its user.
    set(environment LC_ALL=C.UTF-8 QT_STYLE_OVERRIDE=fusion QT_SCALE_FACTOR=1
        QT_QPA_PLATFORMTHEME= ${arg_ENVIRONMENT})
    set_tests_properties(${name} PROPERTIES TIMEOUT 300 ENVIRONMENT "${environment}")
endfunction()
