# Compiler settings every target shares: link kelvora_options, never set flags per target.
add_library(kelvora_options INTERFACE)
target_compile_features(kelvora_options INTERFACE cxx_std_20)
target_compile_options(kelvora_options INTERFACE -Wall -Wextra -Wpedantic -Wold-style-cast)
if(KELVORA_WERROR)
    target_compile_options(kelvora_options INTERFACE -Werror)
endif()

# Sanitizer builds stop at the first report, so that a test or fuzz run fails on it.
if(KELVORA_SANITIZE)
    set(kelvora_sanitizers -fsanitize=${KELVORA_SANITIZE} -fno-sanitize-recover=all
        -fno-omit-frame-pointer)
    target_compile_options(kelvora_options INTERFACE ${kelvora_sanitizers})
    target_link_options(kelvora_options INTERFACE ${kelvora_sanitizers})
endif()
# Fuzzing: every target is instrumented for coverage; fuzz/ adds libFuzzer's main.
if(KELVORA_BUILD_FUZZ)
    if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
        message(FATAL_ERROR "KELVORA_BUILD_FUZZ needs clang (CXX=clang++)")
    endif()
    target_compile_options(kelvora_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# The Qt-free core is held to a stricter standard: no silent narrowing.
add_library(kelvora_core_options INTERFACE)
target_link_libraries(kelvora_core_options INTERFACE kelvora_options)
target_compile_options(kelvora_core_options INTERFACE -Wconversion -Wsign-conversion)
