# Stands in for Qt where the project is configured for a Mac without one: the names are all that is needed.
foreach(component IN LISTS Qt6_FIND_COMPONENTS)
    if(NOT TARGET Qt6::${component})
        add_library(Qt6::${component} INTERFACE IMPORTED)
    endif()
endforeach()

function(qt_add_lrelease)
    cmake_parse_arguments(arg "" "QM_FILES_OUTPUT_VARIABLE" "TS_FILES;OPTIONS" ${ARGN})
    set(${arg_QM_FILES_OUTPUT_VARIABLE} "" PARENT_SCOPE)
endfunction()

function(qt_add_resources)
endfunction()
