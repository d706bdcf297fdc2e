# What keeps the shipped program small, and quick to load. What is built to be debugged is linked the usual way.
if(APPLE)
    return()
endif()

# Smaller than -Os by a tenth; what is computed here is little.
string(REPLACE "-Os" "-Oz" CMAKE_CXX_FLAGS_MINSIZEREL "${CMAKE_CXX_FLAGS_MINSIZEREL}")
add_compile_options($<$<NOT:$<CONFIG:Debug>>:-ffunction-sections> $<$<NOT:$<CONFIG:Debug>>:-fdata-sections>)
# Of the whole program at once, which CMake's own switch does not ask for: with clang that is ThinLTO.
add_compile_options($<$<NOT:$<CONFIG:Debug>>:-flto=full>)
add_link_options($<$<NOT:$<CONFIG:Debug>>:-flto=full>)
# Coroutines and templates leave much that is the same, or that nobody calls, and relocations that differ by their
# place alone.
add_link_options($<$<NOT:$<CONFIG:Debug>>:LINKER:--icf=all,--gc-sections,-O2,-z,pack-relative-relocs>)
