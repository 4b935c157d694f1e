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
# A program for several test classes, which vrn_add_test() adds to it, linked with the
# test support and the LIBRARIES. Its command line names the classes to run.
function(vrn_add_test_program program)
    cmake_parse_arguments(arg "" "" "SOURCES;LIBRARIES" ${ARGN})
    add_executable(${program} ${arg_SOURCES})
    vrn_configure_target(${program})
    vrn_use_qt_in_tests(${program})
    # Each class has names of its own for what it tests with.
    set_target_properties(${program} PROPERTIES UNITY_BUILD OFF)
    target_precompile_headers(${program} REUSE_FROM vrn_test_support)
    # This source is empty: a test includes the output of moc itself.
    set_source_files_properties("${CMAKE_CURRENT_BINARY_DIR}/${program}_autogen/mocs_compilation.cpp"
        PROPERTIES SKIP_PRECOMPILE_HEADERS ON)
    target_link_libraries(${program} PRIVATE vrn_test_support ${arg_LIBRARIES})
endfunction()

# vrn_add_test(<name> [X11] [WINDOW_MANAGERS <manager>...] [SCALES <factor>...]
#              [PROGRAM <program>] [SOURCES <file>...] [LIBRARIES <target>...] [ENVIRONMENT <NAME=value>...])
#
# The test class in <name>.cpp, which the test <name> runs in a process of its own. It is
# a part of PROGRAM, which the target <name> builds; without one it is a program by itself.
# SOURCES and LIBRARIES are added to the program.
#
# It runs offscreen; with SCALES there is a test <name>_<factor> for each scale of the screen.
# With X11 it runs on an X server of its own under a window manager and has the ctest label
# "x11". The window manager is openbox; with WINDOW_MANAGERS there is a test <name>_<manager>
# for each of them.
function(vrn_add_test name)
    cmake_parse_arguments(arg "X11" "PROGRAM" "WINDOW_MANAGERS;SCALES;SOURCES;LIBRARIES;ENVIRONMENT" ${ARGN})
    if(arg_PROGRAM)
        add_custom_target(${name} DEPENDS ${arg_PROGRAM})
    else()
        set(arg_PROGRAM ${name})
        vrn_add_test_program(${name})
    endif()
    target_sources(${arg_PROGRAM} PRIVATE ${name}.cpp ${arg_SOURCES})
    target_link_libraries(${arg_PROGRAM} PRIVATE ${arg_LIBRARIES})
    if(arg_SCALES)
        foreach(scale IN LISTS arg_SCALES)
            add_test(NAME ${name}_${scale} COMMAND ${arg_PROGRAM} ${name})
            _vrn_set_test_properties(${name}_${scale} "QT_QPA_PLATFORM=offscreen"
                "QT_SCALE_FACTOR=${scale}" ${arg_ENVIRONMENT})
        endforeach()
    elseif(NOT arg_X11)
        add_test(NAME ${name} COMMAND ${arg_PROGRAM} ${name})
        _vrn_set_test_properties(${name} "QT_QPA_PLATFORM=offscreen" ${arg_ENVIRONMENT})
    elseif(NOT arg_WINDOW_MANAGERS)
        _vrn_add_x11_test(${name} ${name} ${arg_PROGRAM} openbox ${arg_ENVIRONMENT})
    else()
        foreach(manager IN LISTS arg_WINDOW_MANAGERS)
            _vrn_add_x11_test(${name}_${manager} ${name} ${arg_PROGRAM} ${manager} ${arg_ENVIRONMENT})
        endforeach()
    endif()
endfunction()

# _vrn_add_x11_test(<test> <class> <program> <window manager> [<NAME=value>...])
function(_vrn_add_x11_test test class program manager)
    add_test(NAME ${test} COMMAND
        "${vrn_qt2_SOURCE_DIR}/tests/support/run-x11" "$<TARGET_FILE:${program}>" ${class})
    _vrn_set_test_properties(${test} "QT_QPA_PLATFORM=xcb" "VRN_X11_WINDOW_MANAGER=${manager}" ${ARGN})
    # One at a time, because a test waits only five seconds for the effect of a key.
    set_tests_properties(${test} PROPERTIES LABELS x11 RESOURCE_LOCK x11 COST 200)
endfunction()

# _vrn_set_test_properties(<test> [<NAME=value>...])
function(_vrn_set_test_properties test)
    # The result must not depend on the user's locale, style or scaling.
    set(environment LC_ALL=C.UTF-8 QT_STYLE_OVERRIDE=fusion QT_SCALE_FACTOR=1
        QT_QPA_PLATFORMTHEME= ${ARGN})
    set_tests_properties(${test} PROPERTIES TIMEOUT 300 ENVIRONMENT "${environment}")
    # A long one that starts last would run alone.
    if(test MATCHES "_(agreement|bad_input|injection|laws|long_text|sequence)$")
        set_tests_properties(${test} PROPERTIES COST 100)
    endif()
endfunction()
