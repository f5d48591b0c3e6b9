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

# What most sources include takes a third of the time they take to compile: read once. Kernels, whose
# flags are their own, and what stands on Qt have no part in it.
file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/generated/Headers.cpp
    CONTENT "// The compiler reads the shared headers along with this file.\n")
add_library(tarvex_headers OBJECT ${CMAKE_BINARY_DIR}/generated/Headers.cpp)
target_link_libraries(tarvex_headers PRIVATE tarvex_options)
target_precompile_headers(tarvex_headers PRIVATE
    <algorithm> <functional> <map> <memory> <optional> <sstream> <string> <vector>)
