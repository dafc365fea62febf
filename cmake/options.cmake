# The one target that carries what every target of ours is compiled with.
add_library(lunara_options INTERFACE)
target_include_directories(lunara_options INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(lunara_options INTERFACE
    -Wall -Wextra -Wshadow -Wconversion -Wnon-virtual-dtor -Werror
    # Predictions are compared bit for bit between targets: single precision as written, without
    # fused or widened intermediates.
    -ffp-contract=off)

if(WIN32)
    target_compile_definitions(lunara_options INTERFACE
        UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN STRICT WINVER=0x0A00 _WIN32_WINNT=0x0A00)
    target_compile_options(lunara_options INTERFACE -ffunction-sections -fdata-sections)
    target_link_options(lunara_options INTERFACE -static -Wl,--gc-sections)
endif()

if(LUNARA_SANITIZE)
    add_compile_options(-O1 -fno-omit-frame-pointer -fsanitize=address,undefined
        -fno-sanitize-recover=all)
    add_link_options(-fsanitize=address,undefined)
    if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
        add_compile_options(-fsanitize=fuzzer-no-link)  # what the fuzzers watch
    endif()
endif()
