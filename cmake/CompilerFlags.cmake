# Warnings are errors, and the compiler may not fuse a multiply and an add:
# results must match, bit for bit, the order of operations the code writes.
add_compile_options(-Wall -Wextra -Wpedantic -Werror -ffp-contract=off -fno-fast-math)

# The sanitizer build type runs the whole suite once more under ASan and UBSan.
set(CMAKE_CXX_FLAGS_SANITIZE "-O1 -g -fno-omit-frame-pointer -fsanitize=address,undefined -fno-sanitize-recover=undefined"
    CACHE STRING "Flags of the sanitizer build" FORCE)
set(CMAKE_EXE_LINKER_FLAGS_SANITIZE "-fsanitize=address,undefined" CACHE STRING "" FORCE)
set(CMAKE_SHARED_LINKER_FLAGS_SANITIZE "-fsanitize=address,undefined" CACHE STRING "" FORCE)
