add_library(QCoro6::Core INTERFACE IMPORTED)
