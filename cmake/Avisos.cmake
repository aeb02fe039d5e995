# Our own targets build without a single warning; those who build from a tarball are not held to that.
function(recalculo_avisos target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
endfunction()
