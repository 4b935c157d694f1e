# What every target of this project has in common. Nothing here touches the
# targets of a project that adds this folder to its own build.

include(GenerateExportHeader)
include(GNUInstallDirs)

if(PROJECT_IS_TOP_LEVEL)
    set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
    set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")
    set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")
endif()

# vrn_configure_target(<target>): language level, warnings, visibility.
function(vrn_configure_target target)
    target_compile_features(${target} PUBLIC cxx_std_17)
    set_target_properties(${target} PROPERTIES
        CXX_EXTENSIONS OFF
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON
    )
    target_compile_options(${target} PRIVATE
        -Wall -Wextra -Wpedantic -Wshadow -Woverloaded-virtual
        -Wconversion -Wsign-conversion -Wcast-qual -Wformat=2 -Wundef
        # Reports name sources relative to the project folder, on any machine.
        "-fmacro-prefix-map=${vrn_qt2_SOURCE_DIR}/="
    )
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # No other library replaces single functions of this one, so the compiler may
        # inline them inside the library. clang always does.
        target_compile_options(${target} PRIVATE -fno-semantic-interposition)
    endif()
    if(VRN_WARNINGS_AS_ERRORS)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
endfunction()

# vrn_use_qt(<target>): moc, and Qt's strict defines for this target only.
function(vrn_use_qt target)
    # moc reads only the target's own files, so it need not wait for linked libraries.
    set_target_properties(${target} PROPERTIES AUTOMOC ON AUTOGEN_ORIGIN_DEPENDS OFF)
    target_compile_definitions(${target} PRIVATE
        QT_NO_KEYWORDS
        QT_NO_FOREACH
        QT_NO_CAST_FROM_ASCII
        QT_NO_CAST_TO_ASCII
        QT_NO_CAST_FROM_BYTEARRAY
        QT_NO_URL_CAST_FROM_STRING
        QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
        QT_STRICT_ITERATORS
        QT_DISABLE_DEPRECATED_BEFORE=0x050F00
    )
endfunction()

# vrn_add_library(<target> EXPORT_NAME <name> HEADERS_DIR <dir> EXPORT_HEADER <path>
#                 SOURCES <file>...)
# A shared library `lib<target>.so`, known to callers as `vrn::<name>`, with its
# public headers in <dir> and a generated export header.
function(vrn_add_library target)
    cmake_parse_arguments(arg "" "EXPORT_NAME;HEADERS_DIR;EXPORT_HEADER" "SOURCES" ${ARGN})
    add_library(${target} SHARED ${arg_SOURCES})
    add_library(vrn::${arg_EXPORT_NAME} ALIAS ${target})
    vrn_configure_target(${target})
    set_target_properties(${target} PROPERTIES
        EXPORT_NAME ${arg_EXPORT_NAME}
        VERSION ${vrn_qt2_VERSION}
        SOVERSION ${vrn_qt2_VERSION_MAJOR}
        INSTALL_RPATH "$ORIGIN"
    )
    set(generated "${CMAKE_CURRENT_BINARY_DIR}/inc")
    string(TOUPPER ${target} base_name)
    generate_export_header(${target}
        BASE_NAME ${base_name}
        EXPORT_FILE_NAME "${generated}/${arg_EXPORT_HEADER}"
    )
    target_include_directories(${target} PUBLIC
        "$<BUILD_INTERFACE:${arg_HEADERS_DIR}>"
        "$<BUILD_INTERFACE:${generated}>"
        "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>"
    )
    if(VRN_INSTALL)
        install(TARGETS ${target} EXPORT vrn_qt2Targets
            LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
            INCLUDES DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}"
        )
        install(DIRECTORY "${arg_HEADERS_DIR}/" "${generated}/"
            DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}"
            FILES_MATCHING PATTERN "*.h"
        )
    endif()
endfunction()
