add_library(CURL::libcurl INTERFACE IMPORTED)
