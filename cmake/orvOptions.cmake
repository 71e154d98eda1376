# Flags shared by every target of the project.

# The sanitizer a build asked for: ORV_SANITIZE (AddressSanitizer and UBSan) or ORV_SANITIZE_THREAD.
set(ORV_SANITIZER_COMPILE_OPTIONS)
set(ORV_SANITIZER_LINK_OPTIONS)
if(ORV_SANITIZE)
    set(ORV_SANITIZER_COMPILE_OPTIONS -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    set(ORV_SANITIZER_LINK_OPTIONS -fsanitize=address,undefined)
elseif(ORV_SANITIZE_THREAD)
    set(ORV_SANITIZER_COMPILE_OPTIONS -fsanitize=thread -fno-omit-frame-pointer)
    set(ORV_SANITIZER_LINK_OPTIONS -fsanitize=thread)
endif()

function(orv_target_options target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -ffp-contract=off)
    if(ORV_SANITIZER_COMPILE_OPTIONS)
        target_compile_options(${target} PRIVATE ${ORV_SANITIZER_COMPILE_OPTIONS})
        target_link_options(${target} PRIVATE ${ORV_SANITIZER_LINK_OPTIONS})
    endif()
endfunction()
