# Checks that the README shows examples/first_field as it is built, and that every file
# that the documentation links to exists.
cmake_minimum_required(VERSION 3.25)
get_filename_component(root "${CMAKE_CURRENT_LIST_DIR}/../.." ABSOLUTE)

file(READ "${root}/README.md" readme)
file(READ "${root}/examples/first_field/main.cpp" program)
string(FIND "${readme}" "```cpp\n${program}```" position)
if(position EQUAL -1)
    message(SEND_ERROR "README.md does not show examples/first_field/main.cpp as it is")
endif()

file(GLOB documents "${root}/*.md" "${root}/docs/*.md")
foreach(document IN LISTS documents)
    get_filename_component(folder "${document}" DIRECTORY)
    file(READ "${document}" text)
    # CMake does not split a list where its elements contain brackets.
    string(REPLACE "](" "@link:" text "${text}")
    # A lambda has blanks between its parentheses.
    string(REGEX MATCHALL "@link:[^)# ]+[)#]" links "${text}")
    foreach(link IN LISTS links)
        string(REGEX REPLACE "@link:|[)#]" "" target "${link}")
        if(NOT target MATCHES "^https?:" AND NOT EXISTS "${folder}/${target}")
            message(SEND_ERROR "${document} links to ${target}, which does not exist")
        endif()
    endforeach()
endforeach()
