# Headers of others that most sources read, compiled once for all. Only where it is built to be debugged: what is
# shipped is built without them, and clang-tidy looks without them, so that a source that lacks an include is found.
# A launcher of the compiler that keeps what was compiled, such as ccache, would keep nothing of what reads them.
set(precompiled_headers
    <QCoroTask>
    <QtCore>
    <QtDBus>
    <QtGui>
    <QtWidgets>
    <algorithm>
    <array>
    <chrono>
    <cmath>
    <coroutine>
    <expected>
    <functional>
    <map>
    <memory>
    <optional>
    <stop_token>
    <string>
    <tuple>
    <utility>
    <variant>
    <vector>
)

# Compiles them: velmora_precompiled_headers(velmora_precompiled_tests HEADERS <QTest> LINKS Qt6::Test OPTIONS -O0).
#
# HEADERS  what else is compiled with them
# LINKS    what else those that use them link with, as far as a header asks for it
# OPTIONS  what else those that use them are compiled with; it has to be the same
function(velmora_precompiled_headers name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "HEADERS;LINKS;OPTIONS")
    if(APPLE OR CMAKE_CXX_COMPILER_LAUNCHER OR NOT CMAKE_BUILD_TYPE STREQUAL "Debug")
        return()
    endif()
    file(CONFIGURE OUTPUT ${name}.cpp CONTENT "")
    add_library(${name} OBJECT ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp)
    target_compile_options(${name} PRIVATE ${arg_OPTIONS})
    target_link_libraries(${name} PRIVATE QCoro6::Core Qt6::DBus Qt6::Gui ${arg_LINKS} velmora_options)
    # Its headers alone: QTest takes what is compiled with the definition that goes with them for a test of widgets.
    target_include_directories(${name} SYSTEM PRIVATE $<TARGET_PROPERTY:Qt6::Widgets,INTERFACE_INCLUDE_DIRECTORIES>)
    target_precompile_headers(${name} PRIVATE ${precompiled_headers} ${arg_HEADERS})
    set_target_properties(${name} PROPERTIES AUTOMOC OFF)
endfunction()

# Has targets use what was compiled under that name: velmora_precompile(velmora_precompiled velmora_core velmora_ui).
function(velmora_precompile name)
    if(NOT TARGET ${name})
        return()
    endif()
    foreach(target IN LISTS ARGN)
        target_precompile_headers(${target} REUSE_FROM ${name})
    endforeach()
endfunction()

velmora_precompiled_headers(velmora_precompiled)
