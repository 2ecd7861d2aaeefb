# Compiler settings every target shares: link kelvora_options, never set flags per target.
add_library(kelvora_options INTERFACE)
target_compile_features(kelvora_options INTERFACE cxx_std_20)
target_compile_options(kelvora_options INTERFACE -Wall -Wextra -Wpedantic -Wold-style-cast)
if(KELVORA_WERROR)
    target_compile_options(kelvora_options INTERFACE -Werror)
endif()

# The Qt-free core is held to a stricter standard: no silent narrowing.
add_library(kelvora_core_options INTERFACE)
target_link_libraries(kelvora_core_options INTERFACE kelvora_options)
target_compile_options(kelvora_core_options INTERFACE -Wconversion -Wsign-conversion)
