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

# vrn_add_test_program(<program> [SOURCES <file>...] [LIBRARIES <target>...])
#
# A program for several test classes, linked with the test support and the LIBRARIES.
# vrn_add_test() adds the classes.
function(vrn_add_test_program program)
    cmake_parse_arguments(arg "" "" "SOURCES;LIBRARIES" ${ARGN})
    add_executable(${program} ${arg_SOURCES})
    vrn_configure_target(${program})
    vrn_use_qt_in_tests(${program})
    target_precompile_headers(${program} REUSE_FROM vrn_test_support)
    # This source is mostly empty: a test includes the output of moc itself.
    set_source_files_properties("${CMAKE_CURRENT_BINARY_DIR}/${program}_autogen/mocs_compilation.cpp"
        PROPERTIES SKIP_PRECOMPILE_HEADERS ON)
    target_link_libraries(${program} PRIVATE vrn_test_support ${arg_LIBRARIES})
endfunction()

# vrn_add_test(<name> [X11] [PROGRAM <program>] [WINDOW_MANAGERS <manager>...]
#              [SOURCES <file>...] [LIBRARIES <target>...] [ENVIRONMENT <NAME=value>...])
#
# Adds the test class in <name>.cpp to PROGRAM, or makes a program <name> of it. SOURCES and
# LIBRARIES are added to the program. The ctest test <name> runs this class alone, and the
# target <name> builds its program. The test runs offscreen. With X11 it runs under a window
# manager on its own X server and has the ctest label "x11". The window manager is openbox;
# with WINDOW_MANAGERS there is a test <name>_<manager> for each of them.
function(vrn_add_test name)
    cmake_parse_arguments(arg "X11" "PROGRAM" "WINDOW_MANAGERS;SOURCES;LIBRARIES;ENVIRONMENT" ${ARGN})
    if(arg_PROGRAM)
        add_custom_target(${name} DEPENDS ${arg_PROGRAM})
    else()
        set(arg_PROGRAM ${name})
        vrn_add_test_program(${name})
    endif()
    target_sources(${arg_PROGRAM} PRIVATE ${name}.cpp ${arg_SOURCES})
    target_link_libraries(${arg_PROGRAM} PRIVATE ${arg_LIBRARIES})
    set(command "$<TARGET_FILE:${arg_PROGRAM}>" ${name})
    if(NOT arg_X11)
        add_test(NAME ${name} COMMAND ${command})
        _vrn_set_test_properties(${name} ENVIRONMENT "QT_QPA_PLATFORM=offscreen" ${arg_ENVIRONMENT})
    elseif(NOT arg_WINDOW_MANAGERS)
        _vrn_add_x11_test(${name} openbox COMMAND ${command} ENVIRONMENT ${arg_ENVIRONMENT})
    else()
        foreach(manager IN LISTS arg_WINDOW_MANAGERS)
            _vrn_add_x11_test(${name}_${manager} ${manager}
                COMMAND ${command} ENVIRONMENT ${arg_ENVIRONMENT})
        endforeach()
    endif()
endfunction()

# _vrn_add_x11_test(<name> <window manager> COMMAND <word>... [ENVIRONMENT <NAME=value>...])
function(_vrn_add_x11_test name manager)
    cmake_parse_arguments(arg "" "" "COMMAND;ENVIRONMENT" ${ARGN})
    add_test(NAME ${name} COMMAND "${vrn_qt2_SOURCE_DIR}/tests/support/run-x11" ${arg_COMMAND})
    _vrn_set_test_properties(${name}
        ENVIRONMENT "QT_QPA_PLATFORM=xcb" "VRN_X11_WINDOW_MANAGER=${manager}" ${arg_ENVIRONMENT})
    # Serial, because a test waits only five seconds for the effect of a key.
    set_tests_properties(${name} PROPERTIES LABELS x11 RUN_SERIAL ON)
endfunction()

# _vrn_set_test_properties(<name> ENVIRONMENT <NAME=value>...)
function(_vrn_set_test_properties name)
    cmake_parse_arguments(arg "" "" "ENVIRONMENT" ${ARGN})
    # The result must not depend on the user's locale, style or scaling.
    set(environment LC_ALL=C.UTF-8 QT_STYLE_OVERRIDE=fusion QT_SCALE_FACTOR=1
        QT_QPA_PLATFORMTHEME= ${arg_ENVIRONMENT})
    set_tests_properties(${name} PROPERTIES TIMEOUT 300 ENVIRONMENT "${environment}")
endfunction()
