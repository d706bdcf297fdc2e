add_library(nlohmann_json::nlohmann_json INTERFACE IMPORTED)
