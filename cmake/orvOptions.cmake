# Flags shared by every target of the project.
function(orv_target_options target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -ffp-contract=off)
    if(ORV_SANITIZE)
        target_compile_options(${target} PRIVATE -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
        target_link_options(${target} PRIVATE -fsanitize=address,undefined)
    endif()
endfunction()
