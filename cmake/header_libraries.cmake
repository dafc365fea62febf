# Libraries of headers only, from Debian's packages. The cross compiler must see each without seeing the
# rest of the system's headers, hence a folder with one link for each of them.
function(lunara_add_header_library name folder header)
    find_path(${name}_HEADERS ${folder}/${header} PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH REQUIRED)
    set(links ${CMAKE_BINARY_DIR}/header-libraries/${name})
    file(MAKE_DIRECTORY ${links})
    file(CREATE_LINK ${${name}_HEADERS}/${folder} ${links}/${folder} SYMBOLIC)
    add_library(${name} INTERFACE)
    target_include_directories(${name} SYSTEM INTERFACE ${links})
endfunction()

lunara_add_header_library(lunara_cli11 CLI CLI.hpp)
lunara_add_header_library(lunara_json nlohmann json.hpp)
