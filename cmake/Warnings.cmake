# Compile options that every folder shares.
add_library(tarvex_warnings INTERFACE)
target_compile_options(tarvex_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wno-multichar
    $<$<BOOL:${TARVEX_WERROR}>:-Werror>
    $<$<CXX_COMPILER_ID:Clang>:-Wthread-safety>)
target_compile_definitions(tarvex_warnings INTERFACE $<$<BOOL:${TARVEX_CHECKS}>:TARVEX_CHECKS>)

# And where all but the kits, which have layers, find what is included by its path.
add_library(tarvex_options INTERFACE)
target_include_directories(tarvex_options INTERFACE ${CMAKE_SOURCE_DIR})
target_link_libraries(tarvex_options INTERFACE tarvex_warnings)

if(TARVEX_SANITIZER)
    add_compile_options(-fsanitize=${TARVEX_SANITIZER} -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${TARVEX_SANITIZER})
endif()
