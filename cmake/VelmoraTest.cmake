find_package(Qt6 6.4 REQUIRED COMPONENTS Network Test)

# Builds the tests labelled `threads`, which the thread sanitizer runs.
add_custom_target(thread_tests)

# Reports of the sanitizers name functions only with its help. They do not follow a link to it.
find_program(ORVELLA_SYMBOLIZER NAMES llvm-symbolizer-19 llvm-symbolizer)
mark_as_advanced(ORVELLA_SYMBOLIZER)
set(symbolizer_option "")
if(ORVELLA_SYMBOLIZER)
    file(REAL_PATH ${ORVELLA_SYMBOLIZER} symbolizer)
    set(symbolizer_option ":external_symbolizer_path=${symbolizer}")
endif()

# Qt and libcurl are not instrumented, so the sanitizer does not see how they order what they themselves touch. What
# our own code touches is checked all the same.
set(tsan_options suppressions=${CMAKE_SOURCE_DIR}/tests/tsan.supp:ignore_noninstrumented_modules=1:second_deadlock_stack=1)

# A test waits more than it computes, so that optimising it would cost more than it brings; what it tests is optimised.
set(test_options $<$<CONFIG:Debug>:-O0>)

# Whether Qt's widgets are among these libraries, or what they link with in turn; what they keep to themselves is not.
function(velmora_has_widgets result)
    set(libraries ${ARGN})
    while(libraries AND NOT "Qt6::Widgets" IN_LIST libraries)
        list(POP_FRONT libraries library)
        if(TARGET ${library})
            get_target_property(links ${library} INTERFACE_LINK_LIBRARIES)
            list(APPEND libraries ${links})
        endif()
    endwhile()
    set(${result} FALSE PARENT_SCOPE)
    if("Qt6::Widgets" IN_LIST libraries)
        set(${result} TRUE PARENT_SCOPE)
    endif()
endfunction()

# One test program: velmora_test(core/Polling LIBRARIES velmora_core) builds core/PollingTest.cpp.
#
# LIBRARIES  what it tests
# PROGRAM    the name of another test, whose program is run once more in other surroundings; there is no own one then
# DESKTOP    runs it on a virtual desktop with a panel, a session bus and a keyring of its own
# PANEL, WINDOW_MANAGER  runs it on such a desktop with another panel or window manager; tools/dev/desktop knows which
# COMMAND    what to start the program with, for example a private session bus; it precedes the program
# ENVIRONMENT, LABELS, TIMEOUT  as CTest knows them; the label "threads" has it run under the thread sanitizer too
function(velmora_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "DESKTOP" "PROGRAM;PANEL;WINDOW_MANAGER;TIMEOUT"
        "LIBRARIES;COMMAND;ENVIRONMENT;LABELS")
    cmake_path(GET name FILENAME file)
    if(arg_PROGRAM)
        cmake_path(GET arg_PROGRAM FILENAME target)
        string(APPEND target Test)
    else()
        set(target ${file}Test)
        add_executable(${target} ${name}Test.cpp)
        target_link_libraries(${target} PRIVATE ${arg_LIBRARIES} velmora_support Qt6::Test velmora_options)
        target_compile_options(${target} PRIVATE ${test_options})
        velmora_has_widgets(has_widgets ${arg_LIBRARIES})
        if(has_widgets)
            velmora_precompile(velmora_precompiled_widget_tests ${target})
        else()
            velmora_precompile(velmora_precompiled_tests ${target})
        endif()
        set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
    endif()
    set(environment
        LC_ALL=C.UTF-8
        QT_QPA_PLATFORM=offscreen
        ASAN_OPTIONS=detect_leaks=1:abort_on_error=0${symbolizer_option}
        # GLib's own allocator would hide from the sanitizer what is lost.
        G_SLICE=always-malloc
        LSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/tests/lsan.supp:print_suppressions=0
        UBSAN_OPTIONS=print_stacktrace=1${symbolizer_option}
        TSAN_OPTIONS=${tsan_options}${symbolizer_option}
        http_proxy= https_proxy= HTTPS_PROXY= all_proxy= ALL_PROXY= no_proxy= NO_PROXY=
        ${arg_ENVIRONMENT}
    )
    if(arg_DESKTOP OR arg_PANEL OR arg_WINDOW_MANAGER)
        set(desktop ${CMAKE_SOURCE_DIR}/tools/dev/desktop)
        if(arg_PANEL)
            list(APPEND desktop --panel ${arg_PANEL})
        endif()
        if(arg_WINDOW_MANAGER)
            list(APPEND desktop --window-manager ${arg_WINDOW_MANAGER})
        endif()
        # The desktop starts from an empty environment.
        set(arg_COMMAND ${desktop} ${CMAKE_BINARY_DIR}/desktop/${file}
            env ${environment} QT_QPA_PLATFORM=xcb ${arg_COMMAND})
    endif()
    add_test(NAME ${name} COMMAND ${arg_COMMAND} $<TARGET_FILE:${target}>)
    if(NOT arg_TIMEOUT)
        set(arg_TIMEOUT 60)
    endif()
    set_tests_properties(${name} PROPERTIES TIMEOUT ${arg_TIMEOUT})
    set_property(TEST ${name} PROPERTY ENVIRONMENT ${environment})
    if(arg_LABELS)
        set_property(TEST ${name} PROPERTY LABELS ${arg_LABELS})
    endif()
    if("threads" IN_LIST arg_LABELS)
        add_dependencies(thread_tests ${target})
    endif()
endfunction()

# A test over external material, as velmora_test: it exists only where the folder ORVELLA_CORPORA does.
function(velmora_corpus_test name)
    if(NOT IS_DIRECTORY "${ORVELLA_CORPORA}")
        return()
    endif()
    if(NOT TARGET velmora_corpus)
        add_library(velmora_corpus STATIC
            ${CMAKE_SOURCE_DIR}/tests/support/Corpus.cpp ${CMAKE_SOURCE_DIR}/tests/support/Corpus.h
        )
        target_link_libraries(velmora_corpus PUBLIC velmora_support PRIVATE velmora_options)
        velmora_precompile(velmora_precompiled velmora_corpus)
    endif()
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LIBRARIES")
    velmora_test(${name}
        LIBRARIES ${arg_LIBRARIES} velmora_corpus
        ENVIRONMENT ORVELLA_CORPORA=${ORVELLA_CORPORA}
        LABELS corpora
    )
endfunction()
