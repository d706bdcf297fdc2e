# The compile options that every target of the project shares: link velmora_options privately.
add_library(velmora_options INTERFACE)
target_compile_definitions(velmora_options INTERFACE
    QT_NO_KEYWORDS
    QT_NO_CAST_FROM_ASCII
    QT_NO_CAST_TO_ASCII
    QT_NO_FOREACH
)
target_compile_options(velmora_options INTERFACE
    -Wall -Wextra -Wpedantic -Werror
    -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wold-style-cast
    -Wconversion -Wsign-conversion -Wimplicit-fallthrough
)

if(ORVELLA_SANITIZERS)
    # Every object is instrumented, the generated ones too.
    add_compile_options(-fsanitize=${ORVELLA_SANITIZERS} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${ORVELLA_SANITIZERS})
endif()
if(NOT APPLE)
    add_link_options(-fuse-ld=lld -Wl,--as-needed)
endif()
