# The four companion libraries. This project has a small stand-in for each. An
# application that has the real one names its CMake package and target:
#
#   -DVRN_COMPANION_ASSERT_PACKAGE=acme_assert -DVRN_COMPANION_ASSERT_TARGET=acme::assert
#
# The target must provide the headers that the stand-in has in companion/<name>/inc.

set(VRN_REPLACED_PACKAGES "" CACHE INTERNAL "Packages that replace companions")

# vrn_companion(<name>): makes vrn::<name>, from the folder or from the option.
macro(vrn_companion name)
    string(REPLACE "companion_" "" _vrn_folder ${name})
    string(TOUPPER ${_vrn_folder} _vrn_upper)
    set(VRN_COMPANION_${_vrn_upper}_PACKAGE "" CACHE STRING
        "CMake package that provides the companion '${name}'; empty for the one in this project")
    set(VRN_COMPANION_${_vrn_upper}_TARGET "" CACHE STRING
        "Target of that package to use as vrn::${name}")
    if(VRN_COMPANION_${_vrn_upper}_PACKAGE AND NOT VRN_COMPANION_${_vrn_upper}_TARGET)
        message(FATAL_ERROR "VRN_COMPANION_${_vrn_upper}_PACKAGE needs VRN_COMPANION_${_vrn_upper}_TARGET")
    endif()
    if(VRN_COMPANION_${_vrn_upper}_TARGET)
        if(VRN_COMPANION_${_vrn_upper}_PACKAGE)
            find_package(${VRN_COMPANION_${_vrn_upper}_PACKAGE} REQUIRED)
            list(APPEND VRN_REPLACED_PACKAGES ${VRN_COMPANION_${_vrn_upper}_PACKAGE})
            set(VRN_REPLACED_PACKAGES ${VRN_REPLACED_PACKAGES} CACHE INTERNAL "")
        endif()
        # An interface library, not an alias: the installed package can then name
        # what it depends on.
        add_library(vrn_${name} INTERFACE)
        target_link_libraries(vrn_${name} INTERFACE ${VRN_COMPANION_${_vrn_upper}_TARGET})
        add_library(vrn::${name} ALIAS vrn_${name})
        set_target_properties(vrn_${name} PROPERTIES EXPORT_NAME ${name})
        if(VRN_INSTALL)
            install(TARGETS vrn_${name} EXPORT vrn_qt2Targets)
        endif()
    else()
        add_subdirectory(companion/${_vrn_folder})
    endif()
endmacro()
