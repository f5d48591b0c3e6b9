# Compile options that every folder shares.
add_library(tarvex_options INTERFACE)
target_include_directories(tarvex_options INTERFACE ${CMAKE_SOURCE_DIR})
target_compile_options(tarvex_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wno-multichar
    $<$<BOOL:${TARVEX_WERROR}>:-Werror>
    $<$<CXX_COMPILER_ID:Clang>:-Wthread-safety>)
target_compile_definitions(tarvex_options INTERFACE $<$<BOOL:${TARVEX_CHECKS}>:TARVEX_CHECKS>)

if(TARVEX_SANITIZER)
    add_compile_options(-fsanitize=${TARVEX_SANITIZER} -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${TARVEX_SANITIZER})
endif()
